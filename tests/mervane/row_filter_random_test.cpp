// Random stores, filters, sorts and writes, beside the plain order parted by what is read of each record.
#include "row_filter_fixture.h"

#include <random>

namespace {

class RandomRowFilters : public RowFilters, public testing::WithParamInterface<unsigned> {
  protected:
    unsigned Random(unsigned below) { return static_cast<unsigned>(m_random() % below); }

    Sent RandomValues(bool isNew)
    {
        Sent sent;
        if (isNew ? Random(5) != 0 : Random(2) != 0)
            Random(6) ? sent.Time(kDate, Random(40)) : sent.Delete(kDate);
        if (Random(2))
            RandomBlob(&sent);
        if (Random(3) == 0)
            sent.Number(kPriority, static_cast<int>(Random(4)) - 1);
        if (Random(3) == 0)
            sent.Text(kSubject, std::wstring(1, L'a' + static_cast<wchar_t>(Random(4))));
        return sent;
    }
    void RandomBlob(Sent* sent)
    {
        const unsigned kind = Random(6);
        if (kind == 0)
            sent->Delete(kCategories);
        else if (kind == 1)
            sent->Blob(kCategories, std::vector<BYTE>(Random(9), static_cast<BYTE>(Random(3))));
        else
            sent->Ids(kCategories, {Random(4), Random(4), Random(4)});
    }
    RowFilter RandomFilter()
    {
        const bool empties = Random(2) != 0;
        const unsigned word = Random(4);
        switch (Random(4)) {
        case 0: return {kDate, IsThird, empties};
        case 1:
            return {kDate, [word](const CEPROPVAL* v) { return !v || CountOf(v->val.filetime) % 4 == word; }};
        case 2:
            return {kPriority, [word](const CEPROPVAL* v) { return v && v->val.iVal < int(word); }, empties};
        default: return {kCategories, [word](const CEPROPVAL* v) { return HasWord(v, word); }, empties};
        }
    }
    void WriteSomething()
    {
        const CEOID id = m_ids.empty() ? 0 : m_ids[Random(static_cast<unsigned>(m_ids.size()))];
        const unsigned action = Random(8);
        if (action == 0 && id) {
            ASSERT_EQ(m_journal.DeleteRecord(id), 1);
            std::erase(m_ids, id);
        } else if (action < 5 && id) {
            ASSERT_EQ(RandomValues(false).Write(m_journal, id), id);
        } else {
            m_ids.push_back(RandomValues(true).Write(m_journal));
            ASSERT_NE(m_ids.back(), 0u);
        }
    }
    void WriteFromOutside()
    {
        RawStore raw(m_store.Path());
        ASSERT_TRUE(
            raw.Run("UPDATE journal SET date = abs(random() % 40), categories = NULL WHERE oid % 7 = 3"));
    }
    void SortSomehow()
    {
        constexpr CEPROPID kSorts[] = {kDate, kSubject, kPriority, kCategories};
        SortBy(kSorts[Random(4)], Random(2));
    }

    std::mt19937 m_random{GetParam()};
};

TEST_P(RandomRowFilters, AreThePlainOrderParted)
{
    constexpr int kRounds = 8, kSteps = 60;
    for (int round = 0; round < kRounds; ++round) {
        SortSomehow();
        const RowFilter filter = RandomFilter();
        ASSERT_NE(m_journal.SetRowFilter(filter), 0u);
        ExpectPartedRows(filter);
        {
            CeDBase::BulkScope bulk(m_journal);
            for (int step = 0; step < kSteps; ++step) {
                WriteSomething();
                if (step % 20 == 0)
                    SortSomehow();
                (void)m_journal.PassingRows(); // the rows are there and follow
            }
            ExpectPartedRows(filter);
            ASSERT_EQ(bulk.Commit(), 1);
        }
        WriteSomething();
        ExpectPartedRows(filter);
        WriteFromOutside();
        ExpectPartedRows(filter);
        EXPECT_EQ(Walk(m_journal), Walk(m_plain));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomRowFilters, testing::Range(1u, 7u));

} // namespace
