// A file to be written is asked for until it can be written.
#include "ui/save_choice.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/held_file.h"
#include "support/import_watch.h"
#include "support/temporary_name.h"
#include "support/test_store.h"
#include "support/test_windows.h"

namespace {

// What the person chooses, one after the other, and then Cancel. The dialog makes the file's folder the
// current one.
class Choices {
  public:
    explicit Choices(std::vector<std::wstring> paths)
    {
        s_paths = std::move(paths);
        s_asked = 0;
    }
    size_t Asked() const { return s_asked; }

  private:
    static BOOL WINAPI Answer(OPENFILENAMEW* choice)
    {
        if (s_asked++ >= s_paths.size())
            return FALSE;
        const std::wstring& path = s_paths[s_asked - 1];
        wcscpy(choice->lpstrFile, path.c_str());
        EXPECT_TRUE(SetCurrentDirectoryW(path.substr(0, path.rfind(L'\\')).c_str()));
        return TRUE;
    }
    static inline std::vector<std::wstring> s_paths;
    static inline size_t s_asked;
    const ImportWatch<decltype(&GetSaveFileNameW)> m_watch{&__imp_GetSaveFileNameW, Answer};
};

std::wstring CurrentFolder()
{
    wchar_t folder[MAX_PATH] = L"";
    GetCurrentDirectoryW(MAX_PATH, folder);
    return folder;
}

class SaveChoice : public testing::Test {
  protected:
    SaveChoice() { EXPECT_TRUE(WriteFileBytes(m_path, "before")); }
    ~SaveChoice() override
    {
        DeleteFileW(m_path.c_str());
        DeleteFileW(New().c_str());
        EXPECT_EQ(CurrentFolder(), m_before);
    }
    std::wstring New() const { return m_path + L".new"; }

    // The chosen path; empty where none was.
    std::wstring Choose()
    {
        wchar_t path[MAX_PATH] = L"";
        OPENFILENAMEW choice{};
        choice.lStructSize = sizeof choice;
        choice.hwndOwner = m_owner.Handle();
        choice.lpstrFile = path;
        choice.nMaxFile = MAX_PATH;
        return ChooseFileToWrite(&choice) ? path : L"";
    }

    const std::wstring m_before = CurrentFolder();
    const std::wstring m_path = TemporaryName(L"choice");
    TestParent m_owner;
    MessageBoxAnswerer m_boxes;
};

TEST_F(SaveChoice, TakesAFileThatCanBeWrittenAndLeavesWhatIsInIt)
{
    const Choices choices({m_path});
    EXPECT_EQ(Choose(), m_path);
    EXPECT_EQ(choices.Asked(), 1u);
    EXPECT_EQ(ReadFileBytes(m_path), "before");
    EXPECT_TRUE(m_boxes.Boxes().empty());
}

TEST_F(SaveChoice, TakesANameThatIsFreeAndLeavesItFree)
{
    const Choices choices({New()});
    EXPECT_EQ(Choose(), New());
    EXPECT_EQ(GetFileAttributesW(New().c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(m_boxes.Boxes().empty());
}

TEST_F(SaveChoice, AsksAgainWhereAFileCannotBeWritten)
{
    const Choices choices({m_path, New()});
    const HeldFile held(m_path, 0);
    EXPECT_EQ(Choose(), New());
    EXPECT_EQ(choices.Asked(), 2u);
    ASSERT_EQ(m_boxes.Boxes().size(), 1u);
    EXPECT_EQ(m_boxes.Boxes()[0].text,
              L"This file cannot be written:\n\n" + m_path + L"\n\nPlease choose another name or folder.");
    EXPECT_EQ(m_boxes.Boxes()[0].owner, m_owner.Handle());
    EXPECT_EQ(held.Waited(), 2'000u);
}

TEST_F(SaveChoice, WaitsForAProgramThatHasTheFileForAMoment)
{
    const Choices choices({m_path});
    const HeldFile held(m_path, 3);
    EXPECT_EQ(Choose(), m_path);
    EXPECT_TRUE(m_boxes.Boxes().empty());
}

TEST_F(SaveChoice, EndsWhereThePersonCancels)
{
    const Choices choices({m_path.substr(0, m_path.rfind(L'\\'))});
    EXPECT_EQ(Choose(), L"");
    EXPECT_EQ(choices.Asked(), 2u);
    EXPECT_EQ(m_boxes.Boxes().size(), 1u) << "a folder";
}

} // namespace
