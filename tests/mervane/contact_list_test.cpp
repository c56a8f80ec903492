#include "mervane/contact_list.h"

#include <gtest/gtest.h>

#include "records.h"
#include "support/test_store.h"
#include "support/test_windows.h"

namespace {

constexpr RECT kPlace{10, 20, 410, 220};
constexpr DWORD kStyle = 0x18009;

class ContactList : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_contacts.Open(), 1); }

    CEOID Add(const std::wstring& fileAs, const std::wstring& company = L"")
    {
        Sent sent;
        sent.Text(kContactsKey, fileAs);
        if (!company.empty())
            sent.Text(kContactCompany, company);
        const CEOID id = sent.Write(m_contacts);
        EXPECT_NE(id, 0u);
        return id;
    }
    void AddMany(int count)
    {
        CeDBase::BulkScope bulk(m_contacts);
        for (int i = 0; i < count; ++i)
            Add(L"Contact " + std::to_wstring(100'000 + i), L"Company " + std::to_wstring(i));
        ASSERT_EQ(bulk.Commit(), 1);
    }
    // As a dialog opens the view.
    void Open()
    {
        m_list = m_contacts.CreateList(GetModuleHandleW(nullptr), m_parent.Handle(), kPlace, 112, kStyle);
        ASSERT_NE(m_list, nullptr);
        ListView_SetExtendedListViewStyle(m_list, LVS_EX_FULLROWSELECT);
        if (m_contacts.RecordCount() == 0)
            return;
        for (int i = 0; i < 2; ++i) {
            LVCOLUMNW column{};
            column.mask = LVCF_WIDTH | LVCF_SUBITEM;
            column.cx = 145;
            column.iSubItem = i;
            ListView_InsertColumn(m_list, i, &column);
        }
        ASSERT_EQ(m_contacts.UpdateList(m_list), 1);
        PumpMessages();
    }

    std::wstring Text(int row, int column = 0) const
    {
        wchar_t text[300] = L"";
        ListView_GetItemText(m_list, row, column, text, 300);
        return text;
    }
    bool Checked(int row) const
    {
        const UINT state = ListView_GetItemState(m_list, row, LVIS_STATEIMAGEMASK);
        EXPECT_TRUE(state == INDEXTOSTATEIMAGEMASK(1) || state == INDEXTOSTATEIMAGEMASK(2)) << state;
        return state == INDEXTOSTATEIMAGEMASK(2);
    }
    int Focused() const { return ListView_GetNextItem(m_list, -1, LVNI_FOCUSED); }
    void Focus(int row) const { ListView_SetItemState(m_list, row, LVIS_FOCUSED, LVIS_FOCUSED); }
    void Press(int key) const { SendMessageW(m_list, WM_KEYDOWN, static_cast<WPARAM>(key), 1); }
    void Type(const wchar_t* text) const
    {
        for (; *text; ++text)
            SendMessageW(m_list, WM_CHAR, *text, 1);
    }
    // A click into the row, so far from its text's left edge.
    void Click(int row, int fromText)
    {
        RECT label{};
        ListView_GetItemRect(m_list, row, &label, LVIR_LABEL);
        const LPARAM place = MAKELPARAM(label.left + fromText, (label.top + label.bottom) / 2);
        PostMessageW(m_list, WM_LBUTTONUP, 0, place);
        SendMessageW(m_list, WM_LBUTTONDOWN, MK_LBUTTON, place);
        PumpMessages();
    }
    void ClickBox(int row) { Click(row, -GetSystemMetrics(SM_CXSMICON) / 2); }

    struct Change {
        int row;
        CEOID contact;
        bool checked;
        bool operator==(const Change&) const = default;
    };
    bool OnParentMessage(UINT message, LPARAM lParam, LRESULT* result)
    {
        if (message != WM_NOTIFY)
            return false;
        auto* notification = reinterpret_cast<NMHDR*>(lParam);
        if (m_contacts.OnNotify(notification->hwndFrom, notification, result))
            return true;
        if (DbContacts::IsAssignmentChange(*notification)) {
            const auto& change = *reinterpret_cast<const NMLISTVIEW*>(notification);
            EXPECT_EQ(notification->hwndFrom, m_list);
            EXPECT_EQ(notification->idFrom, 112u);
            m_changes.push_back({change.iItem, static_cast<CEOID>(change.lParam),
                                 (change.uNewState & LVIS_STATEIMAGEMASK) == INDEXTOSTATEIMAGEMASK(2)});
        }
        return false;
    }

    TestStore m_store;
    DbContacts m_contacts;
    std::vector<Change> m_changes;
    TestParent m_parent{[this](HWND, UINT message, WPARAM, LPARAM lParam, LRESULT* result) {
        return OnParentMessage(message, lParam, result);
    }};
    HWND m_list = nullptr;
};

TEST_F(ContactList, IsMadeAsItsParentWishes)
{
    Add(L"A");
    Open();
    EXPECT_EQ(GetParent(m_list), m_parent.Handle());
    EXPECT_EQ(GetDlgCtrlID(m_list), 112);
    RECT place{};
    GetWindowRect(m_list, &place);
    MapWindowPoints(nullptr, m_parent.Handle(), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_TRUE(EqualRect(&place, &kPlace));
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(m_list, GWL_STYLE));
    EXPECT_EQ(style & (kStyle | WS_CHILD | WS_VISIBLE), kStyle | WS_CHILD | WS_VISIBLE);
    EXPECT_TRUE(GetWindowLongPtrW(m_list, GWL_EXSTYLE) & WS_EX_CLIENTEDGE);
    EXPECT_EQ(ListView_GetExtendedListViewStyle(m_list), DWORD{LVS_EX_FULLROWSELECT | LVS_EX_CHECKBOXES})
        << "what the parent has set stays";
}

TEST_F(ContactList, ShowsFileAsAndCompanyInTheirOrder)
{
    Add(L"Zo\u00eb", L"Alpha");
    Add(L"adler", L"Beta");
    Add(L"B\u00f6hm");
    Open();
    ASSERT_EQ(ListView_GetItemCount(m_list), 3);
    EXPECT_EQ(Text(0), L"adler");
    EXPECT_EQ(Text(0, 1), L"Beta");
    EXPECT_EQ(Text(1), L"B\u00f6hm");
    EXPECT_EQ(Text(1, 1), L"");
    EXPECT_EQ(Text(2), L"Zo\u00eb");
    EXPECT_EQ(Text(2, 1), L"Alpha");
}

TEST_F(ContactList, ChecksTheAssignedOnesAndMarksNothing)
{
    const CEOID a = Add(L"a"), b = Add(L"b"), c = Add(L"c");
    std::vector<BYTE> blob = IdBytes({3, c, 4711, a});
    ASSERT_EQ(m_contacts.SetAssigned({static_cast<DWORD>(blob.size()), blob.data()}, 256), 1);
    Open();
    EXPECT_TRUE(Checked(0));
    EXPECT_FALSE(Checked(1));
    EXPECT_TRUE(Checked(2));
    EXPECT_EQ(Focused(), 0) << "space works at once";
    Focus(1);
    ListView_SetItemState(m_list, -1, LVIS_SELECTED, LVIS_SELECTED);
    ASSERT_EQ(m_contacts.UpdateList(m_list), 1);
    UpdateWindow(m_list);
    DestroyWindow(m_list);
    EXPECT_TRUE(m_changes.empty());
    EXPECT_EQ(m_contacts.Assigned(), (std::vector<CEOID>{c, 4711, a}));
    EXPECT_NE(b, 0u);
}

TEST_F(ContactList, ABoxIsTurnedByTheMouse)
{
    const CEOID a = Add(L"a"), b = Add(L"b");
    Open();
    ClickBox(1);
    EXPECT_TRUE(Checked(1));
    EXPECT_FALSE(Checked(0));
    EXPECT_EQ(m_contacts.Assigned(), (std::vector<CEOID>{b}));
    EXPECT_EQ(m_changes, (std::vector<Change>{{1, b, true}}));
    EXPECT_EQ(Focused(), 1) << "and its row has the focus";
    EXPECT_EQ(ListView_GetSelectedCount(m_list), 1u);
    ClickBox(0);
    ASSERT_EQ(m_changes.size(), 2u);
    EXPECT_EQ(m_changes[1], (Change{0, a, true}));
    ClickBox(1);
    EXPECT_FALSE(Checked(1));
    EXPECT_EQ(m_changes.back(), (Change{1, b, false}));
    EXPECT_EQ(m_contacts.Assigned(), (std::vector<CEOID>{a}));
}

TEST_F(ContactList, AClickOnTheNameTurnsItsBox)
{
    Add(L"a");
    const CEOID b = Add(L"b");
    Open();
    Click(1, 4);
    EXPECT_EQ(Focused(), 1);
    EXPECT_EQ(m_changes, (std::vector<Change>{{1, b, true}}));
    Click(1, 4);
    EXPECT_TRUE(m_contacts.Assigned().empty());
}

TEST_F(ContactList, AClickBesideTheRowsTurnsNoBox)
{
    Add(L"a");
    Add(L"b", L"Company");
    Open();
    PostMessageW(m_list, WM_LBUTTONUP, 0, MAKELPARAM(100, 180));
    SendMessageW(m_list, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(100, 180));
    PumpMessages();
    EXPECT_TRUE(m_changes.empty());
    EXPECT_TRUE(m_contacts.Assigned().empty());
}

TEST_F(ContactList, ABoxIsTurnedBySpace)
{
    const CEOID a = Add(L"a"), b = Add(L"b");
    Open();
    SetFocus(m_list);
    Press(VK_DOWN);
    Press(VK_SPACE);
    EXPECT_TRUE(Checked(1));
    EXPECT_FALSE(Checked(0));
    EXPECT_EQ(m_changes, (std::vector<Change>{{1, b, true}})) << "once";
    Press(VK_SPACE);
    EXPECT_FALSE(Checked(1));
    EXPECT_EQ(m_changes.size(), 2u);
    Press(VK_UP);
    Press(VK_SPACE);
    EXPECT_EQ(m_contacts.Assigned(), (std::vector<CEOID>{a}));
    for (const int key : {VK_RETURN, VK_DELETE, VK_F2, VK_END, VK_TAB})
        Press(key);
    for (const int held : {VK_CONTROL, VK_MENU}) {
        BYTE keys[256]{};
        keys[held] = 0x80;
        SetKeyboardState(keys);
        Press(VK_SPACE);
        keys[held] = 0;
        SetKeyboardState(keys);
    }
    EXPECT_EQ(m_changes.size(), 3u);
}

TEST_F(ContactList, TypingFindsByFileAs)
{
    for (const wchar_t* name : {L"Adams", L"adler", L"B\u00f6hm", L"Zo\u00eb"})
        Add(name);
    Open();
    SetFocus(m_list);
    Type(L"B");
    EXPECT_EQ(Focused(), 2);
    LVFINDINFOW wanted{};
    wanted.flags = LVFI_STRING | LVFI_PARTIAL | LVFI_WRAP;
    wanted.psz = L"ADL";
    EXPECT_EQ(ListView_FindItem(m_list, -1, &wanted), 1);
    EXPECT_EQ(ListView_FindItem(m_list, 2, &wanted), 1) << "round the end";
    wanted.psz = L"Company";
    EXPECT_EQ(ListView_FindItem(m_list, -1, &wanted), -1);
    wanted.flags = LVFI_STRING;
    wanted.psz = L"zo\u00cb";
    EXPECT_EQ(ListView_FindItem(m_list, -1, &wanted), 3);
    EXPECT_TRUE(m_changes.empty());
}

TEST_F(ContactList, SaysSoWhereThereAreNone)
{
    Open();
    EXPECT_FALSE(GetWindowLongPtrW(m_list, GWL_STYLE) & LVS_OWNERDATA);
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    wchar_t text[] = L"<No contacts>";
    item.pszText = text;
    ASSERT_EQ(ListView_InsertItem(m_list, &item), 0);
    EXPECT_EQ(ListView_GetItemCount(m_list), 1);
    EXPECT_EQ(Text(0), L"<No contacts>");
    EXPECT_GE(ListView_GetColumnWidth(m_list, 0), ListView_GetStringWidth(m_list, text));
    EXPECT_EQ(m_contacts.UpdateList(m_list), 0);
    SetFocus(m_list);
    Focus(0);
    Press(VK_SPACE);
    Click(0, 5);
    EXPECT_TRUE(m_changes.empty());
    EXPECT_EQ(ListView_GetItemCount(m_list), 1);
}

TEST_F(ContactList, ShowsWhatOthersHaveChangedOnlyOnceItIsUpdated)
{
    const CEOID m = Add(L"M");
    Add(L"N");
    Open();
    Focus(1);
    RawStore raw(m_store.Path());
    ASSERT_TRUE(raw.Run("INSERT INTO contacts(file_as) VALUES('A')"));
    ClickBox(0);
    EXPECT_EQ(m_contacts.Assigned(), (std::vector<CEOID>{m})) << "what is seen in the row";
    Focus(1);
    ASSERT_EQ(m_contacts.UpdateList(m_list), 1);
    ASSERT_EQ(ListView_GetItemCount(m_list), 3);
    EXPECT_EQ(Text(0), L"A");
    EXPECT_TRUE(Checked(1));
    EXPECT_EQ(Text(Focused()), L"N") << "the focus stays with its contact";
}

TEST_F(ContactList, AContactThatIsGoneCanBeTakenOffButNotAssigned)
{
    const CEOID a = Add(L"a");
    Add(L"b");
    m_contacts.Assign(a);
    Open();
    ASSERT_TRUE(RawStore(m_store.Path()).Run("DELETE FROM contacts"));
    ClickBox(1);
    EXPECT_EQ(m_contacts.Assigned(), (std::vector<CEOID>{a}));
    EXPECT_TRUE(m_changes.empty());
    ClickBox(0);
    EXPECT_TRUE(m_contacts.Assigned().empty());
    EXPECT_EQ(m_changes.size(), 1u);
    ASSERT_EQ(m_contacts.UpdateList(m_list), 1);
    EXPECT_EQ(ListView_GetItemCount(m_list), 0);
    Press(VK_SPACE);
    EXPECT_EQ(m_changes.size(), 1u);
}

TEST_F(ContactList, TakesBrokenRecords)
{
    RawStore raw(m_store.Path());
    ASSERT_TRUE(raw.Run("INSERT INTO contacts(file_as, company) VALUES(NULL, 'Nameless')"));
    ASSERT_TRUE(raw.Run("INSERT INTO contacts(file_as, company) VALUES(x'0102', 7)"));
    ASSERT_TRUE(raw.Run("INSERT INTO contacts(file_as, company) VALUES(hex(zeroblob(5000)), '')"));
    ASSERT_TRUE(raw.Run("INSERT INTO contacts(file_as) VALUES('')"));
    Open();
    ASSERT_EQ(ListView_GetItemCount(m_list), 4);
    EXPECT_EQ(Text(0), L"");
    EXPECT_EQ(Text(1), std::wstring(259, L'0'));
    EXPECT_EQ(Text(2, 1), L"Nameless");
    for (int row = 0; row < 4; ++row)
        ClickBox(row);
    EXPECT_EQ(m_contacts.Assigned().size(), 4u);
    PumpMessages();
}

TEST_F(ContactList, AnswersOnlyWhatIsItsOwn)
{
    Add(L"a");
    Open();
    HWND other = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | LVS_REPORT | LVS_OWNERDATA, 0, 0, 10, 10,
                                 m_parent.Handle(), nullptr, nullptr, nullptr);
    ASSERT_NE(other, nullptr);
    NMLVFINDITEMW wanted{};
    wanted.hdr = {other, 5, LVN_ODFINDITEMW};
    wanted.lvfi.flags = LVFI_STRING | LVFI_PARTIAL;
    wanted.lvfi.psz = L"a";
    LRESULT result = 17;
    EXPECT_EQ(m_contacts.OnNotify(m_list, &wanted.hdr, &result), 0);
    wanted.hdr.hwndFrom = m_list;
    EXPECT_EQ(m_contacts.OnNotify(other, &wanted.hdr, &result), 0);
    EXPECT_EQ(m_contacts.OnNotify(nullptr, &wanted.hdr, &result), 0);
    EXPECT_EQ(m_contacts.OnNotify(m_list, nullptr, &result), 0);
    EXPECT_EQ(result, 17);
    EXPECT_EQ(m_contacts.OnNotify(m_list, &wanted.hdr, &result), 1);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(m_contacts.OnNotify(m_list, &wanted.hdr, nullptr), 1);
    DbContacts fresh;
    EXPECT_EQ(fresh.OnNotify(m_list, &wanted.hdr, &result), 0) << "it has made no list";
    EXPECT_EQ(fresh.UpdateList(m_list), 0);
}

