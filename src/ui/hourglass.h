// The pointer around long work.
#pragma once

void ShowHourglass();
// No pointer; or, over a window of this thread, that window's pointer.
void RemoveHourglass();

// The hourglass for a scope. Not to be nested: the end of the inner one would be the end of the hourglass.
class ScopedHourglass {
  public:
    ScopedHourglass() { ShowHourglass(); }
    ~ScopedHourglass() { RemoveHourglass(); }
    ScopedHourglass(const ScopedHourglass&) = delete;
    ScopedHourglass& operator=(const ScopedHourglass&) = delete;
};
