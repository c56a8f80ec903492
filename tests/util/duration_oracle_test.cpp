// Durations against another implementation (duration_oracle.py): texts as they are typed, and phrases of
// counts. DURATION_CASES in the environment names a file of more cases than the build makes.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "util/duration_text.h"

namespace {

std::wstring FromHexadecimal(const std::string& digits)
{
    std::wstring text;
    for (size_t i = 0; i + 4 <= digits.size(); i += 4)
        text += static_cast<wchar_t>(std::stoul(digits.substr(i, 4), nullptr, 16));
    return text;
}

void ExpectParsed(std::istream& line)
{
    std::string typed, left;
    int result;
    uint64_t units;
    ASSERT_TRUE(line >> typed >> result >> units >> left);
    std::wstring text = FromHexadecimal(typed);
    TimeCount count;
    EXPECT_EQ(ParseDuration(text.data(), &count), result) << FromHexadecimal(typed);
    EXPECT_EQ(count.Units(), units) << FromHexadecimal(typed);
    EXPECT_EQ(text, FromHexadecimal(left));
}

void ExpectPhrase(std::istream& line)
{
    std::string phrase;
    uint64_t units;
    ASSERT_TRUE(line >> units >> phrase);
    EXPECT_EQ(FormatDuration(TimeCount(units)), FromHexadecimal(phrase)) << units;
}

TEST(DurationOracle, AgreesOnEveryCase)
{
    const char* given = getenv("DURATION_CASES");
    std::ifstream file(given ? given : DURATION_ORACLE);
    std::string kind;
    size_t expected = 0, cases = 0;
    ASSERT_TRUE(file >> expected);
    ASSERT_GE(expected, 10'000u);
    for (; file >> kind && !HasFailure(); ++cases)
        kind == "parse" ? ExpectParsed(file) : ExpectPhrase(file);
    EXPECT_EQ(cases, expected);
}

} // namespace
