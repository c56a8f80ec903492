#include "editor/quick_subjects.h"

#include "editor_fixture.h"
#include "support/import_watch.h"

namespace {

using Texts = std::vector<std::wstring>;

Texts g_names;

LSTATUS WINAPI WatchedSetValue(HKEY, const wchar_t* name, DWORD, DWORD, const BYTE*, DWORD)
{
    g_names.emplace_back(name);
    return ERROR_SUCCESS;
}

std::wstring Option(const wchar_t* name)
{
    wchar_t text[kSettingTextSize];
    Own().GetString(L"Options", name, L"(none)", text);
    return text;
}

class QuickSubjectsTest : public testing::Test {
  protected:
    TestRegistry m_registry;
};

TEST_F(QuickSubjectsTest, TheCountIsASettingAndTheTextsAreOptions)
{
    StoreQuickSubjects(&Own(), {L"Walk", L"Apples"});
    EXPECT_EQ(Own().GetNumber(L"Settings", L"scount", 99), 2u);
    EXPECT_EQ(Option(L"subj0"), L"Walk") << "in list order, not sorted";
    EXPECT_EQ(Option(L"subj1"), L"Apples");
    EXPECT_EQ(Own().GetNumber(L"Options", L"scount", 99), 99u);
    EXPECT_EQ(ReadQuickSubjects(Own()), (Texts{L"Walk", L"Apples"}));
}

TEST_F(QuickSubjectsTest, TheCountIsStoredFirst)
{
    g_names.clear();
    const ImportWatch<decltype(&RegSetValueExW)> watch(&__imp_RegSetValueExW, WatchedSetValue);
    StoreQuickSubjects(&Own(), {L"A", L"B", L"C"});
    EXPECT_EQ(g_names, (Texts{L"scount", L"subj0", L"subj1", L"subj2"}));
}

TEST_F(QuickSubjectsTest, WhatALongerListLeftStays)
{
    StoreQuickSubjects(&Own(), {L"A", L"B", L"C"});
    StoreQuickSubjects(&Own(), {L"D"});
    EXPECT_EQ(Option(L"subj0"), L"D");
    EXPECT_EQ(Option(L"subj1"), L"B");
    EXPECT_EQ(Option(L"subj2"), L"C");
    EXPECT_EQ(ReadQuickSubjects(Own()), Texts{L"D"});
    StoreQuickSubjects(&Own(), {});
    EXPECT_EQ(Own().GetNumber(L"Settings", L"scount", 99), 0u);
    EXPECT_TRUE(ReadQuickSubjects(Own()).empty());
}

TEST_F(QuickSubjectsTest, ALongSubjectIsStoredWhole)
{
    const std::wstring longest(240, L'x');
    StoreQuickSubjects(&Own(), {longest});
    wchar_t text[300] = L"";
    DWORD bytes = sizeof text;
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, L"Software\\Quillmarsh\\Journal\\Options", L"subj0",
                           RRF_RT_REG_SZ, nullptr, text, &bytes),
              ERROR_SUCCESS);
    EXPECT_EQ(text, longest);
}

TEST_F(QuickSubjectsTest, ManyComeBackInTheirOrder)
{
    Texts subjects;
    for (int i = 0; i < 300; ++i)
        subjects.push_back(L"Subject " + std::to_wstring(i));
    StoreQuickSubjects(&Own(), subjects);
    EXPECT_EQ(ReadQuickSubjects(Own()), subjects);
}

} // namespace
