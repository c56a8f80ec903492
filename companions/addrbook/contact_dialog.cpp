#include "addrbook/contact_dialog.h"

#include <array>
#include <optional>

#include "addrbook/resource.h"
#include "addrbook/transfer/contact_record.h"
#include "formats/vcard/contact_names.h"
#include "formats/vcard/edit.h"
#include "mervane/file/trouble.h"
#include "ui/control_text.h"
#include "ui/dialog.h"
#include "ui/launch.h"

namespace addrbook {

namespace {

constexpr size_t kShownFields = vcard::kFieldCount - 1;
static_assert(static_cast<size_t>(vcard::Field::Extra) == kShownFields);
// In the order of Field.
constexpr std::array<int, kShownFields> kControls = {
    IDC_FILE_AS, IDC_FIRST_NAME, IDC_LAST_NAME, IDC_COMPANY,  IDC_JOB_TITLE,
    IDC_EMAILS,  IDC_PHONES,     IDC_ADDRESS,   IDC_BIRTHDAY, IDC_NOTE};
// Where there is room, the boxes of several lines show so many more.
constexpr int kLine = 13; // pixels at 96 dpi
constexpr int kMoreOfAList = 3;
constexpr int kMoreOfTheNote = 10;
constexpr const wchar_t* kCaption = L"Address Book";

// Blanks at the ends of a text say nothing.
std::string Trimmed(std::string text)
{
    constexpr const char* kBlanks = " \t\n";
    const size_t start = text.find_first_not_of(kBlanks);
    if (start == std::string::npos)
        return {};
    return text.substr(start, text.find_last_not_of(kBlanks) + 1 - start);
}

class ContactDialog : public Dialog {
  public:
    ContactDialog(const vcard::Contact& contact, bool isNew, const ContactSave& save)
        : m_contact(contact), m_isNew(isNew), m_save(save)
    {}

    void OnOK() override;
    void OnCancel() override;

  protected:
    bool OnInitDialog() override;
    const wchar_t* HelpTopic() const override { return kHelpContact; }
    const wchar_t* Unsaved() const override { return IsChanged() ? L"A contact is not saved." : nullptr; }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    std::optional<vcard::Contact> Entered() const;
    bool FillBoxes();
    void Tell(const std::wstring& why) const;
    void FollowNames();
    bool IsChanged() const;
    bool Save();
    void GrowBoxes();

