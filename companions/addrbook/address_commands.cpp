#include "addrbook/address_window.h"
#include "addrbook/contact_dialog.h"
#include "addrbook/contact_record.h"
#include "addrbook/count_text.h"
#include "addrbook/export_job.h"
#include "addrbook/file_choice.h"
#include "addrbook/import_dialog.h"
#include "addrbook/import_job.h"
#include "addrbook/short_text.h"
#include "addrbook/transfer_dialog.h"

namespace addrbook {

namespace {

constexpr const wchar_t* kTitle = L"Address Book";

bool DeleteAll(DbContacts& contacts, const std::vector<CEOID>& ids)
{
    CeDBase::BulkScope bulk(contacts);
    for (const CEOID id : ids)
        // One that another program has just deleted is gone as well.
        if (!contacts.DeleteRecord(id) && contacts.SeekRecord(id))
            return false;
    return bulk.Commit() != 0;
}

} // namespace

// A contact that was deleted meanwhile is written anew, not lost.
bool AddressWindow::Save(CEOID* id, const Contact& contact)
{
    if (*id && !m_contacts.SeekRecord(*id))
        *id = 0;
    const CEOID written = ContactSaver().Save(m_contacts, *id, contact);
    if (!written)
        return false;
    *id = written;
    return true;
}

void AddressWindow::NewContact()
{
    CEOID id = 0;
    if (EditContact(m_instance, m_window, {}, true,
                    [&](const Contact& contact) { return Save(&id, contact); }))
        Reload(id);
}

void AddressWindow::EditCurrent()
{
    CEOID id = Focused();
    Contact contact;
    if (!id || !LoadContact(m_contacts, id, &contact))
        return;
    if (EditContact(m_instance, m_window, contact, false,
                    [&](const Contact& changed) { return Save(&id, changed); }))
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
            ? L"\"" + Shortened(m_rows.Text(static_cast<size_t>(row), Column::FileAs), kLongestName) + L"\""
            : CountText(ids.size(), L"contact", L"contacts");
    if (MessageBoxW(m_window, (L"Delete " + what + L"?").c_str(), kTitle, MB_YESNO | MB_ICONQUESTION) !=
        IDYES)
        return;
    if (!DeleteAll(m_contacts, ids))
        MessageBoxW(m_window, L"The contacts cannot be deleted.", kTitle, MB_OK | MB_ICONERROR);
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

void AddressWindow::Export(const std::wstring& path)
{
    ExportJob job(m_contacts, m_rows.Ids(), path);
    (void)RunTransfer(m_instance, m_window, L"Export", job);
}

} // namespace addrbook
