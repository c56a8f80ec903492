#include "addrbook/import_dialog.h"

#include "addrbook/resource.h"
#include "addrbook/transfer/contact_record.h"
#include "ui/dialog.h"
#include "ui/launch.h"
#include "util/text_cut.h"

namespace addrbook {

namespace {

constexpr int kMoreOfTheText = 240; // pixels at 96 dpi, where there is room
constexpr size_t kLongestValue = 2000;

// Each line of a value behind a tab, the first one behind its label.
void AppendValue(std::wstring& out, const wchar_t* label, const std::string& value)
{
    std::wstring text = value.empty() ? L"(nothing)" : Shortened(ToWide(value), kLongestValue);
    for (size_t end = 0; (end = text.find(L"\r\n", end)) != std::wstring::npos; end += 3)
        text.insert(end + 2, L"\t");
    out.append(label).append(L"\t").append(text).append(L"\r\n");
}

// Each field's name, then what is there now and what it would be.
std::wstring ChangesText(const std::vector<FieldChange>& changes)
{
    std::wstring text;
    for (const FieldChange& change : changes) {
        text.append(text.empty() ? L"" : L"\r\n").append(change.field).append(L"\r\n");
        AppendValue(text, L"    now", change.before);
        AppendValue(text, L"    then", change.after);
    }
    return text;
}

class ImportDialog : public Dialog {
  public:
    explicit ImportDialog(const ImportQuestion& question) : m_question(question) {}
    ImportAnswer Answer() const { return m_answer; }

    void OnOK() override { Choose(ImportChoice::Skip); }
    void OnCancel() override { Choose(ImportChoice::Cancel); }

  protected:
    bool OnInitDialog() override;
    const wchar_t* HelpTopic() const override { return kHelpTransfer; }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;

  private:
    void Choose(ImportChoice choice);

    const ImportQuestion& m_question;
    ImportAnswer m_answer;
};

bool ImportDialog::OnInitDialog()
{
    const std::wstring name = Shortened(ToWide(m_question.name), kLongestShownName);
    SetDlgItemTextW(GetWindow(), IDC_CARD_NAME,
                    (L"A card in the file would change \"" + name + L"\":").c_str());
    HWND changes = GetItem(IDC_CARD_CHANGES);
    const UINT tabStop = 32; // dialog units
    SendMessageW(changes, EM_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&tabStop));
    SetWindowTextW(changes, ChangesText(m_question.changes).c_str());
    Grow(kMoreOfTheText, {IDC_CARD_CHANGES},
         {IDC_CARD_LACKS, IDC_CARD_FOR_ALL, IDC_CARD_UPDATE, IDC_CARD_ADD, IDOK, IDCANCEL});
    CenterOnWorkArea();
    SetFocus(changes);
    SendMessageW(changes, EM_SETSEL, 0, 0);
    return false;
}

void ImportDialog::Choose(ImportChoice choice)
{
    m_answer = {choice, IsButtonChecked(IDC_CARD_FOR_ALL)};
    End(1);
}

bool ImportDialog::OnMessage(UINT message, WPARAM wParam, LPARAM, LRESULT*)
{
    if (message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED && LOWORD(wParam) == IDC_CARD_UPDATE)
        Choose(ImportChoice::Update);
    if (message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED && LOWORD(wParam) == IDC_CARD_ADD)
        Choose(ImportChoice::AddAsNew);
    return false;
}

} // namespace

ImportAnswer AskAboutCard(HINSTANCE instance, HWND owner, const ImportQuestion& question)
{
    ImportDialog dialog(question);
    (void)dialog.DoModal(instance, IDD_IMPORT_QUESTION, owner);
    return dialog.Answer();
}

} // namespace addrbook
