// The fixed vocabularies of the entry editor: types, suggested durations, priority and sensitivity.
#pragma once

#include <span>
#include <string>

constexpr int kDefaultType = 14; // the place in kEntryTypes of "Phone call"

// The place in kEntryTypes of the first type that begins with the text, without regard to case; the search
// starts after the first type and comes to that one last. -1: none, also for the empty text.
int FindTypeByPrefix(const std::wstring& text);
// The place of the type that is the text, without regard to case; -1: none.
int FindType(const std::wstring& text);

// Suggested durations, in the order of the duration box, with the wording that the box has.
std::span<const wchar_t* const> SuggestedDurations();
constexpr int kEmptiedDuration = 1; // "5 minutes": what an emptied box shows

// How a button of the command bar shows its value.
struct ButtonFace {
    const wchar_t* text;
    int image;
    int width; // pixels at 96 dpi
};

constexpr int kFirstPriorityImage = 7;     // of the value 0
constexpr int kFirstSensitivityImage = 10; // likewise
constexpr int kTimerImage = 3;
constexpr int kZoomImage = 6;
constexpr int kPriorityWidth = 85;
constexpr int kSensitivityWidth = 100;
constexpr int kZoomWidth = 75;
constexpr int kTimerWidth = 75;

// The value of a stored value or of a menu id; every other number is "Normal".
int PriorityOf(int valueOrId);
int SensitivityOf(int valueOrId);
ButtonFace PriorityFace(int valueOrId);
ButtonFace SensitivityFace(int valueOrId);
ButtonFace TimerFace(bool running);

struct PickerChoice {
    int menuId;
    int value;
    const wchar_t* text;
};
// In menu order.
std::span<const PickerChoice> PriorityChoices();
std::span<const PickerChoice> SensitivityChoices();
