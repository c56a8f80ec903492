#include "addrbook/transfer/import_job.h"

#include <windows.h>

#include <psapi.h>

#include "transfers.h"

namespace addrbook {

namespace {

TEST_F(Transfers, ImportWhatCanBeReadAndCountTheRest)
{
    EXPECT_EQ(Import(vcard::CardOf("FN:One") + vcard::CardOf("FN:x\nbroken") + vcard::CardOf("FN:Two") +
                     "BEGIN:VCARD\nFN:cut"),
              State::Done);
    EXPECT_EQ(m_contacts.RecordCount(), 2u);
    EXPECT_EQ(
        m_report,
        L"2 contacts were imported.\r\n2 cards could not be read.\r\nLine 8: the line is none of a card's.");
    EXPECT_EQ(Import(vcard::CardOf("NOTE:nobody") + vcard::CardOf("FN:y")), State::Done);
    EXPECT_EQ(m_report,
              L"1 contact was imported.\r\n1 card could not be read.\r\nLine 1: the card names nobody.");
    EXPECT_EQ(Import(vcard::CardOf("FN:Three")), State::Done);
    EXPECT_EQ(m_report, L"1 contact was imported.");
}

TEST_F(Transfers, ImportNothingFromWhatIsNoVCard)
{
    EXPECT_EQ(Import("GIF89a\x01\x02"), State::Failed);
    EXPECT_EQ(m_report, L"There is no card in the file that can be read.\r\nLine 1: no card begins here.");
    EXPECT_EQ(Import(""), State::Failed);
    EXPECT_EQ(m_report, L"There is no card in the file that can be read.");
    ImportJob missing(m_contacts, m_path + L".missing", Asker());
    EXPECT_EQ(missing.Step(10), State::Failed);
    EXPECT_EQ(missing.Report(), L"The file cannot be read.");
    EXPECT_EQ(m_contacts.RecordCount(), 0u);
}

TEST_F(Transfers, ThatAreGivenUpChangeNothing)
{
    ASSERT_EQ(Import(vcard::CardOf("FN:Before")), State::Done);
    ASSERT_TRUE(WriteFileBytes(m_path, ManyCards(20'000)));
    {
        ImportJob job(m_contacts, m_path, Asker());
        while (!job.Imported())
            ASSERT_EQ(job.Step(0), State::Working);
        EXPECT_LT(job.Imported(), 20'000u);
    }
    EXPECT_EQ(m_contacts.RecordCount(), 1u);
    EXPECT_EQ(Import(vcard::CardOf("FN:After")), State::Done);
    EXPECT_EQ(m_contacts.RecordCount(), 2u);
}

TEST_F(Transfers, ImportNothingFromWhatCannotBeOpened)
{
    ASSERT_TRUE(WriteFileBytes(m_path, vcard::CardOf("FN:x")));
    const UniqueKernelHandle held(
        CreateFileW(m_path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_NE(held.get(), INVALID_HANDLE_VALUE);
    const std::wstring folder = m_path + L".folder";
    ASSERT_TRUE(CreateDirectoryW(folder.c_str(), nullptr));
    for (const std::wstring& path : {m_path, folder, m_path + L"\\x.vcf", std::wstring()}) {
        ImportJob job(m_contacts, path, Asker());
        EXPECT_EQ(job.Step(10), State::Failed);
        EXPECT_EQ(job.Report(), L"The file cannot be read.");
    }
    EXPECT_TRUE(RemoveDirectoryW(folder.c_str()));
    EXPECT_EQ(m_contacts.RecordCount(), 0u);
}

TEST_F(Transfers, ImportNothingFromAFileThatStillIsWritten)
{
    ASSERT_TRUE(WriteFileBytes(m_path, vcard::CardOf("FN:x")));
    const UniqueKernelHandle held(CreateFileW(m_path.c_str(), GENERIC_WRITE,
                                              FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                              nullptr));
    ASSERT_NE(held.get(), INVALID_HANDLE_VALUE);
    EXPECT_EQ(ImportJob(m_contacts, m_path, Asker()).Step(10), State::Failed);
}

// A file that is read from a pipe, whose other end goes away when so much of it has been read.
class BreakingPipe {
  public:
    BreakingPipe(const wchar_t* path, std::string bytes)
        : m_bytes(std::move(bytes)),
          m_end(CreateNamedPipeW(path, PIPE_ACCESS_OUTBOUND, PIPE_TYPE_BYTE, 1, 0, 0, 0, nullptr)),
          m_thread(CreateThread(nullptr, 0, &Write, this, 0, nullptr))
    {}
    ~BreakingPipe() { EXPECT_EQ(WaitForSingleObject(m_thread.get(), 10'000), WAIT_OBJECT_0); }
    BreakingPipe(const BreakingPipe&) = delete;
    BreakingPipe& operator=(const BreakingPipe&) = delete;

  private:
    static DWORD WINAPI Write(void* self)
    {
        auto* pipe = static_cast<BreakingPipe*>(self);
        HANDLE end = pipe->m_end.get();
        DWORD written = 0;
        (void)ConnectNamedPipe(end, nullptr);
        (void)WriteFile(end, pipe->m_bytes.data(), static_cast<DWORD>(pipe->m_bytes.size()), &written,
                        nullptr);
        FlushFileBuffers(end);
        DisconnectNamedPipe(end);
        return 0;
    }

    std::string m_bytes;
    UniqueKernelHandle m_end, m_thread;
};

TEST_F(Transfers, ImportNothingWhenReadingFailsHalfway)
{
    const std::wstring path = L"\\\\.\\pipe\\addrbook" + std::to_wstring(GetCurrentProcessId());
    const BreakingPipe pipe(path.c_str(), ManyCards(10'000));
    ImportJob job(m_contacts, path, Asker());
    State state;
    while ((state = job.Step(20)) == State::Working)
        EXPECT_LE(job.PerMille(), 1000);
    EXPECT_EQ(state, State::Failed);
    EXPECT_EQ(job.Cards(), 10'000u);
    EXPECT_EQ(job.Report().substr(0, job.Report().find(L'\r')),
              L"The file cannot be read to its end. Nothing was imported.");
    EXPECT_EQ(m_contacts.RecordCount(), 0u);
}

TEST_F(Transfers, GiveUpTheirTransactionWhenTheyFail)
{
    ASSERT_TRUE(WriteFileBytes(m_path, "no card"));
    {
        ImportJob failed(m_contacts, m_path, Asker());
        ASSERT_EQ(failed.Step(1000), State::Failed);
        // While it still lives, as its window does that shows the end, what is written stays.
        ASSERT_NE(ContactSaver().Save(m_contacts, 0, vcard::ContactOf("FN:y")), 0u);
    }
    EXPECT_EQ(m_contacts.RecordCount(), 1u);
}

TEST_F(Transfers, ThatAreGivenUpUpdateNothing)
{
    ASSERT_EQ(Import(vcard::CardOf("FN:Old\nUID:1")), State::Done);
    ASSERT_TRUE(WriteFileBytes(m_path, vcard::CardOf("FN:New\nUID:1") + ManyCards(20'000)));
    {
        ImportJob job(m_contacts, m_path, Asker());
        for (State state = State::Working; !job.Updated();) {
            ASSERT_TRUE(state == State::Working || state == State::Asking);
            state = state == State::Working ? job.Step(0) : job.Ask(nullptr);
        }
        EXPECT_LT(job.Imported(), 20'000u);
    }
    Stored("Old");
}

size_t MemoryNow()
{
    PROCESS_MEMORY_COUNTERS counters{};
    EXPECT_TRUE(GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters));
    return counters.PagefileUsage;
}

// 50 MB with 100,000 cards, some of them broken, then the file's end cut off.
TEST_F(Transfers, TakeALargeFileInLittleMemory)
{
    constexpr int kCards = 100'000;
    size_t bytes = 0;
    {
        text::OutputFile file;
        ASSERT_TRUE(file.Open(m_path));
        std::string text;
        const std::string note(430, 'n');
        for (int i = 0; i < kCards; ++i) {
            text += vcard::CardOf("FN:Name " + std::to_string(i) + "\nUID:" + std::to_string(i) +
                                  "\nNOTE:" + (i % 1000 == 7 ? "\nbroken" : note));
            if (text.size() > 1'000'000 || i == kCards - 1) {
                text.resize(text.size() - (i == kCards - 1 ? 12 : 0)); // "\nEND:VCARD\n" and a letter
                bytes += text.size();
                ASSERT_TRUE(file.Write(text));
                text.clear();
            }
        }
        ASSERT_TRUE(file.Finish());
    }
    EXPECT_GT(bytes, size_t{48'000'000});
    const size_t before = MemoryNow();
    ASSERT_GT(before, 0u);
    ImportJob job(m_contacts, m_path, Asker());
    size_t most = 0;
    State state;
    while ((state = job.Step(50)) == State::Working)
        most = std::max(most, MemoryNow());
    ASSERT_EQ(state, State::Done);
    EXPECT_LT(most - before, size_t{32} << 20);
    EXPECT_EQ(job.Imported(), 99'899u);
    EXPECT_EQ(job.Report().substr(job.Report().find(L'\n') + 1),
              L"101 cards could not be read.\r\nLine 48: the line is none of a card's.");
}

} // namespace

} // namespace addrbook
