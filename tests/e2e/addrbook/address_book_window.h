// What the end-to-end tests of the address book share.
#pragma once

#include <string>
#include <vector>

#include "addrbook/resource.h"
#include "e2e/harness/input.h"
#include "e2e/harness/journal_test.h"
#include "e2e/harness/message_box.h"
#include "e2e/harness/remote_list_view.h"
#include "e2e/harness/remote_window.h"

constexpr const wchar_t* kAddressBook = L"AddressBook"; // the window's class
constexpr int kFileName = 0x47C;                        // the system's box for a file's name

using Names = std::vector<std::wstring>;

class AddressBookTest : public JournalTest {
  protected:
    ~AddressBookTest() override { DeleteFileW(m_file.c_str()); }
    HWND Window() const { return m_book.MainWindow(); }
    RemoteListView List() const { return RemoteListView(Control(Window(), IDC_CONTACTS)); }
    bool ShowsNames(const std::vector<std::wstring>& names) const
    {
        return WaitFor([&] {
            std::vector<std::wstring> shown;
            for (int row = 0; row < List().RowCount(); ++row)
                shown.push_back(List().Text(row, 0));
            return shown == names;
        });
    }
    // Enters a contact into the window that Ctrl+N opens, from the keyboard alone.
    bool AddContact(const std::wstring& keys)
    {
        PressKeys({VK_CONTROL, 'N'});
        HWND dialog = WaitForDialogWith(m_book.Id(), IDC_FIRST_NAME);
        if (!dialog || !Activate(dialog))
            return false;
        TypeText(keys);
        PressKey(VK_RETURN);
        return WaitUntilGone(dialog) && WaitForForegroundOf(m_book.Id());
    }
    // The program, with the contacts of m_cards.
    bool StartWithCards()
    {
        if (!WriteFileBytes(m_file, m_cards) || !m_book.Start())
            return false;
        Transfer(CMD_IMPORT);
        return WaitForForegroundOf(m_book.Id());
    }
    static std::string CardOf(const std::string& lines)
    {
        return "BEGIN:VCARD\r\nVERSION:4.0\r\n" + lines + "\r\nEND:VCARD\r\n";
    }
    // Chooses the file in the system's window that the command opens; what the import or export says at its
    // end.
    std::wstring Transfer(int command)
    {
        PostCommand(Window(), command);
        HWND chooser = WaitForDialogWith(m_book.Id(), kFileName);
        if (!chooser || !SetText(Control(chooser, kFileName), m_file))
            return L"no box for a file's name";
        PressButton(chooser, IDOK);
        return EndOfTransfer();
    }
    // Imports the file up to the first question, which is active then; null when none comes.
    HWND AskedByImport()
    {
        PostCommand(Window(), CMD_IMPORT);
        HWND chooser = WaitForDialogWith(m_book.Id(), kFileName);
        if (!chooser || !SetText(Control(chooser, kFileName), m_file))
            return nullptr;
        PressButton(chooser, IDOK);
        HWND question = WaitForDialogWith(m_book.Id(), IDC_CARD_UPDATE);
        return question && Activate(question) ? question : nullptr;
    }
    std::wstring EndOfTransfer()
    {
        HWND dialog = WaitForDialogWith(m_book.Id(), IDC_TRANSFER_BAR);
        if (!dialog || !WaitFor([&] { return IsWindowEnabled(GetDlgItem(dialog, IDOK)) != FALSE; }))
            return L"no end";
        const std::wstring text = TextOf(GetDlgItem(dialog, IDC_TRANSFER_TEXT));
        PressButton(dialog, IDOK);
        return WaitUntilGone(dialog) ? text : L"still open";
    }

    JournalProcess m_book{L"addrbook.exe", kAddressBook};
    std::wstring m_file = m_store.Path() + L".\u4EBA.vcf";
    std::string m_cards;
};
