// A page that the control would take minutes to show is refused before it gets there.
#include "help/topic_work.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "help/help_file.h"
#include "help/page/html_reader.h"
#include "help/page/topics.h"
#include "help_window_fixture.h"

namespace help {
namespace {

std::string Times(const std::string& piece, size_t count)
{
    std::string text;
    for (size_t i = 0; i < count; ++i)
        text += piece;
    return text;
}

uint64_t WorkOfPage(const std::string& page)
{
    return WorkOf(BlocksOf(std::wstring(page.begin(), page.end())));
}

TEST(TopicWork, GrowsWithTheSquareOfALine)
{
    const uint64_t one = WorkOfPage(Times("x", 1'000)), two = WorkOfPage(Times("x", 2'000));
    EXPECT_GT(two, 3 * one);
    // As many letters in lines or paragraphs of their own take as much again.
    EXPECT_LT(WorkOfPage(Times("x", 1'000) + "<br>" + Times("x", 1'000)), 2 * one);
    EXPECT_EQ(WorkOfPage("<p>" + Times("x", 1'000) + "<p>" + Times("x", 1'000)), 2 * one);
}

TEST(TopicWork, GrowsWithTheLinksOfAParagraph)
{
    const std::string text = Times("x", 1'000);
    const uint64_t none = WorkOfPage(text), one = WorkOfPage("<a href=#y>" + text + "</a>");
    EXPECT_GE(one, 2 * none);
    EXPECT_LT(WorkOfPage("<a href=#y>y</a><p>" + text), one);
}

TEST(TopicWork, OfTheJournalsHelpIsSmall)
{
    std::ifstream file("Z:" HELP_FILE, std::ios::binary);
    const std::string page{std::istreambuf_iterator<char>(file), {}};
    const std::vector<Topic> topics = TopicsOf(ReadHtml(std::wstring(page.begin(), page.end())), L"");
    ASSERT_GT(topics.size(), 10u);
    for (const Topic& topic : topics)
        EXPECT_LT(WorkOf(topic.blocks), kMostWork / 10) << topic.blocks.size();
}

class LargePage : public HelpWindowTest {
  protected:
    bool IsRefused() const
    {
        return m_window->Book().Count() == 0 && PaneText().find(L"too long") != std::wstring::npos;
    }
};

// 512 KiB.
TEST_F(LargePage, OfOneWordIsRefused)
{
    Open(Times("x", kMaxHelpFile));
    EXPECT_TRUE(IsRefused());
}

// The square of a line's letters is what it takes.
TEST_F(LargePage, OfALineIsShownUpToTenThousandLetters)
{
    Open(Times("word ", 1'950));
    EXPECT_FALSE(IsRefused());
    Open(Times("word ", 2'050));
    EXPECT_TRUE(IsRefused());
}

TEST_F(LargePage, OfLinksIsRefused)
{
    const std::string link = "<a href=#x>y</a> ";
    Open(Times(link, kMaxHelpFile / link.size()));
    EXPECT_TRUE(IsRefused());
}

TEST_F(LargePage, OfOneLineInALaterTopicIsRefused)
{
    Open("<h1>One</h1><p>text<h1>Two</h1><p>" + Times("word ", 10'000));
    EXPECT_TRUE(IsRefused());
}

TEST_F(LargePage, OfTopicsIsRefused)
{
    Open(Times("<h1>x", kMaxHelpFile / 5));
    EXPECT_TRUE(IsRefused());
}

TEST_F(LargePage, OfShortLinesIsShown)
{
    Open("<h1>One</h1>" + Times("<p>Text of a paragraph <a href=#x>of its own</a>.", 1'000));
    EXPECT_EQ(m_window->Book().Count(), 1u);
    EXPECT_EQ(m_window->Text().Text().links.size(), 1'000u);
}

} // namespace
} // namespace help
