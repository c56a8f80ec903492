#include "find/find_search.h"

#include <unordered_set>

#include "data/journal_entry.h"
#include "util/time_count.h"

namespace {

CEPROPID PropertyOf(SearchBy by)
{
    switch (by) {
    case SearchBy::Subject: return kPropSubject;
    case SearchBy::Entry: return kPropBody;
    case SearchBy::Date: break;
    }
    return kPropDate;
}

class Search {
  public:
    Search(DbJournal& journal, const FindRequest& request)
        : m_journal(journal), m_request(request), m_property(PropertyOf(request.by))
    {
        if (!m_date.FromSystemTime(request.date))
            m_date.Zero();
    }

    CEOID First()
    {
        if (m_request.by == SearchBy::Date)
            return m_journal.FindDate(m_property, m_date.ToFileTime());
        return m_journal.FindText(m_property, m_request.text.c_str(), m_request.matchCase);
    }
    CEOID After(CEOID id)
    {
        if (m_request.by == SearchBy::Date)
            return m_journal.FindDateAfter(id, m_property, m_date.ToFileTime());
        return m_journal.FindTextAfter(id, m_property, m_request.text.c_str(), m_request.matchCase);
    }

  private:
    DbJournal& m_journal;
    const FindRequest& m_request;
    CEPROPID m_property;
    TimeCount m_date;
};

} // namespace

// The record that it started from need not be among the matches, so it may never come back to that one: a
// match that was found already ends it as well.
std::vector<CEOID> FindEntries(DbJournal& journal, const FindRequest& request, CEOID currentEntry)
{
    const CeDBase::ReadScope scope(journal);
    Search search(journal, request);
    std::vector<CEOID> found;
    std::unordered_set<CEOID> seen;
    const bool fromCurrent = request.from == SearchFrom::Current;
    if (fromCurrent)
        seen.insert(currentEntry);
    for (CEOID id = fromCurrent ? search.After(currentEntry) : search.First(); id && seen.insert(id).second;
         id = search.After(id))
        found.push_back(id);
    return found;
}
