#include "util/date_text.h"
