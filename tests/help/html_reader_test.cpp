#include "help/page/html_reader.h"

#include <gtest/gtest.h>

#include "help/page/html_tokens.h"
#include "pages.h"

namespace help {
namespace {

TEST(HtmlReader, ReadsHeadingsAndParagraphs)
{
    const std::vector<Block> blocks =
        BlocksOf(L"<h1>One</h1><p>Some <b>bold</b>, <i>slanted</i> <kbd>Ctrl+N</kbd>.</p><h3>Three</h3>");
    ASSERT_EQ(blocks.size(), 3u);
    EXPECT_EQ(blocks[0].kind, BlockKind::Heading);
    EXPECT_EQ(blocks[0].level, 1);
    EXPECT_EQ(blocks[2].level, 3);
    EXPECT_EQ(blocks[1].kind, BlockKind::Paragraph);
    EXPECT_EQ(blocks[1].Text(), L"Some bold, slanted Ctrl+N.");
    const std::vector<help::Run>& runs = blocks[1].cells[0];
    ASSERT_EQ(runs.size(), 7u);
    EXPECT_TRUE(runs[1].isBold && !runs[1].isItalic && !runs[1].isCode);
    EXPECT_TRUE(runs[3].isItalic && !runs[3].isBold);
    EXPECT_TRUE(runs[5].isCode);
    EXPECT_FALSE(runs[6].isBold || runs[6].isItalic || runs[6].isCode);
}

// Each of its runs has a copy of the target: a page of 512 KiB would take gigabytes.
TEST(HtmlReader, TakesNoEndlessTarget)
{
    for (const size_t length : {size_t{2048}, size_t{2049}}) {
        const std::vector<Block> blocks =
            BlocksOf(L"<p><a href=\"#" + std::wstring(length - 1, L'x') + L"\">one <b>two</b></a>");
        ASSERT_EQ(blocks.size(), 1u);
        EXPECT_EQ(blocks[0].Text(), L"one two");
        EXPECT_EQ(blocks[0].cells[0][0].target.size(), length == 2048 ? length : 0);
    }
}

TEST(HtmlReader, RunsBlanksTogether)
{
    EXPECT_EQ(TextsOf(L"  <p> one\r\n\t two <b> three </b> four\n</p>  <p>&nbsp;five</p> "),
              (Texts{L"one two three four", L"\u00A0five"}));
}

TEST(HtmlReader, KeepsTheLinesOfPreformattedText)
{
    const std::vector<Block> blocks = BlocksOf(L"<pre>\r\na  b\r\n  c\n</pre>");
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_EQ(blocks[0].kind, BlockKind::Preformatted);
    EXPECT_EQ(blocks[0].Text(), L"a  b\v  c");
}

TEST(HtmlReader, BreaksLines)
{
    EXPECT_EQ(TextsOf(L"<p>one<br> two<br/></p>"), (Texts{L"one\vtwo"}));
}

TEST(HtmlReader, NumbersAndNestsLists)
{
    const std::vector<Block> blocks =
        BlocksOf(L"<ol><li>a<ul><li>inner</li></ul></li><li><p>b</p></li></ol><ul><li>c</ul><ol><li>d</ol>");
    ASSERT_EQ(blocks.size(), 5u);
    const wchar_t* const markers[] = {L"1.", L"\u2022", L"2.", L"\u2022", L"1."};
    const wchar_t* const texts[] = {L"a", L"inner", L"b", L"c", L"d"};
    const int levels[] = {1, 2, 1, 1, 1};
    for (size_t item = 0; item < blocks.size(); ++item) {
        EXPECT_EQ(blocks[item].kind, BlockKind::ListItem) << item;
        EXPECT_EQ(blocks[item].marker, markers[item]) << item;
        EXPECT_EQ(blocks[item].Text(), texts[item]) << item;
        EXPECT_EQ(blocks[item].level, levels[item]) << item;
    }
}

TEST(HtmlReader, ReadsTables)
{
    const std::vector<Block> blocks = BlocksOf(L"<table><tr><th>Key</th><th>What</th></tr>\n<tr><td></"
                                               L"td><td>b <b>c</b></td><td><p>d</p></td></tr></table>");
    ASSERT_EQ(blocks.size(), 2u);
    EXPECT_EQ(blocks[0].kind, BlockKind::TableRow);
    EXPECT_TRUE(blocks[0].isHeader);
    EXPECT_EQ(blocks[0].Text(), L"Key\tWhat");
    EXPECT_FALSE(blocks[1].isHeader);
    EXPECT_EQ(blocks[1].Text(), L"\tb c\td");
}

TEST(HtmlReader, FindsLinksAndAnchors)
{
    const std::vector<Block> blocks =
        BlocksOf(L"<h2 id=\"One\"><a name='Two'></a>T</h2><p>See <a href=#Three>it</a> "
                 L"now</p><a name=Four></a><hr><p id=Five>x</p><p id=Last></p>");
    ASSERT_EQ(blocks.size(), 3u);
    EXPECT_EQ(blocks[0].anchors, (Texts{L"One", L"Two"}));
    EXPECT_EQ(blocks[1].cells[0][1].target, L"#Three");
    EXPECT_EQ(blocks[1].cells[0][1].text, L"it");
    EXPECT_EQ(blocks[1].cells[0][2].target, L"");
    EXPECT_EQ(blocks[2].anchors, (Texts{L"Four", L"Five", L"Last"}));
}

TEST(HtmlReader, ReadsTheTitleAndPassesOverWhatIsNoText)
{
    const Document document = ReadHtml(
        L"<!DOCTYPE html><html><head><title> My\n Help </title><style>p { x: <b> }</style>"
        L"<script>if (a < b) '</p>'</script></head><!-- <p>no</p> --><?x y?><body>yes</body></html>");
    EXPECT_EQ(document.title, L"My Help");
    ASSERT_EQ(document.blocks.size(), 1u);
    EXPECT_EQ(document.blocks[0].Text(), L"yes");
}

TEST(HtmlReader, ReplacesEntities)
{
    EXPECT_EQ(DecodeEntities(L"&lt;a&gt; &amp;amp; &quot;&#65;&#x42;&#X1F600;&nbsp;&hellip;"),
              L"<a> &amp; \"AB\U0001F600\u00A0\u2026");
    EXPECT_EQ(DecodeEntities(L"&#0;&#xD800;&#99999999;"), L"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(DecodeEntities(L"& &; &#; &#x; &#xg; &none; a&b &amp"), L"& &; &#; &#x; &#xg; &none; a&b &amp");
}

// The expected texts are what a reader would make of the page, not what a browser would.
TEST(HtmlReader, MakesADocumentOfBrokenMarkup)
{
    EXPECT_EQ(TextsOf(L""), Texts{});
    EXPECT_EQ(TextsOf(L"<"), (Texts{L"<"}));
    EXPECT_EQ(TextsOf(L"a < b <3 </ > x"), (Texts{L"a < b <3 </ > x"}));
    EXPECT_EQ(TextsOf(L"<p"), Texts{});
    EXPECT_EQ(TextsOf(L"<p>one<p>two"), (Texts{L"one", L"two"}));
    EXPECT_EQ(TextsOf(L"<p class=\"x>one</p>"), (Texts{L"one"}));
    EXPECT_EQ(TextsOf(L"<p class=<b>one"), (Texts{L"one"}));
    EXPECT_EQ(TextsOf(L"one</p></b></ul></td></h1>two"), (Texts{L"one", L"two"}));
    EXPECT_EQ(TextsOf(L"<!-- never closed <p>x"), Texts{});
    EXPECT_EQ(TextsOf(L"<style>never closed <p>x"), Texts{});
    EXPECT_EQ(TextsOf(L"<td>cell"), (Texts{L"cell"}));
    EXPECT_EQ(TextsOf(L"<li>item"), (Texts{L"item"}));
    EXPECT_EQ(TextsOf(L"<unknown a=b>text</unknown>"), (Texts{L"text"}));
    EXPECT_EQ(TextsOf(L"<title>open<p>text"), (Texts{L"text"}));
}

TEST(HtmlReader, ATagThatIsNeverClosedEndsBeforeTheNextOne)
{
    const std::vector<Block> blocks = BlocksOf(L"<p a <b>one</b>");
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_TRUE(blocks[0].cells[0][0].isBold);
}

TEST(HtmlReader, LittleThingsOfBlocks)
{
    EXPECT_EQ(TextsOf(L"<p><br>one"), (Texts{L"one"})) << "no line ends before it began";
    EXPECT_EQ(BlocksOf(L"<li>item")[0].level, 1) << "an item outside a list";
    EXPECT_TRUE(BlocksOf(L"<tr><th>a<td>b")[0].isHeader);
    EXPECT_EQ(TextsOf(L"<table><tr><td>a<p>b</p></td><td><p>c</p><p>d</p></td></tr></table>e"),
              (Texts{L"a b\tc d", L"e"}))
        << "paragraphs in a row stay in it";
    for (const wchar_t* tag : {L"kbd", L"code", L"tt", L"samp"})
        EXPECT_TRUE(BlocksOf(L"<" + std::wstring(tag) + L">x")[0].cells[0][0].isCode) << tag;
    for (const wchar_t* tag : {L"b", L"strong"})
        EXPECT_TRUE(BlocksOf(L"<" + std::wstring(tag) + L">x")[0].cells[0][0].isBold) << tag;
    for (const wchar_t* tag : {L"i", L"em"})
        EXPECT_TRUE(BlocksOf(L"<" + std::wstring(tag) + L">x")[0].cells[0][0].isItalic) << tag;
}

TEST(HtmlReader, ALookThatIsNeverClosedEndsWithItsBlock)
{
    const std::vector<Block> blocks = BlocksOf(L"<p><b><i><code><a href=#x>one<p>two");
    ASSERT_EQ(blocks.size(), 2u);
    const help::Run& run = blocks[1].cells[0][0];
    EXPECT_FALSE(run.isBold || run.isItalic || run.isCode);
    EXPECT_EQ(run.target, L"");
}

TEST(HtmlReader, SurvivesDeepNesting)
{
    std::wstring page;
    for (int depth = 0; depth < 100'000; ++depth)
        page += L"<ul><li><b><table><tr><td>";
    page += L"deep";
    for (int depth = 0; depth < 100'000; ++depth)
        page += L"</ul>";
    page += L"<ol><li>flat";
    const std::vector<Block> blocks = BlocksOf(page);
    ASSERT_EQ(blocks.size(), 2u);
    EXPECT_EQ(blocks[0].Text(), L"deep");
    EXPECT_EQ(blocks[1].level, 1);

    std::wstring lists;
    for (int depth = 0; depth < 50; ++depth)
        lists += L"<ul><li>x";
    EXPECT_EQ(BlocksOf(lists).back().level, kMaxListDepth);
}

TEST(HtmlReader, ARowHasNoEndOfCells)
{
    std::wstring page = L"<tr>";
    for (int cell = 0; cell < 1000; ++cell)
        page += L"<td>x";
    const std::vector<Block> blocks = BlocksOf(page);
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_EQ(blocks[0].cells.size(), 16u);
}

TEST(HtmlReader, ManyUnclosedTagsAndQuotesTakeNoTime)
{
    const DWORD start = GetTickCount();
    std::wstring page;
    for (int count = 0; count < 200'000; ++count)
        page += L"<a x=\"";
    (void)BlocksOf(page);
    page.clear();
    for (int count = 0; count < 200'000; ++count)
        page += L"&<!";
    (void)BlocksOf(page);
    EXPECT_LT(GetTickCount() - start, 20'000u);
}

} // namespace
} // namespace help
