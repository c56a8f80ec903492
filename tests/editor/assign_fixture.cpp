#include "assign_fixture.h"

namespace {

CEPROPVAL TextValue(CEPROPID property, const wchar_t* text)
{
    CEPROPVAL value{};
    value.propid = property;
    value.val.lpwstr = const_cast<wchar_t*>(text);
    return value;
}

CEPROPVAL BlobValue(CEPROPID property, std::vector<BYTE>& bytes)
{
    CEPROPVAL value{};
    value.propid = property;
    value.val.blob = {static_cast<DWORD>(bytes.size()), bytes.data()};
    return value;
}

} // namespace

CEOID AssignTest::AddCategory(const wchar_t* name, int uses)
{
    DbCategories categories;
    EXPECT_TRUE(categories.Open());
    const CEPROPVAL value = TextValue(kCategoriesKey, name);
    const CEOID id = categories.WriteRecord(0, 1, &value);
    EXPECT_NE(id, 0u) << name;
    for (int i = 0; i < uses; ++i)
        EXPECT_TRUE(categories.IncUse(id));
    return id;
}

void AssignTest::HideCategory(CEOID id)
{
    DbCategories categories;
    EXPECT_TRUE(categories.Open());
    CEPROPVAL value{};
    value.propid = kCategoryHidden;
    value.val.uiVal = 1;
    EXPECT_EQ(categories.WriteRecord(id, 1, &value), id);
}

void AssignTest::DeleteCategory(CEOID id)
{
    DbCategories categories;
    EXPECT_TRUE(categories.Open());
    EXPECT_TRUE(categories.DeleteRecord(id));
}

int AssignTest::Uses(CEOID category)
{
    DbCategories categories;
    EXPECT_TRUE(categories.Open());
    EXPECT_EQ(categories.SeekRecord(category), category);
    WORD count = 1;
    CEPROPVAL* read = nullptr;
    EXPECT_NE(categories.ReadRecord(&count, &kCategoryUses, &read), 0u);
    const LocalBlock<CEPROPVAL> block(read);
    return read->wFlags & CEDB_PROPNOTFOUND ? 0 : read->val.iVal;
}

CEOID AssignTest::AddContact(const wchar_t* fileAs, const wchar_t* company)
{
    DbContacts contacts;
    EXPECT_TRUE(contacts.Open());
    const CEPROPVAL values[] = {TextValue(kContactsKey, fileAs), TextValue(kContactCompany, company)};
    const CEOID id = contacts.WriteRecord(0, company ? 2 : 1, values);
    EXPECT_NE(id, 0u) << fileAs;
    return id;
}

std::vector<BYTE> AssignTest::Ids(std::vector<DWORD> ids)
{
    ids.insert(ids.begin(), static_cast<DWORD>(ids.size()));
    const auto* bytes = reinterpret_cast<const BYTE*>(ids.data());
    return {bytes, bytes + ids.size() * sizeof(DWORD)};
}

CEOID AssignTest::AddEntry(const std::vector<DWORD>& categories, const std::vector<DWORD>& contacts)
{
    EntryToWrite entry;
    entry.date = entry.endTime = At(kTuesday);
    entry.type = L"Note";
    entry.subject = L"Lunch";
    entry.body = L"At noon";
    const CEOID id = Write(entry);
    for (const auto& [property, ids] : {std::pair{kPropCategories, categories}, {kPropContacts, contacts}}) {
        std::vector<BYTE> bytes = Ids(ids);
        const CEPROPVAL value = BlobValue(property, bytes);
        if (!ids.empty()) {
            EXPECT_EQ(Own().Journal().WriteRecord(id, 1, &value), id);
        }
    }
    return id;
}

int AssignTest::RunIn(CEOID* id, int command, const std::function<void(EditorWindow&)>& action)
{
    return Run(id, [&](EditorWindow& editor) {
        editor.Command(command);
        action(editor);
    });
}

int AssignTest::RunNewIn(int command, const std::function<void(EditorWindow&)>& action)
{
    CEOID id = 0;
    return RunIn(&id, command, action);
}

void AssignTest::WhileEditingCategories(const std::function<void()>& trigger,
                                        const std::function<void()>& edit)
{
    ModalDriver driver([&](HWND dialog) {
        HWND editor = GetWindow(dialog, GW_OWNER);
        EXPECT_NE(GetDlgItem(editor, IDC_EDITOR_BAR), nullptr) << "over the editor";
        EXPECT_FALSE(IsWindowEnabled(editor));
        edit();
        SendMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        if (IsWindowVisible(dialog))
            EndDialog(dialog, 0);
    });
    trigger();
    EXPECT_TRUE(PumpUntil([&] { return driver.Ran(); }));
}
