// Export under faults: the file has all that was asked for, or it is told that something is missing.
#include <gtest/gtest.h>

#include "app/journal_app.h"
#include "export/export_fields.h"
#include "export/export_job.h"
#include "fault_sweep.h"

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

    Outcome Export(ExportFormat format)
    {
        const ExportRequest request{File(), format, ExportScope::All, true, {}, &m_columns, &App().Filter()};
        ExportJob job(request, {kPropDate, 0});
        (void)job.Run([](uint32_t count) { return count < kExported; });
        return job.Trouble() == StoreTrouble::None ? Outcome::Done : Outcome::Failed;
    }
    void SweepExport(ExportFormat format)
    {
        std::string whole;
        Sweep({.prepare = [] { return App().Journal().Open(nullptr) == 1; },
               .run =
                   [&] {
                       const Outcome outcome = Export(format);
                       const std::string file = ReadFileBytes(File());
                       whole = whole.empty() ? file : whole;
                       if (outcome == Outcome::Done) {
                           EXPECT_TRUE(file == whole) << "something is missing";
                       }
                       return outcome;
                   },
               .end = [] { App().Journal().Close(); }});
        EXPECT_EQ(CountOf("Entry ", whole), kExported);
        EXPECT_EQ(CountOf("Home", whole), 1u);
        EXPECT_EQ(CountOf("Work", whole), 1u);
        EXPECT_EQ(CountOf("Travel", whole), 1u);
        EXPECT_EQ(CountOf("Contact 4", whole), 1u);
    }

    TestRegistry m_registry;
    ColumnSet m_columns;
};

TEST_F(FaultedExport, ToCommaSeparatedValues)
{
    SweepExport(ExportFormat::CommaSeparated);
}

TEST_F(FaultedExport, ToText)
{
    SweepExport(ExportFormat::SimpleText);
}

} // namespace