TEST_F(ContactList, AsksForRowsThatAreNoneInVain)
{
    Add(L"a");
    Open();
    wchar_t text[10] = L"x";
    for (const int row : {-1, 1, 2'000'000'000}) {
        NMLVDISPINFOW info{};
        info.hdr = {m_list, 112, LVN_GETDISPINFOW};
        info.item.mask = LVIF_TEXT | LVIF_STATE;
        info.item.stateMask = LVIS_STATEIMAGEMASK;
        info.item.iItem = row;
        info.item.pszText = text;
        info.item.cchTextMax = 10;
        EXPECT_EQ(m_contacts.OnNotify(m_list, &info.hdr, nullptr), 1);
        EXPECT_STREQ(text, L"");
        EXPECT_EQ(info.item.state, 0u);
    }
    for (const auto& [from, to] :
         {std::pair(-1, -2), {5, 2}, {-2'000'000'000, 2'000'000'000}, {0, 0}, {7, 9}}) {
        NMLVCACHEHINT hint{};
        hint.hdr = {m_list, 112, LVN_ODCACHEHINT};
        hint.iFrom = from;
        hint.iTo = to;
        EXPECT_EQ(m_contacts.OnNotify(m_list, &hint.hdr, nullptr), 1);
    }
    EXPECT_EQ(Text(0), L"a");
}

TEST_F(ContactList, TellsAChangeFromWhatLooksLikeOne)
{
    NMLISTVIEW change{};
    change.hdr = {nullptr, 112, LVN_ITEMCHANGED};
    change.uChanged = LVIF_STATE;
    change.uOldState = INDEXTOSTATEIMAGEMASK(1);
    change.uNewState = INDEXTOSTATEIMAGEMASK(2);
    EXPECT_TRUE(DbContacts::IsAssignmentChange(change.hdr));
    change.uOldState |= LVIS_FOCUSED;
    EXPECT_TRUE(DbContacts::IsAssignmentChange(change.hdr));
    NMLISTVIEW other = change;
    other.iItem = -1;
    EXPECT_FALSE(DbContacts::IsAssignmentChange(other.hdr)) << "all rows";
    other = change;
    other.uOldState = 0;
    EXPECT_FALSE(DbContacts::IsAssignmentChange(other.hdr)) << "boxes appear";
    other = change;
    other.uNewState = INDEXTOSTATEIMAGEMASK(1) | LVIS_SELECTED;
    EXPECT_FALSE(DbContacts::IsAssignmentChange(other.hdr)) << "a selection";
    other = change;
    other.uChanged = LVIF_TEXT;
    EXPECT_FALSE(DbContacts::IsAssignmentChange(other.hdr));
    other = change;
    other.hdr.code = LVN_ITEMCHANGING;
    EXPECT_FALSE(DbContacts::IsAssignmentChange(other.hdr));
}

TEST_F(ContactList, HoldsTenThousand)
{
    AddMany(10'000);
    Open();
    ASSERT_EQ(ListView_GetItemCount(m_list), 10'000);
    for (const int row : {0, 63, 64, 5'000, 9'999, 1}) {
        EXPECT_EQ(Text(row), L"Contact " + std::to_wstring(100'000 + row));
        EXPECT_EQ(Text(row, 1), L"Company " + std::to_wstring(row));
    }
    SetFocus(m_list);
    Press(VK_END);
    EXPECT_EQ(Focused(), 9'999);
    Press(VK_SPACE);
    ASSERT_EQ(m_changes.size(), 1u);
    EXPECT_EQ(m_changes[0].row, 9'999);
    EXPECT_TRUE(Checked(9'999));
}

} // namespace
