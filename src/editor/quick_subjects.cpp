#include "editor/quick_subjects.h"

namespace {

// The count is what somebody wrote into the registry: it ends where nothing has come for so long.
constexpr DWORD kLongestGap = 100;

std::wstring SubjectName(size_t index)
{
    return L"subj" + std::to_wstring(index);
}

} // namespace

std::vector<std::wstring> ReadQuickSubjects(const RegistryStore& settings)
{
    std::vector<std::wstring> subjects;
    const DWORD count = settings.GetNumber(kSettings, kSubjectCount, 0);
    DWORD gap = 0;
    for (DWORD i = 0; i < count && gap < kLongestGap; ++i) {
        wchar_t text[kSettingTextSize];
        settings.GetString(kOptions, SubjectName(i).c_str(), L"", text);
        gap = *text ? 0 : gap + 1;
        if (*text)
            subjects.emplace_back(text);
    }
    return subjects;
}

void StoreQuickSubjects(RegistryStore* settings, const std::vector<std::wstring>& subjects)
{
    settings->SetNumber(kSettings, kSubjectCount, static_cast<DWORD>(subjects.size()));
    for (size_t i = 0; i < subjects.size(); ++i)
        settings->SetString(kOptions, SubjectName(i).c_str(), subjects[i].c_str());
}
