#include "app/about_dialog.h"

#include <strsafe.h>

#include <utility>

#include "res/resource.h"
#include "ui/dialog.h"
#include "ui/launch.h"
#include "util/owners.h"

namespace {

constexpr const wchar_t* kBuild = L"2094";

class AboutDialog : public Dialog {
  protected:
    const wchar_t* HelpTopic() const override { return kHelpAbout; }
    bool OnInitDialog() override
    {
        SetBoldFont();
        wchar_t build[32];
        StringCchPrintfW(build, 32, L"Build (%s)", kBuild);
        SetDlgItemTextW(GetWindow(), IDC_ABOUT_BUILD, build);
        return true;
    }

    void OnResolutionChanged(int) override { SetBoldFont(); }

  private:
    void SetBoldFont()
    {
        auto plain = reinterpret_cast<HFONT>(SendMessageW(GetWindow(), WM_GETFONT, 0, 0));
        LOGFONTW description{};
        if (!GetObjectW(plain, sizeof description, &description))
            return;
        description.lfWeight = FW_BOLD;
        description.lfHeight += description.lfHeight / 2;
        UniqueFont font(CreateFontIndirectW(&description));
        SendDlgItemMessageW(GetWindow(), IDC_ABOUT_PRODUCT, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()),
                            TRUE);
        m_boldFont = std::move(font);
    }

    UniqueFont m_boldFont;
};

} // namespace

void ShowAboutDialog(HINSTANCE instance, HWND owner)
{
    AboutDialog dialog;
    dialog.DoModal(instance, IDD_ABOUT, owner);
}
