#include "util/duration_text.h"
