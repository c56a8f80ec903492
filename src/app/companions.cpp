#include "app/companions.h"

#include "res/resource.h"
#include "ui/launch.h"

namespace {

// In the boxes the error is the text and what was not found the title: kept in this order on purpose.
struct CommandCompanion {
    UINT command;
    Companion companion;
};
constexpr CommandCompanion kCompanions[] = {
    {CMD_CALENDAR, {L"calendar.exe", nullptr, L"Error starting Calendar", L"Calendar not found"}},
    {CMD_CONTACTS, {L"addrbook.exe", nullptr, L"Error starting Address Book", L"Addrbook not found"}},
    {CMD_INBOX, {L"pmail.exe", nullptr, L"Error starting Inbox", L"Pmail.exe not found"}},
    {CMD_TASKS, {L"tasks.exe", nullptr, L"Error starting Tasks", L"Tasks.exe not found"}},
    {CMD_MY_HANDHELD,
     {L"iexplorm.exe", L"My Handheld PC", L"Error starting explorer", L"iexplorm.exe not found"}},
};

} // namespace

const Companion* CompanionOf(UINT command)
{
    for (const CommandCompanion& entry : kCompanions)
        if (entry.command == command)
            return &entry.companion;
    return nullptr;
}

void LaunchCompanionOf(UINT command, HWND owner)
{
    if (const Companion* companion = CompanionOf(command))
        LaunchCompanion(*companion, owner);
}
