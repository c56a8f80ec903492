// The end of the session and requests to close in the midst of a command: within a write that waits, and with
// dialogs open that hold the store.
#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <utility>

#include "app/main_window_fixture.h"
#include "mervane/db_categories.h"
#include "mervane/file/store_waiter.h"
#include "res/resource.h"
#include "support/locked_store.h"
#include "support/rescue_folder.h"
#include "ui/paint_wait.h"

namespace {

class MainWindowSession : public MainWindowTest {
  protected:
    bool IsStoreClosed() const
    {
        return GetFileAttributesW((m_store.Path() + L"-wal").c_str()) == INVALID_FILE_ATTRIBUTES;
    }
    // Opens the dialog of a command, lets the action change something in it, and ends the session then.
    // Whether the store was closed by the time that the end was answered.
    bool EndOver(int command, const std::function<void(HWND)>& change)
    {
        bool isClosed = false;
        ModalDriver driver([&](HWND dialog) {
            change(dialog);
            EXPECT_EQ(SendMessageW(dialog, WM_QUERYENDSESSION, 0, 0), TRUE) << command;
            EXPECT_EQ(SendMessageW(m_window.Handle(), WM_QUERYENDSESSION, 0, 0), TRUE) << command;
            SendMessageW(m_window.Handle(), WM_ENDSESSION, TRUE, 0);
            isClosed = IsStoreClosed();
        });
        Command(static_cast<UINT>(command));
        EXPECT_TRUE(driver.Ran()) << command;
        EXPECT_EQ(m_window.Handle(), nullptr) << command;
        EXPECT_TRUE(TakeQuitMessage()) << command;
        return isClosed;
    }
};

// Another thread, for another program, sends a message to a window while a write waits for a lock, which goes
// once the message is answered.
class SentWhileWaiting {
  public:
    SentWhileWaiting(const std::wstring& path, HWND window, UINT message, WPARAM wParam)
        : m_lock(std::make_unique<LockedStore>(path))
    {
        s_current = this;
        m_begin = [=, this] {
            m_sender = std::thread([=, this] {
                SendMessageW(window, message, wParam, 0);
                m_isAnswered = true;
            });
        };
        SetStoreWaiter([](DWORD milliseconds) { s_current->Wait(milliseconds); });
    }
    ~SentWhileWaiting()
    {
        SetStoreWaiter(nullptr);
        if (m_sender.joinable())
            m_sender.join();
    }
    SentWhileWaiting(const SentWhileWaiting&) = delete;
    SentWhileWaiting& operator=(const SentWhileWaiting&) = delete;

    std::function<void()> onAnswered = [] {}; // within the wait

  private:
    void Wait(DWORD milliseconds)
    {
        if (m_begin)
            std::exchange(m_begin, nullptr)();
        PaintWhileWaiting(milliseconds);
        if (m_isAnswered && m_lock) {
            onAnswered();
            m_lock.reset();
        }
    }

    static inline SentWhileWaiting* s_current = nullptr;
    std::unique_ptr<LockedStore> m_lock;
    std::function<void()> m_begin;
    std::thread m_sender;
    std::atomic<bool> m_isAnswered = false;
};

TEST_F(MainWindowSession, WhatEndsTheWindowWithinAWriteThatWaitsComesBehindTheWrite)
{
    for (const UINT message : {UINT{WM_ENDSESSION}, UINT{WM_CLOSE}}) {
        HWND window = Create();
        ASSERT_NE(window, nullptr);
        App().SetNumber(kOptions, L"ConfirmDelete", 0);
        const CEOID id = AddEntry(L"deleted", 1000);
        m_window.List().Refresh();
        m_window.List().SelectRecord(id);
        bool wasThere = false;
        DWORD stored = 0xDEAD;
        {
            SentWhileWaiting sent(m_store.Path(), window, message, message == WM_ENDSESSION);
            sent.onAnswered = [&] {
                wasThere = IsWindow(window) && App().Journal().IsOpen();
                stored = App().GetNumber(kSettings, L"wLeft", 0xDEAD);
            };
            Command(CMD_DELETE_ENTRY);
        }
        EXPECT_TRUE(wasThere) << message;
        EXPECT_EQ(stored != 0xDEAD, message == WM_ENDSESSION) << "the process may be ended at once then";
        EXPECT_EQ(App().Journal().SeekRecord(id), 0u) << "it was deleted";
        PumpMessages();
        EXPECT_FALSE(IsWindow(window)) << message;
        EXPECT_TRUE(IsStoreClosed()) << message;
        EXPECT_TRUE(TakeQuitMessage());
        App().RemoveValue(kSettings, L"wLeft");
    }
}

TEST_F(MainWindowSession, AnEditorsSaveThatWaitsIsDoneBeforeTheEnd)
{
    const RescueFolder folder;
    HWND window = Create();
    ASSERT_NE(window, nullptr);
    size_t putAside = 0;
    bool wasOpen = false;
    ModalDriver driver([&](HWND editor) {
        SendMessageW(GetDlgItem(editor, IDC_BODY), EM_SETSEL, 0, -1);
        SendMessageW(GetDlgItem(editor, IDC_BODY), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"Saved"));
        {
            SentWhileWaiting sent(m_store.Path(), editor, WM_ENDSESSION, TRUE);
            sent.onAnswered = [&] { putAside = folder.Unsaved(); };
            SendMessageW(editor, WM_COMMAND, CMD_SAVE, 0);
        }
        wasOpen = IsWindow(editor) != FALSE;
        SendMessageW(window, WM_ENDSESSION, TRUE, 0);
    });
    Command(CMD_NEW_ENTRY);
    ASSERT_TRUE(driver.Ran());
    EXPECT_TRUE(wasOpen);
    EXPECT_EQ(putAside, 1u) << "in case that the save does not come to its end";
    EXPECT_TRUE(IsStoreClosed());
    EXPECT_TRUE(TakeQuitMessage());
    ASSERT_NE(App().Journal().Open(nullptr), 0);
    EXPECT_EQ(App().Journal().RecordCount(), 1u);
}

