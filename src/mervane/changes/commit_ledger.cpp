#include "mervane/changes/commit_ledger.h"

#include <atomic>

#include "mervane/file/store_path.h"

namespace mervane {

namespace {

constexpr uint32_t kSlots = 1024;
constexpr ULONGLONG kPatience = 50; // milliseconds that a writer has to say that a commit is made

// The upper half of a slot's mark is the commit's number, the lower one of these.
enum Stage : uint32_t { kFree, kAnnounced, kMade };

uint64_t MarkOf(uint32_t number, Stage stage)
{
    return uint64_t{number} << 32 | stage;
}

// Names of such memory hold no backslash and are limited in length; a path may be longer.
std::wstring NameFor(const std::wstring& path)
{
    return L"Local\\MervaneLedger2-" + std::to_wstring(StoreNumber(path));
}

} // namespace

// All of it zero is a free slot.
struct CommitLedger::Slot {
    std::atomic<uint64_t> mark;
    std::atomic<uint64_t> before; // the checks of the states around the commit
    std::atomic<uint64_t> after;
    std::atomic<uint64_t> what; // as PackChange
    std::atomic<uint64_t> id;
};

CommitLedger::~CommitLedger()
{
    if (m_slots)
        UnmapViewOfFile(m_slots);
    if (m_mapping)
        CloseHandle(m_mapping);
}

void CommitLedger::Open(const std::wstring& path)
{
    constexpr DWORD kBytes = kSlots * sizeof(Slot);
    m_mapping =
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, kBytes, NameFor(path).c_str());
    if (m_mapping)
        m_slots = static_cast<Slot*>(MapViewOfFile(m_mapping, FILE_MAP_WRITE, 0, 0, kBytes));
}

CommitLedger::Slot& CommitLedger::SlotOf(uint32_t number) const
{
    return m_slots[number % kSlots];
}

void CommitLedger::Announce(const LogState& before, const TableChange& what)
{
    if (!m_slots)
        return;
    const uint32_t number = before.number + 1;
    Slot& slot = SlotOf(number);
    slot.mark = MarkOf(number, kFree);
    slot.before = before.check;
    slot.what = PackChange(what);
    slot.id = what.change.id;
    slot.mark = MarkOf(number, kAnnounced);
}

// By then another commit may have taken the slot, if this program was held up for long. What it then writes
// into that commit's slot leads nowhere, which a reader finds.
void CommitLedger::Close(const LogState& before, const std::optional<LogState>& after)
{
    const uint32_t number = before.number + 1;
    uint64_t expected = MarkOf(number, kAnnounced);
    if (!m_slots || SlotOf(number).mark != expected)
        return;
    SlotOf(number).after = after ? after->check : 0;
    (void)SlotOf(number).mark.compare_exchange_strong(expected, MarkOf(number, after ? kMade : kFree));
}

std::optional<CommitLedger::Link> CommitLedger::Find(uint32_t number) const
{
    const Slot& slot = SlotOf(number);
    const ULONGLONG end = GetTickCount64() + kPatience;
    while (slot.mark == MarkOf(number, kAnnounced) && GetTickCount64() < end)
        Sleep(1);
    if (slot.mark != MarkOf(number, kMade))
        return std::nullopt;
    const uint64_t before = slot.before, after = slot.after;
    const auto what = UnpackChange(slot.what, static_cast<CEOID>(slot.id.load()));
    if (!what || slot.mark != MarkOf(number, kMade))
        return std::nullopt;
    return Link{before, after, *what};
}

// The numbers begin anew when the log's index is made anew, so a slot may be one of an earlier time: the
// checks tell, which hold all that the log held.
std::optional<std::vector<TableChange>> CommitLedger::Between(const LogState& from, const LogState& to) const
{
    const uint32_t count = to.number - from.number;
    if (!m_slots || count > kSlots)
        return std::nullopt;
    std::vector<TableChange> changes;
    changes.reserve(count);
    uint64_t check = from.check;
    for (uint32_t i = 1; i <= count; ++i) {
        const auto link = Find(from.number + i);
        if (!link || link->before != check)
            return std::nullopt;
        changes.push_back(link->what);
        check = link->after;
    }
    if (check != to.check)
        return std::nullopt;
    return changes;
}

} // namespace mervane
