#include "app/journal_app.h"

#include <commctrl.h>

#include "app/main_window.h"
#include "app/rescue_offer.h"
#include "app/restore_offer.h"
#include "mervane/file/store_path.h"
#include "options/password.h"
#include "res/resource.h"
#include "ui/pictures/program_icon.h"
#include "ui/store_window.h"
#include "ui/taken_message.h"

namespace {

constexpr const wchar_t* kProgram = L"Journal";

bool IsRunning(uint64_t store)
{
    Turn turn = TurnForStore(kMainWindowClass, store);
    return BringRunningCopyForward(kMainWindowClass, store, SW_SHOWNORMAL, turn);
}

bool InitControls()
{
    const INITCOMMONCONTROLSEX controls{sizeof controls,
                                        ICC_LISTVIEW_CLASSES | ICC_DATE_CLASSES | ICC_COOL_CLASSES};
    return InitCommonControlsEx(&controls) != FALSE;
}

// The failed creation has posted the quit message. With that in the queue a message box would close by
// itself.
void ShowCreationError()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
    MessageBoxW(nullptr, L"Internal Main Window Creation Error", kProgram, MB_OK);
}

// True when it can be tried again, over a backup that has come into the store's place.
bool TellFailedCreation(DbJournal& journal)
{
    ShowCreationError();
    const std::vector<RenamedFile> setAside = journal.TakeSetAside();
    if (!journal.IsOpen() && journal.Trouble() != StoreTrouble::None)
        return TellUnopenedStore(mervane::StorePath(), journal.Trouble(), setAside);
    if (!setAside.empty())
        MessageBoxW(nullptr, SetAsideText(setAside).c_str(), kProgram, MB_OK | MB_ICONEXCLAMATION);
    return false;
}

// The icon, unless the window has one: then null.
UniqueIcon SetIconIfMissing(HWND window, WPARAM which)
{
    return SendMessageW(window, WM_GETICON, which, 0) ? nullptr : SetProgramIcon(window, which);
}

// F1 is an accelerator here, but the system also posts a request for help of its own for it (WM_KEYF1), which
// would ask for the same help a second time.
void DropSystemHelpRequest(const MSG& message)
{
    constexpr UINT kKeyF1 = 0x004D;
    MSG request;
    if (message.message == WM_KEYDOWN && message.wParam == VK_F1)
        (void)TakeMessage(nullptr, kKeyF1, &request);
}

} // namespace

HWND JournalApp::MainWindowHandle() const
{
    return m_mainWindow ? m_mainWindow->Handle() : nullptr;
}

int JournalApp::InitInstance(HINSTANCE instance, int showCommand)
{
    m_instance = instance;
    const uint64_t store = mervane::StoreNumber(mervane::StorePath());
    if (IsRunning(store) || !MainWindow::RegisterWindowClass(instance) || !InitControls())
        return 0;
    if (!UnlockAtStart(*this) || !OfferBackupOfGoneStore(mervane::StorePath()))
        return 0;
    Made made = MakeMainWindow(store);
    while (made == Made::Failed && TellFailedCreation(*m_journal))
        made = MakeMainWindow(store);
    if (made != Made::Here)
        return 0;
    m_smallIcon = SetIconIfMissing(MainWindowHandle(), ICON_SMALL);
    m_bigIcon = SetIconIfMissing(MainWindowHandle(), ICON_BIG);
    m_mainWindow->ShowFirst(showCommand);
    UpdateWindow(MainWindowHandle());
    return 1;
}

// While this copy asked for the password, or waited for its turn, another one may have been faster.
JournalApp::Made JournalApp::MakeMainWindow(uint64_t store)
{
    Turn turn = TurnForStore(kMainWindowClass, store);
    if (BringRunningCopyForward(kMainWindowClass, store, SW_SHOWNORMAL, turn))
        return Made::Elsewhere;
    if (m_hasTried)
        ConstructMainWindow();
    m_hasTried = true;
    return m_mainWindow->Create(m_instance, &turn) ? Made::Here : Made::Failed;
}

void JournalApp::TellWhatWasFound()
{
    const std::vector<RenamedFile> setAside = m_journal->TakeSetAside();
    if (!setAside.empty())
        MessageBoxW(MainWindowHandle(), SetAsideText(setAside).c_str(), kProgram, MB_OK | MB_ICONEXCLAMATION);
    if (MainWindowHandle())
        OfferRescues(MainWindowHandle(), m_mainWindow->List());
}

int JournalApp::Run()
{
    HACCEL accelerators = LoadAcceleratorsW(m_instance, MAKEINTRESOURCEW(IDR_ACCELERATORS));
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (m_mainWindow->TranslateMenuKey(message))
            continue;
        DropSystemHelpRequest(message);
        if (!TranslateAcceleratorW(MainWindowHandle(), accelerators, &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    if (const StoreTrouble trouble = m_mainWindow->NotKept(); trouble != StoreTrouble::None)
        MessageBoxW(nullptr, NotKeptText(mervane::StorePath(), trouble).c_str(), kProgram,
                    MB_OK | MB_ICONEXCLAMATION);
    return static_cast<int>(message.wParam);
}
