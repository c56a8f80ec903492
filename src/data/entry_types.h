// The types that the program offers for an entry. The record holds the text, which may be any other.
#pragma once

constexpr const wchar_t* kEntryTypes[] = {
    L"Conversation",
    L"Document",
    L"E-mail message",
    L"Fax",
    L"Letter",
    L"Meeting",
    L"Meeting cancellation",
    L"Meeting request",
    L"Meeting response",
    L"Microsoft Access",
    L"Microsoft Excel",
    L"Microsoft PowerPoint",
    L"Microsoft Word",
    L"Note",
    L"Phone call",
    L"Remote session",
    L"Task",
    L"Task request",
    L"Task response",
};
