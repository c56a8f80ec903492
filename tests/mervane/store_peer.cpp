// Another program on the same store, for the tests that need one:
//
//   mervane_peer write SUBJECT       creates an entry
//   mervane_peer change ID SUBJECT   changes one
//   mervane_peer delete ID
//   mervane_peer bulk COUNT          creates entries in one bulk
//   mervane_peer category NAME       creates a category
//   mervane_peer contact NAME        creates a contact
//   mervane_peer use ID              counts a use of a category
//   mervane_peer file ID COUNT       in one bulk counts a use of a category and creates an entry, so often
//   mervane_peer hold                keeps the store locked for writing, says so, and waits to be killed
//   mervane_peer churn NAME COUNT SEED    creates, changes and deletes entries and contacts, so many in all,
//   and
//                                         says after each what it was: table, identifier, version (0:
//                                         deleted); it is shown as "NAME VERSION TICK"
//   mervane_peer save                saves entries 1, 2, 3, ... and says so after each, until it is killed
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"
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

// As the editor saves: the use and the entry together.
bool File(DbJournal& journal, DbCategories& categories, CEOID category, int count)
{
    CeDBase::BulkScope bulk(journal);
    for (int i = 0; i < count; ++i)
        if (!categories.IncUse(category) || !Write(journal, 0, 0x0066001F, L"filed"))
            return false;
    return bulk.Commit() == 1;
}

// Writes at random to two tables, of each only to what it has made itself.
class Churn {
  public:
    Churn(DbJournal& journal, DbContacts& contacts, const wchar_t* name, unsigned seed)
        : m_tables{{&journal, 0x0066001F, {}}, {&contacts, kContactsKey, {}}}, m_name(name), m_random(seed)
    {}

    bool Step()
    {
        const DWORD index = m_random() % 8 == 0;
        Own& own = m_tables[index];
        ++m_version;
        const bool hasMany = own.ids.size() > kMany;
        const unsigned choice = m_random() % 100;
        if (own.ids.empty() || (!hasMany && choice < 40))
            return Create(own, index);
        const size_t which = m_random() % own.ids.size();
        if (choice < (hasMany ? 50 : 20))
            return Delete(own, index, which);
        return Put(own, own.ids[which]) && Tell(index, own.ids[which], m_version);
    }

  private:
    static constexpr size_t kMany = 300;
    struct Own {
        CeDBase* database;
        CEPROPID text;
        std::vector<CEOID> ids;
    };

    CEOID Put(Own& own, CEOID id)
    {
        std::wstring text =
            m_name + L" " + std::to_wstring(m_version) + L" " + std::to_wstring(GetTickCount64());
        CEPROPVAL values[] = {Text(own.text, text), {}, {}};
        WORD count = 1;
        if (own.text != kContactsKey && (id == 0 || m_random() % 2)) {
            values[count].propid = 0x00650040;
            values[count++].val.filetime = {m_random(), 30'000'000 + m_random() % 10};
            values[count].propid = 0x006B0002;
            values[count++].val.iVal = static_cast<short>(m_random() % 3);
        }
        return own.database->WriteRecord(id, count, values);
    }

    bool Create(Own& own, DWORD index)
    {
        const CEOID id = Put(own, 0);
        own.ids.push_back(id);
        return id && Tell(index, id, m_version);
    }

    bool Delete(Own& own, DWORD index, size_t which)
    {
        const CEOID id = own.ids[which];
        own.ids.erase(own.ids.begin() + static_cast<std::ptrdiff_t>(which));
        return own.database->DeleteRecord(id) && Tell(index, id, 0);
    }

    static bool Tell(DWORD table, CEOID id, DWORD version)
    {
        Say(table);
        Say(id);
        Say(version);
        return true;
    }

    Own m_tables[2];
    std::wstring m_name;
    std::mt19937 m_random;
    DWORD m_version = 0;
};

bool RunChurn(DbJournal& journal, const wchar_t* name, int count, unsigned seed)
{
    DbContacts contacts;
    if (!contacts.Open())
        return false;
    Churn churn(journal, contacts, name, seed);
    for (int i = 0; i < count; ++i)
        if (!churn.Step())
            return false;
    return true;
}

bool AddContact(const std::wstring& name)
{
    DbContacts contacts;
    return contacts.Open() && Write(contacts, 0, kContactsKey, name) != 0;
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
    if (command == L"contact")
        return AddContact(first);
    if (command == L"use")
        return categories.IncUse(id) != 0;
    if (command == L"file")
        return File(journal, categories, id, _wtoi(second.c_str()));
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
    if (argc < 2 || !journal.Open(nullptr)) {
        fprintf(stderr, "the store was not opened: trouble %d\n", static_cast<int>(journal.Trouble()));
        return 100 + static_cast<int>(journal.Trouble());
    }
    if (argc == 5 && wcscmp(argv[1], L"churn") == 0)
        return RunChurn(journal, argv[2], _wtoi(argv[3]), static_cast<unsigned>(_wtoi(argv[4]))) ? 0 : 1;
    if (Run(journal, argv[1], argc > 2 ? argv[2] : L"", argc > 3 ? argv[3] : L""))
        return 0;
    fprintf(stderr, "%ls was not done: trouble %d\n", argv[1], static_cast<int>(journal.Trouble()));
    return 1;
}
