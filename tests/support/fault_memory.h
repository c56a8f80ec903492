// SQLite's memory, of which one request is refused. Nothing of SQLite may be in use when this is made or
// goes.
#pragma once

class FaultMemory {
  public:
    FaultMemory();
    ~FaultMemory();
    FaultMemory(const FaultMemory&) = delete;
    FaultMemory& operator=(const FaultMemory&) = delete;

    // From now on the nth request (from 1) is refused, once, or with stays all from it on.
    void FailNth(int n, bool stays);
    void FailNone();
    bool HasFired() const; // since FailNth
    int Seen() const;      // since FailNth or FailNone
};
