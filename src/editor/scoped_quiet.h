// The editor's quiet flag: while it is set, changes come from the editor's own filling and mark nothing as
// modified.
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
