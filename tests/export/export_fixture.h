// A journal whose export is known to the byte, and files to write to.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "export/export_job.h"
#include "support/journal_fixture.h"

// A path of a test's own in the temporary folder; the file is deleted at the end.
class ScratchFile {
  public:
    explicit ScratchFile(const wchar_t* name = L"export.out");
    ~ScratchFile();
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::wstring& Path() const { return m_path; }
    std::string Bytes() const { return ReadFileBytes(m_path); }

  private:
    const std::wstring m_path;
};

// The bytes of a file that was written by hand.
std::string Golden(const char* name);

CEOID AddCategory(const std::wstring& name);
CEOID AddContact(const std::wstring& name);

// The program's files as it writes them: while this lives it sees each write and flush.
class PieceWatch {
  public:
    PieceWatch();
    ~PieceWatch();
    PieceWatch(const PieceWatch&) = delete;
    PieceWatch& operator=(const PieceWatch&) = delete;

    // What was written by each call.
    const std::vector<std::string>& Pieces() const { return m_pieces; }
    // Whether each write was followed at once by a flush of the same file, and nothing else was.
    bool IsEachFlushed() const { return m_isEachFlushed && m_unflushed == nullptr; }
    // Called after each flush with the number of pieces so far.
    std::function<void(size_t)> onFlush;
    // From this piece on writes fail.
    size_t failFrom = SIZE_MAX;

  private:
    friend struct PieceHooks;

    std::vector<std::string> m_pieces;
    HANDLE m_unflushed = nullptr;
    bool m_isEachFlushed = true;
};

// Blocks of at least so many bytes are refused while this lives.
class NoMemoryFor {
  public:
    explicit NoMemoryFor(size_t bytes);
    ~NoMemoryFor();
    NoMemoryFor(const NoMemoryFor&) = delete;
    NoMemoryFor& operator=(const NoMemoryFor&) = delete;
};

class ExportTest : public JournalTest {
  protected:
    ExportTest();

    // The entries of the golden files, sorted by date: of a date only; an ordinary one; one with quotes and
    // line ends; one with characters beyond the code page; one whose times are no dates and whose texts are
    // empty; one that has none of the fields; one with a subject only.
    void AddGoldenEntries();
    // Only these are chosen.
    void Choose(const std::vector<WORD>& properties);
    // What an export writes; the count in m_count.
    std::string Export(ExportFormat format, bool headerOrLabels, ExportScope scope = ExportScope::All,
                       const std::vector<CEOID>& selection = {});
    ExportRequest Request(ExportFormat format, bool headerOrLabels, ExportScope scope = ExportScope::All,
                          const std::vector<CEOID>& selection = {}) const;

    ScratchFile m_file;
    ColumnSet m_columns;
    uint32_t m_count = 0;
};

constexpr SORTORDERSPEC kByDate{kPropDate, 0};
