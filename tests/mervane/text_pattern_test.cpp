#include "mervane/search/text_pattern.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "mervane/values/text_codec.h"

using namespace mervane;

namespace {

bool Finds(std::wstring_view pattern, std::wstring_view text, bool matchCase = false)
{
    return TextPattern(pattern, matchCase).IsIn(EncodeText(text));
}

// The plain way: all characters of what the program reads, folded one by one, compared at every place.
std::vector<char32_t> Characters(std::wstring_view text, bool matchCase)
{
    std::vector<char32_t> codes;
    for (size_t i = 0; i < text.size(); ++i) {
        char32_t code = text[i];
        const char32_t next = i + 1 < text.size() ? text[i + 1] : 0;
        if (code >= 0xD800 && code < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
            code = 0x10000 + ((code - 0xD800) << 10) + (next - 0xDC00);
            ++i;
        }
        codes.push_back(matchCase ? code : FoldCase(code));
    }
    return codes;
}

bool FindsPlainly(std::wstring_view pattern, std::string_view stored, bool matchCase)
{
    const auto text = Characters(DecodeText(stored), matchCase);
    const auto wanted = Characters(pattern, matchCase);
    return std::search(text.begin(), text.end(), wanted.begin(), wanted.end()) != text.end() ||
           wanted.empty();
}

constexpr const wchar_t* kPieces[] = {
    L"a", L"A",     L"b",      L"B",      L"k",      L"K",      L"\x212A",
    L"s", L"S",     L"ſ",      L"σ",      L"ς",      L"Σ",      L"ß",
    L"ẞ", L"i",     L"I",      L"İ",      L"ı",      L"é",      L"É",
    L"п", L"П",     L"山",     L"ω",      L"Ω",      L"\x2126", L"𐐀",
    L"𐐨", L"𞤀",  L"\xD801", L"\xDC00", L"\xDC28", L"\xFFFD", L"\xD83C\xDF82",
    L"θ", L"\x3F4", L" ",
};
constexpr const char* kBytes[] = {"\x80",         "\xC3",         "\xE5\xB1", "\xF0\x90\x90", "\xFF",
                                  "\xED\xA0\x81", "\xED\xB0\x80", "\xC0\x80", "\x90\x80",     "\xED"};

class RandomTexts {
  public:
    explicit RandomTexts(uint32_t seed) : m_engine(seed) {}

    size_t Below(size_t count) { return m_engine() % count; }
    // Few different pieces, so that there is much to find.
    void PickPieces()
    {
        m_pieces.clear();
        for (int i = 0; i < 4; ++i)
            m_pieces.push_back(kPieces[Below(std::size(kPieces))]);
    }
    std::wstring Text(size_t most)
    {
        std::wstring text;
        for (size_t left = Below(most + 1); left > 0; --left)
            text += m_pieces[Below(m_pieces.size())];
        return text;
    }
    // As a store may hold it that other tools have written to.
    std::string Stored()
    {
        std::string stored;
        for (size_t left = Below(50); left > 0; --left) {
            const size_t roll = Below(40);
            if (roll == 0)
                stored += kBytes[Below(std::size(kBytes))];
            else if (roll == 1 && Below(10) == 0)
                stored += '\0';
            else
                stored += EncodeText(m_pieces[Below(m_pieces.size())]);
        }
        return stored;
    }

  private:
    std::mt19937 m_engine;
    std::vector<std::wstring> m_pieces;
};

} // namespace

TEST(TextPattern, IsFoundAnywhere)
{
    for (const wchar_t* pattern : {L"Walk", L"lk in", L"park", L"k", L"Walk in the park"})
        EXPECT_TRUE(Finds(pattern, L"Walk in the park"));
    EXPECT_FALSE(Finds(L"dark", L"Walk in the park"));
    EXPECT_FALSE(Finds(L"Walk in the parks", L"Walk in the park"));
}

TEST(TextPattern, TheEmptyOneIsInEveryText)
{
    EXPECT_TRUE(Finds(L"", L""));
    EXPECT_TRUE(Finds(L"", L"text", true));
    EXPECT_FALSE(Finds(L"a", L""));
}

TEST(TextPattern, IsFoundAtEveryPlaceOfALongText)
{
    for (const wchar_t* pattern : {L"XY", L"x", L"éa", L"é", L"山水", L"𐐀"})
        for (size_t before = 0; before < 70; ++before) {
            const std::wstring text = std::wstring(before, L'-') + pattern;
            EXPECT_TRUE(Finds(pattern, text)) << before;
            EXPECT_TRUE(Finds(pattern, text + std::wstring(40, L'-'))) << before;
            EXPECT_FALSE(Finds(std::wstring(pattern) + L"!", text)) << before;
        }
}

