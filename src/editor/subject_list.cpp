#include "editor/subject_list.h"

#include <windows.h>

#include <algorithm>

#include "data/journal_entry.h"
#include "editor/subject_box.h"
#include "util/compare_text.h"

namespace {

bool AreEqual(const std::wstring& a, const std::wstring& b)
{
    return IsSameForSystem(a, b, Case::Ignored);
}

bool BeginsWith(const std::wstring& subject, const std::wstring& text)
{
    return AreEqual(subject.substr(0, text.size()), text);
}

} // namespace

SubjectList::Match SubjectList::Find(const std::wstring& text) const
{
    Match best = Match::None;
    for (const std::wstring& subject : m_subjects) {
        if (AreEqual(subject, text))
            return Match::Whole;
        if (BeginsWith(subject, text))
            best = Match::Beginning;
    }
    return best;
}

bool SubjectList::Add(const std::wstring& text)
{
    if (Find(text) == Match::Whole)
        return false;
    m_subjects.push_back(text);
    return true;
}

bool SubjectList::Replace(const std::wstring& subject, const std::wstring& text)
{
    const auto place = FirstEqual(subject);
    if (place == m_subjects.end())
        return false;
    for (auto other = m_subjects.begin(); other != m_subjects.end(); ++other)
        if (other != place && AreEqual(*other, text))
            return false;
    *place = text;
    return true;
}

bool SubjectList::Remove(const std::wstring& subject)
{
    const auto place = FirstEqual(subject);
    if (place == m_subjects.end())
        return false;
    m_subjects.erase(place);
    return true;
}

std::vector<std::wstring>::iterator SubjectList::FirstEqual(const std::wstring& text)
{
    return std::find_if(m_subjects.begin(), m_subjects.end(),
                        [&](const std::wstring& subject) { return AreEqual(subject, text); });
}

bool IsSubject(const std::wstring& text)
{
    return !text.empty() && !AreEqual(text, kSubjectPlaceholder) && !AreEqual(text, kModifySubjects);
}

SubjectButtons ButtonsForText(const SubjectList& subjects, const std::wstring& text)
{
    if (!IsSubject(text))
        return {};
    switch (subjects.Find(text)) {
    case SubjectList::Match::None: return {.add = true, .modify = true, .remove = false};
    case SubjectList::Match::Beginning: return {.add = true, .modify = true, .remove = true};
    case SubjectList::Match::Whole: break;
    }
    return {.add = false, .modify = false, .remove = true};
}

SubjectButtons ButtonsForSelection(SubjectButtons before, bool isSelected, const std::wstring& text)
{
    const bool canTake = isSelected && IsSubject(text);
    return {.add = before.add || canTake, .modify = canTake, .remove = isSelected};
}
