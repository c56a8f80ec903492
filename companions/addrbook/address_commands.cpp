#include "addrbook/address_window.h"
#include "addrbook/contact_dialog.h"
#include "addrbook/file_choice.h"
#include "addrbook/import_dialog.h"
#include "addrbook/transfer/contact_record.h"
#include "addrbook/transfer/count_text.h"
#include "addrbook/transfer/export_job.h"
#include "addrbook/transfer/import_job.h"
#include "addrbook/transfer_dialog.h"
#include "mervane/file/trouble.h"
#include "util/text_cut.h"

namespace addrbook {

namespace {

constexpr const wchar_t* kTitle = L"Address Book";

// None when all are gone; otherwise none is.
StoreTrouble DeleteAll(DbContacts& contacts, const std::vector<CEOID>& ids)
{
    CeDBase::BulkScope bulk(contacts);
    for (const CEOID id : ids) {
        // One that another program has just deleted is gone as well.
        (void)contacts.DeleteRecord(id);
        if (bulk.Trouble() != StoreTrouble::None)
            return bulk.Trouble();
    }
    if (bulk.Commit())
        return StoreTrouble::None;
    return bulk.Trouble() == StoreTrouble::None ? StoreTrouble::Other : bulk.Trouble();
}

SaveAnswer NotSaved(StoreTrouble trouble)
{
    return {false, NotDoneText(L"The contact was not saved", trouble, TypedText::StillThere)};
}

} // namespace

// Nothing, and the contact as it is now, where another program has changed it. One that was deleted meanwhile
// is written anew, not lost.
std::optional<SaveAnswer> AddressWindow::SaveOver(CEOID* id, vcard::Contact* loaded,
                                                  const vcard::Contact& contact)
{
    CeDBase::BulkScope bulk(m_contacts); // nobody changes it between the look and the write
    vcard::Contact now;
    const bool isThere = *id && LoadContact(m_contacts, *id, &now);
    if (*id && !isThere && m_contacts.Trouble() != StoreTrouble::None)
        return NotSaved(m_contacts.Trouble());
    if (isThere && now != *loaded && now != contact) {
        *loaded = now;
        return std::nullopt;
    }
    const CEOID written = isThere ? ContactSaver().SaveChanges(m_contacts, *id, now, contact)
                                  : ContactSaver().Save(m_contacts, 0, contact);
    if (!written || !bulk.Commit())
        return NotSaved(bulk.Trouble());
    *id = written;
    return SaveAnswer{true, {}};
}

SaveAnswer AddressWindow::Save(HWND dialog, CEOID* id, vcard::Contact loaded, const vcard::Contact& contact)
{
    constexpr const wchar_t* kChanged = L"Another program has changed this contact since it was opened.\n\n"
                                        L"Save yours in its place?";
    for (;;) {
        if (const std::optional<SaveAnswer> answer = SaveOver(id, &loaded, contact))
            return *answer;
        if (MessageBoxW(dialog, kChanged, kTitle, MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) != IDYES)
            return {};
    }
}

void AddressWindow::NewContact()
{
    CEOID id = 0;
    if (EditContact(m_instance, m_window, {}, true, [&](HWND dialog, const vcard::Contact& contact) {
            return Save(dialog, &id, {}, contact);
        }))
        Reload(id);
}

void AddressWindow::EditCurrent()
{
    CEOID id = Focused();
    vcard::Contact contact;
    if (!id)
        return;
    if (!LoadContact(m_contacts, id, &contact)) {
        const StoreTrouble trouble = m_contacts.Trouble();
        const std::wstring why = trouble == StoreTrouble::None
                                     ? std::wstring(L"Another program has deleted this contact.")
                                     : NotDoneText(L"The contact cannot be opened", trouble);
        MessageBoxW(m_window, why.c_str(), kTitle, MB_OK | MB_ICONERROR);
        return Reload();
    }
    if (EditContact(m_instance, m_window, contact, false, [&](HWND dialog, const vcard::Contact& changed) {
            return Save(dialog, &id, contact, changed);
        }))
        Reload(id);
}

void AddressWindow::DeleteSelected()
{
    const std::vector<CEOID> ids = Selected();
    if (ids.empty())
        return;
    const int row = ListView_GetNextItem(m_list, -1, LVNI_SELECTED);
    const std::wstring what =
        ids.size() == 1
            ? L"\"" + Shortened(m_rows.Text(static_cast<size_t>(row), Column::FileAs), kLongestShownName) +
                  L"\""
            : CountText(ids.size(), L"contact", L"contacts");
    if (MessageBoxW(m_window, (L"Delete " + what + L"?").c_str(), kTitle, MB_YESNO | MB_ICONQUESTION) !=
        IDYES)
        return;
    const StoreTrouble trouble = DeleteAll(m_contacts, ids);
    if (trouble != StoreTrouble::None) {
        MessageBoxW(m_window, NotDoneText(L"The contacts were not deleted", trouble).c_str(), kTitle,
                    MB_OK | MB_ICONERROR);
        return Reload();
    }
    if (!m_isLoaded)
        return;
    m_rows.Load();
    ShowRows({}, 0, row);
}

void AddressWindow::AskImport()
{
    const std::wstring path = ChooseFileToOpen(m_window);
    if (!path.empty())
        Import(path);
}

void AddressWindow::AskExport()
{
    const std::wstring path = m_rows.Count() ? ChooseFileToSave(m_window) : std::wstring();
    if (!path.empty())
        Export(path);
}

void AddressWindow::Import(const std::wstring& path)
{
    {
        ImportJob job(m_contacts, path, [this](HWND owner, const ImportQuestion& question) {
            return AskAboutCard(m_instance, owner, question);
        });
        (void)RunTransfer(m_instance, m_window, L"Import", job);
    }
    Reload();
}

// A file that is there may have those that cannot be read now.
bool AddressWindow::MayReplace(const std::wstring& path)
{
    if (m_rows.Trouble() == StoreTrouble::None || GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES)
        return true;
    const std::wstring question = L"Not all contacts can be read: " + ReasonText(m_rows.Trouble()) +
                                  L".\n\nReplace the file by one that lacks them?";
    return MessageBoxW(m_window, question.c_str(), kTitle, MB_YESNO | MB_ICONEXCLAMATION | MB_DEFBUTTON2) ==
           IDYES;
}

void AddressWindow::Export(const std::wstring& path)
{
    if (!MayReplace(path))
        return;
    ExportJob job(m_contacts, m_rows.Ids(), path, m_rows.Trouble());
    (void)RunTransfer(m_instance, m_window, L"Export", job);
}

} // namespace addrbook
