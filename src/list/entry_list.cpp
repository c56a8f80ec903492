#include "list/entry_list.h"
