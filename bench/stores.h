// The stores that are measured: bulk samples of 1,000 to 1,000,000 entries in one folder, made once.
#pragma once

#include <string>

#include "mervane/db_journal.h"

namespace bench {

constexpr uint32_t kSmall = 1'000;
constexpr uint32_t kMiddle = 10'000;
constexpr uint32_t kFull = 65'535;
constexpr uint32_t kMillion = 1'000'000;

// The folder of the stores, with no separator at its end.
void SetFolder(const std::wstring& folder);
std::wstring StorePath(uint32_t count);
// Makes the stores that are missing.
[[nodiscard]] bool MakeStores();

// A copy of a store for work that changes it; deleted at the end.
class StoreCopy {
  public:
    StoreCopy(uint32_t count, const wchar_t* name);
    ~StoreCopy();
    StoreCopy(const StoreCopy&) = delete;
    StoreCopy& operator=(const StoreCopy&) = delete;

    const std::wstring& Path() const { return m_path; }

  private:
    std::wstring m_path;
};

// The journal of a store, open; ends the program when it cannot be.
class OpenJournal : public DbJournal {
  public:
    explicit OpenJournal(const std::wstring& path, CEPROPID sort = 0x00650040);
};

// Ends the program with a message.
[[noreturn]] void Fail(const char* message);

} // namespace bench
