#include "export/export_fixture.h"

#include <fstream>
#include <iterator>

#include "export/export_fields.h"
#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"
#include "support/import_watch.h"
#include "support/temporary_name.h"
#include "ui/screen/work_area.h"

extern "C" {
extern decltype(&WriteFile) __imp_WriteFile;
extern decltype(&FlushFileBuffers) __imp_FlushFileBuffers;
extern decltype(&LocalAlloc) __imp_LocalAlloc;
}

namespace {

constexpr uint64_t kNoDate = UINT64_MAX; // which sorts behind all others

PieceWatch* g_pieces = nullptr;
size_t g_refusedBytes = SIZE_MAX;
std::unique_ptr<ImportWatch<decltype(&WriteFile)>> g_writes;
std::unique_ptr<ImportWatch<decltype(&FlushFileBuffers)>> g_flushes;
std::unique_ptr<ImportWatch<decltype(&LocalAlloc)>> g_blocks;
decltype(&WriteFile) g_write = nullptr;
decltype(&FlushFileBuffers) g_flush = nullptr;
decltype(&LocalAlloc) g_alloc = nullptr;

HLOCAL WINAPI RefuseLarge(UINT flags, SIZE_T bytes)
{
    return bytes >= g_refusedBytes ? nullptr : g_alloc(flags, bytes);
}

CEOID AddNamed(CeDBase& database, CEPROPID nameProperty, std::wstring name)
{
    CEPROPVAL property{};
    property.propid = nameProperty;
    property.val.lpwstr = name.data();
    return database.WriteRecord(0, 1, &property);
}

} // namespace

struct PieceHooks {
    static BOOL WINAPI Write(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written,
                             LPOVERLAPPED overlapped)
    {
        g_pieces->m_isEachFlushed = g_pieces->m_isEachFlushed && !g_pieces->m_unflushed;
        g_pieces->m_pieces.emplace_back(static_cast<const char*>(bytes), count);
        g_pieces->m_unflushed = file;
        if (g_pieces->m_pieces.size() > g_pieces->failFrom)
            return FALSE;
        return g_write(file, bytes, count, written, overlapped);
    }
    static BOOL WINAPI Flush(HANDLE file)
    {
        g_pieces->m_isEachFlushed = g_pieces->m_isEachFlushed && g_pieces->m_unflushed == file;
        g_pieces->m_unflushed = nullptr;
        const BOOL result = g_flush(file);
        if (g_pieces->onFlush)
            g_pieces->onFlush(g_pieces->m_pieces.size());
        return result;
    }
};

ScratchFile::ScratchFile(const wchar_t* name) : m_path(TemporaryFolder() + name)
{
    DeleteFileW(m_path.c_str());
}

ScratchFile::~ScratchFile()
{
    DeleteFileW(m_path.c_str());
}