TEST_F(MainWindowSession, TheStoreIsClosedAlsoWhereADialogHoldsIt)
{
    for (const int command : {CMD_NEW_ENTRY, CMD_FILTER_CATEGORIES, CMD_CATEGORIES_LIST, CMD_FIND}) {
        ASSERT_NE(Create(), nullptr);
        ASSERT_NE(AddEntry(L"kept", 1000), 0u);
        EXPECT_TRUE(EndOver(command, [](HWND) {})) << command;
    }
}

// What a Cancel drops is not worth holding up the session for; an entry's text is.
TEST_F(MainWindowSession, SettingsAndListsThatAreNotAcceptedAreDropped)
{
    ASSERT_NE(Create(), nullptr);
    EXPECT_TRUE(EndOver(CMD_SUBJECTS_LIST, [](HWND dialog) {
        SetDlgItemTextW(dialog, IDC_QUICK_SUBJECT, L"Lunch");
        SendMessageW(dialog, WM_COMMAND, IDC_ADD_SUBJECT, 0);
        EXPECT_EQ(SendDlgItemMessageW(dialog, IDC_QUICK_SUBJECT_LIST, LB_GETCOUNT, 0, 0), 1);
    }));
    EXPECT_EQ(App().GetNumber(kSettings, L"scount", 0xDEAD), 0xDEADu);

    ASSERT_NE(Create(), nullptr);
    EXPECT_TRUE(EndOver(CMD_OPTIONS, [](HWND dialog) { CheckDlgButton(dialog, IDC_CONFIRM_DELETE, 0); }));
    EXPECT_EQ(App().GetNumber(kOptions, L"ConfirmDelete", 0xDEAD), 0xDEADu);

    ASSERT_NE(Create(), nullptr);
    const DWORD columns = App().GetNumber(kSettings, L"iCols", 0xDEAD);
    EXPECT_TRUE(EndOver(CMD_CUSTOMIZE_COLUMNS,
                        [](HWND dialog) { SendMessageW(dialog, WM_COMMAND, IDC_DEFAULT_COLUMNS, 0); }));
    EXPECT_EQ(App().GetNumber(kSettings, L"iCols", 0xDEAD), columns);

    ASSERT_NE(Create(), nullptr);
    {
        DbCategories categories;
        ASSERT_NE(categories.Open(), 0);
        ASSERT_NE(categories.Add(L"Work"), 0u);
    }
    EXPECT_TRUE(EndOver(CMD_CATEGORIES_LIST, [](HWND dialog) {
        constexpr int kDelete = 1003;
        SendMessageW(dialog, WM_COMMAND, kDelete, 0);
        EXPECT_EQ(SendDlgItemMessageW(dialog, 1000, LVM_GETITEMCOUNT, 0, 0), 0);
    }));
    DbCategories categories;
    ASSERT_NE(categories.Open(), 0);
    EXPECT_EQ(categories.GetNumActiveRecords(), 1);
}

} // namespace
