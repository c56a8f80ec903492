#include <algorithm>

#include "bare_find.h"
#include "data/journal_entry.h"
#include "figures.h"
#include "find/find_search.h"
#include "measure.h"
#include "report.h"
#include "stores.h"

namespace bench {

namespace {

constexpr const wchar_t* kAscii = L"Serlinba"; // its second half comes before its first one often enough
constexpr const wchar_t* kEverywhere = L"e";
constexpr const wchar_t* kCyrillic = L"НОЧАРА";
constexpr const wchar_t* kGreek = L"ΖΩΜΑ";
constexpr const wchar_t* kHan = L"会议书店";

FindRequest Request(CEPROPID by, const wchar_t* text)
{
    FindRequest request;
    request.by = by;
    request.text = text;
    return request;
}

// A journal in which no search is known yet.
class SearchedJournal {
  public:
    explicit SearchedJournal(uint32_t records) : m_journal(StorePath(records)) {}

    // From the first match to the last one, as Find does it.
    double TimeFind(CEPROPID by, const wchar_t* text)
    {
        const FindRequest request = Request(by, text);
        Forget();
        const Stopwatch watch;
        m_lastCount = FindEntries(m_journal, request, 0).size();
        return watch.Microseconds();
    }
    double TimeFindDay(const SYSTEMTIME& day)
    {
        FindRequest request;
        request.date = day;
        Forget();
        const Stopwatch watch;
        m_lastCount = FindEntries(m_journal, request, 0).size();
        return watch.Microseconds();
    }
    std::vector<CEOID> Find(CEPROPID by, const wchar_t* text)
    {
        return FindEntries(m_journal, Request(by, text), 0);
    }

  private:
    // Another search takes the place of the one that is remembered.
    void Forget() { (void)m_journal.FindText(kPropType, L"nothing", true); }

    OpenJournal m_journal;
    size_t m_lastCount = 0;
};

void Check(const char* what, std::vector<CEOID> product, std::vector<CEOID> bare)
{
    std::sort(product.begin(), product.end());
    std::sort(bare.begin(), bare.end());
    if (product != bare)
        Fail("a search has found other records than the bare one");
    PrintCount(what, product.size());
}

template <typename Work> double Time(Work work)
{
    const Stopwatch watch;
    (void)work();
    return watch.Microseconds();
}

void CheckAll(SearchedJournal& journal, BareStore& store)
{
    PrintHeading("What the searches find among 65,535 entries");
    Check("a rare text", journal.Find(kPropBody, kAscii), BareFindAscii(store, "body", "serlinba"));
    Check("a Cyrillic text", journal.Find(kPropBody, kCyrillic), BareFindAny(store, "body", kCyrillic));
    Check("a Greek text", journal.Find(kPropBody, kGreek), BareFindAny(store, "body", kGreek));
    Check("a Chinese text", journal.Find(kPropBody, kHan), BareFindAny(store, "body", kHan));
    Check("a letter", journal.Find(kPropBody, kEverywhere), BareFindAscii(store, "body", "e"));
    Check("a text in the subject", journal.Find(kPropSubject, kAscii),
          BareFindAscii(store, "subject", "serlinba"));
}

void MeasureTexts(SearchedJournal& journal, BareStore& store)
{
    constexpr double kLimit = 1.2, kBeyondLimit = 1.5;
    const auto times = MediansByTurns({
        [&] { return Time([&] { return BareFindAscii(store, "body", "serlinba"); }); },
        [&] { return Time([&] { return BareFindAny(store, "body", kCyrillic); }); },
        [&] { return journal.TimeFind(kPropBody, kAscii); },
        [&] { return journal.TimeFind(kPropBody, kCyrillic); },
        [&] { return journal.TimeFind(kPropBody, kGreek); },
        [&] { return journal.TimeFind(kPropBody, kHan); },
        [&] { return journal.TimeFind(kPropBody, kEverywhere); },
        [&] { return Time([&] { return BareFindAscii(store, "subject", "serlinba"); }); },
        [&] { return journal.TimeFind(kPropSubject, kAscii); },
    });
    PrintHeading("A search through 65,535 bodies, match case off");
    PrintRatio("a rare text, to a bare scan for it", times[2], times[0], kLimit);
    PrintRatio("a Cyrillic text, to a bare scan for the ASCII text", times[3], times[0], kBeyondLimit);
    PrintRatio("a Greek text, to a bare scan for the ASCII text", times[4], times[0], kBeyondLimit);
    PrintRatio("a Chinese text, to a bare scan for the ASCII text", times[5], times[0], kBeyondLimit);
    PrintRatio("a Cyrillic text, to a bare scan that decodes", times[3], times[1], kBeyondLimit);
    PrintRatio("a letter that most have, every match in turn, to the scan", times[6], times[0], kLimit);
    PrintRatio("a rare text in the subjects, to a bare scan for it", times[8], times[7], 0);
}

void MeasureGrowth(SearchedJournal& full, SearchedJournal& middle)
{
    constexpr double kLimit = 8.5;
    constexpr SYSTEMTIME kDay{2010, 6, 0, 15, 0, 0, 0, 0};
    const auto times = MediansByTurns({
        [&] { return full.TimeFind(kPropBody, kAscii); },
        [&] { return middle.TimeFind(kPropBody, kAscii); },
        [&] { return full.TimeFind(kPropBody, kCyrillic); },
        [&] { return middle.TimeFind(kPropBody, kCyrillic); },
        [&] { return full.TimeFind(kPropBody, L""); },
        [&] { return middle.TimeFind(kPropBody, L""); },
        [&] { return full.TimeFind(kPropSubject, kAscii); },
        [&] { return middle.TimeFind(kPropSubject, kAscii); },
        [&] { return full.TimeFindDay(kDay); },
        [&] { return middle.TimeFindDay(kDay); },
    });
    PrintHeading("A search in 65,535 entries, to one in 10,000");
    PrintRatio("a rare text in the bodies", times[0], times[1], kLimit);
    PrintRatio("a Cyrillic text in the bodies", times[2], times[3], kLimit);
    PrintRatio("the empty text, every match in turn", times[4], times[5], kLimit);
    PrintRatio("a rare text in the subjects", times[6], times[7], kLimit);
    PrintRatio("a day", times[8], times[9], 0);
}

} // namespace

void MeasureFinds()
{
    SearchedJournal full(kFull);
    BareStore store(StorePath(kFull));
    CheckAll(full, store);
    MeasureTexts(full, store);
    SearchedJournal middle(kMiddle);
    MeasureGrowth(full, middle);
}

} // namespace bench