TEST(TextPattern, WithoutMatchCaseFoldsBoth)
{
    EXPECT_TRUE(Finds(L"wALK", L"Walk"));
    EXPECT_TRUE(Finds(L"ΟΔΟΣ", L"οδος"));
    EXPECT_TRUE(Finds(L"οδοσ", L"ΟΔΟς"));
    EXPECT_TRUE(Finds(L"STRAẞE", L"straße"));
    EXPECT_FALSE(Finds(L"strasse", L"straße"));
    EXPECT_TRUE(Finds(L"kelvin", L"\x212A"
                                 L"ELVIN"));
    EXPECT_TRUE(Finds(L"a𐐀b", L"A𐐨B"));
    EXPECT_FALSE(Finds(L"İstanbul", L"istanbul"));
    EXPECT_TRUE(Finds(L"İSTANBUL", L"İstanbul"));
    EXPECT_FALSE(Finds(L"ılık", L"ILIK"));
    EXPECT_TRUE(Finds(L"привет", L"ПРИВЕТ"));
}

TEST(TextPattern, WithMatchCaseComparesAsTheyAre)
{
    EXPECT_TRUE(Finds(L"Walk", L"a Walk", true));
    EXPECT_FALSE(Finds(L"walk", L"a Walk", true));
    EXPECT_FALSE(Finds(L"ς", L"σ", true));
    EXPECT_FALSE(Finds(L"𐐀", L"𐐨", true));
    EXPECT_TRUE(Finds(L"𐐀", L"x𐐀", true));
}

TEST(TextPattern, WordsThatDifferInFormAreDifferent)
{
    EXPECT_FALSE(Finds(L"e\x301", L"é")) << "a letter with an accent of its own";
    EXPECT_FALSE(Finds(L"co-op", L"coop"));
    EXPECT_FALSE(Finds(L"a b", L"a  b"));
}

TEST(TextPattern, HalfACharacterIsNotFoundInAWholeOne)
{
    EXPECT_FALSE(Finds(L"\xD801", L"𐐀"));
    EXPECT_FALSE(Finds(L"\xDC00", L"𐐀"));
    EXPECT_TRUE(Finds(L"\xD801", L"a\xD801"
                                 L"b"));
    EXPECT_TRUE(Finds(L"\xDC00", L"\xDC00"));
}

TEST(TextPattern, NothingIsFoundBehindANul)
{
    using namespace std::string_literals;
    const TextPattern pattern(L"walk", false);
    EXPECT_TRUE(pattern.IsIn("a walk\0 and more"s));
    EXPECT_FALSE(pattern.IsIn("a\0 walk"s));
    EXPECT_FALSE(pattern.IsIn("\0walk"s));
    EXPECT_FALSE(pattern.IsIn("wa\0lk"s));
    EXPECT_FALSE(TextPattern(L"\xFFFD", false).IsIn("a\0\xFF"s));
    EXPECT_TRUE(TextPattern(L"", false).IsIn("\0"s));
}

TEST(TextPattern, BrokenBytesReadAsTheReplacementCharacter)
{
    EXPECT_TRUE(TextPattern(L"a\xFFFD"
                            L"b",
                            false)
                    .IsIn("a\xFF"
                          "b"));
    EXPECT_TRUE(TextPattern(L"\xFFFD\xFFFD"
                            L"b",
                            false)
                    .IsIn("\xE5\xB1"
                          "b"));
    EXPECT_FALSE(TextPattern(L"é", false).IsIn("\xA9\xC3")) << "its bytes the other way round";
    EXPECT_FALSE(TextPattern(L"山", false).IsIn("\xE5\xB1"));
    EXPECT_TRUE(TextPattern(L"b", false)
                    .IsIn("\xF0\x90\x90"
                          "b"));
}

TEST(TextPattern, HalvesThatAreEncodedOneByOneAreACharacter)
{
    const char* halves = "\xED\xA0\x81\xED\xB0\x80";
    EXPECT_TRUE(TextPattern(L"𐐀", true).IsIn(halves));
    EXPECT_TRUE(TextPattern(L"𐐨", false).IsIn(halves));
    EXPECT_FALSE(TextPattern(L"\xDC00", true).IsIn(halves));
    EXPECT_FALSE(TextPattern(L"\xD801", true).IsIn(halves));
}

TEST(TextPattern, ThousandsOfRandomTextsAreSearchedAsThePlainWayDoes)
{
    RandomTexts random(20001);
    int found = 0, missed = 0;
    for (int round = 0; round < 40'000; ++round) {
        random.PickPieces();
        const std::wstring wanted = random.Text(5);
        const std::string stored = random.Stored();
        const bool matchCase = random.Below(2) == 0;
        const bool expected = FindsPlainly(wanted, stored, matchCase);
        ASSERT_EQ(TextPattern(wanted, matchCase).IsIn(stored), expected) << round;
        ++(expected ? found : missed);
    }
    EXPECT_GT(found, 5'000);
    EXPECT_GT(missed, 5'000);
}
