#include "mervane/sqlite/store_header.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "mervane/file/database_header.h"
#include "mervane/file/file_reader.h"
#include "mervane/file/log_content.h"
#include "mervane/sqlite/sql_trouble.h"

namespace mervane {

namespace {

constexpr char kMagic[16] = "SQLite format 3";
using Header = std::array<BYTE, kDatabaseHeaderSize>;

StoreMarks MarksIn(const Header& header)
{
    return {static_cast<int32_t>(ApplicationIdIn(header)),
            static_cast<int32_t>(FirstPageIn(header).userVersion)};
}

StoreTrouble TroubleOfHeader(const Header& header)
{
    if (memcmp(header.data(), kMagic, sizeof kMagic) != 0)
        return StoreTrouble::NotAStore;
    return TroubleOfMarks(MarksIn(header));
}

// Nothing but what a database begins with has been written, or not even that.
bool IsUnwritten(const Header& header)
{
    const auto written = std::mismatch(std::begin(kMagic), std::end(kMagic), header.begin()).second;
    return written - header.begin() == sizeof kMagic ||
           std::all_of(written, header.end(), [](BYTE byte) { return byte == 0; });
}

// A program that was ended while it made the store, or a loss of power then, has left a journal of nothing
// beside it.
bool IsUnfinished(const Header& header, const std::wstring& path)
{
    bool hasFailed = false;
    const std::optional<JournalContent> journal = ReadJournal(path + L"-journal", &hasFailed);
    return journal && !journal->pagesBefore && IsUnwritten(header);
}

FileLook LookInto(const FileReader& file, const std::wstring& path, bool readOnly)
{
    const uint64_t size = file.Size();
    if (file.HasFailed())
        return {FileKind::Foreign, TroubleOfSystem(GetLastError())};
    if (size == 0 && !readOnly)
        return {FileKind::Empty, StoreTrouble::None};
    Header header{};
    const auto start = std::span(header).first(static_cast<size_t>(std::min<uint64_t>(size, header.size())));
    if (!file.Read(0, start))
        return {FileKind::Foreign, TroubleOfSystem(GetLastError())};
    const StoreTrouble trouble = size < header.size() ? StoreTrouble::NotAStore : TroubleOfHeader(header);
    if (trouble == StoreTrouble::None)
        return {readOnly ? FileKind::ReadOnlyStore : FileKind::Store, trouble};
    if (!readOnly && IsUnfinished(header, path))
        return {FileKind::Empty, StoreTrouble::None};
    return {FileKind::Foreign, trouble};
}

} // namespace

bool MayUse(const StoreMarks& marks)
{
    return marks.applicationId == kApplicationId && SchemaVersionOf(marks.userVersion) >= 1 &&
           OldestProgramOf(marks.userVersion) >= 1 && OldestProgramOf(marks.userVersion) <= kSchemaVersion;
}

StoreTrouble TroubleOfMarks(const StoreMarks& marks)
{
    if (MayUse(marks))
        return StoreTrouble::None;
    const bool isOurs = marks.applicationId == kApplicationId && SchemaVersionOf(marks.userVersion) >= 1 &&
                        OldestProgramOf(marks.userVersion) >= 1;
    return isOurs ? StoreTrouble::NewerVersion : StoreTrouble::NotAStore;
}

FileLook LookAtFile(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD error = GetLastError();
        return IsMissing(error) ? FileLook{FileKind::Missing, StoreTrouble::None}
                                : FileLook{FileKind::Foreign, TroubleOfSystem(error)};
    }
    if (attributes & FILE_ATTRIBUTE_DIRECTORY)
        return {FileKind::Foreign, StoreTrouble::IsFolder};
    const FileReader file(path);
    if (!file.IsOpen())
        return {FileKind::Foreign, TroubleOfSystem(GetLastError())};
    const bool readOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0 || file.IsOnReadOnlyVolume();
    // What nobody writes has no log under any of its names.
    if (file.NameCount() > 1 && !readOnly)
        return {FileKind::Foreign, StoreTrouble::SeveralNames};
    return LookInto(file, path, readOnly);
}

} // namespace mervane
