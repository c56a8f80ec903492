#include <sqlite3.h>

#include <array>
#include <cstring>
#include <vector>

#include "bare_store.h"
#include "data/journal_entry.h"
#include "figures.h"
#include "measure.h"
#include "report.h"
#include "stores.h"
#include "wine_server.h"

namespace bench {

namespace {

constexpr int kSaves = 301; // by turns, each timed alone
constexpr const char* kSubject = "A subject as long as they are";
constexpr wchar_t kWideSubject[] = L"A subject as long as they are";
constexpr wchar_t kType[] = L"Phone call";

CEPROPVAL Value(CEPROPID id)
{
    return {id, 0, 0, {}};
}

CEPROPVAL Text(CEPROPID id, const wchar_t* text)
{
    CEPROPVAL value = Value(id);
    value.val.lpwstr = const_cast<wchar_t*>(text);
    return value;
}

CEPROPVAL Time(CEPROPID id, int64_t count)
{
    CEPROPVAL value = Value(id);
    value.val.filetime = TimeCount(static_cast<uint64_t>(count)).ToFileTime();
    return value;
}

CEPROPVAL Short(CEPROPID id, short number)
{
    CEPROPVAL value = Value(id);
    value.val.iVal = number;
    return value;
}

// Each save writes another date, so that no two are the same.
int64_t NextDate()
{
    static int64_t s_date = 133'000'000'000'000'000;
    return s_date += 600'000'000;
}

const std::wstring& Body()
{
    static const std::wstring s_body(1100, L'b');
    return s_body;
}

// The properties of an entry, as the editor writes them.
std::array<CEPROPVAL, 9> Properties()
{
    const int64_t date = NextDate();
    return {Short(kPropKind, 3),    Time(kPropDate, date),           Time(kPropEndTime, date),
            Time(kPropDuration, 0), Short(kPropPriority, 1),         Short(kPropSensitivity, 0),
            Text(kPropType, kType), Text(kPropBody, Body().c_str()), Text(kPropSubject, kWideSubject)};
}

// Saves into a copy of a store through the product.
class ProductSaves {
  public:
    explicit ProductSaves(uint32_t count) : m_copy(count, L"product"), m_journal(m_copy.Path()) {}

    double TimeUpdate()
    {
        const auto properties = Properties();
        const CEOID id = NextRecord();
        const Stopwatch watch;
        if (m_journal.WriteRecord(id, properties.size(), properties.data()) != id)
            Fail("a record cannot be changed");
        return watch.Microseconds();
    }
    // As the editor does it: it looks whether the record is still there first.
    double TimeSeekAndUpdate()
    {
        const auto properties = Properties();
        const CEOID id = NextRecord();
        const Stopwatch watch;
        if (m_journal.SeekRecord(id) != id ||
            m_journal.WriteRecord(id, properties.size(), properties.data()) != id)
            Fail("a record cannot be changed");
        return watch.Microseconds();
    }
    double TimeInsert()
    {
        const auto properties = Properties();
        const Stopwatch watch;
        if (!m_journal.WriteRecord(0, properties.size(), properties.data()))
            Fail("a record cannot be written");
        return watch.Microseconds();
    }
    // With what the list asks next: how many rows there are, and where the record stands.
    double TimeInsertAndRow()
    {
        const auto properties = Properties();
        const Stopwatch watch;
        const CEOID id = m_journal.WriteRecord(0, properties.size(), properties.data());
        const bool found = id && m_journal.RecordCount() && m_journal.RowOf(id) >= 0;
        const double time = watch.Microseconds();
        if (!found)
            Fail("a record cannot be written");
        m_last = id;
        return time;
    }
    // What was written last must be in the file for any other connection.
    void CheckLast()
    {
        BareStore store(m_copy.Path());
        const BareStatement statement(store, "SELECT oid, subject FROM journal ORDER BY oid DESC LIMIT 1");
        const bool found =
            sqlite3_step(statement.Get()) == SQLITE_ROW &&
            static_cast<CEOID>(sqlite3_column_int64(statement.Get(), 0)) == m_last &&
            strcmp(reinterpret_cast<const char*>(sqlite3_column_text(statement.Get(), 1)), kSubject) == 0;
        if (!found)
            Fail("the last save is not in the store");
    }

  private:
    CEOID NextRecord() { return m_record = m_record % 900 + 1; }

