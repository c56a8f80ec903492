// Export under faults: the file has all that was asked for, or it is told that something is missing.
#include <gtest/gtest.h>

#include "export/export_dialog.h"
#include "export/export_fields.h"
#include "export/export_job.h"
#include "fault_sweep.h"
#include "res/resource.h"
#include "support/dialog_window.h"
#include "support/test_session.h"
#include "support/test_windows.h"

namespace {

size_t CountOf(const std::string& part, const std::string& text)
{
    size_t count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

// Each of their lines is flushed to the disk.
constexpr uint32_t kExported = 3;

class FaultedExport : public FaultSweep {
  protected:
    FaultedExport()
    {
        ResetColumns(&m_columns, 1024);
        ChooseAllFields(&m_columns);
    }
    ~FaultedExport() override { DeleteFileW(File().c_str()); }
    std::wstring File() const { return Path() + L".out"; }

    Outcome Export()
    {
        const ExportRequest request{File(),     ExportFormat::SimpleText, ExportScope::All, true, {},
                                    &m_columns, &Own().Filter()};
        ExportJob job(request, {kPropDate, 0});
        (void)job.Run([](uint32_t count) { return count < kExported; });
        return job.Trouble() == StoreTrouble::None ? Outcome::Done : Outcome::Failed;
    }
    // After an export; whole: what one without a fault has written.
    void ExpectWholeUnlessTold(Outcome outcome, std::string* whole)
    {
        const std::string file = ReadFileBytes(File());
        *whole = whole->empty() ? file : *whole;
        if (outcome == Outcome::Done) {
            EXPECT_TRUE(file == *whole) << "something is missing";
        }
    }
    static void ExpectAll(const std::string& whole)
    {
        EXPECT_EQ(CountOf("Entry ", whole), kExported);
        EXPECT_EQ(CountOf("Home", whole), 1u);
        EXPECT_EQ(CountOf("Work", whole), 1u);
        EXPECT_EQ(CountOf("Travel", whole), 1u);
        EXPECT_EQ(CountOf("Contact 4", whole), 1u);
    }

    TestRegistry m_registry;
    ColumnSet m_columns;
};

TEST_F(FaultedExport, ToText)
{
    std::string whole;
    Sweep({.prepare = [] { return Own().Journal().Open(nullptr) == 1; },
           .run =
               [&] {
                   const Outcome outcome = Export();
                   ExpectWholeUnlessTold(outcome, &whole);
                   return outcome;
               },
           .end = [] { Own().Journal().Close(); }});
    ExpectAll(whole);
}

// The box at the end tells how many; another one, that something could not be read.
TEST_F(FaultedExport, ToCommaSeparatedValuesInItsWindow)
{
    SelectionSet selection;
    for (CEOID id = 1; id <= kExported; ++id)
        ASSERT_TRUE(selection.Append(id));
    std::string whole;
    Sweep({.prepare = [] { return Own().Journal().Open(nullptr) == 1; },
           .run =
               [&] {
                   const MessageBoxAnswerer boxes;
                   const ModalDriver driver([](HWND window) {
                       CheckRadioButton(window, IDC_EXPORT_ALL, IDC_EXPORT_FILTERED, IDC_EXPORT_SELECTED);
                       DialogWindow(window).Ok();
                   });
                   RunExportDialog(nullptr, File(), ExportFormat::CommaSeparated,
                                   {m_columns, selection, Own()});
                   EXPECT_FALSE(boxes.Boxes().empty());
                   const Outcome outcome = boxes.Boxes().size() == 1 ? Outcome::Done : Outcome::Failed;
                   ExpectWholeUnlessTold(outcome, &whole);
                   return outcome;
               },
           .end = [] { Own().Journal().Close(); }});
    ExpectAll(whole);
}

} // namespace
