// The cards of an import between reading and writing: a few in memory, more in a temporary file.
#pragma once

#include <cstdint>
#include <string>

#include "addrbook/transfer/card_merge.h"
#include "util/owners.h"

namespace addrbook {

class CardSpool {
  public:
    // Behind the others; all of them before the first Rewind. false when the temporary folder has no room.
    [[nodiscard]] bool Put(const vcard::ImportedCard& card);
    // To the first card.
    void Rewind();
    // The next card; false at the end, and when the temporary file cannot be read.
    [[nodiscard]] bool Next(vcard::ImportedCard* card);

    bool HasFailed() const { return m_failed; }
    uint64_t Size() const { return m_fileSize + m_memory.size(); } // bytes
    uint64_t Position() const { return m_position; }

    static constexpr size_t kInMemory = size_t{4} << 20; // bytes, before the file begins

  private:
    bool OpenFile();
    bool MoveToFile();
    bool Read(char* bytes, size_t size);
    bool FillWindow(uint64_t position);

    UniqueKernelHandle m_file;
    uint64_t m_fileSize = 0;
    std::string m_memory; // what lies behind the file
    uint64_t m_position = 0;
    std::string m_window; // a piece of the file
    uint64_t m_windowStart = 0;
    bool m_failed = false;
};

} // namespace addrbook
