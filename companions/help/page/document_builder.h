// Puts the blocks of a document together while its page is read. Blanks are run together, empty blocks vanish
// and their anchors go to the next one.
#pragma once

#include <string_view>
#include <vector>

#include "help/page/help_document.h"

namespace help {

class DocumentBuilder {
  public:
    void AddTitle(std::wstring_view text);
    void AddText(std::wstring_view text);
    void BreakLine();

    void StartBlock(BlockKind kind, int level = 0);
    // A paragraph, which inside a row or an item that is still empty is that one itself.
    void StartParagraph();
    void EndBlock();
    // A row goes on behind a paragraph in one of its cells.
    void EndParagraph();
    void OpenList(bool isNumbered);
    void CloseList();
    void StartItem();
    void StartCell(bool isTitle);
    void EndCell() { m_endsInBlank = true; }

    // Added up, so that looks can be nested; more ends than beginnings count as none.
    void AddBold(int change) { Add(m_bold, change); }
    void AddItalic(int change) { Add(m_italic, change); }
    void AddCode(int change) { Add(m_code, change); }
    // Every run of the link has a copy: one that is longer than any address is none.
    void SetTarget(std::wstring target);
    // An empty one is none.
    void AddAnchor(const std::wstring& anchor);

    // The document, which leaves the builder empty.
    Document Finish();

  private:
    struct List {
        bool isNumbered;
        int count;
    };
    static void Add(int& sum, int change) { sum = change < 0 && sum == 0 ? 0 : sum + change; }
    void AddRun(std::wstring text);
    bool HasText() const;
    int ListLevel() const;

    Document m_document;
    Block m_block;
    bool m_hasBlock = false; // one was started by a tag
    bool m_hasCell = false;  // and in it, if it is a row, a cell
    bool m_endsInBlank = true;
    std::vector<List> m_lists;
    size_t m_deeperLists = 0; // beyond the greatest depth, which are not told apart
    int m_bold = 0;
    int m_italic = 0;
    int m_code = 0;
    std::wstring m_target;
};

} // namespace help
