#include <windows.h>
#include <commctrl.h>

#include <memory>

#include "figures.h"
#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"
#include "measure.h"
#include "report.h"
#include "stores.h"

namespace bench {

namespace {

constexpr int kCategories = 1'000;
constexpr int kContacts = 10'000;
constexpr int kFileAsWidth = 145, kCompanyWidth = 143;
constexpr DWORD kContactListStyle = WS_TABSTOP | LVS_NOSORTHEADER | LVS_SHOWSELALWAYS | LVS_REPORT;
constexpr RECT kPlace{0, 0, 640, 400};

DbContacts* g_contacts = nullptr;

// What the editor does for its views.
LRESULT CALLBACK ParentProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    if (message == WM_NOTIFY && g_contacts) {
        auto* notification = reinterpret_cast<NMHDR*>(lParam);
        if (g_contacts->OnNotify(notification->hwndFrom, notification, &result))
            return result;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

HWND CreateParent()
{
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = ParentProcedure;
    windowClass.lpszClassName = L"BenchAssignParent";
    RegisterClassW(&windowClass);
    HWND parent = CreateWindowExW(0, L"BenchAssignParent", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 700,
                                  500, nullptr, nullptr, nullptr, nullptr);
    if (!parent)
        Fail("a window cannot be created");
    return parent;
}

std::wstring CategoryName(int index)
{
    return L"Category " + std::to_wstring(100'000 + index);
}
std::wstring FileAs(int index)
{
    return L"Contact, Number " + std::to_wstring(100'000 + index);
}
std::wstring Company(int index)
{
    return L"Company " + std::to_wstring(index % 500);
}

// A store with nothing but categories and contacts; deleted at the end.
class AssignStore {
  public:
    AssignStore() : m_path(StorePath(0) + L"-assign")
    {
        Delete();
        SetEnvironmentVariableW(L"MERVANE_STORE", m_path.c_str());
        if (!Fill())
            Fail("the store with categories and contacts cannot be made");
    }
    ~AssignStore() { Delete(); }
    AssignStore(const AssignStore&) = delete;
    AssignStore& operator=(const AssignStore&) = delete;

  private:
    static CEPROPVAL TextValue(CEPROPID id, std::wstring& text)
    {
        CEPROPVAL value{};
        value.propid = id;
        value.val.lpwstr = text.data();
        return value;
    }
    static bool Fill()
    {
        DbCategories categories;
        DbContacts contacts;
        if (!categories.Open() || !contacts.Open())
            return false;
        CeDBase::BulkScope bulk(categories);
        for (int i = 0; i < kCategories; ++i)
            if (!categories.Add(CategoryName(i)))
                return false;
        for (int i = 0; i < kContacts; ++i) {
            std::wstring fileAs = FileAs(i), company = Company(i);
            const CEPROPVAL values[] = {TextValue(kContactsKey, fileAs), TextValue(kContactCompany, company)};
            if (!contacts.WriteRecord(0, 2, values))
                return false;
        }
        return bulk.Commit() != 0;
    }
    void Delete() const
    {
        for (const wchar_t* suffix : {L"", L"-wal", L"-shm"})
            DeleteFileW((m_path + suffix).c_str());
    }

    std::wstring m_path;
};

HWND CreateBareList(HWND parent, DWORD style)
{
    HWND list =
        CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"", style | WS_CHILD | WS_VISIBLE, kPlace.left,
                        kPlace.top, kPlace.right, kPlace.bottom, parent, nullptr, nullptr, nullptr);
    if (!list)
        Fail("a list view cannot be created");
    return list;
}

void InsertColumns(HWND list)
{
    for (int i = 0; i < 2; ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_WIDTH | LVCF_SUBITEM;
        column.cx = i ? kCompanyWidth : kFileAsWidth;
        column.iSubItem = i;
        ListView_InsertColumn(list, i, &column);
    }
}

int InsertRow(HWND list, int row, std::wstring& text)
{
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.iItem = row;
    item.pszText = text.data();
    item.lParam = row;
    return ListView_InsertItem(list, &item);
}

// Shown and painted, checked, and gone.
double Finish(HWND list, int rows, const Stopwatch& watch)
{
    UpdateWindow(list);
    const double time = watch.Microseconds();
    if (ListView_GetItemCount(list) != rows)
        Fail("a list has not the rows it should have");
    DestroyWindow(list);
    return time;
}

double OpenBareCategories(HWND parent)
{
    const Stopwatch watch;
    HWND list = CreateBareList(parent, LVS_LIST);
    ListView_SetExtendedListViewStyle(list, LVS_EX_CHECKBOXES);
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    ListView_SetItemCount(list, kCategories);
    for (int i = 0; i < kCategories; ++i) {
        std::wstring text = CategoryName(i);
        InsertRow(list, i, text);
    }
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    return Finish(list, kCategories, watch);
}

double OpenBareContacts(HWND parent)
{
    const Stopwatch watch;
    HWND list = CreateBareList(parent, LVS_REPORT);
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT | LVS_EX_CHECKBOXES);
    InsertColumns(list);
    SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    ListView_SetItemCount(list, kContacts);
    for (int i = 0; i < kContacts; ++i) {
        std::wstring text = FileAs(i), company = Company(i);
        InsertRow(list, i, text);
        ListView_SetItemText(list, i, 1, company.data());
    }
    SendMessageW(list, WM_SETREDRAW, TRUE, 0);
    return Finish(list, kContacts, watch);
}

// In a store just opened, and in one that an editor has open.
double OpenCategories(HWND parent, DbCategories& categories)
{
    const Stopwatch watch;
    if (!categories.IsOpen() && !categories.Open())
        Fail("the categories cannot be opened");
    HWND list = categories.CreateListView(GetModuleHandleW(nullptr), parent, kPlace, 111);
    if (!list || !categories.UpdateListView(list))
        Fail("the list of categories cannot be filled");
    return Finish(list, kCategories, watch);
}

double OpenContacts(HWND parent, DbContacts& contacts)
{
    g_contacts = &contacts;
    const Stopwatch watch;
    if (!contacts.IsOpen() && !contacts.Open())
        Fail("the contacts cannot be opened");
    HWND list = contacts.CreateList(GetModuleHandleW(nullptr), parent, kPlace, 112, kContactListStyle);
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
    InsertColumns(list);
    if (!contacts.UpdateList(list))
        Fail("the list of contacts cannot be filled");
    const double time = Finish(list, kContacts, watch);
    g_contacts = nullptr;
    return time;
}

} // namespace

void MeasureAssign()
{
    const AssignStore store;
    HWND parent = CreateParent();
    DbCategories openCategories;
    DbContacts openContacts;
    const auto medians = MediansByTurns({
        [&] { return OpenBareCategories(parent); },
        [&] {
            openCategories.Close(), openContacts.Close();
            return OpenCategories(parent, openCategories);
        },
        [&] { return OpenCategories(parent, openCategories); },
        [&] { return OpenBareContacts(parent); },
        [&] {
            openCategories.Close(), openContacts.Close();
            return OpenContacts(parent, openContacts);
        },
        [&] { return OpenContacts(parent, openContacts); },
    });
    DestroyWindow(parent);
    PrintHeading("The views that assign, to a list view filled with the same");
    PrintRatio("1,000 categories, with the store to be opened", medians[1], medians[0], 2.0);
    PrintRatio("1,000 categories, again", medians[2], medians[0], 2.0);
    PrintRatio("10,000 contacts, with the store to be opened", medians[4], medians[3], 2.0);
    PrintRatio("10,000 contacts, again", medians[5], medians[3], 2.0);
}

} // namespace bench
