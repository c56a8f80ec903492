#include "mervane/store/store_write.h"

namespace mervane {

// A read transaction cannot become a write transaction once another process has written, so the one that may
// be open ends here and is renewed afterwards.
StoreWrite::StoreWrite(Store& store) : m_store(store)
{
    Connection& connection = m_store.m_connection;
    if (m_store.m_bulk.depth) {
        m_open = !m_store.m_bulk.failed && connection.InTransaction();
        if (!m_open)
            m_store.Note(m_store.m_bulk.trouble);
        return;
    }
    m_open = m_store.BeginWrite();
}

StoreWrite::~StoreWrite()
{
    Connection& connection = m_store.m_connection;
    if (m_store.m_bulk.depth) {
        // A full disk and the like end the whole transaction, not only the statement. After any other failure
        // the rest could still be written, but what is done together is not done in part.
        const bool failed = !m_committed && connection.Sql().Trouble() != StoreTrouble::None;
        m_store.m_bulk.failed |= failed || !connection.InTransaction();
        m_store.NoteBulkTrouble();
        return;
    }
    connection.Rollback();
    if (m_store.m_readDepth)
        m_store.BeginView();
}

bool StoreWrite::Commit(const TableChange& what)
{
    m_committed = IsOpen() && (m_store.m_bulk.depth || m_store.CommitAs(what));
    return m_committed;
}

} // namespace mervane
