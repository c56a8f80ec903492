#include "mervane/ce_dbase.h"
