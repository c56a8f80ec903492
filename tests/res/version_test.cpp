#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "res/version_info.h"

namespace {

TEST(Version, NamesTheProgram)
{
    const VersionInfo info(OwnPath());
    EXPECT_EQ(info.Text(L"FileDescription"), L"Journal");
    EXPECT_EQ(info.Text(L"ProductName"), L"Kelvra Journal");
}

TEST(Version, IsTheSameAsTextAndInNumbers)
{
    const VersionInfo info(OwnPath());
    EXPECT_EQ(info.Text(L"FileVersion"), info.Numbers());
    EXPECT_EQ(info.Text(L"ProductVersion"), info.Numbers());
}

TEST(Manifest, IsInTheProgram)
{
    HRSRC manifest = FindResourceW(nullptr, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24)); // RT_MANIFEST
    ASSERT_NE(manifest, nullptr);
    const auto* text = static_cast<const char*>(LockResource(LoadResource(nullptr, manifest)));
    const std::string manifestText(text, SizeofResource(nullptr, manifest));
    EXPECT_NE(manifestText.find("Microsoft.Windows.Common-Controls"), std::string::npos);
    EXPECT_NE(
        manifestText.find("<dpiAware xmlns=\"http://schemas.microsoft.com/SMI/2005/WindowsSettings\">true<"),
        std::string::npos)
        << "for systems that know no other";
    EXPECT_NE(
        manifestText.find("<dpiAwareness xmlns=\"http://schemas.microsoft.com/SMI/2016/WindowsSettings\">"
                          "PerMonitorV2, system<"),
        std::string::npos);
}

} // namespace
