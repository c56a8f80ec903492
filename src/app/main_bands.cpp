#include "app/main_bands.h"

#include <strsafe.h>

#include <iterator>

#include "res/resource.h"
#include "ui/bars/command_bands.h"
#include "ui/pictures/image_list.h"
#include "ui/screen/scale.h"

namespace {

constexpr int kMenuBand = 0;
constexpr int kButtonBand = 1;
constexpr int kBandImageWidth = 16;
constexpr int kFilterButtonWidth = 110;

struct ImageSet {
    int bitmap;
    int count;
};
constexpr ImageSet kImageSets[] = {
    {IDB_NEW_ENTRY, 1}, {IDB_EDIT_ENTRY, 1}, {IDB_FILTER, 1}, {IDB_STD_SMALL_COLOR, 15}};
constexpr int kStandard = 3; // the system's

struct Button {
    int set;
    int image;    // of the set
    UINT command; // 0: a separator
    BYTE style;
    const wchar_t* tooltip;
};

constexpr Button kButtons[] = {
    {0, 0, CMD_NEW_ENTRY, BTNS_BUTTON, L"New"},
    {1, 0, CMD_EDIT_ENTRY, BTNS_BUTTON, L"Edit"},
    {kStandard, STD_DELETE, CMD_DELETE_ENTRY, BTNS_BUTTON, L"Delete"},
    {0, 0, 0, BTNS_SEP, nullptr},
    {kStandard, STD_CUT, CMD_CUT, BTNS_BUTTON, L"Cut"},
    {kStandard, STD_COPY, CMD_COPY, BTNS_BUTTON, L"Copy"},
    {kStandard, STD_PASTE, CMD_PASTE, BTNS_BUTTON, L"Paste"},
    {0, 0, 0, BTNS_SEP, nullptr},
    {kStandard, STD_FIND, CMD_FIND, BTNS_BUTTON, L"Find"},
    {2, 0, CMD_CONTACTS, BTNS_DROPDOWN | BTNS_NOPREFIX | BTNS_SHOWTEXT, nullptr},
    {0, 0, 0, BTNS_SEP, nullptr},
};
constexpr int kButtonCount = static_cast<int>(sizeof kButtons / sizeof kButtons[0]);

// A button whose images are missing (-1) says what it is instead.
TBBUTTON MakeButton(const Button& button, int firstImage)
{
    TBBUTTON made{};
    made.iBitmap = firstImage < 0 ? I_IMAGENONE : firstImage + button.image;
    made.idCommand = static_cast<int>(button.command);
    made.fsState = TBSTATE_ENABLED;
    made.fsStyle = button.style;
    if (!button.command) {
        made.iBitmap = 0;
    } else if (firstImage < 0 && button.tooltip) {
        made.fsStyle |= BTNS_SHOWTEXT | BTNS_AUTOSIZE;
        made.iString = reinterpret_cast<INT_PTR>(button.tooltip);
    }
    return made;
}

} // namespace

bool MainBands::Create(HINSTANCE instance, HWND parent, const RegistryStore& settings)
{
    m_instance = instance;
    m_parent = parent;
    BandStates bands;
    for (int band = 0; band < kBandCount; ++band) {
        BandState& state = bands[static_cast<size_t>(band)];
        state.info = LoadBand(band, settings);
        state.info.cx = static_cast<UINT>(SeenWidth(parent, static_cast<int>(state.info.cx)));
        state.isMaximized = IsBandStoredMaximized(band, settings);
    }
    return Build(bands);
}

// Bars keep sizes that they have worked out once, each system others: what is made anew has none. The rows of
// images go behind the window that shows them.
bool MainBands::Rebuild()
{
    const BandStates bands = StatesNow(DpiOf(m_parent));
    DestroyWindow(m_bands);
    m_bands = m_menuBar = m_buttonBar = nullptr;
    return Build(bands);
}

MainBands::BandStates MainBands::StatesNow(int dpi) const
{
    BandStates bands;
    for (UINT band = 0; band < kBandCount; ++band) {
        COMMANDBANDSRESTOREINFO now{};
        CommandBands_GetRestoreInformation(m_bands, band, &now);
        REBARBANDINFOW& info = bands[band].info;
        info.cbSize = sizeof info;
        info.fMask = RBBIM_STYLE | RBBIM_ID | RBBIM_SIZE;
        info.wID = now.wID;
        info.fStyle = now.fStyle;
        info.cx = static_cast<UINT>(MulDiv(static_cast<int>(now.cxRestored), dpi, m_dpi));
        bands[band].isMaximized = now.fMaximized != FALSE;
    }
    return bands;
}

