// The pieces that an export writes, and the same calls for them without a database.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace bench {

struct WrittenPieces {
    std::vector<std::string> pieces;
    std::vector<size_t> entryEnds; // how many pieces there are behind each entry
};

// While this lives the program's writes and flushes are not made: its pieces are kept, or dropped.
class CallsNotMade {
  public:
    explicit CallsNotMade(std::vector<std::string>* pieces); // null: dropped
    ~CallsNotMade();
    CallsNotMade(const CallsNotMade&) = delete;
    CallsNotMade& operator=(const CallsNotMade&) = delete;
};

// A file opened as an export opens it.
class BareFile {
  public:
    explicit BareFile(const std::wstring& path);
    ~BareFile(); // deletes it
    BareFile(const BareFile&) = delete;
    BareFile& operator=(const BareFile&) = delete;

    // Writes and flushes each piece of a run; the time that it took.
    double TimePieces(const std::vector<std::string>& pieces, size_t from, size_t to);

  private:
    std::wstring m_path;
    HANDLE m_file;
};

} // namespace bench
