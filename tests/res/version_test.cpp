#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<BYTE> VersionInfo()
{
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    DWORD unused = 0;
    std::vector<BYTE> info(GetFileVersionInfoSizeW(path, &unused));
    if (!info.empty() && !GetFileVersionInfoW(path, 0, static_cast<DWORD>(info.size()), info.data()))
        info.clear();
    return info;
}

std::wstring VersionText(const std::vector<BYTE>& info, const std::wstring& name)
{
    void* text = nullptr;
    UINT length = 0;
    if (!VerQueryValueW(info.data(), (L"\\StringFileInfo\\040904b0\\" + name).c_str(), &text, &length))
        return L"(missing)";
    return static_cast<const wchar_t*>(text);
}

TEST(Version, NamesTheProgram)
{
    const std::vector<BYTE> info = VersionInfo();
    ASSERT_FALSE(info.empty());
    EXPECT_EQ(VersionText(info, L"FileDescription"), L"Journal");
    EXPECT_EQ(VersionText(info, L"ProductName"), L"Kelvra Journal");
}

TEST(Version, IsTheSameAsTextAndInNumbers)
{
    const std::vector<BYTE> info = VersionInfo();
    ASSERT_FALSE(info.empty());
    void* data = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(info.data(), L"\\", &data, &length));
    const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(data);
    const std::wstring numbers = std::to_wstring(HIWORD(fixed->dwFileVersionMS)) + L"." +
                                 std::to_wstring(LOWORD(fixed->dwFileVersionMS)) + L"." +
                                 std::to_wstring(HIWORD(fixed->dwFileVersionLS));
    EXPECT_EQ(VersionText(info, L"FileVersion"), numbers);
    EXPECT_EQ(VersionText(info, L"ProductVersion"), numbers);
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