std::string Golden(const char* name)
{
    std::ifstream file(std::string(GOLDEN_FOLDER) + "/" + name + ".golden", std::ios::binary);
    EXPECT_TRUE(file.is_open()) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

CEOID AddCategory(const std::wstring& name)
{
    DbCategories categories;
    EXPECT_NE(categories.Open(kCategoriesKey), 0);
    return AddNamed(categories, kCategoriesKey, name);
}

CEOID AddContact(const std::wstring& name)
{
    DbContacts contacts;
    EXPECT_NE(contacts.Open(kContactsKey), 0);
    return AddNamed(contacts, kContactsKey, name);
}

PieceWatch::PieceWatch()
{
    g_pieces = this;
    g_write = __imp_WriteFile;
    g_flush = __imp_FlushFileBuffers;
    g_writes = std::make_unique<ImportWatch<decltype(&WriteFile)>>(&__imp_WriteFile, PieceHooks::Write);
    g_flushes = std::make_unique<ImportWatch<decltype(&FlushFileBuffers)>>(&__imp_FlushFileBuffers,
                                                                           PieceHooks::Flush);
}

PieceWatch::~PieceWatch()
{
    g_flushes.reset();
    g_writes.reset();
    g_pieces = nullptr;
}

NoMemoryFor::NoMemoryFor(size_t bytes)
{
    g_refusedBytes = bytes;
    g_alloc = __imp_LocalAlloc;
    g_blocks = std::make_unique<ImportWatch<decltype(&LocalAlloc)>>(&__imp_LocalAlloc, RefuseLarge);
}

NoMemoryFor::~NoMemoryFor()
{
    g_blocks.reset();
    g_refusedBytes = SIZE_MAX;
}

ExportTest::ExportTest()
{
    ResetColumns(&m_columns, WorkArea().right);
    ChooseAllFields(&m_columns);
}

void ExportTest::AddGoldenEntries()
{
    const CEOID work = AddCategory(L"Work"), home = AddCategory(L"Home");
    const CEOID bob = AddContact(L"Bell, Bob"), ann = AddContact(L"Arden, Ann");
    TestRecord().Time(kPropDate, Instant(1999, 1, 2, 3, 4)).Write();
    TestRecord()
        .Time(kPropDate, Instant(2000, 3, 5, 9, 30))
        .Time(kPropEndTime, Instant(2000, 3, 5, 11, 0))
        .Time(kPropDuration, TimeCount(90 * TimeCount::kUnitsPerMinute))
        .Short(kPropPriority, 1)
        .Short(kPropSensitivity, 1)
        .Text(kPropSubject, L"Meeting")
        .Text(kPropType, L"Phone call")
        .Text(kPropBody, L"Agreed terms")
        .Blob(kPropCategories, {1, work})
        .Write();
    TestRecord()
        .Time(kPropDate, Instant(2001, 12, 31, 23, 59))
        .Time(kPropEndTime, Instant(2002, 1, 1, 0, 44))
        .Time(kPropDuration, TimeCount(45 * TimeCount::kUnitsPerMinute))
        .Short(kPropPriority, 2)
        .Short(kPropSensitivity, 3)
        .Text(kPropSubject, L"Say \"yes\", twice")
        .Text(kPropType, L"Fax")
        .Text(kPropBody, L"First line\r\nsecond, \"quoted\"\r\n")
        .Blob(kPropCategories, {2, work, home})
        .Blob(kPropContacts, {2, bob, ann})
        .Write();
    TestRecord()
        .Time(kPropDate, Instant(2002, 6, 1, 12, 0))
        .Text(kPropSubject, L"Gr\u00FC\u00DFe, \u20AC5, \u65E5\u672C \U0001F600")
        .Write();
    TestRecord()
        .Time(kPropDate, TimeCount(kNoDate))
        .Time(kPropEndTime, TimeCount(kNoDate))
        .Time(kPropDuration, TimeCount(kNoDate))
        .Short(kPropPriority, 3)
        .Short(kPropSensitivity, -1)
        .Text(kPropSubject, L"")
        .Text(kPropType, L"")
        .Text(kPropBody, L"")
        .Blob(kPropCategories, {1, 4711})
        .Blob(kPropContacts, {0})
        .Write();
    TestRecord().Short(kPropKind, 3).Write();
    TestRecord().Text(kPropSubject, L"After").Write();
}

void ExportTest::Choose(const std::vector<WORD>& properties)
{
    for (ZColumn& column : m_columns.columns)
        column.Remove(kColumnExport);
    for (const WORD property : properties)
        m_columns.columns[static_cast<size_t>(FindColumnByProperty(m_columns, property))].Add(kColumnExport);
}

ExportRequest ExportTest::Request(ExportFormat format, bool headerOrLabels, ExportScope scope,
                                  const std::vector<CEOID>& selection) const
{
    return {m_file.Path(), format, scope, headerOrLabels, selection, &m_columns, &Own().Filter()};
}

std::string ExportTest::Export(ExportFormat format, bool headerOrLabels, ExportScope scope,
                               const std::vector<CEOID>& selection)
{
    const ExportRequest request = Request(format, headerOrLabels, scope, selection);
    {
        ExportJob job(request, kByDate);
        m_count = job.Run([](uint32_t) { return true; });
    }
    return m_file.Bytes();
}
