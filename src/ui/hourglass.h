// The pointer around long work.
#pragma once

void ShowHourglass();
// No pointer, or that of what is below the mouse where it is a window of this thread.
void RemoveHourglass();

// The hourglass for a scope. Not to be nested: the end of the inner one would be the end of the hourglass.
class ScopedHourglass {
  public:
    ScopedHourglass() { ShowHourglass(); }
    ~ScopedHourglass() { RemoveHourglass(); }
    ScopedHourglass(const ScopedHourglass&) = delete;
    ScopedHourglass& operator=(const ScopedHourglass&) = delete;
};
