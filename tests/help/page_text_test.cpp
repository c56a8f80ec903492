#include "help/page/page_text.h"

#include <gtest/gtest.h>

namespace help {
namespace {

TEST(PageText, ReadsUtf8AndUtf16)
{
    EXPECT_EQ(DecodeText("a\xC3\xA4\xE4\xBA\xBA"), L"a\u00E4\u4EBA");
    EXPECT_EQ(DecodeText("\xEF\xBB\xBFx"), L"x");
    EXPECT_EQ(DecodeText(std::string_view("\xFF\xFEx\0\xE4\0", 6)), L"x\u00E4");
    EXPECT_EQ(DecodeText(""), L"");
}

TEST(PageText, WhatIsNoTextBecomesAMark)
{
    EXPECT_EQ(DecodeText(std::string_view("a\0b\x01", 4)), L"a\uFFFDb\uFFFD");
    EXPECT_EQ(DecodeText("a\xFFz"), L"a\uFFFDz");
    EXPECT_EQ(DecodeText(std::string_view("\xFF\xFEx\0\xE4", 5)), L"x");
}

} // namespace
} // namespace help
