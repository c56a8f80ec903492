// A journal with categories of a test's own.
#pragma once

#include "mervane/db_categories.h"
#include "support/journal_fixture.h"

class JournalFilterTest : public JournalTest {
  protected:
    JournalFilterTest();

    // A category that so many entries use.
    CEOID AddCategory(const wchar_t* name, int uses = 1);
    void Hide(CEOID category) { EXPECT_EQ(m_categories.SetHidden(category, true), 1); }
    static FilterState OnCategories(std::initializer_list<CEOID> ids);
    static FilterState OnMonths(DWORD months);

    DbCategories m_categories;
};

// While it lives, no database can be opened. For tests that have none open.
class NoStore {
  public:
    NoStore();
    ~NoStore();
    NoStore(const NoStore&) = delete;
    NoStore& operator=(const NoStore&) = delete;

  private:
    wchar_t m_before[MAX_PATH] = L"";
};
