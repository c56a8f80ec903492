#include "mervane/file/log_content.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "mervane/file/file_reader.h"

namespace mervane {

namespace {

constexpr size_t kFrameHeader = 24;
constexpr uint32_t kLogMagic = 0x377F0682; // the lowest bit: sums of big-endian words
constexpr size_t kJournalHeader = 28;
constexpr BYTE kJournalMagic[8] = {0xD9, 0xD5, 0x05, 0xF9, 0x20, 0xA1, 0x63, 0xD7};

bool IsPageSize(uint32_t size)
{
    return size >= 512 && size <= 65536 && std::has_single_bit(size);
}

// The sums that a log's frames carry, each going on from the one before.
class LogSum {
  public:
    explicit LogSum(bool bigEndian) : m_bigEndian(bigEndian) {}
    void Add(std::span<const BYTE> bytes)
    {
        for (size_t i = 0; i + 8 <= bytes.size(); i += 8) {
            m_first += Word(bytes, i) + m_second;
            m_second += Word(bytes, i + 4) + m_first;
        }
    }
    bool Is(std::span<const BYTE> sums) const
    {
        return BigEndianAt(sums, 0) == m_first && BigEndianAt(sums, 4) == m_second;
    }

  private:
    uint32_t Word(std::span<const BYTE> bytes, size_t offset) const
    {
        const uint32_t word = BigEndianAt(bytes, offset);
        return m_bigEndian ? word : __builtin_bswap32(word);
    }

    bool m_bigEndian;
    uint32_t m_first = 0, m_second = 0;
};

// A transaction changes the tables seldom and a few times, but for a migration. A copy that SQLite makes
// counts from 1 again.
constexpr uint32_t kFewChanges = 8;

bool IsBefore(const FirstPage& page, const FirstPage& next)
{
    return page.changes + 1 == next.changes &&
           (next.schema - page.schema < kFewChanges || page.userVersion != next.userVersion);
}

bool IsSame(const FirstPage& page, const FirstPage& other)
{
    return page.changes == other.changes && page.schema == other.schema;
}

// Walks through a log's frames as SQLite does when it recovers one.
class LogReader {
  public:
    explicit LogReader(const std::wstring& path) : m_file(path), m_sum(false) {}

    std::optional<LogContent> Read()
    {
        if (!ReadHeader())
            return std::nullopt;
        for (uint64_t offset = kLogHeaderSize; ReadFrame(offset); offset += m_frame.size())
            TakeFrame();
        return m_content.pagesAtEnd ? std::optional(m_content) : std::nullopt;
    }
    bool HasFailed() const { return m_file.HasFailed(); }

  private:
    bool ReadHeader()
    {
        if (!m_file.Read(0, m_header) || (BigEndianAt(m_header, 0) & ~1u) != kLogMagic)
            return false;
        m_content.pageSize = BigEndianAt(m_header, 8);
        if (!IsPageSize(m_content.pageSize))
            return false;
        m_sum = LogSum((m_header[3] & 1) != 0);
        m_sum.Add(std::span(m_header).first(24));
        m_frame.resize(kFrameHeader + m_content.pageSize);
        return m_sum.Is(std::span(m_header).subspan(24));
    }
    bool ReadFrame(uint64_t offset)
    {
        const std::span<const BYTE> frame(m_frame);
        if (!m_file.Read(offset, m_frame) || memcmp(&m_frame[8], &m_header[16], 8) != 0)
            return false;
        m_sum.Add(frame.first(8));
        m_sum.Add(frame.subspan(kFrameHeader));
        return BigEndianAt(frame, 0) != 0 && m_sum.Is(frame.subspan(16));
    }
    void TakeFrame()
    {
        if (BigEndianAt(m_frame, 0) == 1)
            m_open.push_back(FirstPageIn(std::span(m_frame).subspan(kFrameHeader)));
        const uint32_t pages = BigEndianAt(m_frame, 4); // not 0: the end of a transaction
        if (!pages)
            return;
        if (!m_content.pagesAtEnd)
            m_content.pagesAtFirst = pages;
        m_content.pagesAtEnd = pages;
        m_content.firstPages.insert(m_content.firstPages.end(), m_open.begin(), m_open.end());
        m_open.clear();
    }