bool MainBands::Build(const BandStates& bands)
{
    m_dpi = DpiOf(m_parent);
    if (!CreateBands(bands) || !CreateMenu() || !CreateButtons())
        return false;
    if (!CommandBands_AddAdornments(m_bands, m_instance, kAdornments))
        return false;
    AddRunTimeMenuItems();
    for (size_t band = 0; band < bands.size(); ++band)
        if (bands[band].isMaximized)
            SendMessageW(m_bands, RB_MAXIMIZEBAND, band, FALSE);
    return true;
}

bool MainBands::CreateBands(const BandStates& bands)
{
    REBARBANDINFOW infos[kBandCount];
    for (size_t band = 0; band < bands.size(); ++band)
        infos[band] = bands[band].info;
    m_images = LoadImageStrip(m_instance, IDB_BANDS, kBandImageWidth, CLR_NONE, m_dpi);
    m_bands = CommandBands_Create(m_instance, m_parent, IDC_BANDS, RBS_BANDBORDERS, m_images.get());
    return m_bands && CommandBands_AddBands(m_bands, m_instance, kBandCount, infos);
}

bool MainBands::CreateMenu()
{
    m_menuBar = CommandBands_GetCommandBar(m_bands, kMenuBand);
    m_buttonBar = CommandBands_GetCommandBar(m_bands, kButtonBand);
    return m_menuBar && m_buttonBar && CommandBar_InsertMenubar(m_menuBar, m_instance, IDR_MAIN_MENU);
}

bool MainBands::CreateButtons()
{
    int first[std::size(kImageSets)];
    for (size_t set = 0; set < std::size(kImageSets); ++set)
        first[set] = CommandBar_AddBitmap(m_buttonBar, set == kStandard ? HINST_COMMCTRL : m_instance,
                                          kImageSets[set].bitmap, kImageSets[set].count);
    TBBUTTON buttons[kButtonCount]{};
    for (int i = 0; i < kButtonCount; ++i)
        buttons[i] = MakeButton(kButtons[i], first[kButtons[i].set]);
    if (!SendMessageW(m_buttonBar, TB_ADDBUTTONSW, kButtonCount, reinterpret_cast<LPARAM>(buttons)))
        return false;
    ShowFilterText();
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_SIZE;
    info.cx = static_cast<WORD>(Scale(m_parent, kFilterButtonWidth));
    return SendMessageW(m_buttonBar, TB_SETBUTTONINFOW, CMD_CONTACTS, reinterpret_cast<LPARAM>(&info)) != 0;
}

void MainBands::AddRunTimeMenuItems()
{
    HMENU menu = CommandBar_GetMenu(m_menuBar);
    HMENU file = GetSubMenu(menu, 0);
    AppendMenuW(file, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(file, MF_STRING, CMD_QUIT, L"&Quit");
    InsertMenuW(GetSubMenu(menu, 2), 2, MF_BYPOSITION | MF_STRING, CMD_MY_HANDHELD, L"&My Handheld PC");
}

int MainBands::Height() const
{
    return CommandBands_Height(m_bands);
}

void MainBands::Resize()
{
    CommandBands_Resize(m_bands);
}

void MainBands::EnableCommand(UINT command, bool enable)
{
    EnableButton(command, enable);
    EnableMenuCommand(command, enable);
}

void MainBands::EnableButton(UINT command, bool enable)
{
    SendMessageW(m_buttonBar, TB_ENABLEBUTTON, command, MAKELPARAM(enable, 0));
}

void MainBands::EnableMenuCommand(UINT command, bool enable)
{
    EnableMenuItem(CommandBar_GetMenu(m_menuBar), command,
                   static_cast<UINT>(MF_BYCOMMAND | (enable ? MF_ENABLED : MF_GRAYED)));
}

bool MainBands::IsMenuCommandEnabled(UINT command) const
{
    const UINT state = GetMenuState(CommandBar_GetMenu(m_menuBar), command, MF_BYCOMMAND);
    return state == static_cast<UINT>(-1) || !(state & (MF_GRAYED | MF_DISABLED));
}

void MainBands::SetFilterText(const std::wstring& text)
{
    if (text == m_filterText)
        return;
    m_filterText = text;
    ShowFilterText();
}

void MainBands::ShowFilterText()
{
    TBBUTTONINFOW info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_TEXT;
    info.pszText = m_filterText.data();
    SendMessageW(m_buttonBar, TB_SETBUTTONINFOW, CMD_CONTACTS, reinterpret_cast<LPARAM>(&info));
}

void MainBands::OnGetInfoTip(NMTBGETINFOTIPW* tip) const
{
    for (const Button& button : kButtons)
        if (button.tooltip && button.command == static_cast<UINT>(tip->iItem))
            StringCchCopyW(tip->pszText, static_cast<size_t>(tip->cchTextMax), button.tooltip);
}