    vcard::Contact m_contact;
    bool m_isNew;
    const ContactSave& m_save;
    // As the controls show the fields: what a control does not show as it is must not change by being shown.
    std::array<std::wstring, kShownFields> m_shown;
    std::string m_ownFileAs; // what File As is of itself
    bool m_filled = false;
};

// false when a box does not take its text.
bool ContactDialog::FillBoxes()
{
    for (size_t i = 0; i < kShownFields; ++i) {
        HWND control = GetItem(kControls[i]);
        SendMessageW(control, EM_LIMITTEXT, 0, 0);
        const bool isSet = SetWindowTextW(control, ToWide(m_contact.texts[i]).c_str()) != FALSE;
        const std::optional<std::wstring> shown = ReadText(control);
        if (!isSet || !shown)
            return false;
        m_shown[i] = *shown;
    }
    return true;
}

void ContactDialog::Tell(const std::wstring& why) const
{
    if (!why.empty())
        MessageBoxW(GetWindow(), why.c_str(), kCaption, MB_OK | MB_ICONERROR);
}

bool ContactDialog::OnInitDialog()
{
    if (!FillBoxes()) {
        Tell(NotDoneText(L"The contact cannot be shown", StoreTrouble::NoMemory));
        End(0);
        return true;
    }
    constexpr wchar_t kDateHint[] = L"YYYY-MM-DD";
    SendMessageW(GetItem(IDC_BIRTHDAY), EM_SETCUEBANNER, TRUE, reinterpret_cast<LPARAM>(kDateHint));
    m_ownFileAs = vcard::FileAsOf(m_contact);
    if (!m_isNew)
        SetWindowTextW(GetWindow(), ToWide(m_contact[vcard::Field::FileAs]).c_str());
    GrowBoxes();
    CenterOnWorkArea();
    m_filled = true;
    return true;
}

// The template fits the smallest screen. The lists get what more there is line by line, the note the rest.
void ContactDialog::GrowBoxes()
{
    for (int line = 0; line < kMoreOfAList; ++line) {
        Grow(kLine, {IDC_EMAILS},
             {IDC_PHONES_LABEL, IDC_PHONES, IDC_ADDRESS_LABEL, IDC_ADDRESS, IDC_NOTE_LABEL, IDC_NOTE, IDOK,
              IDCANCEL});
        Grow(kLine, {IDC_PHONES}, {IDC_ADDRESS_LABEL, IDC_ADDRESS, IDC_NOTE_LABEL, IDC_NOTE, IDOK, IDCANCEL});
        Grow(kLine, {IDC_ADDRESS}, {IDC_NOTE_LABEL, IDC_NOTE, IDOK, IDCANCEL});
    }
    Grow(kMoreOfTheNote * kLine, {IDC_NOTE}, {IDOK, IDCANCEL});
}

// What was not touched stays as it is, to the byte.
std::optional<vcard::Contact> ContactDialog::Entered() const
{
    vcard::Contact contact = m_contact;
    for (size_t i = 0; i < kShownFields; ++i) {
        const std::optional<std::wstring> text = ReadText(GetItem(kControls[i]));
        if (!text)
            return std::nullopt;
        if (*text != m_shown[i])
            contact.texts[i] = Trimmed(ToUtf8(*text));
    }
    return contact;
}

// File As goes with the names until somebody chooses it.
void ContactDialog::FollowNames()
{
    const std::optional<vcard::Contact> entered = Entered();
    if (!entered)
        return;
    const vcard::Contact& contact = *entered;
    const std::string fileAs = vcard::FileAsOf(contact);
    if (contact[vcard::Field::FileAs] == m_ownFileAs && fileAs != m_ownFileAs)
        SetWindowTextW(GetItem(IDC_FILE_AS), ToWide(fileAs).c_str());
    m_ownFileAs = fileAs;
}

bool ContactDialog::OnMessage(UINT message, WPARAM wParam, LPARAM, LRESULT*)
{
    if (message == WM_COMMAND && HIWORD(wParam) == EN_CHANGE && m_filled && LOWORD(wParam) != IDC_FILE_AS)
        FollowNames();
    return false;
}

bool ContactDialog::Save()
{
    const std::optional<vcard::Contact> entered = Entered();
    if (!entered) {
        Tell(NotDoneText(L"The contact was not saved", StoreTrouble::NoMemory, TypedText::StillThere));
        return false;
    }
    vcard::Contact contact = *entered;
    if (contact[vcard::Field::FileAs].empty())
        contact[vcard::Field::FileAs] = vcard::FileAsOf(contact);
    if (contact[vcard::Field::FileAs].empty()) {
        MessageBoxW(GetWindow(), L"A contact needs a name, a company, an e-mail or a phone.", kCaption,
                    MB_OK | MB_ICONINFORMATION);
        SetFocus(GetItem(IDC_FIRST_NAME));
        return false;
    }
    vcard::FollowEdit(m_contact, &contact);
    const SaveAnswer answer = m_save(GetWindow(), contact);
    if (!answer.isSaved)
        Tell(answer.why);
    return answer.isSaved;
}

void ContactDialog::OnOK()
{
    if (Save())
        End(1);
}

// What cannot be read may be anything.
bool ContactDialog::IsChanged() const
{
    if (!m_filled)
        return false;
    const std::optional<vcard::Contact> entered = Entered();
    return !entered || *entered != m_contact;
}

void ContactDialog::OnCancel()
{
    const int answer = IsChanged() ? MessageBoxW(GetWindow(), L"Save the changes to this contact?", kCaption,
                                                 MB_YESNOCANCEL | MB_ICONQUESTION)
                                   : IDNO;
    if (answer == IDYES)
        OnOK();
    else if (answer == IDNO)
        End(0);
}

} // namespace

bool EditContact(HINSTANCE instance, HWND owner, const vcard::Contact& contact, bool isNew,
                 const ContactSave& save)
{
    return ContactDialog(contact, isNew, save).DoModal(instance, IDD_CONTACT, owner) == 1;
}

} // namespace addrbook
