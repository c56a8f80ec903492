// Another program on the same store, for the tests that need one:
//
//   mervane_peer write SUBJECT       creates an entry
//   mervane_peer change ID SUBJECT   changes one
//   mervane_peer delete ID
//   mervane_peer bulk COUNT          creates entries in one bulk
//   mervane_peer category NAME       creates a category
//   mervane_peer use ID              counts a use of a category
//   mervane_peer hold                keeps the store locked for writing, says so, and waits to be killed
//   mervane_peer save                saves entries 1, 2, 3, ... and says so after each, until it is killed
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "mervane/db_categories.h"
#include "mervane/db_journal.h"

namespace {

CEPROPVAL Text(CEPROPID id, std::wstring& text)
{
    CEPROPVAL value{};
    value.propid = id;
    value.val.lpwstr = text.data();
    return value;
}

CEOID Write(CeDBase& database, CEOID id, CEPROPID property, std::wstring text)
{
    const CEPROPVAL value = Text(property, text);
    return database.WriteRecord(id, 1, &value);
}

// One number to whoever started this.
void Say(DWORD number)
{
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), &number, sizeof number, &written, nullptr);
}

[[noreturn]] void Save(DbJournal& journal)
{
    // Bodies of several pages, so that the process is also killed in the middle of a write.
    for (DWORD number = 1;; ++number) {
        std::wstring subject = std::to_wstring(number), body(3000 + number % 20'000, L'x');
        const CEPROPVAL values[] = {Text(0x0066001F, subject), Text(0x0067001F, body)};
        if (!journal.WriteRecord(0, 2, values))
            ExitProcess(3);
        Say(number);
    }
}

[[noreturn]] void Hold(DbJournal& journal)
{
    CeDBase::BulkScope bulk(journal);
    if (!Write(journal, 0, 0x0066001F, L"never kept"))
        ExitProcess(3);
    Say(1);
    Sleep(INFINITE);
    ExitProcess(0);
}

bool Bulk(DbJournal& journal, int count)
{
    CeDBase::BulkScope bulk(journal);
    for (int i = 0; i < count; ++i)
        if (!Write(journal, 0, 0x0066001F, L"bulk"))
            return false;
    return bulk.Commit() == 1;
}

bool Run(DbJournal& journal, const std::wstring& command, const std::wstring& first,
         const std::wstring& second)
{
    DbCategories categories;
    if (!categories.Open())
        return false;
    const auto id = static_cast<CEOID>(wcstoul(first.c_str(), nullptr, 10));
    if (command == L"write")
        return Write(journal, 0, 0x0066001F, first) != 0;
    if (command == L"change")
        return Write(journal, id, 0x0066001F, second) != 0;
    if (command == L"delete")
        return journal.DeleteRecord(id) != 0;
    if (command == L"bulk")
        return Bulk(journal, static_cast<int>(id));
    if (command == L"category")
        return Write(categories, 0, kCategoriesKey, first) != 0;
    if (command == L"use")
        return categories.IncUse(id) != 0;
    if (command == L"hold")
        Hold(journal);
    if (command == L"save")
        Save(journal);
    return false;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    DbJournal journal;
    if (argc < 2 || !journal.Open(nullptr))
        return 2;
    return Run(journal, argv[1], argc > 2 ? argv[2] : L"", argc > 3 ? argv[3] : L"") ? 0 : 1;
}
