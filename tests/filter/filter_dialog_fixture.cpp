#include "filter/filter_dialog_fixture.h"

ListInEditor OpenFilter::Categories() const
{
    for (HWND list = nullptr; (list = FindWindowExW(Window(), list, WC_LISTVIEWW, nullptr)) != nullptr;)
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

bool FilterDialogTest::Run(bool categoriesMode, const std::function<void(const OpenFilter&)>& action)
{
    return RunDialog([&] { return INT_PTR{OpenFilterDialog(Own(), m_parent.Handle(), categoriesMode)}; },
                     [&](HWND window) { action(OpenFilter(window)); }, 0) != 0;
}
