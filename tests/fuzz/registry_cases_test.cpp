// Settings of any type, size and content: whatever reads them and every window made by them goes on.
#include <gtest/gtest.h>

#include "app/band_layout.h"
#include "app/main_window_fixture.h"
#include "columns/columns_dialog.h"
#include "columns/list_columns.h"
#include "editor/editor_settings.h"
#include "editor/entry_editor.h"
#include "editor/quick_subjects.h"
#include "editor/quick_subjects_dialog.h"
#include "filter/filter_dialog.h"
#include "filter/filter_settings.h"
#include "find/find_dialog.h"
#include "find/find_settings.h"
#include "options/options_dialog.h"
#include "options/password.h"
#include "options/preferences.h"
#include "seeded.h"
#include "support/test_session.h"

namespace {

using fuzz::Chance;

// Every value of the program's, and one that it does not know.
std::vector<std::pair<std::wstring, std::wstring>> AllValues()
{
    std::vector<std::pair<std::wstring, std::wstring>> values;
    for (const wchar_t* name : {L"Password", L"vacc", L"setpw", L"ConfirmDelete", L"OpenOnFind", L"DispCats",
                                L"RememberFilter", L"DynSIP", L"sort", L"subj0", L"subj1", L"subj2", L"Find0",
                                L"Find1", L"Find2", L"Find3", L"Find4", L"unknown"})
        values.emplace_back(kOptions, name);
    for (const wchar_t* name :
         {L"iCols",      L"mstyle", L"mrestore", L"mmax",   L"tstyle",  L"trestore", L"tmax",
          L"selType",    L"scount", L"iZoom",    L"Tmrh",   L"Tmrl",    L"SearchBy", L"MatchCase",
          L"SearchFrom", L"wLeft",  L"wTop",     L"wRight", L"wBottom", L"wMax"})
        values.emplace_back(kSettings, name);
    for (int column = 0; column < 12; ++column)
        values.emplace_back(kSettings, L"Column" + std::to_wstring(column));
    for (const wchar_t* name : {L"Active", L"fRange", L"fMonths", L"mLStart", L"mHStart", L"mLEnd", L"mHEnd"})
        values.emplace_back(kFilter, name);
    return values;
}

std::string ContentOf(DWORD type, Chance& chance)
{
    const uint64_t number = chance.Number();
    if (type == REG_DWORD && !chance.OneIn(8))
        return std::string(reinterpret_cast<const char*>(&number), sizeof(DWORD));
    static const std::vector<size_t> kSizes = {0, 1, 2, 3, 4, 5, 8, 20, 310, 311, 312, 313, 314, 5000};
    std::string content = chance.Bytes(chance.Pick(kSizes));
    if (type == REG_SZ && !chance.OneIn(3))
        for (size_t i = 0; i < content.size(); ++i)
            content[i] = i % 2 ? '\0' : static_cast<char>(32 + chance.Below(90));
    return content;
}

void StoreAnything(Chance& chance)
{
    static const auto kValues = AllValues();
    static const std::vector<DWORD> kTypes = {REG_DWORD,  REG_DWORD,    REG_DWORD, REG_SZ,   REG_SZ,
                                              REG_BINARY, REG_MULTI_SZ, REG_QWORD, REG_NONE, 0x1234};
    HKEY root = nullptr;
    ASSERT_EQ(RegCreateKeyW(HKEY_CURRENT_USER, L"Software\\Quillmarsh\\Journal", &root), ERROR_SUCCESS);
    const UniqueKey owner(root);
    for (size_t changes = 1 + chance.Below(12); changes; --changes) {
        const auto& [subkey, name] = chance.Pick(kValues);
        const DWORD type = chance.Pick(kTypes);
        const std::string content = ContentOf(type, chance);
        if (chance.OneIn(40))
            RegDeleteTreeW(root, subkey.c_str());
        HKEY key = nullptr;
        ASSERT_EQ(RegCreateKeyW(root, subkey.c_str(), &key), ERROR_SUCCESS);
        RegSetValueExW(key, name.c_str(), 0, type, reinterpret_cast<const BYTE*>(content.data()),
                       static_cast<DWORD>(content.size()));
        RegCloseKey(key);
    }
}

// Everything that reads without a window. Texts are at most as long as they are stored.
void ReadAll()
{
    const RegistryStore& settings = Own();
    for (const std::wstring& subject : ReadQuickSubjects(settings))
        ASSERT_LT(subject.size(), static_cast<size_t>(kSettingTextSize));
    for (const std::wstring& text : ReadFindHistory(settings))
        ASSERT_LT(text.size(), static_cast<size_t>(kSettingTextSize));
    ASSERT_LT(LastType(settings).size(), static_cast<size_t>(kSettingTextSize));
    ColumnSet columns;
    LoadColumns(&columns, settings, 800);
    FilterState filter;
    LoadFilter(settings, &filter);
    LoadFilterDates(settings, &filter);
    (void)StoredZoom(settings);
    (void)ReadSearchBy(settings);
    (void)ReadSearchFrom(settings);
    (void)ReadPreferences(settings);
    (void)IsPasswordSet(settings);
    for (int band = 0; band < kBandCount; ++band)
        (void)LoadBand(band, settings);
}

void WithDialog(const std::function<void()>& run)
{
    ModalDriver driver([](HWND window) { SendMessageW(window, WM_COMMAND, IDCANCEL, 0); });
    run();
    EXPECT_TRUE(driver.Ran());
}

class RegistryCases : public MainWindowTest {
  protected:
    void OpenWindow()
    {
        HWND window = Create();
        ASSERT_NE(window, nullptr);
        RECT place;
        ASSERT_TRUE(GetWindowRect(window, &place) && !IsRectEmpty(&place));
        ASSERT_GT(Header_GetItemCount(ListView_GetHeader(List())), 0) << "a list has columns";
        SendMessageW(window, WM_CLOSE, 0, 0);
        PumpMessages();
        TakeQuitMessage();
    }
    static void OpenDialog(size_t which)
    {
        CEOID id = 0;
        FindRequest request;
        switch (which) {
        case 0: return WithDialog([] { RunQuickSubjects(nullptr, Own()); });
        case 1: return WithDialog([&] { (void)RunFindDialog(nullptr, Own(), true, &request); });
        case 2: return WithDialog([] { RunOptions(nullptr, Own()); });
        default: return WithDialog([&] { (void)OpenEntryEditor(Own(), nullptr, &id); });
        }
    }
    MessageBoxAnswerer m_answers{{IDYES, IDOK, IDYES}};
};

TEST_F(RegistryCases, NoSettingStopsTheProgram)
{
    constexpr size_t kCasesForAWindow = 25;
    Chance chance(fuzz::Seed());
    for (size_t i = 0, cases = fuzz::CasesOr(300); i < cases && !HasFailure(); ++i) {
        SCOPED_TRACE("case " + std::to_string(i) + " of seed " + std::to_string(fuzz::Seed()));
        StoreAnything(chance);
        ReadAll();
        if (chance.OneIn(kCasesForAWindow))
            OpenWindow();
        else if (chance.OneIn(kCasesForAWindow))
            OpenDialog(chance.Below(4));
        if (chance.OneIn(10))
            RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Quillmarsh\\Journal\\Settings");
    }
}

} // namespace
