// In which order the options and the password are stored.
#include "options/options_dialog_fixture.h"
#include "options/password.h"
#include "options/prompt_answerer.h"
#include "support/settings_log.h"

namespace {

using Steps = std::vector<std::wstring>;

Steps g_steps;
decltype(&EndDialog) g_endDialog = nullptr;

BOOL WINAPI NoteEnd(HWND dialog, INT_PTR result)
{
    g_steps.push_back(L"end " + std::to_wstring(result));
    return g_endDialog(dialog, result);
}

TEST_F(OptionsDialogTest, OkStoresTheOptionsInTheirOrderAndCloses)
{
    g_endDialog = __imp_EndDialog;
    const ImportWatch<decltype(&EndDialog)> ends(&__imp_EndDialog, NoteEnd);
    Run([](DialogWindow& dialog) {
        g_steps.clear();
        const SettingsLog log([](const std::wstring& name) { g_steps.push_back(name); });
        dialog.Ok();
    });
    EXPECT_EQ(g_steps, (Steps{L"ConfirmDelete", L"OpenOnFind", L"DispCats", L"RememberFilter", L"Password",
                              L"end 1"}));
}

class PasswordOrder : public testing::Test {
  protected:
    TestRegistry m_registry;
};

TEST_F(PasswordOrder, ANewOneIsSetAndThenItsText)
{
    const PromptAnswerer user({L"open", L"open"});
    const SettingsLog log;
    EXPECT_TRUE(SetNewPassword(nullptr, Own()));
    EXPECT_EQ(log.Names(), (Steps{L"setpw", L"vacc"}));
}

TEST_F(PasswordOrder, OfTwoDifferentOnesNothingIsStored)
{
    const PromptAnswerer user({L"open", L"shut"});
    const SettingsLog log;
    EXPECT_FALSE(SetNewPassword(nullptr, Own()));
    EXPECT_EQ(log.Names(), Steps{});
}

} // namespace
