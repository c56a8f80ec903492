// Opening stores of a test's own, and what lies beside them.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "records.h"
#include "support/test_store.h"

bool Exists(const std::wstring& path);

class Opening : public testing::Test {
  protected:
    const std::wstring& Path() const { return m_store.Path(); }
    std::wstring Beside(const wchar_t* suffix) const { return Path() + suffix; }

    // A store with one entry, closed.
    CEOID MakeStore() const;
    // Opening is refused, whatever the database, and nothing is touched.
    void ExpectRefused(StoreTrouble trouble = StoreTrouble::NotAStore) const;
    static void ExpectUsable(uint32_t records);

    TestStore m_store;
};
