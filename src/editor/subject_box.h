// The editor's subject box: two fixed items, then the quick subjects and the record's own subject, sorted.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "settings/registry_store.h"

constexpr const wchar_t* kModifySubjects = L"<Modify Quick Subjects>";
constexpr int kModifySubjectsItem = 0;
constexpr int kNoSubjectItem = 1; // "<Entry Subject>"

// Empties the box and fills it from the settings, but for empty ones. storedSubject, which may be empty, is
// added and selected; without one "<Entry Subject>" is selected. False when it does not show.
[[nodiscard]] bool FillSubjectBox(HWND box, const RegistryStore& settings,
                                  const std::optional<std::wstring>& storedSubject);
// Adds a subject at its place in the order, behind the two fixed items, and selects it. False when the box
// does not show it, as for want of memory.
[[nodiscard]] bool AddSubject(HWND box, const std::wstring& subject);
void SelectNoSubject(HWND box);

// The subject to write; the fixed items are none and give the placeholder. Nothing when the box cannot be
// read.
std::optional<std::wstring> SubjectToWrite(HWND box);
