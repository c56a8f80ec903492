// Store files of any content beside neighbours of any origin. No case ends the program or keeps it. Of what
// is refused no byte is lost or changed, nor a name; of what is opened, what is not its own is set aside
// whole.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>

#include "records.h"
#include "seeded.h"
#include "support/test_store.h"

namespace {

using fuzz::Chance;
constexpr const wchar_t* kSuffixes[] = {L"", L"-wal", L"-shm", L"-journal"};
using Files = std::map<std::wstring, std::string>; // by what follows the store's name

Files FilesOf(const std::wstring& path)
{
    Files files;
    const std::filesystem::path store(path);
    for (const auto& entry : std::filesystem::directory_iterator(store.parent_path())) {
        const std::wstring name = entry.path().filename().wstring();
        if (name.starts_with(store.filename().wstring()))
            files[name.substr(store.filename().wstring().size())] = ReadFileBytes(entry.path().wstring());
    }
    return files;
}

void PutFiles(const std::wstring& path, const Files& files)
{
    for (const auto& file : FilesOf(path))
        DeleteFileW((path + file.first).c_str());
    for (const auto& [suffix, bytes] : files)
        ASSERT_TRUE(WriteFileBytes(path + suffix, bytes));
}

void WriteEntries(DbJournal& journal, int count)
{
    for (int i = 0; i < count; ++i)
        ASSERT_NE(Sent()
                      .Time(kDate, static_cast<uint64_t>(i) * 1000)
                      .Text(kSubject, L"entry " + std::to_wstring(i))
                      .Text(kBody, std::wstring(static_cast<size_t>(i % 40) * 50, L'b'))
                      .Write(journal),
                  0u);
}

// A store in use, with its log and a journal of a change that was under way.
Files InUse(const std::wstring& path, int entries)
{
    PutFiles(path, {});
    Files files;
    {
        DbJournal journal;
        EXPECT_EQ(journal.Open(nullptr), 1);
        WriteEntries(journal, entries);
        files = FilesOf(path);
    }
    RawStore raw(path);
    EXPECT_TRUE(raw.Run("PRAGMA journal_mode = DELETE; PRAGMA cache_size = 1; BEGIN IMMEDIATE;"
                        "UPDATE journal SET body = body || hex(randomblob(3000))"));
    const Files changed = FilesOf(path);
    if (changed.contains(L"-journal"))
        files[L"-journal"] = changed.at(L"-journal");
    raw.Run("ROLLBACK");
    return files;
}

class StoreFileCases : public testing::Test {
  protected:
    void SetUp() override
    {
        m_older = InUse(m_store.Path(), 30);
        m_same = InUse(m_store.Path(), 60);
        m_other = InUse(m_store.Path(), 200);
        for (const Files* files : {&m_same, &m_older, &m_other})
            for (const wchar_t* suffix : kSuffixes)
                ASSERT_TRUE(files->contains(suffix)) << suffix;
    }
    void TearDown() override { PutFiles(m_store.Path(), {}); }

