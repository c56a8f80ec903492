// Start, end and duration of the entry that is being edited. The end is never set by the user: it follows the
// start and the duration.
#pragma once

#include <string>

#include "util/time_count.h"

struct EditorTimes {
    TimeCount start;
    TimeCount end;
    TimeCount duration;

    // A new entry, or a record's Date: no length yet.
    void StartAt(TimeCount time);
    // What a picker has as the new start; the pickers carry the whole time. A date picker's calendar may have
    // lost the time of day: midnight there keeps the one before. False, with the start as it was, for a time
    // that is no date.
    [[nodiscard]] bool TakePickedDate(SYSTEMTIME picked);
    [[nodiscard]] bool TakePickedTime(const SYSTEMTIME& picked) { return start.FromSystemTime(picked); }
    // The date rule's last step: end = start + duration.
    void FollowDuration();
    // After a record's end and duration were taken as they are: the two ends are what counts.
    void FollowEnds();

    // Takes what the user typed or chose in the duration box; text without a number gives no duration.
    void TakeDurationText(std::wstring text);
    // The duration in words.
    std::wstring DurationText() const;
};
