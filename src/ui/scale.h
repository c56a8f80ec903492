// The one helper that scales pixel constants. They are given for 96 dpi; the program is system-DPI aware, so
// one resolution holds for its whole run.
#pragma once

// The system's resolution in dots per inch; 96 when the system does not tell.
int SystemDpi();

// A 96-dpi pixel constant at the system's resolution, rounded to the nearest pixel; at 96 dpi the constant
// itself.
int Scale(int pixels);
int ScaleForDpi(int pixels, int dpi);
