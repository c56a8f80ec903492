#include "help/help_book.h"

#include <algorithm>

#include "help/help_file.h"
#include "help/help_place.h"
#include "help/help_request.h"
#include "help/page/html_reader.h"
#include "help/topic_work.h"

namespace help {

namespace {

constexpr const wchar_t* kTitle = L"Journal Help";
constexpr size_t kMostTopics = 20'000; // the contents show them all

Block TextBlock(BlockKind kind, const std::wstring& text)
{
    Block block;
    block.kind = kind;
    block.level = 1;
    if (kind == BlockKind::ListItem)
        block.marker = L"\u2022";
    Run run;
    run.text = text;
    block.cells.front().push_back(std::move(run));
    return block;
}

const wchar_t* ReasonOf(FileState state)
{
    switch (state) {
    case FileState::Missing: return L"The help file cannot be found. It was looked for here:";
    case FileState::TooLarge: return L"This file is too large to be the help:";
    case FileState::NoText: return L"This file is no text, and so not the help:";
    case FileState::Foreign:
        return L"This file is not read, since it lies neither in the folder of the journal's programs nor "
               L"on a drive of this computer:";
    case FileState::TooMuch:
        return L"This file is not shown, since it has too many topics, or one that is too long or has "
               L"too long a paragraph or too many links:";
    case FileState::Unreadable:
    case FileState::Read: break;
    }
    return L"The help file is there, but cannot be read:";
}

std::vector<Block> TroubleWith(FileState state, const std::vector<std::wstring>& places)
{
    std::vector<Block> blocks{TextBlock(BlockKind::Heading, L"There is no help to show"),
                              TextBlock(BlockKind::Paragraph, ReasonOf(state))};
    for (const std::wstring& place : places)
        blocks.push_back(TextBlock(BlockKind::ListItem, place));
    blocks.push_back(TextBlock(BlockKind::Paragraph,
                               L"Copy the file pellwyn.htm into the folder of the journal's programs, "
                               L"then ask for help again. Your journal works without it."));
    return blocks;
}

} // namespace

void HelpBook::Open(const std::wstring& file, std::wstring_view program)
{
    *this = HelpBook();
    m_title = kTitle;
    const std::vector<std::wstring> places = PlacesOf(file, program);
    for (const std::wstring& place : places) {
        HelpFile read = IsOwnOrLocal(place, program) ? ReadHelpFile(place) : HelpFile{FileState::Foreign, {}};
        m_path = place;
        if (read.state == FileState::Read && Take(read.text))
            return;
        if (read.state == FileState::Read)
            read.state = FileState::TooMuch;
        if (read.state != FileState::Missing) {
            m_trouble = TroubleWith(read.state, {place});
            return;
        }
    }
    m_trouble = TroubleWith(FileState::Missing, places);
}

bool HelpBook::Take(const std::wstring& page)
{
    Document document = ReadHtml(page);
    const std::wstring title = document.title.empty() ? m_title : document.title;
    std::vector<Topic> topics = TopicsOf(std::move(document), title);
    if (topics.size() > kMostTopics || std::any_of(topics.begin(), topics.end(), [](const Topic& topic) {
            return WorkOf(topic.blocks) > kMostWork;
        }))
        return false;
    m_title = title;
    m_topics = std::move(topics);
    for (const Topic& topic : m_topics)
        m_texts.push_back(TextOf(topic.blocks).text);
    return true;
}

bool HelpBook::IsOpen(const std::wstring& file, std::wstring_view program) const
{
    if (m_topics.empty())
        return false;
    for (const std::wstring& place : PlacesOf(file, program))
        if (place == m_path)
            return true;
    return false;
}

std::vector<Block> HelpBook::AllBlocks() const
{
    std::vector<Block> blocks;
    for (const Topic& topic : m_topics)
        blocks.insert(blocks.end(), topic.blocks.begin(), topic.blocks.end());
    return blocks;
}

std::vector<Block> NoSuchTopic(const std::wstring& anchor)
{
    return {TextBlock(BlockKind::Heading, L"There is no such topic"),
            TextBlock(BlockKind::Paragraph, L"This help has no topic \u201C" + anchor + L"\u201D."),
            TextBlock(BlockKind::Paragraph,
                      L"The contents at the left name all topics. Find looks for a word in all of them.")};
}

} // namespace help
