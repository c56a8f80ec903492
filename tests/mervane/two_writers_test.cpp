// Two programs that write as fast as they can, and this one, which shows what they write.
//
// A short form runs with all tests; tests/two_writers.sh runs the long one.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <map>

#include "change_listener.h"
#include "peer_process.h"
#include "records.h"
#include "support/test_store.h"

namespace {

constexpr int kTables = 2;
constexpr const char* kSelect[kTables] = {"SELECT oid, subject FROM journal",
                                          "SELECT oid, file_as FROM contacts"};
// Milliseconds. The long form asks for a second of a machine that does nothing else.
constexpr int kMostStale = 5000;
constexpr ULONGLONG kSilence =
    60'000;                      // in which neither writer gets a write done: they have locked each other out
constexpr DWORD kLookEvery = 50; // milliseconds between two comparisons

using Texts = std::map<CEOID, std::wstring>;

int NumberFrom(const char* name, int otherwise)
{
    const char* text = getenv(name);
    return text && *text ? atoi(text) : otherwise;
}

// "NAME VERSION TICK"
DWORD VersionIn(const std::wstring& text)
{
    return static_cast<DWORD>(wcstoul(text.c_str() + text.find(L' '), nullptr, 10));
}

ULONGLONG TickIn(const std::wstring& text)
{
    return wcstoull(text.c_str() + text.rfind(L' '), nullptr, 10);
}

// What a list over a database shows: read anew when the window is told, and only then.
class Shown {
  public:
    Shown(CeDBase& database, CEPROPID text) : m_database(database), m_text(text) {}

    void MaybeRead(Listener& listener)
    {
        const Heard heard = listener.Take();
        if (heard.empty())
            return;
        const CeDBase::ReadScope scope(m_database);
        m_texts.clear();
        for (uint32_t row = 0; const CEOID id = m_database.IdOfRow(row); ++row) {
            wchar_t text[100];
            m_database.GetStr(id, text, 100, m_text);
            m_texts[id] = text;
        }
    }
    const Texts& Now() const { return m_texts; }

  private:
    CeDBase& m_database;
    CEPROPID m_text;
    Texts m_texts;
};

// What is in the file, by a connection of its own.
Texts Stored(RawStore& store, const char* select)
{
    Texts texts;
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(store.Handle(), select, -1, &statement, nullptr), SQLITE_OK);
    while (sqlite3_step(statement) == SQLITE_ROW)
        texts[static_cast<CEOID>(sqlite3_column_int64(statement, 0))] =
            static_cast<const wchar_t*>(sqlite3_column_text16(statement, 1));
    sqlite3_finalize(statement);
    return texts;
}

// For how long rows were shown otherwise than they are stored.
class Staleness {
  public:
    // stalls: for how long this program itself was not run in all, which makes nothing stale.
    void Compare(const Texts& shown, const Texts& stored, ULONGLONG stalls)
    {
        const ULONGLONG now = GetTickCount64();
        for (const auto& [id, text] : stored) {
            const auto row = shown.find(id);
            if (row == shown.end() || row->second != text)
                Note(Since(TickIn(text), stalls), now, stalls);
        }
        std::map<CEOID, Start> gone;
        for (const auto& [id, text] : shown)
            if (!stored.contains(id))
                gone[id] = m_gone.contains(id) ? m_gone[id] : Start{now, stalls};
        m_gone = std::move(gone);
        for (const auto& [id, start] : m_gone)
            Note(start, now, stalls);
        m_history.emplace_back(now, stalls);
    }
    ULONGLONG Most() const { return m_most; }

  private:
    struct Start {
        ULONGLONG tick = 0;
        ULONGLONG stalls = 0;
    };

    // What the stalls came to at that time.
    Start Since(ULONGLONG tick, ULONGLONG stalls) const
    {
        for (auto at = m_history.rbegin(); at != m_history.rend(); ++at)
            if (at->tick <= tick)
                return {tick, at->stalls};
        return {tick, m_history.empty() ? stalls : 0};
    }
    void Note(const Start& start, ULONGLONG now, ULONGLONG stalls)
    {
        const ULONGLONG age = now - std::min(now, start.tick), stalled = stalls - start.stalls;
        m_most = std::max(m_most, age - std::min(age, stalled));
    }

    std::map<CEOID, Start> m_gone;
    std::vector<Start> m_history;
    ULONGLONG m_most = 0;
};

// A writer, and what it was told is saved.
class Writer {
  public:
    Writer(const std::wstring& name, int count, int seed)
        : m_process(L"churn " + name + L" " + std::to_wstring(count) + L" " + std::to_wstring(seed))
    {}

    // Takes over what it has said by now; false when that is nothing.
    bool Listen()
    {
        bool heard = false;
        for (; m_process.Unheard() >= 3 * sizeof(DWORD); heard = true) {
            const DWORD table = *m_process.Hear(), id = *m_process.Hear(), version = *m_process.Hear();
            ++m_count;
            if (version)
                m_saved[table][id] = version;
            else
                m_saved[table].erase(id);
        }
        return heard;
    }
    int Count() const { return m_count; }
    DWORD Wait() { return m_process.Wait(); }
    const std::map<CEOID, DWORD>& Saved(int table) const { return m_saved[table]; }

