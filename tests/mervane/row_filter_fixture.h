// A journal under a filter, beside the same one without.
#pragma once

#include "mervane/order/row_filter.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "records.h"
#include "support/test_store.h"

// Dates that divide by three.
inline bool IsThird(const CEPROPVAL* value)
{
    return value && CountOf(value->val.filetime) % 3 == 0;
}

// Whether a blob is a count and words of which one is the wanted one.
inline bool HasWord(const CEPROPVAL* value, DWORD wanted)
{
    if (!value || value->val.blob.dwCount < sizeof(DWORD))
        return false;
    std::vector<DWORD> words(value->val.blob.dwCount / sizeof(DWORD));
    memcpy(words.data(), value->val.blob.lpb, words.size() * sizeof(DWORD));
    return std::find(words.begin() + 1, words.end(), wanted) != words.end();
}

class RowFilters : public testing::Test {
  protected:
    void SetUp() override
    {
        ASSERT_EQ(m_journal.Open(nullptr), 1);
        ASSERT_EQ(m_plain.Open(nullptr), 1);
    }
    void AddDates(const std::vector<uint64_t>& dates)
    {
        for (const uint64_t date : dates)
            m_ids.push_back(AddEntry(m_journal, L"s", date));
    }
    void SortBy(CEPROPID property, DWORD flags = 0)
    {
        m_journal.SetSort({property, flags}, 1);
        m_plain.SetSort({property, flags}, 1);
    }
    CEOID Current() { return Received(m_journal).Id(); }
    std::vector<CEOID> Rest()
    {
        std::vector<CEOID> rest;
        while (m_journal.SeekNextRecord())
            rest.push_back(Current());
        return rest;
    }
    // The identifiers of the entries with these numbers, in the order of their making.
    std::vector<CEOID> Entries(const std::vector<size_t>& numbers) const
    {
        std::vector<CEOID> ids;
        for (const size_t number : numbers)
            ids.push_back(m_ids[number]);
        return ids;
    }
    // The plain order, parted by what each record's property reads as.
    std::vector<CEOID> Parted(const RowFilter& filter, uint32_t* passing)
    {
        std::vector<CEOID> first, others;
        for (const CEOID id : Walk(m_plain)) {
            const Received all(m_plain, id);
            const CEPROPVAL* value = all.Find(filter.property);
            const bool passes = filter.passes(value) || (filter.emptyPasses && all.Count() == 0);
            (passes ? first : others).push_back(id);
        }
        *passing = static_cast<uint32_t>(first.size());
        first.insert(first.end(), others.begin(), others.end());
        return first;
    }
    void ExpectRows(const std::vector<CEOID>& expected, uint32_t passing)
    {
        const CeDBase::ReadScope scope(m_journal);
        ASSERT_EQ(m_journal.PassingRows(), passing);
        ASSERT_EQ(Rows(m_journal), expected);
        for (size_t row = 0; row < expected.size(); ++row) {
            ASSERT_EQ(m_journal.RowOf(expected[row]), static_cast<int>(row));
            ASSERT_EQ(m_journal.IdOfRow(static_cast<uint32_t>(row)), expected[row]);
        }
        EXPECT_EQ(m_journal.IdOfRow(static_cast<uint32_t>(expected.size())), 0u);
        EXPECT_EQ(m_journal.RecordCount(), expected.size());
    }
    void ExpectPartedRows(const RowFilter& filter)
    {
        uint32_t passing = 0;
        const std::vector<CEOID> expected = Parted(filter, &passing);
        ExpectRows(expected, passing);
    }

    TestStore m_store;
    DbJournal m_journal;
    DbJournal m_plain; // never under a filter
    std::vector<CEOID> m_ids;
};
