// The readers with seeded cases, as they are in the programs. The same targets are run by the fuzzer
// (run.sh).
#include <gtest/gtest.h>

#include "seeded.h"
#include "targets.h"

namespace fuzz {

namespace {

class ReaderCases : public testing::TestWithParam<Target> {
  protected:
    // Of those that are hard for it alone and of the good ones.
    std::vector<std::string> Samples() const
    {
        std::vector<std::string> samples = FilesIn(std::filesystem::path(SEED_FOLDER) / GetParam().name);
        if (GetParam().run == TryVCards)
            for (std::string& card : FilesIn(CARD_FOLDER))
                samples.push_back(std::move(card));
        return samples;
    }
};

TEST_P(ReaderCases, KeepEveryPromise)
{
    const std::vector<std::string> samples = Samples();
    ASSERT_FALSE(samples.empty());
    for (const std::string& sample : samples)
        ASSERT_EQ(GetParam().run(sample), "") << sample;
    Chance chance(Seed());
    const size_t cases = CasesOr(1000);
    for (size_t i = 0; i < cases; ++i) {
        std::string bytes = chance.Pick(samples);
        Change(bytes, samples, chance);
        ASSERT_EQ(GetParam().run(bytes), "") << "case " << i << " of seed " << Seed() << ":\n" << bytes;
    }
}

INSTANTIATE_TEST_SUITE_P(Readers, ReaderCases, testing::ValuesIn(kTargets),
                         [](const auto& target) { return std::string(target.param.name); });

} // namespace

} // namespace fuzz
