#include "editor/quick_subjects.h"

namespace {

constexpr const wchar_t* kSubject = L"subj"; // and its number, from 0

std::wstring SubjectName(size_t index)
{
    return kSubject + std::to_wstring(index);
}

} // namespace

std::vector<std::wstring> ReadQuickSubjects(const RegistryStore& settings)
{
    std::vector<std::wstring> subjects;
    const DWORD count =
        settings.ListLength(kOptions, kSubject, settings.GetNumber(kSettings, kSubjectCount, 0));
    for (DWORD i = 0; i < count; ++i) {
        wchar_t text[kSettingTextSize];
        settings.GetString(kOptions, SubjectName(i).c_str(), L"", text);
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
