#include "data/entry_types.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(EntryTypes, StandInTheirOrder)
{
    const std::vector<std::wstring> expected{L"Conversation",
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
                                             L"Task response"};
    EXPECT_EQ(std::vector<std::wstring>(std::begin(kEntryTypes), std::end(kEntryTypes)), expected);
}

} // namespace
