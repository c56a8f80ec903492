// A flag that says that what changes is a window's own doing, as when it fills its controls, and is to be
// taken for nothing that a person has done.
#pragma once

class ScopedQuiet {
  public:
    explicit ScopedQuiet(bool* quiet) : m_quiet(quiet), m_before(*quiet) { *m_quiet = true; }
    ~ScopedQuiet() { *m_quiet = m_before; }
    ScopedQuiet(const ScopedQuiet&) = delete;
    ScopedQuiet& operator=(const ScopedQuiet&) = delete;

  private:
    bool* m_quiet;
    bool m_before;
};
