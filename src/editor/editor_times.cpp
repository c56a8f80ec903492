#include "editor/editor_times.h"

#include "util/duration_text.h"

namespace {

constexpr size_t kDurationInput = 100; // characters of the duration box that are read

bool IsMidnight(const SYSTEMTIME& time)
{
    return !time.wHour && !time.wMinute && !time.wSecond && !time.wMilliseconds;
}

void CopyTimeOfDay(const SYSTEMTIME& from, SYSTEMTIME* to)
{
    to->wHour = from.wHour;
    to->wMinute = from.wMinute;
    to->wSecond = from.wSecond;
    to->wMilliseconds = from.wMilliseconds;
}

} // namespace

void EditorTimes::StartAt(TimeCount time)
{
    start = time;
    end = time;
    duration.Zero();
}

bool EditorTimes::TakePickedDate(SYSTEMTIME picked)
{
    SYSTEMTIME before{};
    if (IsMidnight(picked) && start.ToSystemTime(&before))
        CopyTimeOfDay(before, &picked);
    return start.FromSystemTime(picked);
}

void EditorTimes::FollowDuration()
{
    end = start + duration;
}

void EditorTimes::FollowEnds()
{
    duration = end - start;
}

void EditorTimes::TakeDurationText(std::wstring text)
{
    if (text.size() > kDurationInput)
        text.resize(kDurationInput);
    duration.Zero();
    // 0 tells that there was no number: the duration stays zero, and the box will say so.
    (void)ParseDuration(text.data(), &duration);
}

std::wstring EditorTimes::DurationText() const
{
    return FormatDuration(duration);
}
