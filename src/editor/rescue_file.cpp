#include "editor/rescue_file.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <ranges>

#include "mervane/file/folder_files.h"
#include "mervane/file/store_path.h"
#include "util/held_file.h"
#include "util/whole_file.h"

namespace {

constexpr const wchar_t* kEnding = L".rescue";
constexpr const wchar_t* kKeptEnding = L".kept";
constexpr const wchar_t* kLockEnding = L".lock";
constexpr const wchar_t* kNewEnding = L".new"; // see ReplaceWholeFile
constexpr int kMostNames = 1000;               // that are tried

// With a backslash behind it; empty when there is none.
std::wstring Folder()
{
    const std::wstring folder = mervane::DataFolder();
    return folder.empty() ? folder : folder + L"\\rescue\\";
}

// What the names of a store's files begin with.
std::wstring StoreMark(uint64_t store)
{
    wchar_t text[20];
    swprintf(text, std::size(text), L"%016llx-", static_cast<unsigned long long>(store));
    return text;
}

// Where it cannot be told the name is somebody's.
bool IsFree(const std::wstring& path)
{
    return GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES &&
           GetLastError() == ERROR_FILE_NOT_FOUND;
}

// 0 where it cannot be told.
uint64_t WrittenAt(const std::wstring& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data))
        return 0;
    return TimeCount(data.ftLastWriteTime).Units();
}

// A store's files with an ending and when they were written, the oldest first.
std::vector<std::pair<uint64_t, std::wstring>> FilesOf(uint64_t store, const wchar_t* ending)
{
    const std::wstring folder = Folder();
    if (folder.empty())
        return {};
    std::vector<std::pair<uint64_t, std::wstring>> found;
    const auto names = mervane::FilesLike(folder + StoreMark(store) + L"*" + ending);
    for (const std::wstring& name : names.value_or(std::vector<std::wstring>()))
        if (name.ends_with(ending)) // a pattern finds short names too
            found.emplace_back(WrittenAt(folder + name), folder + name);
    std::sort(found.begin(), found.end());
    return found;
}

// So that their names sort by the time when they were kept.
void MarkAsNew(const std::wstring& path)
{
    HANDLE handle = CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return;
    const UniqueKernelHandle file(handle);
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    SetFileTime(file.get(), nullptr, nullptr, &now);
}

// Never the one that was kept just now, whatever the clock says. None where it cannot be told which is the
// oldest.
void DropOldestKept(uint64_t store, const std::wstring& justKept)
{
    auto kept = FilesOf(store, kKeptEnding);
    std::erase_if(kept, [&](const auto& file) { return file.second == justKept; });
    if (kept.empty() || kept.front().first == 0)
        return;
    for (size_t i = 0; i + RescueFile::kKept <= kept.size(); ++i)
        DeleteHeldFile(kept[i].second);
}

} // namespace

// Where it cannot be told whether somebody has it, somebody has.
bool RescueFile::Lock()
{
    HANDLE lock = CreateFileW((m_path + kLockEnding).c_str(), GENERIC_WRITE | DELETE, 0, nullptr, OPEN_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    m_lock.reset(lock == INVALID_HANDLE_VALUE ? nullptr : lock);
    return m_lock != nullptr;
}

void RescueFile::Release()
{
    m_lock.reset();
    m_path.clear();
}

// An earlier process may have had the same number, and have left a file of this name behind.
bool RescueFile::TakeName(uint64_t store)
{
    const std::wstring folder = Folder();
    if (folder.empty() || !mervane::MakeFolderOf(folder))
        return false;
    const std::wstring start = folder + StoreMark(store) + std::to_wstring(GetCurrentProcessId()) + L"-";
    for (int number = 1; number <= kMostNames; ++number) {
        m_path = start + std::to_wstring(number) + kEnding;
        if (IsFree(m_path) && Lock() && IsFree(m_path))
            return true;
    }
    Release();
    return false;
}

bool RescueFile::Write(const RescueState& state)
{
    const std::string bytes = RescueBytes(state);
    if (bytes.empty() || (!HasFile() && !TakeName(state.store)))
        return false;
    // What an earlier process of this number has left half written.
    DeleteHeldFile(m_path + kNewEnding);
    return ReplaceWholeFile(m_path, bytes);
}

bool RescueFile::Remove()
{
    if (HasFile() && !DeleteHeldFile(m_path) && GetLastError() != ERROR_FILE_NOT_FOUND)
        return false;
    Release();
    return true;
}

void RescueFile::SetAside()
{
    const std::optional<RescueState> state = Read();
    std::wstring kept = m_path + kKeptEnding;
    for (int number = 2; !IsFree(kept) && number <= kMostNames; ++number)
        kept = m_path + L"-" + std::to_wstring(number) + kKeptEnding;
    if (state && MoveHeldFile(m_path, kept, MOVEFILE_WRITE_THROUGH)) {
        MarkAsNew(kept);
        DropOldestKept(state->store, kept);
    }
    Release();
}

std::optional<RescueState> RescueFile::Read() const
{
    const auto bytes = ReadWholeFile(m_path.c_str(), kRescueSizeLimit);
    return bytes ? ReadRescue(*bytes) : std::nullopt;
}

std::vector<RescueFile> RescueFile::FindLeft(uint64_t store)
{
    std::vector<RescueFile> left;
    for (auto& [written, path] : FilesOf(store, kEnding)) {
        RescueFile file(std::move(path));
        const std::optional<RescueState> state = file.Lock() ? file.Read() : std::nullopt;
        if (state && state->store == store)
            left.push_back(std::move(file));
    }
    return left;
}
