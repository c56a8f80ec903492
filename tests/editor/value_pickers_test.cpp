#include "editor/value_pickers.h"

#include <gtest/gtest.h>

#include "data/entry_types.h"
#include "editor/picker_menus.h"
#include "editor/zoom.h"
#include "res/resource.h"
#include "ui/screen/scale.h"
#include "util/duration_text.h"

namespace {

std::vector<std::wstring> TextsOf(std::span<const wchar_t* const> texts)
{
    return {texts.begin(), texts.end()};
}

std::wstring MenuText(HMENU menu, int position)
{
    wchar_t text[64] = L"";
    GetMenuStringW(menu, static_cast<UINT>(position), text, 64, MF_BYPOSITION);
    return text;
}

void ExpectMenu(int button, const std::vector<std::pair<int, std::wstring>>& items)
{
    const UniqueMenu menu = PickerMenu(button);
    ASSERT_TRUE(menu);
    ASSERT_EQ(GetMenuItemCount(menu.get()), static_cast<int>(items.size()));
    for (int i = 0; i < static_cast<int>(items.size()); ++i) {
        EXPECT_EQ(GetMenuItemID(menu.get(), i), static_cast<UINT>(items[static_cast<size_t>(i)].first));
        EXPECT_EQ(MenuText(menu.get(), i), items[static_cast<size_t>(i)].second);
    }
}

void ExpectFace(const ButtonFace& face, const wchar_t* text, int image, int width)
{
    EXPECT_STREQ(face.text, text);
    EXPECT_EQ(face.image, image);
    EXPECT_EQ(face.width, width);
}

TEST(ValuePickers, AnEntryIsAPhoneCallByDefault)
{
    EXPECT_STREQ(kEntryTypes[kDefaultType], L"Phone call");
}

TEST(ValuePickers, FindsATypeByPrefixFromBehindTheFirstOne)
{
    EXPECT_EQ(FindTypeByPrefix(L"Meeting"), 5);
    EXPECT_EQ(FindTypeByPrefix(L"meeting C"), 6);
    EXPECT_EQ(FindTypeByPrefix(L"TASK"), 16);
    EXPECT_EQ(FindTypeByPrefix(L"Microsoft"), 9);
    EXPECT_EQ(FindTypeByPrefix(L"e-MAIL"), 2);
    EXPECT_EQ(FindTypeByPrefix(L"c"), 0); // the first one is tried last
    EXPECT_EQ(FindTypeByPrefix(L"Conversation"), 0);
}

TEST(ValuePickers, FindsNoTypeForAnotherText)
{
    EXPECT_EQ(FindTypeByPrefix(L"Meetings"), -1);
    EXPECT_EQ(FindTypeByPrefix(L"call"), -1);
    EXPECT_EQ(FindTypeByPrefix(L""), -1);
    EXPECT_EQ(FindTypeByPrefix(std::wstring(100, L'T')), -1);
}

TEST(ValuePickers, FindsAWholeType)
{
    EXPECT_EQ(FindType(L"Task"), 16);
    EXPECT_EQ(FindType(L"tASK REQUEST"), 17);
    EXPECT_EQ(FindType(L"Conversation"), 0);
    EXPECT_EQ(FindType(L"Tas"), -1);
    EXPECT_EQ(FindType(L"Task "), -1);
    EXPECT_EQ(FindType(L""), -1);
}

TEST(ValuePickers, SuggestsDurationsInTheirWording)
{
    const std::vector<std::wstring> expected{
        L"0 minutes", L"5 minutes", L"10 minutes", L"15 minutes", L"30 minutes", L"1 hour",
        L"2 hour",    L"3 hour",    L"4 hour",     L"5 hour",     L"6 hour",     L"7 hour",
        L"8 hour",    L"9 hour",    L"0.5 days",   L"1 day",      L"2 days"};
    EXPECT_EQ(TextsOf(SuggestedDurations()), expected);
    EXPECT_EQ(expected[kEmptiedDuration], L"5 minutes");
}

TEST(ValuePickers, SuggestedDurationsMeanWhatTheySay)
{
    const int minutes[] = {0, 5, 10, 15, 30, 60, 120, 180, 240, 300, 360, 420, 480, 540, 720, 1440, 2880};
    ASSERT_EQ(SuggestedDurations().size(), std::size(minutes));
    for (size_t i = 0; i < std::size(minutes); ++i) {
        std::wstring text = SuggestedDurations()[i];
        TimeCount duration;
        EXPECT_EQ(ParseDuration(text.data(), &duration), 1);
        EXPECT_EQ(duration.Units(), static_cast<uint64_t>(minutes[i]) * TimeCount::kUnitsPerMinute) << i;
    }
}

TEST(ValuePickers, ShowsPrioritiesByValueAndMenuId)
{
    ExpectFace(PriorityFace(0), L"Low", 7, 85);
    ExpectFace(PriorityFace(CMD_PRIORITY_LOW), L"Low", 7, 85);
    ExpectFace(PriorityFace(1), L"Normal", 8, 85);
    ExpectFace(PriorityFace(CMD_PRIORITY_NORMAL), L"Normal", 8, 85);
    ExpectFace(PriorityFace(2), L"High", 9, 85);
    ExpectFace(PriorityFace(CMD_PRIORITY_HIGH), L"High", 9, 85);
    EXPECT_EQ(PriorityOf(CMD_PRIORITY_HIGH), 2);
    EXPECT_EQ(PriorityOf(CMD_SENSITIVITY_CONFIDENTIAL), 1) << "of the other button";
    for (const int other : {-1, 3, 5, CMD_PRIORITY, CMD_SAVE, 32767, -32768})
        ExpectFace(PriorityFace(other), L"Normal", 8, 85);
}

TEST(ValuePickers, ShowsSensitivitiesByValueAndMenuId)
{
    ExpectFace(SensitivityFace(0), L"Normal", 10, 100);
    ExpectFace(SensitivityFace(CMD_SENSITIVITY_NORMAL), L"Normal", 10, 100);
    ExpectFace(SensitivityFace(1), L"Personal", 11, 100);
    ExpectFace(SensitivityFace(CMD_SENSITIVITY_PERSONAL), L"Personal", 11, 100);
    ExpectFace(SensitivityFace(2), L"Private", 12, 100);
    ExpectFace(SensitivityFace(CMD_SENSITIVITY_PRIVATE), L"Private", 12, 100);
    ExpectFace(SensitivityFace(3), L"Confidential", 13, 100);
    ExpectFace(SensitivityFace(CMD_SENSITIVITY_CONFIDENTIAL), L"Confidential", 13, 100);
    EXPECT_EQ(SensitivityOf(CMD_SENSITIVITY_CONFIDENTIAL), 3);
    EXPECT_EQ(SensitivityOf(CMD_PRIORITY_HIGH), 0) << "of the other button";
    for (const int other : {-1, 4, CMD_SENSITIVITY, 1035, 32767, -32768})
        ExpectFace(SensitivityFace(other), L"Normal", 10, 100);
}

TEST(ValuePickers, TheTimerTellsWhetherItRuns)
{
    ExpectFace(TimerFace(false), L"Off", 3, 75);
    ExpectFace(TimerFace(true), L"On", 3, 75);
}

TEST(PickerMenus, ListTheValuesInTheirOrder)
{
    ExpectMenu(CMD_PRIORITY, {{1021, L"Low"}, {1023, L"Normal"}, {1022, L"High"}});
    ExpectMenu(CMD_SENSITIVITY,
               {{1031, L"Normal"}, {1032, L"Personal"}, {1033, L"Private"}, {1034, L"Confidential"}});
    ExpectMenu(CMD_ZOOM, {{1041, L"50%"}, {1042, L"100%"}, {1043, L"150%"}, {1044, L"200%"}});
    EXPECT_FALSE(PickerMenu(CMD_SAVE));
}

TEST(Zoom, StepsHaveTheirFonts)
{
    const struct {
        unsigned id;
        const wchar_t* text;
        int weight;
        int height;
    } expected[] = {{1041, L"50%", 400, -9},
                    {1042, L"100%", 400, -12},
                    {1043, L"150%", 700, -14},
                    {1044, L"200%", 700, -18}};
    for (const auto& step : expected) {
        const UniqueFont font = MakeZoomFont(ZoomStepOf(step.id), SystemDpi());
        LOGFONTW made{};
        ASSERT_TRUE(GetObjectW(font.get(), sizeof made, &made));
        EXPECT_STREQ(made.lfFaceName, L"Tahoma");
        EXPECT_EQ(made.lfWeight, step.weight);
        EXPECT_EQ(made.lfHeight, Scale(step.height));
        EXPECT_STREQ(ZoomStepOf(step.id).text, step.text);
        ExpectFace(ZoomFace(ZoomStepOf(step.id)), step.text, 6, 75);
    }
}

TEST(Zoom, AnyOtherNumberIsAHundredPercent)
{
    for (const unsigned id : {0u, 1040u, 1045u, 0xFFFFFFFFu})
        EXPECT_EQ(ZoomStepOf(id).menuId, CMD_ZOOM_100);
}

} // namespace
