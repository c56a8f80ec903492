#include "help/page/topics.h"

#include <gtest/gtest.h>

#include "help/history.h"
#include "help/page/find_in_topics.h"
#include "help/page/topic_text.h"
#include "pages.h"

namespace help {
namespace {

std::vector<Topic> TopicsOfPage(const std::wstring& page)
{
    return TopicsOf(ReadHtml(page), L"Untitled");
}

TEST(Topics, HeadingsOfTwoLevelsBeginThem)
{
    const auto topics = TopicsOfPage(L"<h1>A</h1><p>a<h2>B<br>b</h2><p>b<h3>not one</h3><p>c<h1>C");
    ASSERT_EQ(topics.size(), 3u);
    EXPECT_EQ(topics[0].title, L"A");
    EXPECT_EQ(topics[0].level, 1);
    EXPECT_EQ(topics[1].title, L"B b");
    EXPECT_EQ(topics[1].level, 2);
    EXPECT_EQ(topics[1].blocks.size(), 4u);
    EXPECT_EQ(topics[2].title, L"C");
}

TEST(Topics, WhatStandsBeforeTheFirstHeadingIsOneToo)
{
    EXPECT_EQ(TopicsOfPage(L"<title>T</title>text<h1>A").front().title, L"T");
    EXPECT_EQ(TopicsOfPage(L"text<h1>A").size(), 2u);
    EXPECT_EQ(TopicsOfPage(L"text").front().title, L"Untitled");
    EXPECT_EQ(TopicsOfPage(L"").size(), 1u);
}

TEST(Topics, AnchorsLeadToTheirBlock)
{
    const auto topics = TopicsOfPage(L"<h1 id=A>A</h1><p>x<p id=b>y<h1 id=B>B</h1>");
    const auto place = FindAnchor(topics, L"b");
    ASSERT_TRUE(place);
    EXPECT_EQ(place->topic, 0u);
    EXPECT_EQ(place->block, 2u);
    EXPECT_EQ(FindAnchor(topics, L"B")->topic, 1u);
    EXPECT_EQ(FindAnchor(topics, L"a")->topic, 0u) << "without regard to case when none is exact";
    EXPECT_FALSE(FindAnchor(topics, L"c"));
    EXPECT_FALSE(FindAnchor(topics, L""));
}

TEST(TopicText, CountsPlacesAsTheControlDoes)
{
    const TopicText text =
        TextOf(BlocksOf(L"<h1>AB</h1><ul><li>x <a href=#1>l<b>i</b></a><a href=#2>n</a>k</ul>"
                        L"<table><tr><td>c<td>d</table>"));
    EXPECT_EQ(text.text, L"AB\r\u2022\tx link\rc\td");
    EXPECT_EQ(text.blocks, (std::vector<size_t>{0, 3, 12}));
    ASSERT_EQ(text.links.size(), 2u) << "a link of several looks is one";
    EXPECT_EQ(text.text.substr(text.links[0].range.begin, 2), L"li");
    EXPECT_EQ(text.links[0].range.end - text.links[0].range.begin, 2u);
    EXPECT_EQ(text.links[1].target, L"#2");
}

TEST(TopicText, KnowsTheLinksAroundAPlace)
{
    const TopicText text = TextOf(BlocksOf(L"<p>ab<a href=#1>cd</a>ef<a href=#2>gh</a>ij"));
    EXPECT_EQ(LinkAt(text, 1), nullptr);
    EXPECT_EQ(LinkAt(text, 2)->target, L"#1");
    EXPECT_EQ(LinkAt(text, 4)->target, L"#1");
    EXPECT_EQ(LinkAt(text, 5), nullptr);
    EXPECT_EQ(NextLink(text, 0)->target, L"#1");
    EXPECT_EQ(NextLink(text, 4)->target, L"#2");
    EXPECT_EQ(NextLink(text, 7), nullptr);
    EXPECT_EQ(PreviousLink(text, 10)->target, L"#2");
    EXPECT_EQ(PreviousLink(text, 6)->target, L"#1");
    EXPECT_EQ(PreviousLink(text, 4)->target, L"#1");
    EXPECT_EQ(PreviousLink(text, 3), nullptr);
}

struct Found {
    size_t topic;
    size_t begin;
    bool operator==(const Found&) const = default;
};

Found FoundFrom(const std::wstring& text, size_t topic, size_t begin, size_t end, bool backwards = false)
{
    const std::vector<std::wstring> topics{L"abc abc", L"none", L"xABCx"};
    const auto found = FindInTopics(topics, text, {topic, {begin, end}}, backwards);
    return found ? Found{found->topic, found->range.begin} : Found{99, 99};
}

TEST(FindInTopics, GoesOnThroughAllTopicsAndRound)
{
    EXPECT_EQ(FoundFrom(L"abc", 0, 0, 0), (Found{0, 0}));
    EXPECT_EQ(FoundFrom(L"abc", 0, 0, 3), (Found{0, 4}));
    EXPECT_EQ(FoundFrom(L"Abc", 0, 4, 7), (Found{2, 1}));
    EXPECT_EQ(FoundFrom(L"abc", 2, 1, 4), (Found{0, 0}));
    EXPECT_EQ(FoundFrom(L"none", 1, 0, 4), (Found{1, 0})) << "the only one is found again";
}

TEST(FindInTopics, GoesBackwardsLikewise)
{
    EXPECT_EQ(FoundFrom(L"abc", 0, 4, 7, true), (Found{0, 0}));
    EXPECT_EQ(FoundFrom(L"abc", 0, 0, 3, true), (Found{2, 1}));
    EXPECT_EQ(FoundFrom(L"abc", 2, 1, 4, true), (Found{0, 4}));
    EXPECT_EQ(FoundFrom(L"none", 1, 0, 4, true), (Found{1, 0}));
}

TEST(FindInTopics, FindsNothingWhereThereIsNothing)
{
    EXPECT_EQ(FoundFrom(L"", 0, 0, 0).topic, 99u);
    EXPECT_EQ(FoundFrom(L"absent", 0, 0, 0).topic, 99u);
    EXPECT_EQ(FoundFrom(L"absent", 7, 5000, 6000, true).topic, 99u);
    EXPECT_FALSE(FindInTopics({}, L"x", {}, false));
}

TEST(FindInTopics, KnowsTheLettersOfOtherScripts)
{
    EXPECT_TRUE(FindInTopics({L"\u00C4RGER \u0416"}, L"\u00E4rger\u00A0\u0436", {}, false));
}

TEST(History, GoesBackAndForward)
{
    History history;
    EXPECT_FALSE(history.CanGoBack());
    EXPECT_FALSE(history.Back(Visit{0, 0}));
    history.Leave({1, 10});
    history.Leave({2, 20});
    const auto back = history.Back(Visit{3, 30});
    ASSERT_TRUE(back);
    EXPECT_EQ(back->topic, 2u);
    EXPECT_EQ(back->place, 20u);
    const auto forward = history.Forward(Visit{2, 21});
    ASSERT_TRUE(forward);
    EXPECT_EQ(forward->topic, 3u);
    EXPECT_EQ(forward->place, 30u);
    EXPECT_EQ(history.Back(Visit{3, 30})->place, 21u);
    history.Leave({2, 0});
    EXPECT_FALSE(history.CanGoForward()) << "a new way ends the old one";
}

TEST(History, WhatCannotBeGoneToAgainIsNoPlaceOnTheWay)
{
    History history;
    history.Leave({1, 10});
    EXPECT_EQ(history.Back(std::nullopt)->topic, 1u);
    EXPECT_FALSE(history.CanGoForward());
    EXPECT_FALSE(history.Back(Visit{1, 10}));
    EXPECT_FALSE(history.CanGoForward()) << "a step that leads nowhere leaves no trace";
}

TEST(History, IsEmptyWhenItWasCleared)
{
    History history;
    history.Leave({1, 10});
    history.Leave({2, 20});
    (void)history.Back(Visit{3, 30});
    history.Clear();
    EXPECT_FALSE(history.CanGoBack());
    EXPECT_FALSE(history.CanGoForward());
}

TEST(History, ForgetsWhatIsLongAgo)
{
    History history;
    for (size_t visit = 0; visit < 1000; ++visit)
        history.Leave({visit, 0});
    int steps = 0;
    while (history.Back(Visit{0, 0}))
        ++steps;
    EXPECT_EQ(steps, 200);
}

} // namespace
} // namespace help
