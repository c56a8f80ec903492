// The system's own tool bar images.
#pragma once

#include "ui/pixels.h"

constexpr int kStandardImageSide = 16; // at 96 dpi

// The small standard images (IDB_STD_SMALL_COLOR) in their order as one strip, kStandardImageSide wide and
// high each. Empty on failure.
Pixels LoadStandardImages();
