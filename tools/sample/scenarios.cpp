#include "sample/scenarios.h"

namespace sample {

namespace {

constexpr Scenario kScenarios[] = {
    {L"Conversation", L"Coffee with {n}", Category::Business, 30, Tone::Talk},
    {L"Conversation", L"In the corridor: {n} on {p}", Category::Projects, 10, Tone::Talk},
    {L"Conversation", L"Parents' evening, {n}", Category::Family, 30, Tone::Private},
    {L"Conversation", L"Γιορτή στο σπίτι: {n}", Category::Family, 180, Tone::Private},
    {L"Document", L"Contract draft {d} for {c}", Category::Customers, 60, Tone::Paper},
    {L"Document", L"House insurance papers", Category::Home, 30, Tone::Private},
    {L"Document", L"{p}: drawings, revision {d}", Category::Projects, 120, Tone::Paper},
    {L"E-mail message", L"RE: {p} timetable", Category::Projects, 10, Tone::Mail},
    {L"E-mail message", L"Prices for next year from {c}", Category::Suppliers, 15, Tone::Mail},
    {L"E-mail message", L"AW: Termin am Vormittag ({n})", Category::Office, 5, Tone::Mail},
    {L"E-mail message", L"Holiday photos 📷", Category::Family, 15, Tone::Private},
    {L"Fax", L"Signed order {d} to {c}", Category::Customers, 5, Tone::Paper},
    {L"Fax", L"Delivery note from {c}", Category::Suppliers, 5, Tone::Paper},
    {L"Letter", L"Reply to {n}", Category::Business, 30, Tone::Paper},
    {L"Letter", L"Tax office, question about year {d}", Category::Finance, 60, Tone::Private},
    {L"Letter", L"Brief an {n}", Category::Office, 30, Tone::Paper},
    {L"Meeting", L"Weekly meeting {p}", Category::Projects, 60, Tone::Meeting},
    {L"Meeting", L"Budget round", Category::Finance, 120, Tone::Meeting},
    {L"Meeting", L"Visit at {c}", Category::Customers, 240, Tone::Meeting},
    {L"Meeting", L"Besprechung mit {n} über {p}", Category::Office, 60, Tone::Meeting},
    {L"Meeting", L"Συνάντηση με {n}", Category::Business, 60, Tone::Meeting},
    {L"Meeting", L"Dentist", Category::Health, 30, Tone::Private},
    {L"Meeting cancellation", L"{n} cannot come: {p}", Category::Projects, 0, Tone::Mail},
    {L"Meeting cancellation", L"Choir practice is off", Category::Home, 0, Tone::Private},
    {L"Meeting request", L"{n} asks for an hour on {p}", Category::Projects, 5, Tone::Mail},
    {L"Meeting request", L"Trade fair with {c}?", Category::Travel, 5, Tone::Mail},
    {L"Meeting response", L"Yes to {n}, Thursday", Category::Business, 5, Tone::Mail},
    {L"Meeting response", L"Accepted: {p} kick-off", Category::Projects, 0, Tone::Mail},
    {L"Microsoft Access", L"Address list of {c} cleaned up", Category::Customers, 120, Tone::Work},
    {L"Microsoft Access", L"Library of the allotment club", Category::Home, 60, Tone::Work},
    {L"Microsoft Excel", L"Household accounts, month {d}", Category::Finance, 60, Tone::Work},
    {L"Microsoft Excel", L"{p}: cost estimate", Category::Projects, 180, Tone::Work},
    {L"Microsoft PowerPoint", L"Slides for {c}", Category::Customers, 180, Tone::Work},
    {L"Microsoft PowerPoint", L"{p} for the board", Category::Projects, 120, Tone::Work},
    {L"Microsoft Word", L"Minutes of {p}", Category::Projects, 30, Tone::Work},
    {L"Microsoft Word", L"Course notes, lesson {d}", Category::Study, 60, Tone::Work},
    {L"Note", L"Idea: {p} without the paper", Category::Ideas, 0, Tone::Talk},
    {L"Note", L"Books to read 📚", Category::Ideas, 0, Tone::Private},
    {L"Note", L"学习笔记：第{d}课", Category::Study, 60, Tone::Work},
    {L"Note", L"Marmalade, {d} jars", Category::Home, 120, Tone::Private},
    {L"Phone call", L"{n}", Category::Business, 10, Tone::Talk},
    {L"Phone call", L"{n} about {p}", Category::Projects, 15, Tone::Talk},
    {L"Phone call", L"Rückruf {n}", Category::Office, 5, Tone::Talk},
    {L"Phone call", L"与{n}通电话", Category::Suppliers, 15, Tone::Talk},
    {L"Phone call", L"{c}: where is order {d}?", Category::Suppliers, 10, Tone::Talk},
    {L"Phone call", L"Birthday 🎂 {n}", Category::Family, 30, Tone::Private},
    {L"Phone call", L"Doctor's surgery, results", Category::Health, 5, Tone::Private},
    {L"Remote session", L"Printer at {c} set up again", Category::Customers, 60, Tone::Work},
    {L"Remote session", L"Helped {n} with the new machine", Category::Home, 60, Tone::Work},
    {L"Task", L"Book the ferry", Category::Travel, 30, Tone::Private},
    {L"Task", L"Invoice {d} to {c}", Category::Finance, 15, Tone::Work},
    {L"Task", L"{p}: test plan", Category::Projects, 240, Tone::Work},
    {L"Task", L"Running, {d} km", Category::Health, 60, Tone::Private},
    {L"Task", L"Umzug vorbereiten", Category::Home, 480, Tone::Private},
    {L"Task", L"Site visit, {p}", Category::Travel, 720, Tone::Meeting},
    {L"Task", L"Course, two days", Category::Study, 2880, Tone::Meeting},
    {L"Task request", L"{n} wants figures for {p}", Category::Finance, 5, Tone::Mail},
    {L"Task request", L"Second reader for {c}", Category::Customers, 5, Tone::Mail},
    {L"Task response", L"Figures sent to {n}", Category::Finance, 5, Tone::Mail},
    {L"Task response", L"{p}: done by {n}", Category::Projects, 0, Tone::Mail},
};

constexpr const wchar_t* kTalkLines[] = {
    L"{n} rang back at once.",
    L"Wants an answer by the end of the week.",
    L"New number from next month on.",
    L"{c} has moved; the old address still works until spring.",
    L"Asked about {p}. I said we are {d} days late.",
    L"Agreed: nothing in writing before the price is settled.",
    L"Grüße an alle, auch an {n}.",
    L"Call again on Monday, not before ten.",
    L"\"We would rather wait than do it twice.\"",
    L"{n} goes on holiday in {d} days.",
};

constexpr const wchar_t* kMeetingLines[] = {
    L"Present: {n} and two from {c}.",
    L"1. {p}: on time.",
    L"2. Money: {d} per cent over, reasons see the sheet.",
    L"3. Next time we meet at {c}.",
    L"{n} writes the minutes.",
    L"Nobody had read the paper beforehand.",
    L"Decided: we drop the second variant.",
    L"Offen: wer bezahlt die Fahrt?",
    L"Lunch was good, the room too warm.",
    L"Παρόντες: {n} και δύο συνεργάτες.",
};

constexpr const wchar_t* kMailLines[] = {
    L"Thank you for your message.",
    L"Attached is the list as of today ({d} pages).",
    L"{n} copied in.",
    L"Please confirm that Thursday suits you.",
    L"The figures for {p} follow tomorrow.",
    L"Mit freundlichen Grüßen",
    L"附件是最新的清单。",
    L"I have told {c} as well.",
    L"No reply needed.",
};

constexpr const wchar_t* kPaperLines[] = {
    L"Two copies, one to be signed and sent back.",
    L"Page {d} is missing in the copy from {c}.",
    L"Filed under {p}.",
    L"{n} has the original.",
    L"Clause {d} changed: notice of three months, not two.",
    L"Sent by registered post.",
    L"To be kept for ten years.",
    L"Änderungen mit Bleistift am Rand.",
};

constexpr const wchar_t* kWorkLines[] = {
    L"Took longer than planned.",
    L"Left to do: the last {d} rows and the totals.",
    L"Saved on the shared drive, folder {p}.",
    L"Asked {n} to look over it.",
    L"The old version had an error in column {d}.",
    L"Works now, cause was a loose cable.",
    L"生词：桥、溪、茶、书店。",
    L"Remember: print on both sides.",
    L"Backup made before and after.",
};

constexpr const wchar_t* kPrivateLines[] = {
    L"Bring cake 🍰 and the big pot.",
    L"Paid {d} in cash, receipt in the blue folder.",
    L"{n} sends love.",
    L"Rain all day, so we stayed in.",
    L"Next appointment in {d} months.",
    L"Don't forget the spare key.",
    L"Mum liked it very much.",
    L"Es war viel zu kurz.",
    L"Ωραία μέρα, λίγος αέρας.",
};

constexpr const wchar_t* kProjects[] = {
    L"Harbour Lights",   L"Project Kingfisher", L"the new catalogue", L"Lindenhof", L"the archive move",
    L"Winter Programme", L"Orchard Road 14",    L"Neue Website",      L"the pilot", L"Greenhouse",
    L"茶叶目录",         L"Ποσειδών",           L"Summer School",     L"the van",   L"Stock-taking",
};

} // namespace

const Scenario& PickScenario(Random& random)
{
    return random.Pick(kScenarios);
}

const wchar_t* PickLine(Tone tone, Random& random)
{
    switch (tone) {
    case Tone::Talk: return random.Pick(kTalkLines);
    case Tone::Meeting: return random.Pick(kMeetingLines);
    case Tone::Mail: return random.Pick(kMailLines);
    case Tone::Paper: return random.Pick(kPaperLines);
    case Tone::Work: return random.Pick(kWorkLines);
    case Tone::Private: return random.Pick(kPrivateLines);
    }
    return kTalkLines[0];
}

const wchar_t* PickProject(Random& random)
{
    return random.Pick(kProjects);
}

} // namespace sample
