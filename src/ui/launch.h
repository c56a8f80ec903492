// Starting the companion programs and the help viewer: fire and forget.
#pragma once

#include <windows.h>

#include <string>

// A companion program and what is said when it cannot be started.
struct Companion {
    const wchar_t* program;     // file name without a folder
    const wchar_t* commandLine; // the whole command line; null: none
    const wchar_t* errorText;   // the box's text
    const wchar_t* errorTitle;  // the box's title
};

// Starts the program and returns at once. One that cannot be started is told in a box over the owner.
void LaunchCompanion(const Companion& companion, HWND owner);

// Help topics: the help viewer's whole command line.
constexpr const wchar_t* kHelpMain = L"pellwyn.htm#Main_Contents";
constexpr const wchar_t* kHelpFound = L"pellwyn.htm#Found_Window";
constexpr const wchar_t* kHelpEntry = L"pellwyn.htp#Entry_Window"; // .htp, unlike the others
constexpr const wchar_t* kHelpAbout = L"pellwyn.htm#About_Window";
constexpr const wchar_t* kHelpAddressBook = L"pellwyn.htm#Address_Book";
constexpr const wchar_t* kHelpCategories = L"pellwyn.htm#Categories_Window";
constexpr const wchar_t* kHelpColumns = L"pellwyn.htm#Columns_Window";
constexpr const wchar_t* kHelpContact = L"pellwyn.htm#Address_Contact";
constexpr const wchar_t* kHelpExport = L"pellwyn.htm#Export_Window";
constexpr const wchar_t* kHelpFilter = L"pellwyn.htm#Filter_Window";
constexpr const wchar_t* kHelpFind = L"pellwyn.htm#Find_Window";
constexpr const wchar_t* kHelpOptions = L"pellwyn.htm#Options_Window";
constexpr const wchar_t* kHelpPassword = L"pellwyn.htm#Password";
constexpr const wchar_t* kHelpQuickSubjects = L"pellwyn.htm#Quick_Subjects";
constexpr const wchar_t* kHelpTransfer = L"pellwyn.htm#Address_Transfer";

void ShowHelp(const wchar_t* topic, HWND owner);

// The full path of a program: beside this one, else where the system searches; empty when it is in neither
// place.
std::wstring FindProgram(const wchar_t* name);
