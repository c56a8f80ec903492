#include "help/page/rtf_writer.h"

#include <gtest/gtest.h>

#include "pages.h"

namespace help {
namespace {

bool Has(const std::wstring& page, const std::string& words)
{
    return RtfOf(BlocksOf(page), 2900).find(words) != std::string::npos;
}

TEST(RtfWriter, CharactersBeyondAsciiAreSignedNumbers)
{
    EXPECT_TRUE(Has(L"<p>a\u00E4b", "a\\u228?b"));
    EXPECT_TRUE(Has(L"<p>a\uFFFDb", "a\\u-3?b"));
    EXPECT_TRUE(Has(L"<p>\U0001F600", "\\u-10179?\\u-8704?"));
    EXPECT_TRUE(Has(L"<p>{\\}", "\\{\\\\\\}"));
    for (const char byte : RtfOf(BlocksOf(L"<p>\u4EBA\u00FF\u007F"), 2900))
        EXPECT_TRUE(byte == '\n' || (byte >= ' ' && byte < 0x7F));
}

} // namespace
} // namespace help
