// The system's own tool bar images.
#pragma once

#include "ui/pictures/pixels.h"

constexpr int kStandardImageSide = 16; // at 96 dpi

// The standard images in their order (STD_CUT and on) as one strip at a resolution. The system has them for
// 96 dpi. At others the five that the buttons show are drawn anew (IDB_STANDARD), the rest averaged. Delete
// is ours at each: what it looks like differs from system to system, and one shows a printer. Empty on
// failure.
Pixels LoadStandardImages(int dpi);
