#include "mervane/search/case_folding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <vector>

#include "mervane/search/case_folding_table.h"

using namespace mervane;

namespace {

constexpr char32_t kHighest = 0x10FFFF;

// What another implementation folds.
std::map<char32_t, char32_t> Expected()
{
    std::map<char32_t, char32_t> folded;
    std::ifstream file(FOLDING_ORACLE);
    uint32_t from = 0, to = 0;
    while (file >> std::hex >> from >> to)
        folded[from] = to;
    return folded;
}

std::vector<char32_t> FormsOf(char32_t code)
{
    const CaseForms forms = CaseForms::Of(code);
    std::vector<char32_t> codes(forms.Codes().begin(), forms.Codes().end());
    std::sort(codes.begin(), codes.end());
    return codes;
}

} // namespace

TEST(CaseFolding, FoldsEveryCharacterAsAnotherImplementationDoes)
{
    const auto expected = Expected();
    ASSERT_GT(expected.size(), 1'400u);
    for (char32_t code = 0; code <= kHighest; ++code) {
        const auto found = expected.find(code);
        ASSERT_EQ(FoldCase(code), found == expected.end() ? code : found->second) << uint32_t{code};
    }
}

TEST(CaseFolding, IsSimple)
{
    EXPECT_EQ(FoldCase(U'ß'), U'ß') << "not two letters";
    EXPECT_EQ(FoldCase(0x1E9E), U'ß');
    EXPECT_EQ(FoldCase(U'ς'), U'σ');
    EXPECT_EQ(FoldCase(U'Σ'), U'σ');
    EXPECT_EQ(FoldCase(U'I'), U'i');
    EXPECT_EQ(FoldCase(0x130), char32_t{0x130}) << "the dotted capital I stands alone";
    EXPECT_EQ(FoldCase(0x131), char32_t{0x131}) << "and so does the dotless small one";
    EXPECT_EQ(FoldCase(0x10400), char32_t{0x10428});
    EXPECT_EQ(FoldCase(0xD800), char32_t{0xD800});
}

TEST(CaseFolding, TheRangesAscendAndDoNotMeet)
{
    for (size_t i = 0; i < kFoldingRangeCount; ++i) {
        const FoldingRange& range = kFoldingRanges[i];
        EXPECT_LE(range.first, range.last);
        EXPECT_TRUE(range.step == 1 || range.step == 2);
        EXPECT_EQ((range.last - range.first) % range.step, 0u);
        EXPECT_TRUE(i == 0 || range.first > kFoldingRanges[i - 1].last) << i;
    }
}

TEST(CaseFolding, TheFormsAreAllThatFoldAlike)
{
    std::map<char32_t, std::vector<char32_t>> alike;
    for (const auto& [code, folded] : Expected())
        alike[folded].push_back(code);
    for (auto& [folded, codes] : alike) {
        codes.push_back(folded);
        std::sort(codes.begin(), codes.end());
        ASSERT_LE(codes.size(), CaseForms::kMost) << uint32_t{folded};
        for (const char32_t code : codes)
            ASSERT_EQ(FormsOf(code), codes) << uint32_t{code};
    }
    EXPECT_EQ(FormsOf(U'1'), (std::vector<char32_t>{U'1'}));
    EXPECT_EQ(FormsOf(U'k'), (std::vector<char32_t>{U'K', U'k', 0x212A}));
}

TEST(CaseFolding, OnlyIsTheCharacterAlone)
{
    EXPECT_TRUE(CaseForms::Only(U'k').Contains(U'k'));
    EXPECT_FALSE(CaseForms::Only(U'k').Contains(U'K'));
    EXPECT_EQ(CaseForms::Only(U'k').Codes().size(), 1u);
}
