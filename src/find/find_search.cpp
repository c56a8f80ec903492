#include "find/find_search.h"

#include <unordered_set>

#include "util/time_count.h"

namespace {

class Search {
  public:
    Search(DbJournal& journal, const FindRequest& request)
        : m_journal(journal), m_request(request), m_byDate(PropertyType(request.by) == CEVT_FILETIME)
    {
        if (!m_date.FromSystemTime(request.date))
            m_date.Zero();
    }

    CEOID First()
    {
        if (m_byDate)
            return m_journal.FindDate(m_request.by, m_date.ToFileTime());
        return m_journal.FindText(m_request.by, m_request.text.c_str(), m_request.matchCase);
    }
    CEOID After(CEOID id)
    {
        if (m_byDate)
            return m_journal.FindDateAfter(id, m_request.by, m_date.ToFileTime());
        return m_journal.FindTextAfter(id, m_request.by, m_request.text.c_str(), m_request.matchCase);
    }

  private:
    DbJournal& m_journal;
    const FindRequest& m_request;
    bool m_byDate;
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
