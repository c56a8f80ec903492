#include "util/month_set.h"
