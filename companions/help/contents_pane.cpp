#include "help/contents_pane.h"

#include "ui/screen/scoped.h"

namespace help {

namespace {

constexpr DWORD kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES |
                         TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_DISABLEDRAGDROP;

}

bool ContentsPane::Create(HWND parent, int id)
{
    m_window = CreateWindowExW(WS_EX_CLIENTEDGE, WC_TREEVIEWW, L"Contents", kStyle, 0, 0, 0, 0, parent,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr),
                               nullptr);
    return m_window != nullptr;
}

void ContentsPane::Fill(const std::vector<Topic>& topics)
{
    const ScopedRedrawPause pause(m_window);
    m_isQuiet = true;
    TreeView_DeleteAllItems(m_window);
    m_items.clear();
    HTREEITEM parent = TVI_ROOT;
    for (size_t topic = 0; topic < topics.size(); ++topic) {
        TVINSERTSTRUCTW insert{};
        insert.hParent = topics[topic].level > 1 ? parent : TVI_ROOT;
        insert.hInsertAfter = TVI_LAST;
        insert.item.mask = TVIF_TEXT | TVIF_PARAM;
        std::wstring title = topics[topic].title;
        insert.item.pszText = title.data();
        insert.item.lParam = static_cast<LPARAM>(topic);
        HTREEITEM item = TreeView_InsertItem(m_window, &insert);
        m_items.push_back(item);
        if (topics[topic].level <= 1)
            parent = item ? item : TVI_ROOT;
    }
    for (HTREEITEM item : m_items)
        TreeView_Expand(m_window, item, TVE_EXPAND);
    m_isQuiet = false;
}

void ContentsPane::Select(std::optional<size_t> topic)
{
    m_isQuiet = true;
    TreeView_SelectItem(m_window, topic && *topic < m_items.size() ? m_items[*topic] : nullptr);
    m_isQuiet = false;
}

std::optional<size_t> ContentsPane::ChosenBy(const NMHDR* header) const
{
    if (m_isQuiet || header->hwndFrom != m_window || header->code != TVN_SELCHANGEDW)
        return std::nullopt;
    const auto* change = reinterpret_cast<const NMTREEVIEWW*>(header);
    const auto topic = static_cast<size_t>(change->itemNew.lParam);
    return change->itemNew.hItem && topic < m_items.size() ? std::optional(topic) : std::nullopt;
}

} // namespace help
