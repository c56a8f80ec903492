#include "e2e/harness/remote_date_picker.h"

#include <commctrl.h>

#include "e2e/harness/remote_window.h"

RemoteDatePicker::RemoteDatePicker(HWND picker) : m_picker(picker), m_process(ProcessOf(picker)) {}

std::optional<SYSTEMTIME> RemoteDatePicker::Value() const
{
    RemoteBlock block(m_process.get(), sizeof(SYSTEMTIME));
    if (Send(m_picker, DTM_GETSYSTEMTIME, 0, block.AsLParam(), GDT_NONE) != GDT_VALID)
        return std::nullopt;
    return block.Read<SYSTEMTIME>();
}

bool RemoteDatePicker::Change(const SYSTEMTIME& value) const
{
    return Change(value, GDT_VALID);
}

bool RemoteDatePicker::Clear() const
{
    return Change({}, GDT_NONE);
}

// A picker is silent about what it is told, and WM_NOTIFY does not pass between processes: it is sent from
// inside.
bool RemoteDatePicker::Change(const SYSTEMTIME& value, WPARAM validity) const
{
    NMDATETIMECHANGE change{};
    change.nmhdr = {m_picker, static_cast<UINT_PTR>(GetDlgCtrlID(m_picker)),
                    static_cast<UINT>(DTN_DATETIMECHANGE)};
    change.dwFlags = static_cast<DWORD>(validity);
    change.st = value;
    RemoteBlock block(m_process.get(), sizeof change);
    if (!block.Write(change) || !Send(m_picker, DTM_SETSYSTEMTIME, validity,
                                      block.AsLParam() + static_cast<LPARAM>(offsetof(NMDATETIMECHANGE, st))))
        return false;
    constexpr uint64_t kNotMade = ~0ull;
    return CallInProcess(
               m_process.get(), L"user32.dll", "SendMessageW",
               {Argument(GetParent(m_picker)), WM_NOTIFY, change.nmhdr.idFrom, Argument(block.Address())},
               kNotMade) != kNotMade;
}
