// The list's commands under faults: done as a whole, or not at all and told in a box.
#include <gtest/gtest.h>

#include <optional>

#include "editor/editor_settings.h"
#include "fault_sweep.h"
#include "list/entry_commands.h"
#include "list/entry_list.h"
#include "support/test_session.h"
#include "support/test_windows.h"

namespace {

class FaultedCommands : public FaultSweep {
  protected:
    // The list over the store, with the entries 5 and 6 selected.
    bool Show()
    {
        Own().SetNumber(kOptions, kConfirmDelete, 0);
        if (!Own().Journal().Open(nullptr))
            return false;
        m_parent.emplace([this](HWND, UINT message, WPARAM, LPARAM lParam, LRESULT* result) {
            const bool isOurs = message == WM_NOTIFY && m_list;
            if (isOurs)
                *result = m_list->OnNotify(reinterpret_cast<NMHDR*>(lParam));
            return isOurs;
        });
        m_list.emplace(Own());
        if (!m_list->Create(m_parent->Handle(), &m_columns, LVS_REPORT | LVS_SHOWSELALWAYS, 0))
            return false;
        return m_list->Selection().Append(5) && m_list->Selection().Append(6);
    }
    void Hide()
    {
        m_list.reset();
        m_parent.reset();
        Own().Journal().Close();
    }
    template <typename Command> void SweepCommand(Command command, const std::string& model)
    {
        Sweep({.prepare = [this] { return Show(); },
               .run =
                   [&] {
                       const MessageBoxAnswerer boxes;
                       command(*m_list);
                       return boxes.Boxes().empty() ? Outcome::Done : Outcome::Failed;
                   },
               .end = [this] { Hide(); },
               .model = model});
    }

    TestRegistry m_registry;
    ColumnSet m_columns;
    std::optional<EntryList> m_list;
    std::optional<TestParent> m_parent;
};

TEST_F(FaultedCommands, Deleting)
{
    SweepCommand(DeleteEntries, "DELETE FROM journal WHERE oid IN (5, 6)");
}

TEST_F(FaultedCommands, Pasting)
{
    constexpr const char* kColumns =
        "date, subject, body, categories, type, kind, priority, sensitivity, end_time, duration, contacts";
    SweepCommand(PasteEntries, std::string("INSERT INTO journal(") + kColumns + ") SELECT " + kColumns +
                                   " FROM journal WHERE oid IN (5, 6) ORDER BY oid");
}

TEST_F(FaultedCommands, TakingAllCategoriesAway)
{
    SweepCommand(ClearCategories, "UPDATE journal SET categories = NULL; UPDATE categories SET uses = 0");
}

} // namespace