    FileReader m_file;
    std::array<BYTE, kLogHeaderSize> m_header{};
    std::vector<BYTE> m_frame;
    std::vector<FirstPage> m_open; // of the transaction that is read
    LogSum m_sum;
    LogContent m_content;
};

// Walks through a journal's parts, each a header in a sector of its own and its records.
class JournalReader {
  public:
    explicit JournalReader(const std::wstring& path) : m_file(path) {}

    std::optional<JournalContent> Read()
    {
        if (!ReadPart(0))
            return std::nullopt;
        m_sectorSize = BigEndianAt(m_header, 20);
        JournalContent content{BigEndianAt(m_header, 24), BigEndianAt(m_header, 16), std::nullopt};
        // SQLite puts nothing back from one whose first sector is not whole.
        if (!IsPageSize(content.pageSize) || m_sectorSize < 32 || m_sectorSize > 65536 ||
            m_file.Size() < m_sectorSize)
            return std::nullopt;
        content.firstPage = FindFirstPage(uint64_t{content.pageSize} + 8);
        return content;
    }
    bool HasFailed() const { return m_file.HasFailed(); }

  private:
    bool ReadPart(uint64_t offset)
    {
        return m_file.Read(offset, m_header) &&
               memcmp(m_header.data(), kJournalMagic, sizeof kJournalMagic) == 0;
    }
    std::optional<FirstPage> FindFirstPage(uint64_t recordSize)
    {
        uint64_t part = 0;
        do {
            const uint64_t first = part + m_sectorSize;
            const uint64_t there = (m_file.Size() - std::min(m_file.Size(), first)) / recordSize;
            const uint64_t count = std::min<uint64_t>(BigEndianAt(m_header, 8), there);
            for (uint64_t i = 0; i < count; ++i)
                if (const auto page = FirstPageAt(first + i * recordSize))
                    return page;
            part = (first + count * recordSize + m_sectorSize - 1) / m_sectorSize * m_sectorSize;
        } while (ReadPart(part));
        return std::nullopt;
    }
    std::optional<FirstPage> FirstPageAt(uint64_t record) const
    {
        std::array<BYTE, 4> number{};
        std::array<BYTE, kDatabaseHeaderSize> page{};
        if (!m_file.Read(record, number) || BigEndianAt(number, 0) != 1 || !m_file.Read(record + 4, page))
            return std::nullopt;
        return FirstPageIn(page);
    }

    FileReader m_file;
    std::array<BYTE, kJournalHeader> m_header{};
    uint32_t m_sectorSize = 0;
};

} // namespace

std::optional<LogContent> ReadLog(const std::wstring& path, bool* hasFailed)
{
    LogReader reader(path);
    auto content = reader.Read();
    *hasFailed |= reader.HasFailed();
    return content;
}

bool MayBelong(const DatabaseHeader& database, const LogContent& log)
{
    if (database.pageSize != log.pageSize || !database.usesLog)
        return false;
    // What makes the database longer or shorter writes its first page.
    if (log.firstPages.empty())
        return database.first.pages == log.pagesAtFirst && log.pagesAtFirst == log.pagesAtEnd;
    return IsBefore(database.first, log.firstPages.front()) ||
           std::any_of(log.firstPages.begin(), log.firstPages.end(),
                       [&](const FirstPage& page) { return IsSame(page, database.first); });
}

std::optional<JournalContent> ReadJournal(const std::wstring& path, bool* hasFailed)
{
    JournalReader reader(path);
    auto content = reader.Read();
    *hasFailed |= reader.HasFailed();
    return content;
}

bool MayBelong(const DatabaseHeader& database, const JournalContent& journal)
{
    if (database.pageSize != journal.pageSize)
        return false;
    if (!journal.pagesBefore)
        return true;
    // A first page that it does not put back was not written yet.
    if (!journal.firstPage)
        return journal.pagesBefore == database.first.pages;
    // As before the transaction, or as that has written it.
    return IsSame(*journal.firstPage, database.first) || IsBefore(*journal.firstPage, database.first);
}

} // namespace mervane
