#include "open_fixture.h"

bool Exists(const std::wstring& path)
{
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

CEOID Opening::MakeStore() const
{
    DbJournal journal;
    EXPECT_EQ(journal.Open(nullptr), 1);
    return AddEntry(journal, L"kept", 5);
}

void Opening::ExpectRefused(StoreTrouble trouble) const
{
    const std::string before = ReadFileBytes(Path());
    const std::string log = ReadFileBytes(Beside(L"-wal"));
    const bool hadLog = Exists(Beside(L"-wal")), hadMemory = Exists(Beside(L"-shm"));
    DbJournal journal;
    EXPECT_EQ(journal.Open(nullptr), 0);
    EXPECT_FALSE(journal.IsOpen());
    EXPECT_EQ(journal.Trouble(), trouble);
    DbCategories categories;
    EXPECT_EQ(categories.Open(), 0);
    EXPECT_TRUE(ReadFileBytes(Path()) == before);
    EXPECT_TRUE(ReadFileBytes(Beside(L"-wal")) == log);
    EXPECT_EQ(Exists(Beside(L"-wal")), hadLog);
    EXPECT_EQ(Exists(Beside(L"-shm")), hadMemory);
    EXPECT_FALSE(Exists(Beside(L"-journal")));
}

void Opening::ExpectUsable(uint32_t records)
{
    DbJournal journal;
    ASSERT_EQ(journal.Open(nullptr), 1);
    EXPECT_EQ(journal.RecordCount(), records);
    EXPECT_NE(AddEntry(journal, L"more"), 0u);
}
