// SubjectList: the quick subjects while they are being worked on, in the order in which they are stored.
// Subjects are compared without regard to case.
#pragma once

#include <string>
#include <vector>

class SubjectList {
  public:
    SubjectList() = default;
    explicit SubjectList(std::vector<std::wstring> subjects) : m_subjects(std::move(subjects)) {}

    const std::vector<std::wstring>& InOrder() const { return m_subjects; }

    // How the nearest subject matches a text: one that begins with it, or one that is equal.
    enum class Match { None, Beginning, Whole };
    Match Find(const std::wstring& text) const;

    // At the end. False, with nothing changed, when there is such a subject.
    [[nodiscard]] bool Add(const std::wstring& text);
    // The first subject that is equal to one is replaced in its place. False, with nothing changed, when
    // there is none, and when another subject is equal to the new text.
    [[nodiscard]] bool Replace(const std::wstring& subject, const std::wstring& text);
    // The first subject that is equal. False when there is none.
    [[nodiscard]] bool Remove(const std::wstring& subject);

  private:
    std::vector<std::wstring>::iterator FirstEqual(const std::wstring& text);

    std::vector<std::wstring> m_subjects;
};

// Whether a text can be a subject: neither empty nor, in any case, one of the subject box's two fixed items.
bool IsSubject(const std::wstring& text);

// Which of the dialog's buttons can be pressed once the text has changed.
struct SubjectButtons {
    bool add = false;
    bool modify = false;
    bool remove = false;

    friend bool operator==(const SubjectButtons&, const SubjectButtons&) = default;
};
SubjectButtons ButtonsForText(const SubjectList& subjects, const std::wstring& text);
// The same once another item, or none, is selected; before: what they were.
SubjectButtons ButtonsForSelection(SubjectButtons before, bool isSelected, const std::wstring& text);
