#include "mervane/store/store.h"
#include "mervane/store/store_write.h"

namespace mervane {

namespace {

// A count that is no number, or none that 31 bits hold, is brought back into the range first.
constexpr const char* kAddToUses =
    "UPDATE categories SET uses = max(0, min(2147483647, ?2 + "
    "iif(typeof(uses) = 'integer', max(0, min(2147483647, uses)), 0))) WHERE oid = ?1";
constexpr const char* kResetUses = "UPDATE categories SET uses = 0 WHERE uses IS NOT 0";

} // namespace

bool Store::AddToUses(CEOID category, int step)
{
    StoreWrite write(*this);
    Statement statement(m_connection.Sql(), kAddToUses);
    statement.BindInteger(1, category);
    statement.BindInteger(2, step);
    if (!write.IsOpen() || !statement.Run() || m_connection.Sql().Changes() != 1)
        return false;
    statement.Reset();
    const Change change{kChangeModified, category, false};
    if (!write.Commit({TableId::Categories, change}))
        return false;
    AfterUses(change);
    return true;
}

bool Store::ResetUses()
{
    StoreWrite write(*this);
    Statement statement(m_connection.Sql(), kResetUses);
    const Change change{kChangeWorkEnded, 0, false};
    if (!write.IsOpen() || !statement.Run() || !write.Commit({TableId::Categories, change}))
        return false;
    AfterUses(change);
    return true;
}

// Names stay as they are, and with them all that is shown of the journal.
void Store::AfterUses(const Change& change)
{
    m_indexes[mervane::IndexOf(TableId::Categories)].reset();
    NoteWrite({TableId::Categories, change});
}

} // namespace mervane
