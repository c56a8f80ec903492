#include "export/export_fields.h"

#include "export/export_fixture.h"

namespace {

class ExportFieldsTest : public testing::Test {
  protected:
    ExportFieldsTest() { ResetColumns(&m_columns, 1024); }

    std::vector<int> Chosen() const
    {
        std::vector<int> properties;
        for (const ZColumn& column : m_columns.columns)
            if (column.Has(kColumnExport))
                properties.push_back(column.Property());
        return properties;
    }

    ColumnSet m_columns;
};

TEST_F(ExportFieldsTest, AllButTheOneWithoutAColumnAreOffered)
{
    EXPECT_EQ(Chosen(), std::vector<int>{});
    EXPECT_EQ(ChooseAllFields(&m_columns),
              (std::vector<std::wstring>{L"Date", L"Subject", L"Body", L"Categories", L"Type", L"Priority",
                                         L"Sensitivity", L"End Time", L"Duration", L"Contacts"}));
    EXPECT_EQ(Chosen(), (std::vector<int>{101, 102, 103, 104, 105, 107, 108, 109, 110, 111}));
}

TEST_F(ExportFieldsTest, TitlesComeInTheOrderOfTheColumns)
{
    MoveColumn(&m_columns, 10, 0);
    m_columns.columns[2].Add(kColumnNeverOffered);
    const auto titles = ChooseAllFields(&m_columns);
    ASSERT_EQ(titles.size(), 9u);
    EXPECT_EQ(titles[0], L"Contacts");
    EXPECT_EQ(titles[1], L"Date");
    EXPECT_EQ(titles[2], L"Body");
}

TEST_F(ExportFieldsTest, WhatIsLeftSelectedIsChosen)
{
    ChooseAllFields(&m_columns);
    const DWORD before = m_columns.columns[1].GetFlags();
    ChooseFields({true, false, false, false, false, true, false, false, false, true}, &m_columns);
    EXPECT_EQ(Chosen(), (std::vector<int>{101, 107, 111}));
    EXPECT_EQ(m_columns.columns[1].GetFlags(), before & ~DWORD{0x40}) << "nothing else changes";
    ChooseFields({false, true}, &m_columns);
    EXPECT_EQ(Chosen(), std::vector<int>{102}) << "what is not told is not chosen";
}

TEST_F(ExportFieldsTest, BothBitsDecide)
{
    ZColumn column;
    column.Copy(L"Title", 101, 0, 10);
    EXPECT_TRUE(IsExportable(column));
    EXPECT_FALSE(IsChosenForExport(column));
    column.Add(0x40);
    EXPECT_TRUE(IsChosenForExport(column));
    column.Add(0x20);
    EXPECT_FALSE(IsExportable(column));
    EXPECT_FALSE(IsChosenForExport(column));
}

} // namespace
