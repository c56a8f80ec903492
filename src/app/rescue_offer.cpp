#include "app/rescue_offer.h"

#include "editor/entry_editor.h"
#include "editor/stored_rescue.h"
#include "mervane/file/store_path.h"
#include "util/date_text.h"
#include "util/text_cut.h"

namespace {

constexpr size_t kShownSubject = 100; // characters

std::wstring ShownSubject(const std::wstring& subject)
{
    if (subject.empty() || IsPlaceholder(subject, kSubjectPlaceholder))
        return L"(no subject)";
    return Shortened(subject, kShownSubject);
}

std::wstring Question(const EntryToWrite& entry)
{
    const std::wstring date = DateTimeText(entry.date);
    return L"An entry that was not saved was found: " + ShownSubject(entry.subject) +
           (date.empty() ? L"" : L", ") + date + L".\n\nOpen it?";
}

void Open(HWND owner, EntryList& list, RescueFile file, RescueState state)
{
    CEOID id = 0;
    OpenRescuedEntry(list.GetSession(), owner, std::move(file), std::move(state), &id);
    if (!list.Handle())
        return; // the window was closed behind the editor
    list.SetCurrentEntry(id);
    list.Refresh();
}

} // namespace

void OfferRescues(HWND owner, EntryList& list)
{
    for (RescueFile& file : RescueFile::FindLeft(mervane::StoreNumber(mervane::StorePath()))) {
        std::optional<RescueState> state = file.Read();
        if (!state)
            continue;
        if (IsStored(list.GetSession().journal, *state)) {
            (void)file.Remove(); // the next start looks again
            continue;
        }
        switch (MessageBoxW(owner, Question(state->entry).c_str(), L"Journal", MB_YESNO | MB_ICONQUESTION)) {
        case IDYES: Open(owner, list, std::move(file), std::move(*state)); break;
        case IDNO: file.SetAside(); break;
        default: return;
        }
        if (!list.Handle())
            return;
    }
}