    // none, the same, older, other, random, cut off, changed in one place.
    void Choose(Files& files, const wchar_t* suffix, size_t origin, Chance& chance) const
    {
        if (origin == 0)
            return;
        const Files* from[] = {&m_same, &m_older, &m_other};
        std::string bytes = (origin <= 3 ? from[origin - 1] : &m_same)->at(suffix);
        if (origin == 4)
            bytes = chance.Bytes(chance.Below(20'000));
        else if (origin == 5)
            bytes.resize(chance.Below(bytes.size()));
        else if (origin == 6)
            Break(bytes, chance);
        files[suffix] = std::move(bytes);
    }
    // A bit or more of the header, or of anything, or a whole page.
    static void Break(std::string& bytes, Chance& chance)
    {
        constexpr size_t kPage = 4096, kHeader = 100;
        for (size_t changes = 1 + chance.Below(4); changes; --changes) {
            const size_t place =
                chance.Below(chance.OneIn(2) ? std::min(kHeader, bytes.size()) : bytes.size());
            if (chance.OneIn(8))
                bytes.replace(place / kPage * kPage, kPage, chance.Bytes(kPage));
            else
                bytes[place] = static_cast<char>(bytes[place] ^ (1 << chance.Below(8)));
        }
    }
    Files Case(size_t number, Chance& chance) const
    {
        Files files;
        constexpr size_t kOrigins = 7;
        // The main file is there in all but a few; then every combination of neighbours comes in turn.
        Choose(files, L"", chance.OneIn(30) ? 0 : 1 + chance.Below(kOrigins - 1), chance);
        for (const wchar_t* suffix : {L"-wal", L"-journal", L"-shm"}) {
            Choose(files, suffix, number % kOrigins, chance);
            number /= kOrigins;
        }
        return files;
    }
    // Whether the file is one of the three as they were, without damage of its own.
    bool IsSound(const Files& files) const
    {
        const auto main = files.find(L"");
        return main != files.end() && (main->second == m_same.at(L"") || main->second == m_older.at(L"") ||
                                       main->second == m_other.at(L""));
    }

    static void Use(DbJournal& journal)
    {
        const CeDBase::ReadScope scope(journal);
        (void)journal.RecordCount();
        for (const CEOID id : Rows(journal))
            (void)journal.GetSubject(id);
        const CEOID added = AddEntry(journal, L"added", 5);
        if (added) {
            EXPECT_STREQ(journal.GetSubject(added), L"added") << "what is acknowledged is there";
        }
    }
    // What is set aside is one of the files that were there, whole; it has a name that says whose it was.
    static void ExpectAsideWhole(const Files& before, const Files& after)
    {
        for (const auto& [name, bytes] : after) {
            const size_t end = name.find(L".set-aside-");
            if (end == std::wstring::npos)
                continue;
            const auto was = before.find(name.substr(0, end));
            EXPECT_TRUE(was != before.end() && !was->first.empty() && was->second == bytes);
            EXPECT_NE(was->first, L"-shm");
        }
    }
    static bool IsAside(const Files& after, const std::wstring& suffix)
    {
        const auto first = after.lower_bound(suffix + L".set-aside-");
        return first != after.end() && first->first.starts_with(suffix + L".set-aside-");
    }
    // What is none of SQLite's files, by its first bytes, is never taken for the store's.
    static bool IsNothing(const Files& before, const std::wstring& suffix)
    {
        const auto file = before.find(suffix);
        if (file == before.end() || file->second.size() <= 32 || file->second[0] == 0)
            return false;
        return suffix == L"-wal" ? !file->second.starts_with("\x37\x7F\x06")
                                 : !file->second.starts_with("\xD9\xD5\x05\xF9");
    }
    // Refused: every file has its name and its bytes.
    static void ExpectUntouched(const Files& before, const Files& after)
    {
        for (const auto& [suffix, bytes] : before) {
            const auto now = after.find(suffix);
            const bool isIndex = suffix == L"-shm"; // which holds nothing: it is made from the log
            EXPECT_TRUE(isIndex || (now != after.end() && now->second == bytes))
                << "not as it was: " << std::string(suffix.begin(), suffix.end());
        }
    }
    // Opened: beside a sound file nothing makes it unsound, and what is nothing of its own is set aside.
    void ExpectWellChosen(const Files& before, const Files& after) const
    {
        if (!IsSound(before))
            return;
        EXPECT_EQ(RawStore(m_store.Path()).Text("PRAGMA integrity_check"), "ok");
        for (const wchar_t* suffix : {L"-wal", L"-journal"}) {
            if (IsNothing(before, suffix)) {
                EXPECT_TRUE(IsAside(after, suffix)) << std::string(suffix, suffix + wcslen(suffix));
            }
        }
    }
    void TryOne(const Files& before)
    {
        PutFiles(m_store.Path(), before);
        bool isOpen = false;
        {
            DbJournal journal;
            isOpen = journal.Open(nullptr) != 0;
            if (isOpen)
                Use(journal);
        }
        const Files after = FilesOf(m_store.Path());
        ExpectAsideWhole(before, after);
        if (isOpen)
            ExpectWellChosen(before, after);
        else
            ExpectUntouched(before, after);
    }

    TestStore m_store;
    Files m_same, m_older, m_other;
};

TEST_F(StoreFileCases, NoneIsLostOrEndsTheProgram)
{
    Chance chance(fuzz::Seed());
    for (size_t i = 0, cases = fuzz::CasesOr(200); i < cases && !HasFailure(); ++i) {
        SCOPED_TRACE("case " + std::to_string(i) + " of seed " + std::to_string(fuzz::Seed()));
        TryOne(Case(i, chance));
    }
}

} // namespace
