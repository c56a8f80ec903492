// A dialog that notes what reaches it, and its run.
#pragma once

#include <windows.h>

#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "support/test_windows.h"
#include "ui/dialog.h"
#include "ui/ui_test_resource.h"

inline HINSTANCE Instance()
{
    return GetModuleHandleW(nullptr);
}

class TestDialog : public Dialog {
  public:
    void OnOK() override
    {
        ++okCount;
        Dialog::OnOK();
    }
    void OnCancel() override
    {
        ++cancelCount;
        Dialog::OnCancel();
    }
    void OnSettingsChanged() override { ++settingsCount; }
    void OnResolutionChanged(int before) override { resolutionsBefore.push_back(before); }

    const wchar_t* Unsaved() const override { return unsaved; }
    void OnSessionEnd() override { ++sessionEnds; }

    using Dialog::CenterOnOwner;
    using Dialog::Grow;
    using Dialog::KeepFocus;

    std::function<bool()> onInit;
    std::function<bool(UINT, WPARAM, LPARAM, LRESULT*)> onMessage;
    std::vector<UINT> messages;
    int okCount = 0;
    int cancelCount = 0;
    int settingsCount = 0;
    std::vector<int> resolutionsBefore;
    const wchar_t* unsaved = nullptr;
    int sessionEnds = 0;

  protected:
    bool OnInitDialog() override { return onInit ? onInit() : true; }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override
    {
        messages.push_back(message);
        return onMessage && onMessage(message, wParam, lParam, result);
    }
};

// Over the template TEST_DIALOG; the action ends it.
inline INT_PTR RunDialog(TestDialog& dialog, const std::function<void(HWND)>& action, HWND owner = nullptr)
{
    const ModalDriver driver(action);
    const INT_PTR result = dialog.DoModal(Instance(), TEST_DIALOG, owner);
    EXPECT_TRUE(driver.Ran());
    return result;
}
