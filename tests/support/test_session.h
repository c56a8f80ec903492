// What the tests of the rooms below the application work over: settings, journal and filter of their own, as
// the application hands them in.
#pragma once

#include "data/filter_state.h"
#include "data/session.h"
#include "mervane/db_journal.h"
#include "settings/registry_store.h"

class OwnSession : public RegistryStore {
  public:
    OwnSession() { Open(kRegistryPath); }

    DbJournal& Journal() { return m_journal; }
    FilterState& Filter() { return m_filter; }
    operator Session() { return {*this, m_journal, m_filter}; }

  private:
    DbJournal m_journal;
    FilterState m_filter;
};

// The one of the test program. Closed between tests.
inline OwnSession& Own()
{
    static OwnSession session;
    return session;
}
