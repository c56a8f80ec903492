// What the tests of the help share: pages read, and files to read from.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "help/page/html_reader.h"

namespace help {

inline std::vector<Block> BlocksOf(const std::wstring& page)
{
    return ReadHtml(page).blocks;
}

// The texts of a page's blocks.
inline std::vector<std::wstring> TextsOf(const std::wstring& page)
{
    std::vector<std::wstring> texts;
    for (const Block& block : BlocksOf(page))
        texts.push_back(block.Text());
    return texts;
}

using Texts = std::vector<std::wstring>;

// A folder of the test's own, with a blank and letters of another script in its name, removed at the end with
// the files that were written into it.
class TestFolder {
  public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    // With a backslash at its end.
    const std::wstring& Path() const { return m_path; }
    // The path of the file written; the name may have one folder in front.
    std::wstring Write(const std::wstring& name, const std::string& bytes);

  private:
    std::wstring m_path;
    std::vector<std::wstring> m_files;
    std::vector<std::wstring> m_folders;
};

} // namespace help
