// Whole files, written by hand as the programs of their time write them: what comes out of samples/X.vcf is
// samples/X.expected.vcf, to the byte.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "support/cards.h"
#include "formats/vcard/writer.h"

namespace vcard {

namespace {

std::string FileText(const std::string& name)
{
    std::ifstream file(std::string(SAMPLE_FOLDER) + "/" + name, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

class VCardSample : public testing::TestWithParam<const char*> {};

TEST_P(VCardSample, ComesOutAsExpected)
{
    const std::string name = GetParam();
    const std::string given = FileText(name + ".vcf"), expected = FileText(name + ".expected.vcf");
    ASSERT_FALSE(given.empty());
    ASSERT_FALSE(expected.empty());
    const ReadCards read = ReadAll(given);
    EXPECT_EQ(read.unreadable, 0u) << "line " << read.errorLine << ": " << read.errorText;
    std::string written;
    for (const Contact& contact : read.contacts)
        AppendCard(written, contact);
    EXPECT_EQ(written, expected);
    // Once in the new form, it stays as it is.
    std::string again;
    for (const Contact& contact : ReadAll(written).contacts)
        AppendCard(again, contact);
    EXPECT_EQ(again, expected);
}

INSTANTIATE_TEST_SUITE_P(Files, VCardSample, testing::Values("v21", "v30", "v40"),
                         [](const auto& sample) { return std::string(sample.param); });

} // namespace

} // namespace vcard