    StoreCopy m_copy;
    OpenJournal m_journal;
    CEOID m_record = 0;
    CEOID m_last = 0;
};

constexpr const char* kUpdate =
    "UPDATE journal SET date = ?, subject = ?, body = ?, type = ?, kind = ?, priority = ?, sensitivity = ?, "
    "end_time = ?, duration = ? WHERE oid = ?";
constexpr const char* kInsert =
    "INSERT INTO journal(date, subject, body, type, kind, priority, sensitivity, end_time, "
    "duration) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?)";

// The same through one bare statement on another copy.
class BareSaves {
  public:
    explicit BareSaves(uint32_t count)
        : m_copy(count, L"bare"), m_store(m_copy.Path()), m_update(m_store, kUpdate),
          m_insert(m_store, kInsert), m_body(Body().begin(), Body().end())
    {}
    double TimeUpdate()
    {
        sqlite3_stmt* statement = m_update.Get();
        const int64_t date = NextDate();
        m_record = m_record % 900 + 1;
        const Stopwatch watch;
        sqlite3_bind_int64(statement, 10, m_record);
        Run(statement, date);
        return watch.Microseconds();
    }
    double TimeInsert()
    {
        const int64_t date = NextDate();
        const Stopwatch watch;
        Run(m_insert.Get(), date);
        return watch.Microseconds();
    }

  private:
    void Run(sqlite3_stmt* statement, int64_t date)
    {
        sqlite3_bind_int64(statement, 1, date);
        sqlite3_bind_text(statement, 2, kSubject, -1, SQLITE_STATIC);
        sqlite3_bind_text(statement, 3, m_body.c_str(), static_cast<int>(m_body.size()), SQLITE_STATIC);
        sqlite3_bind_text(statement, 4, "Phone call", -1, SQLITE_STATIC);
        sqlite3_bind_int64(statement, 5, 3);
        sqlite3_bind_int64(statement, 6, 1);
        sqlite3_bind_int64(statement, 7, 0);
        sqlite3_bind_int64(statement, 8, date);
        sqlite3_bind_int64(statement, 9, 0);
        if (sqlite3_step(statement) != SQLITE_DONE)
            Fail("SQLite cannot write a record");
        sqlite3_reset(statement);
    }

    StoreCopy m_copy;
    BareStore m_store;
    BareStatement m_update;
    BareStatement m_insert;
    std::string m_body;
    int m_record = 0;
};

struct Saves {
    ProductSaves small{kSmall}, middle{kMiddle}, full{kFull}, million{kMillion};
    BareSaves bare{kFull};
};

void MeasureChanges(Saves& saves)
{
    const auto times = MediansByTurns(
        {[&] { return saves.full.TimeUpdate(); }, [&] { return saves.bare.TimeUpdate(); },
         [&] { return saves.small.TimeUpdate(); }, [&] { return saves.middle.TimeUpdate(); },
         [&] { return saves.million.TimeUpdate(); }, [&] { return saves.full.TimeSeekAndUpdate(); }},
        kSaves);
    PrintRatio("a changed entry, to the bare statement", times[0], times[1], 1.3);
    PrintRatio("a changed entry, 10,000 entries to 1,000", times[3], times[2], 1.2);
    PrintRatio("a changed entry, 65,535 entries to 1,000", times[0], times[2], 1.2);
    PrintRatio("a changed entry, 1,000,000 entries to 1,000", times[4], times[2], 1.2);
    PrintRatio("a changed entry sought before, to the bare statement", times[5], times[1], 0);
}

void MeasureNewEntries(Saves& saves)
{
    const auto times =
        MediansByTurns({[&] { return saves.full.TimeInsert(); }, [&] { return saves.bare.TimeInsert(); },
                        [&] { return saves.small.TimeInsert(); }, [&] { return saves.middle.TimeInsert(); },
                        [&] { return saves.million.TimeInsert(); }},
                       kSaves);
    PrintRatio("a new entry, to the bare statement", times[0], times[1], 1.3);
    PrintRatio("a new entry, 10,000 entries to 1,000", times[3], times[2], 1.2);
    PrintRatio("a new entry, 65,535 entries to 1,000", times[0], times[2], 1.2);
    PrintRatio("a new entry, 1,000,000 entries to 1,000", times[4], times[2], 1.2);
}

void MeasureNewRows(Saves& saves)
{
    const auto times = MediansByTurns({[&] { return saves.small.TimeInsertAndRow(); },
                                       [&] { return saves.full.TimeInsertAndRow(); },
                                       [&] { return saves.million.TimeInsertAndRow(); }},
                                      kSaves);
    PrintRatio("a new entry and its row, 65,535 entries to 1,000", times[1], times[0], 1.2);
    PrintRatio("a new entry and its row, 1,000,000 entries to 1,000", times[2], times[0], 1.2);
}

void MeasureOneSave(const char* heading, Saves& saves)
{
    PrintHeading(heading);
    MeasureChanges(saves);
    MeasureNewEntries(saves);
    MeasureNewRows(saves);
}

} // namespace

void MeasureSaves()
{
    Saves saves;
    if (!KnowsWineServer()) {
        MeasureOneSave("One save, on disk when it returns", saves);
        saves.full.CheckLast();
        return;
    }
    MeasureOneSave("One save, Wine's server on the same processor", saves);
    PinServer(1);
    MeasureOneSave("One save, Wine's server on the other processor", saves);
    saves.full.CheckLast();
}

} // namespace bench
