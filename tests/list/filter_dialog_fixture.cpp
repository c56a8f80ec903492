#include "list/filter_dialog_fixture.h"

namespace {

void PumpDialog(HWND dialog)
{
    MSG message;
    while (IsWindow(dialog) && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        if (!IsDialogMessageW(dialog, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
}

} // namespace

ListInEditor OpenFilter::Categories() const
{
    for (HWND list = nullptr; (list = FindWindowExW(m_window, list, WC_LISTVIEWW, nullptr)) != nullptr;)
        if (list != Item(116))
            return ListInEditor(list);
    return ListInEditor(nullptr);
}

std::vector<std::wstring> OpenFilter::CheckedMonths() const
{
    std::vector<std::wstring> checked;
    for (int i = 0; i < Months().Count(); ++i)
        if (Months().Box(i) == 2)
            checked.push_back(Months().Text(i));
    return checked;
}

SYSTEMTIME OpenFilter::Day(int picker) const
{
    SYSTEMTIME day{};
    EXPECT_EQ(DateTime_GetSystemtime(Item(picker), &day), GDT_VALID) << picker;
    return day;
}

void OpenFilter::SetDay(int picker, WORD year, WORD month, WORD day) const
{
    const SYSTEMTIME time = {year, month, 0, day, 15, 30, 0, 0};
    EXPECT_TRUE(DateTime_SetSystemtime(Item(picker), GDT_VALID, &time)) << picker;
}

// Posted, not sent as a device's: a window manager that is late with the focus changes nothing then.
void OpenFilter::Key(WORD key) const
{
    for (const UINT message : std::initializer_list<UINT>{WM_KEYDOWN, WM_KEYUP}) {
        PostMessageW(GetFocus(), message, key, 1);
        PumpDialog(m_window);
    }
}

void OpenFilter::AltKey(WORD key) const
{
    constexpr LPARAM kAltIsDown = 1 << 29;
    PostMessageW(GetFocus(), WM_SYSCHAR, key, kAltIsDown | 1);
    PumpDialog(m_window);
}

bool FilterDialogTest::Run(bool categoriesMode, const std::function<void(const OpenFilter&)>& action)
{
    const ModalDriver driver([&](HWND window) {
        ShowWindow(window, SW_SHOW); // the dialog manager shows it once it has nothing else to do
        action(OpenFilter(window));
        if (IsWindowVisible(window)) // a dialog that has ended is hidden
            EndDialog(window, 0);
    });
    const bool accepted = OpenFilterDialog(m_parent.Handle(), categoriesMode);
    EXPECT_TRUE(driver.Ran());
    return accepted;
}
