// The help as it is shipped: what leads nowhere, and what it does not name.
#include <windows.h>

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <set>

#include "help/help_book.h"
#include "help/page/find_in_topics.h"
#include "help/resource.h"
#include "pages.h"
#include "ui/launch.h"
#include "util/owners.h"

namespace help {
namespace {

std::wstring Utf16(const std::string& text)
{
    std::wstring wide(text.size(), L'\0');
    wide.resize(static_cast<size_t>(MultiByteToWideChar(
        CP_UTF8, 0, text.data(), static_cast<int>(text.size()), wide.data(), static_cast<int>(wide.size()))));
    return wide;
}

std::string BytesOf(const char* path)
{
    std::ifstream file(std::string("Z:") + path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class Contents : public testing::Test {
  protected:
    void SetUp() override
    {
        m_book.Open(Utf16(std::string("Z:") + HELP_FILE), L"C:\\PegHelp.exe");
        ASSERT_GT(m_book.Count(), 20u);
        for (const std::wstring& text : m_book.Texts())
            m_text += text + L"\r";
    }
    bool Names(const std::wstring& text) const
    {
        return Folded(m_text).find(Folded(text)) != std::wstring::npos;
    }

    HelpBook m_book;
    std::wstring m_text;
};

TEST_F(Contents, EveryLinkLeadsToATopic)
{
    int links = 0;
    for (const Topic& topic : m_book.Topics())
        for (const TextLink& link : TextOf(topic.blocks).links) {
            ++links;
            ASSERT_EQ(link.target.front(), L'#') << "only the help itself is led to";
            EXPECT_TRUE(FindAnchor(m_book.Topics(), link.target.substr(1)))
                << std::string(link.target.begin(), link.target.end());
        }
    EXPECT_GT(links, 30);
}

TEST_F(Contents, EveryAnchorIsThereOnceAndBeginsATopic)
{
    std::set<std::wstring> known;
    for (const Topic& topic : m_book.Topics()) {
        ASSERT_FALSE(topic.blocks.empty());
        EXPECT_EQ(topic.blocks.front().anchors.size(), 1u)
            << std::string(topic.title.begin(), topic.title.end());
        for (const Block& block : topic.blocks)
            for (const std::wstring& anchor : block.anchors)
                EXPECT_TRUE(known.insert(anchor).second) << std::string(anchor.begin(), anchor.end());
    }
}

TEST_F(Contents, HasTheTopicsThatTheJournalAsksFor)
{
    for (const wchar_t* request :
         {kHelpMain, kHelpFound, kHelpEntry, kHelpAbout, kHelpAddressBook, kHelpCategories, kHelpColumns,
          kHelpContact, kHelpExport, kHelpFilter, kHelpFind, kHelpOptions, kHelpPassword, kHelpQuickSubjects,
          kHelpTransfer}) {
        const std::wstring text = request;
        const auto place = FindAnchor(m_book.Topics(), text.substr(text.find(L'#') + 1));
        ASSERT_TRUE(place);
        EXPECT_EQ(place->block, 0u);
    }
    EXPECT_EQ(FindAnchor(m_book.Topics(), L"Main_Contents")->topic, 0u);
    EXPECT_EQ(m_book.Topics()[FindAnchor(m_book.Topics(), L"Found_Window")->topic].title, L"Find Results");
    EXPECT_EQ(m_book.Topics()[FindAnchor(m_book.Topics(), L"Entry_Window")->topic].title,
              L"The entry window");
}

// The captions in a resource script, without the letters' marks and without the keys.
std::vector<std::wstring> CaptionsIn(const std::string& script, const std::string& pattern)
{
    std::vector<std::wstring> captions;
    const std::regex caption(pattern);
    for (auto match = std::sregex_iterator(script.begin(), script.end(), caption);
         match != std::sregex_iterator(); ++match) {
        std::string text = (*match)[1];
        text = text.substr(0, text.find("\\t"));
        std::erase(text, '&');
        captions.push_back(Utf16(text));
    }
    return captions;
}

TEST_F(Contents, NamesEveryCommandOfTheJournalsMenu)
{
    auto captions = CaptionsIn(BytesOf(RESOURCE_SCRIPTS), "(?:MENUITEM|POPUP) \"([^\"]+)\"");
    ASSERT_GT(captions.size(), 20u);
    captions.insert(captions.end(), {L"Quit", L"My Handheld PC"});
    const std::wstring& menus = m_book.Texts()[FindAnchor(m_book.Topics(), L"Menus")->topic];
    for (const std::wstring& caption : captions)
        EXPECT_NE(menus.find(caption), std::wstring::npos) << std::string(caption.begin(), caption.end());
}

TEST_F(Contents, NamesEveryControlOfTheJournalsDialogs)
{
    const auto captions =
        CaptionsIn(BytesOf(RESOURCE_SCRIPTS), "(?:BUTTON|CHECKBOX|RADIOBUTTON) \"([^\"]+)\"");
    ASSERT_GT(captions.size(), 10u);
    for (const std::wstring& caption : captions)
        EXPECT_TRUE(Names(caption.substr(0, caption.find_last_not_of(L' ') + 1)))
            << std::string(caption.begin(), caption.end());
}

TEST_F(Contents, NamesEveryCommandAndFieldOfTheAddressBook)
{
    const std::string script = BytesOf(ADDRESS_BOOK_SCRIPT);
    const auto text = [this](const wchar_t* anchor) -> const std::wstring& {
        return m_book.Texts()[FindAnchor(m_book.Topics(), anchor)->topic];
    };
    const auto commands = CaptionsIn(script, "MENUITEM \"([^\"]+)\"");
    ASSERT_EQ(commands.size(), 9u);
    for (const std::wstring& command : commands)
        EXPECT_NE(text(L"Address_Book").find(command), std::wstring::npos)
            << std::string(command.begin(), command.end());
    const auto labels = CaptionsIn(script, "LTEXT \"([^\":]+):");
    ASSERT_EQ(labels.size(), 10u);
    for (const std::wstring& label : labels)
        EXPECT_NE(text(L"Address_Contact").find(label), std::wstring::npos)
            << std::string(label.begin(), label.end());
}

TEST_F(Contents, NamesEveryKeyOfTheJournal)
{
    const std::string script = BytesOf(RESOURCE_SCRIPTS);
    const std::regex key("\\n +(?:\"(.)\"|VK_([A-Z0-9]+)), CMD_\\w+, VIRTKEY([^\\n]*)");
    const std::wstring& keys = m_book.Texts()[FindAnchor(m_book.Topics(), L"Keys")->topic];
    int count = 0;
    for (auto match = std::sregex_iterator(script.begin(), script.end(), key);
         match != std::sregex_iterator(); ++match, ++count) {
        const std::string flags = (*match)[3];
        std::string name = (*match)[1].matched ? (*match)[1].str() : (*match)[2].str();
        if (name == "BACK")
            name = "Backspace";
        if (name == "RETURN")
            name = "Enter";
        if (flags.find("CONTROL") != std::string::npos)
            name = "Ctrl+" + name;
        if (flags.find("SHIFT") != std::string::npos)
            name = "Shift+" + name;
        if (flags.find("ALT") != std::string::npos)
            name = "Alt+" + name;
        EXPECT_NE(Folded(keys).find(Folded(Utf16(name))), std::wstring::npos) << name;
    }
    EXPECT_EQ(count, 15);
}

std::wstring KeyBehindTab(const std::wstring& caption)
{
    const size_t tab = caption.find(L'\t');
    return tab == std::wstring::npos ? std::wstring() : caption.substr(tab + 1);
}

TEST_F(Contents, NamesEveryCommandAndKeyOfItsOwnWindow)
{
    const UniqueMenu menu(LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_HELP_MENU)));
    ASSERT_TRUE(menu);
    const std::wstring& own = m_book.Texts()[FindAnchor(m_book.Topics(), L"Help_Window")->topic];
    for (int popup = 0; popup < GetMenuItemCount(menu.get()); ++popup) {
        HMENU items = GetSubMenu(menu.get(), popup);
        for (int item = 0; item < GetMenuItemCount(items); ++item) {
            wchar_t caption[100] = L"";
            if (!GetMenuStringW(items, static_cast<UINT>(item), caption, 100, MF_BYPOSITION))
                continue;
            std::wstring name = caption;
            const std::wstring key = KeyBehindTab(name);
            name = name.substr(0, name.find(L'\t'));
            std::erase(name, L'&');
            name = name.substr(0, name.find(L"..."));
            EXPECT_NE(own.find(name), std::wstring::npos) << std::string(name.begin(), name.end());
            EXPECT_NE(own.find(key), std::wstring::npos) << std::string(key.begin(), key.end());
        }
    }
}

TEST_F(Contents, HoldsNoMarkupThatIsNotUnderstood)
{
    EXPECT_EQ(m_text.find(L'<' + std::wstring(L"/")), std::wstring::npos);
    EXPECT_EQ(m_text.find(L"&amp;"), std::wstring::npos);
    EXPECT_EQ(m_text.find(L'\uFFFD'), std::wstring::npos);
    const std::string bytes = BytesOf(HELP_FILE);
    const std::regex tag("</?([a-z0-9]+)");
    const std::set<std::string> understood{"html", "head", "title", "meta",  "body", "h1", "h2",
                                           "h3",   "p",    "ul",    "ol",    "li",   "b",  "kbd",
                                           "a",    "code", "pre",   "table", "tr",   "th", "td"};
    for (auto match = std::sregex_iterator(bytes.begin(), bytes.end(), tag); match != std::sregex_iterator();
         ++match)
        EXPECT_TRUE(understood.count((*match)[1])) << (*match)[0];
}

} // namespace
} // namespace help
