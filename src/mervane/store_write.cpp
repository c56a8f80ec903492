#include "mervane/store_write.h"

namespace mervane {

// A read transaction cannot become a write transaction once another process has written, so the one that may
// be open ends here and is renewed afterwards.
StoreWrite::StoreWrite(Store& store) : m_store(store)
{
    Connection& connection = m_store.m_connection;
    if (m_store.m_bulkDepth) {
        m_open = !m_store.m_bulkFailed && connection.InTransaction();
        if (!m_open)
            m_store.Note(m_store.m_bulkTrouble);
        return;
    }
    m_open = m_store.BeginWrite();
}

StoreWrite::~StoreWrite()
{
    Connection& connection = m_store.m_connection;
    if (m_store.m_bulkDepth) {
        // A full disk and the like end the whole transaction, not only the statement.
        m_store.m_bulkFailed |= !connection.InTransaction();
        m_store.NoteBulkTrouble();
        return;
    }
    connection.Rollback();
    if (m_store.m_readDepth)
        m_store.BeginView();
}

bool StoreWrite::Commit(const TableChange& what)
{
    return m_store.m_bulkDepth ? m_open : m_store.CommitAs(what);
}

} // namespace mervane
