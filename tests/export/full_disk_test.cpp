// Export onto a disk that fills up in the middle; full_disk.sh makes such a one.
#include "export/export_fixture.h"
#include "support/test_windows.h"

namespace {

constexpr size_t kRoom = 256 * 1024; // bytes that a file may have
constexpr int kEntries = 60;

// A store that stays small, for an export that does not: all entries share one long name.
class FullDisk : public ExportTest {
  protected:
    FullDisk()
    {
        const CEOID contact = AddContact(std::wstring(10'000, L'n'));
        CeDBase::BulkScope bulk(Own().Journal());
        for (int i = 0; i < kEntries; ++i)
            TestRecord().Time(kPropDate, Instant(2000, 1, 1)).Blob(kPropContacts, {1, contact}).Write();
        EXPECT_EQ(bulk.Commit(), 1);
        Choose({111});
    }
    static std::string Whole()
    {
        std::string text;
        for (int i = 0; i < kEntries; ++i)
            text += "\"" + std::string(10'000, 'n') + "\"\r\n";
        return text;
    }
};

TEST_F(FullDisk, KeepsWhatHadRoomAndRunsThrough)
{
    EXPECT_EQ(Export(ExportFormat::CommaSeparated, false), Whole().substr(0, kRoom));
    EXPECT_EQ(m_count, uint32_t{kEntries});
}

TEST_F(FullDisk, LeavesTheJournalAsItIs)
{
    Export(ExportFormat::SimpleText, true);
    EXPECT_EQ(m_count, uint32_t{kEntries});
    EXPECT_EQ(m_file.Bytes().size(), kRoom);
    const std::string before = ReadFileBytes(m_store.Path());
    Export(ExportFormat::SimpleText, true);
    EXPECT_EQ(ReadFileBytes(m_store.Path()), before);
    EXPECT_EQ(Own().Journal().RecordCount(), DWORD{kEntries});
    EXPECT_NE(AddEntry(1, L"and it can be written to"), 0u);
}

} // namespace
