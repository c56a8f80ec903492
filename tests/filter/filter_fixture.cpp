#include "filter/filter_fixture.h"
#include "support/temporary_name.h"

JournalFilterTest::JournalFilterTest()
{
    EXPECT_EQ(m_categories.Open(), 1);
}

CEOID JournalFilterTest::AddCategory(const wchar_t* name, int uses)
{
    const CEOID id = m_categories.Add(name);
    EXPECT_NE(id, 0u);
    for (int i = 0; i < uses; ++i)
        EXPECT_EQ(m_categories.IncUse(id), 1);
    return id;
}

FilterState JournalFilterTest::OnCategories(std::initializer_list<CEOID> ids)
{
    FilterState filter;
    filter.active = filter.categoriesMode = true;
    for (const CEOID id : ids)
        filter.categories.Push({id, 0});
    return filter;
}

FilterState JournalFilterTest::OnMonths(DWORD months)
{
    FilterState filter;
    filter.active = true;
    filter.monthMask = months;
    return filter;
}

// A folder is in the file's place.
NoStore::NoStore()
{
    GetEnvironmentVariableW(L"MERVANE_STORE", m_before, MAX_PATH);
    SetEnvironmentVariableW(L"MERVANE_STORE", TemporaryFolder().c_str());
}

NoStore::~NoStore()
{
    SetEnvironmentVariableW(L"MERVANE_STORE", m_before);
}
