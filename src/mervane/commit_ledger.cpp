#include "mervane/commit_ledger.h"

#include <atomic>

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
std::wstring NameFor(const std::wstring& pathKey)
{
    uint64_t hash = 0xCBF29CE484222325;
    for (const wchar_t unit : pathKey)
        hash = (hash ^ unit) * 0x100000001B3;
    return L"Local\\MervaneLedger1-" + std::to_wstring(hash);
}

} // namespace

// All of it zero is a free slot.
struct CommitLedger::Slot {
    std::atomic<uint64_t> mark;
    std::atomic<uint64_t> check; // of the state before the commit
    std::atomic<uint64_t> what;  // as PackChange
    std::atomic<uint64_t> id;
};

CommitLedger::~CommitLedger()
{
    if (m_slots)
        UnmapViewOfFile(m_slots);
    if (m_mapping)
        CloseHandle(m_mapping);
}

void CommitLedger::Open(const std::wstring& pathKey)
{
    constexpr DWORD kBytes = kSlots * sizeof(Slot);
    m_mapping = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, kBytes,
                                   NameFor(pathKey).c_str());
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
    slot.check = before.check;
    slot.what = PackChange(what);
    slot.id = what.change.id;
    slot.mark = MarkOf(number, kAnnounced);
}

// By then another commit may have taken the slot, if this program was held up for long.
void CommitLedger::Close(const LogState& before, bool made)
{
    if (!m_slots)
        return;
    const uint32_t number = before.number + 1;
    uint64_t expected = MarkOf(number, kAnnounced);
    (void)SlotOf(number).mark.compare_exchange_strong(expected, MarkOf(number, made ? kMade : kFree));
}

// before is the state that it must follow, null for any.
std::optional<TableChange> CommitLedger::Find(uint32_t number, const LogState* before) const
{
    const Slot& slot = SlotOf(number);
    const ULONGLONG end = GetTickCount64() + kPatience;
    while (slot.mark == MarkOf(number, kAnnounced) && GetTickCount64() < end)
        Sleep(1);
    if (slot.mark != MarkOf(number, kMade) || (before && slot.check != before->check))
        return std::nullopt;
    const auto what = UnpackChange(slot.what, static_cast<CEOID>(slot.id.load()));
    return slot.mark == MarkOf(number, kMade) ? what : std::nullopt;
}

std::optional<std::vector<TableChange>> CommitLedger::Between(const LogState& from, const LogState& to) const
{
    const uint32_t count = to.number - from.number;
    if (!m_slots || count > kSlots || (count == 0 && from != to))
        return std::nullopt;
    std::vector<TableChange> changes;
    changes.reserve(count);
    for (uint32_t i = 1; i <= count; ++i) {
        const auto what = Find(from.number + i, i == 1 ? &from : nullptr);
        if (!what)
            return std::nullopt;
        changes.push_back(*what);
    }
    return changes;
}

} // namespace mervane
