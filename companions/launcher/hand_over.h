// Hands over to what the user's system has for calendars, mail, tasks and files: the programs that stand for
// the handheld's, which the Go menu starts.
#pragma once

#include <span>

// One way to something of the system's.
struct Way {
    enum class Kind {
        ChosenMail, // the mail program that the user has chosen for addresses of this scheme
        Client,     // the default program of a type: a subkey of Software\Clients
        FileType,   // the program for files with this ending
        Protocol,   // what is registered for an address of this scheme and answers
        Folder,     // one of the shell's own folders
        Program     // a program in the system's folder
    };
    Kind kind;
    const wchar_t* name;
};

struct Errand {
    const wchar_t* title;   // of the box that says that there is nothing
    const wchar_t* missing; // its text
    std::span<const Way> ways;
};

extern const Errand kCalendarErrand;
extern const Errand kMailErrand;
extern const Errand kTasksErrand;
extern const Errand kFilesErrand;

// Takes the first way that leads anywhere. False when none does.
[[nodiscard]] bool HandOver(const Errand& errand);
// The program's whole work: hands over, or says in a box that there is nothing to hand over to. The process's
// exit code.
int RunErrand(const Errand& errand);
