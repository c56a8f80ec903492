#include "editor/quick_subjects.h"

namespace {

// The count is what somebody wrote into the registry: it ends where nothing has come for so long.
constexpr DWORD kLongestGap = 100;

} // namespace

std::vector<std::wstring> ReadQuickSubjects(const RegistryStore& settings)
{
    std::vector<std::wstring> subjects;
    const DWORD count = settings.GetNumber(kSettings, kSubjectCount, 0);
    DWORD gap = 0;
    for (DWORD i = 0; i < count && gap < kLongestGap; ++i) {
        wchar_t text[kSettingTextSize];
        settings.GetString(kOptions, (L"subj" + std::to_wstring(i)).c_str(), L"", text);
        gap = *text ? 0 : gap + 1;
        if (*text)
            subjects.emplace_back(text);
    }
    return subjects;
}