  private:
    PeerProcess m_process;
    std::map<CEOID, DWORD> m_saved[kTables]; // versions
    int m_count = 0;
};

class TwoWriters : public testing::Test {
  protected:
    void SetUp() override
    {
        ASSERT_EQ(m_journal.Open(m_listeners[0].Window()), 1);
        ASSERT_EQ(m_contacts.Open(kContactsKey, m_listeners[1].Window()), 1);
    }
    // compare is called while what has come is not yet shown.
    template <typename Compare> void Pass(Compare compare)
    {
        const ULONGLONG start = GetTickCount64();
        MsgWaitForMultipleObjects(0, nullptr, FALSE, kPause, QS_ALLINPUT);
        const ULONGLONG waited = GetTickCount64() - start;
        m_stalls += waited > 2 * kPause ? waited - kPause : 0;
        compare();
        // In a flood there is no end of messages.
        MSG message;
        for (int i = 0; i < kMessages && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i)
            DispatchMessageW(&message);
        for (int table = 0; table < kTables; ++table)
            m_shown[table].MaybeRead(m_listeners[table]);
    }
    void MaybeCompare(RawStore& raw)
    {
        if (GetTickCount64() - m_compared < kLookEvery)
            return;
        m_compared = GetTickCount64();
        for (int table = 0; table < kTables; ++table)
            m_stale[table].Compare(m_shown[table].Now(), Stored(raw, kSelect[table]), m_stalls);
    }
    // Until both have done all; false when nothing goes on any more.
    bool ShowUntilDone(Writer& first, Writer& second, int count)
    {
        RawStore raw(m_store.Path());
        ULONGLONG last = GetTickCount64();
        while (first.Count() < count || second.Count() < count) {
            const bool firstHeard = first.Listen(), secondHeard = second.Listen();
            if (firstHeard || secondHeard)
                last = GetTickCount64();
            if (GetTickCount64() - last > kSilence)
                return false;
            Pass([&] { MaybeCompare(raw); });
        }
        return true;
    }
    bool ShowsWhatIsStored()
    {
        RawStore raw(m_store.Path());
        const Texts stored[] = {Stored(raw, kSelect[0]), Stored(raw, kSelect[1])};
        const ULONGLONG end = GetTickCount64() + kWaitLimit;
        while (m_shown[0].Now() != stored[0] || m_shown[1].Now() != stored[1]) {
            if (GetTickCount64() > end)
                return false;
            Pass([] {});
        }
        return true;
    }

    static constexpr DWORD kPause = 10; // milliseconds
    static constexpr int kMessages = 50;

    TestStore m_store;
    Listener m_listeners[kTables];
    DbJournal m_journal;
    DbContacts m_contacts;
    Shown m_shown[kTables]{{m_journal, kSubject}, {m_contacts, kContactsKey}};
    Staleness m_stale[kTables];
    ULONGLONG m_stalls = 0, m_compared = 0;
};

TEST_F(TwoWriters, LoseNothingAndAreSeenWithinASecond)
{
    const int count = NumberFrom("TWO_WRITERS_COUNT", 300), seed = NumberFrom("TWO_WRITERS_SEED", 1);
    const auto limit = static_cast<ULONGLONG>(NumberFrom("TWO_WRITERS_LIMIT", kMostStale));
    const ULONGLONG start = GetTickCount64();
    Writer first(L"first", count, seed), second(L"second", count, seed + 1'000'000);
    ASSERT_TRUE(ShowUntilDone(first, second, count)) << "the writers have stopped, seed " << seed;
    const ULONGLONG time = GetTickCount64() - start;
    EXPECT_EQ(first.Wait(), 0u);
    EXPECT_EQ(second.Wait(), 0u);
    EXPECT_TRUE(ShowsWhatIsStored());
    RawStore raw(m_store.Path());
    for (int table = 0; table < kTables; ++table) {
        std::map<CEOID, DWORD> expected = first.Saved(table), stored;
        expected.insert(second.Saved(table).begin(), second.Saved(table).end());
        for (const auto& [id, text] : Stored(raw, kSelect[table]))
            stored[id] = VersionIn(text);
        EXPECT_EQ(stored, expected) << "table " << table << ", seed " << seed;
        EXPECT_LE(m_stale[table].Most(), limit) << "table " << table << ", seed " << seed;
    }
    EXPECT_EQ(raw.Text("PRAGMA integrity_check"), "ok");
    printf(
        "two writers, %d writes each, seed %d: %llu ms; stale at most %llu ms (entries), %llu ms (contacts); "
        "not run for %llu ms\n",
        count, seed, time, m_stale[0].Most(), m_stale[1].Most(), m_stalls);
}

} // namespace
