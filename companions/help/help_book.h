// The help that is open: its topics, or what is said when there are none.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "help/page/topic_text.h"
#include "help/page/topics.h"

namespace help {

class HelpBook {
  public:
    // Opens what a request names; program is this program's full path. When it cannot be read the book has no
    // topics and Trouble says why.
    void Open(const std::wstring& file, std::wstring_view program);
    // Whether the request names the file that is open.
    bool IsOpen(const std::wstring& file, std::wstring_view program) const;

    size_t Count() const { return m_topics.size(); }
    const std::vector<Topic>& Topics() const { return m_topics; }
    const std::vector<std::wstring>& Texts() const { return m_texts; } // of the topics, as TextOf has them
    const std::wstring& Title() const { return m_title; }
    const std::vector<Block>& Trouble() const { return m_trouble; }
    std::vector<Block> AllBlocks() const;

  private:
    bool Take(const std::wstring& page); // false when it is too much to show

    std::wstring m_path;
    std::wstring m_title;
    std::vector<Topic> m_topics;
    std::vector<std::wstring> m_texts;
    std::vector<Block> m_trouble;
};

// What is shown when there is no such topic.
std::vector<Block> NoSuchTopic(const std::wstring& anchor);

} // namespace help
