// Whether a record passes the filter.
#pragma once

#include <cstdint>
#include <vector>

#include "data/filter_state.h"
#include "mervane/order/row_filter.h"

// The test of a filter as it stands, made once for many records. One that is not in force passes everything.
class FilterTest {
  public:
    // Not explicit: a filter as it stands is the test of one record.
    FilterTest(const FilterState& filter);

    // The property that is tested.
    CEPROPID Property() const;
    // null: the record lacks the property. One without a date passes the filters by date, one without
    // categories no filter by categories.
    bool Passes(const CEPROPVAL* value) const;

    friend bool operator==(const FilterTest& a, const FilterTest& b);

  private:
    bool HasDate(const FILETIME& time) const;

    FilterState m_filter;            // what its mode asks for, and no more
    std::vector<CEOID> m_categories; // ascending; none when the categories cannot be opened
    // The range in units of a TimeCount, both ends included.
    uint64_t m_from = 0;
    uint64_t m_to = 0;
};

// 1: the record passes; 0: it is filtered out. Passes everything while the filter is not active, and a record
// without properties.
int PassesFilter(const FilterTest& filter, WORD count, const CEPROPVAL* properties);

// The same of the whole journal's rows.
RowFilter MakeRowFilter(const FilterTest& test);
