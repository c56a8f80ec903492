// Exports by a process that may make no file larger than a limit, 8 MB: writing fails halfway, as on a disk
// that fills.
#include "transfers.h"

namespace addrbook {

namespace {

constexpr int64_t kLimit = 8 << 20;

// One large contact, in the file again and again: the store itself stays far below the limit.
class FileSizeLimit : public Transfers {
  protected:
    void SetUp() override
    {
        Transfers::SetUp();
        ASSERT_EQ(Import(vcard::CardOf("FN:a\nUID:1\nNOTE:" + std::string(50'000, 'n'))), State::Done);
        DeleteFileW(m_path.c_str());
    }
    std::vector<CEOID> TooMany() { return std::vector<CEOID>(300, Ids()[0]); }
};

// Bytes that do not end at the limit are written in part.
TEST_F(FileSizeLimit, IsAFullDiskToAFile)
{
    text::OutputFile file;
    ASSERT_TRUE(file.Open(m_path));
    const std::string most(kLimit - 10, 'x');
    ASSERT_TRUE(file.Write(most));
    EXPECT_EQ(file.Error(), 0u);
    EXPECT_FALSE(file.Write("more than fits in there"));
    EXPECT_EQ(file.Error(), static_cast<DWORD>(ERROR_DISK_FULL));
    EXPECT_FALSE(file.Write("now nothing fits"));
    EXPECT_NE(file.Error(), 0u);
}

TEST_F(FileSizeLimit, LeavesTheFileThatWasThere)
{
    ASSERT_TRUE(WriteFileBytes(m_path, "before"));
    {
        ExportJob job(m_contacts, TooMany(), m_path);
        EXPECT_EQ(RunToEnd(job), State::Failed);
        EXPECT_EQ(job.Report(), L"The file cannot be written: the disk is full.\r\n"
                                L"The file that was there is unchanged.");
    }
    EXPECT_EQ(ReadFileBytes(m_path), "before");
    EXPECT_EQ(GetFileAttributesW((m_path + L".part").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(FileSizeLimit, LeavesNoPartOfAFile)
{
    EXPECT_EQ(Export(TooMany()), State::Failed);
    EXPECT_EQ(m_report, L"The file cannot be written: the disk is full.");
    EXPECT_EQ(GetFileAttributesW(m_path.c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(GetFileAttributesW((m_path + L".part").c_str()), INVALID_FILE_ATTRIBUTES);
}

// The contacts gain their UIDs with the file that names them.
TEST_F(FileSizeLimit, NamesNoContact)
{
    ASSERT_EQ(Import(vcard::CardOf("FN:b")), State::Done);
    DeleteFileW(m_path.c_str());
    std::vector<CEOID> ids = TooMany();
    ids.insert(ids.begin(), Ids()[1]);
    EXPECT_EQ(Export(ids), State::Failed);
    EXPECT_EQ(Stored("b")[vcard::Field::Extra], "");
}

} // namespace

} // namespace addrbook
