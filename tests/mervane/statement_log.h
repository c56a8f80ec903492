// What SQLite is asked by the connections that are opened while this lives.
#pragma once

#include <string>
#include <vector>

class StatementLog {
  public:
    StatementLog();
    ~StatementLog();
    StatementLog(const StatementLog&) = delete;
    StatementLog& operator=(const StatementLog&) = delete;

    // Since the last call, in order; each run of a statement once.
    std::vector<std::string> Take();
};
