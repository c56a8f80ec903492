// What each program that a user has tells the system of itself.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "res/resource.h"
#include "res/version_info.h"
#include "util/owners.h"

namespace {

using UniqueModule = UniqueHandle<HMODULE, FreeLibrary>;

struct Wanted {
    const wchar_t* name; // without the ending
    const wchar_t* description;
};

class Programs : public testing::TestWithParam<Wanted> {
  protected:
    std::wstring File() const { return std::wstring(GetParam().name) + L".exe"; }
    std::wstring Path() const
    {
        const std::wstring own = OwnPath();
        return own.substr(0, own.rfind(L'\\') + 1) + File();
    }
};

TEST_P(Programs, TellTheirNameAndVersion)
{
    const VersionInfo info(Path());
    EXPECT_EQ(info.Text(L"FileDescription"), GetParam().description);
    EXPECT_EQ(info.Text(L"InternalName"), GetParam().name);
    EXPECT_EQ(info.Text(L"OriginalFilename"), File());
    EXPECT_EQ(info.Text(L"ProductName"), L"Kelvra Journal");
    EXPECT_EQ(info.Text(L"CompanyName"), L"Quillmarsh");
    EXPECT_NE(info.Numbers(), L"0.0.0");
    EXPECT_EQ(info.Text(L"FileVersion"), info.Numbers());
    EXPECT_EQ(info.Text(L"ProductVersion"), info.Numbers());
}

TEST_P(Programs, AskForTheLeastRightsOfTheSystemsThatTheyRunOn)
{
    const UniqueModule program(LoadLibraryExW(Path().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
    ASSERT_TRUE(program);
    HRSRC manifest = FindResourceW(program.get(), MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24)); // RT_MANIFEST
    ASSERT_NE(manifest, nullptr);
    const auto* bytes = static_cast<const char*>(LockResource(LoadResource(program.get(), manifest)));
    std::string text(bytes, SizeofResource(program.get(), manifest));
    std::erase_if(text, [](char c) { return c == ' ' || c == '\r' || c == '\n'; });
    for (const char* part : {
             "<requestedExecutionLevellevel=\"asInvoker\"uiAccess=\"false\"/>",
             // Windows 10 and 11 have one name.
             "<supportedOSId=\"{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}\"/>",
             "<longPathAwarexmlns=\"http://schemas.microsoft.com/SMI/2016/WindowsSettings\">true</"
             "longPathAware>",
             "name=\"Microsoft.Windows.Common-Controls\"version=\"6.0.0.0\"",
         })
        EXPECT_NE(text.find(part), std::string::npos) << part;
    EXPECT_EQ(text.find("<supportedOS"), text.rfind("<supportedOS")) << "older systems are not supported";
}

// The shell shows the first one, and the windows of all programs take it by its number.
TEST_P(Programs, HaveAnIcon)
{
    const UniqueModule program(LoadLibraryExW(Path().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
    ASSERT_TRUE(program);
    HRSRC icon =
        FindResourceW(program.get(), MAKEINTRESOURCEW(IDI_JOURNAL), MAKEINTRESOURCEW(14)); // RT_GROUP_ICON
    ASSERT_NE(icon, nullptr);
    const auto* group = static_cast<const WORD*>(LockResource(LoadResource(program.get(), icon)));
    EXPECT_GE(group[2], 3) << "sizes";
}

INSTANTIATE_TEST_SUITE_P(All, Programs,
                         testing::Values(Wanted{L"journal", L"Journal"}, Wanted{L"addrbook", L"Address Book"},
                                         Wanted{L"PegHelp", L"Journal Help"},
                                         Wanted{L"calendar", L"Journal: Calendar"},
                                         Wanted{L"pmail", L"Journal: Inbox"},
                                         Wanted{L"tasks", L"Journal: Tasks"},
                                         Wanted{L"iexplorm", L"Journal: My Handheld PC"}),
                         [](const auto& program) {
                             std::string name;
                             for (const wchar_t* c = program.param.name; *c; ++c)
                                 name += static_cast<char>(*c);
                             return name;
                         });

} // namespace
