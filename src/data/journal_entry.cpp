#include "data/journal_entry.h"
