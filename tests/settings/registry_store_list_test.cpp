// Finding a text in a numbered list of settings.
#include "settings/registry_store_fixture.h"

namespace {

class FindListStringTest : public RegistryStoreTest {
  protected:
    void Store(const std::vector<const wchar_t*>& texts)
    {
        for (size_t i = 0; i < texts.size(); ++i)
            m_store.SetString(L"Options", (L"Find" + std::to_wstring(i)).c_str(), texts[i]);
    }
    int Find(const wchar_t* text, int count = 5)
    {
        return m_store.FindListString(L"Options", L"Find", text, count);
    }
};

TEST_F(FindListStringTest, GivesTheFirstPlaceFromOne)
{
    Store({L"a", L"b", L"c", L"b"});
    EXPECT_EQ(Find(L"a"), 1);
    EXPECT_EQ(Find(L"b"), 2);
    EXPECT_EQ(Find(L"c"), 3);
    EXPECT_EQ(Find(L"d"), 0);
}

TEST_F(FindListStringTest, LooksAtCountValues)
{
    Store({L"a", L"b", L"c"});
    EXPECT_EQ(Find(L"c", 3), 3);
    EXPECT_EQ(Find(L"c", 2), 0);
    EXPECT_EQ(Find(L"a", 1), 1);
    EXPECT_EQ(Find(L"a", 0), 0);
    EXPECT_EQ(Find(L"a", -1), 0);
    EXPECT_EQ(Find(L"a", INT_MIN), 0);
    EXPECT_EQ(Find(L"d", INT_MAX), 0);
}

TEST_F(FindListStringTest, EndsAtTheFirstEmptyOrMissingValue)
{
    Store({L"a", L"", L"c"});
    EXPECT_EQ(Find(L"c"), 0);
    m_store.RemoveValue(L"Options", L"Find1");
    EXPECT_EQ(Find(L"c"), 0);
    EXPECT_EQ(Find(L""), 0);
    Store({L"a", std::wstring(156, L'x').c_str(), L"c"}); // reads as the default, which is empty
    EXPECT_EQ(Find(L"c"), 0);
}

TEST_F(FindListStringTest, CaseMatters)
{
    Store({L"Meeting", L"Mee", L"meeting"});
    EXPECT_EQ(Find(L"meeting"), 3);
    EXPECT_EQ(Find(L"MEETING"), 0);
    EXPECT_EQ(Find(L"Mee"), 2);
    EXPECT_EQ(Find(L"Meet"), 0);
}

TEST_F(FindListStringTest, EqualIsWhatTheSystemSays)
{
    ASSERT_EQ(CompareStringW(LOCALE_SYSTEM_DEFAULT, 0, L"Stra\u00dfe", -1, L"Strasse", -1), CSTR_EQUAL);
    Store({L"Stra\u00dfe"});
    EXPECT_EQ(Find(L"Strasse"), 1);
}

TEST_F(FindListStringTest, ThePrefixNamesTheList)
{
    Store({L"a"});
    m_store.SetString(L"Options", L"subj0", L"b");
    EXPECT_EQ(m_store.FindListString(L"Options", L"subj", L"b", 5), 1);
    EXPECT_EQ(m_store.FindListString(L"Options", L"Find", L"b", 5), 0);
    EXPECT_EQ(m_store.FindListString(L"Settings", L"Find", L"a", 5), 0);
}

} // namespace
