#pragma once

// Whether the program runs under Wine. For the few things that it does otherwise than Windows, see
// docs/windows.md.
bool IsUnderWine();
