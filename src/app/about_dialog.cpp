#include "app/about_dialog.h"

#include <strsafe.h>

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
        SetBoldFont(IDC_ABOUT_PRODUCT);
        wchar_t build[32];
        StringCchPrintfW(build, 32, L"Build (%s)", kBuild);
        SetDlgItemTextW(GetWindow(), IDC_ABOUT_BUILD, build);
        return true;
    }

  private:
    void SetBoldFont(int id)
    {
        auto font = reinterpret_cast<HFONT>(SendMessageW(GetWindow(), WM_GETFONT, 0, 0));
        LOGFONTW description{};
        if (!GetObjectW(font, sizeof description, &description))
            return;
        description.lfWeight = FW_BOLD;
        description.lfHeight += description.lfHeight / 2;
        m_boldFont.reset(CreateFontIndirectW(&description));
        SendDlgItemMessageW(GetWindow(), id, WM_SETFONT, reinterpret_cast<WPARAM>(m_boldFont.get()), TRUE);
    }

    UniqueFont m_boldFont;
};

} // namespace

void ShowAboutDialog(HINSTANCE instance, HWND owner)
{
    AboutDialog dialog;
    dialog.DoModal(instance, IDD_ABOUT, owner);
}
