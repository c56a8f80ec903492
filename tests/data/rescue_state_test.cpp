// The bytes of a rescue file: what is written is read, and nothing else is.
#include <gtest/gtest.h>

#include "data/rescue_state.h"

namespace {

RescueState Full()
{
    RescueState state;
    state.store = 0x0123456789ABCDEF;
    state.id = 17;
    state.image = 0xFEDCBA9876543210;
    state.entry.date = TimeCount(134'397'360'000'000'000);
    state.entry.endTime = TimeCount(134'397'414'000'000'000);
    state.entry.duration = TimeCount(54'000'000'000);
    state.entry.priority = 2;
    state.entry.sensitivity = 3;
    state.entry.type = L"Meeting";
    state.entry.subject = L"Call with J\u00F6rg";
    state.entry.body = L"First\r\nSecond \xD83D\xDE00 and half a pair \xD83D";
    state.categories = std::vector<CEOID>{5, 3};
    state.contacts = {9, 8, 7};
    return state;
}

void ExpectSame(const RescueState& a, const RescueState& b)
{
    EXPECT_EQ(a.store, b.store);
    EXPECT_EQ(a.id, b.id);
    EXPECT_EQ(a.image, b.image);
    EXPECT_EQ(a.entry.date, b.entry.date);
    EXPECT_EQ(a.entry.endTime, b.entry.endTime);
    EXPECT_EQ(a.entry.duration, b.entry.duration);
    EXPECT_EQ(a.entry.priority, b.entry.priority);
    EXPECT_EQ(a.entry.sensitivity, b.entry.sensitivity);
    EXPECT_EQ(a.entry.type, b.entry.type);
    EXPECT_EQ(a.entry.subject, b.entry.subject);
    EXPECT_EQ(a.entry.body, b.entry.body);
    EXPECT_EQ(a.categories, b.categories);
    EXPECT_EQ(a.contacts, b.contacts);
}

// With the size and the number that its content would have.
std::string Signed(std::string bytes)
{
    const std::string content = bytes.substr(24);
    const auto size = static_cast<uint32_t>(content.size());
    const uint64_t number = NumberOfBytes(content);
    bytes.replace(12, 4, reinterpret_cast<const char*>(&size), 4);
    bytes.replace(16, 8, reinterpret_cast<const char*>(&number), 8);
    return bytes;
}

TEST(RescueState, WhatIsWrittenIsRead)
{
    RescueState none = Full();
    none.categories = std::vector<CEOID>();
    none.contacts.clear();
    RescueState unknown = Full();
    unknown.categories.reset();
    for (const RescueState& state : {RescueState(), Full(), none, unknown}) {
        const auto read = ReadRescue(RescueBytes(state));
        ASSERT_TRUE(read);
        ExpectSame(*read, state);
    }
}

TEST(RescueState, TheBytesAreThoseOfTheFormat)
{
    RescueState state;
    state.store = 1;
    state.id = 2;
    state.entry.subject = L"Hi";
    const std::string bytes = RescueBytes(state);
    EXPECT_EQ(bytes.substr(0, 12), std::string("QJRESCUE\2\0\0\0", 12));
    EXPECT_EQ(bytes.substr(24, 12), std::string("\1\0\0\0\0\0\0\0\2\0\0\0", 12));
    EXPECT_EQ(bytes.substr(24 + 12 + 8, 4), std::string("\10\0\0\0", 4)) << "values";
    // The last one is the subject, by number 102 and kind of value 31; behind it there are no sets.
    EXPECT_EQ(bytes.substr(bytes.size() - 19), std::string("\x1F\0\x66\0\2\0\0\0Hi\0\0\0\0\0\0\0\0\0", 19));
}

template <typename Number> void Append(std::string* bytes, Number number)
{
    bytes->append(reinterpret_cast<const char*>(&number), sizeof number);
}
void AppendText(std::string* bytes, std::string_view text)
{
    Append(bytes, static_cast<uint32_t>(text.size()));
    bytes->append(text);
}

// An entry that was kept by the program before is not lost with it.
TEST(RescueState, OfTheFirstVersionIsRead)
{
    std::string bytes("QJRESCUE\1\0\0\0", 12);
    bytes.resize(24);
    Append(&bytes, uint64_t{0x0123456789ABCDEF});
    Append(&bytes, uint32_t{17});
    Append(&bytes, uint64_t{0xFEDCBA9876543210});
    for (const uint64_t time : {134'397'360'000'000'000u, 134'397'414'000'000'000u, 54'000'000'000u})
        Append(&bytes, time);
    Append(&bytes, uint16_t{2});
    Append(&bytes, uint16_t{3});
    AppendText(&bytes, "Meeting");
    AppendText(&bytes, "Call with J\xC3\xB6rg");
    RescueState wanted = Full();
    wanted.entry.body = L"First\r\nSecond";
    AppendText(&bytes, "First\r\nSecond");
    Append(&bytes, uint8_t{1});
    for (const uint32_t number : {2u, 5u, 3u, 3u, 9u, 8u, 7u})
        Append(&bytes, number);
    const auto read = ReadRescue(Signed(bytes));
    ASSERT_TRUE(read);
    ExpectSame(*read, wanted);
    bytes[8] = 0;
    EXPECT_FALSE(ReadRescue(Signed(bytes)));
    bytes[8] = 3;
    EXPECT_FALSE(ReadRescue(Signed(bytes)));
}

TEST(RescueState, AFieldThatIsNotKnownIsNotReadPast)
{
    std::string bytes = RescueBytes(RescueState());
    for (const CEPROPID id : {MakePropertyId(255, CEVT_LPWSTR), kPropCategories, kPropKind}) {
        bytes.replace(bytes.size() - 17, sizeof id, reinterpret_cast<const char*>(&id), sizeof id);
        EXPECT_FALSE(ReadRescue(Signed(bytes))) << id;
    }
}

TEST(RescueState, NoPartOfItIsRead)
{
    const std::string bytes = RescueBytes(Full());
    for (size_t size = 0; size < bytes.size(); ++size)
        EXPECT_FALSE(ReadRescue(std::string_view(bytes).substr(0, size))) << size;
    EXPECT_FALSE(ReadRescue(bytes + '\0'));
}

// Behind a right number too: the lengths are believed no further than the file goes.
TEST(RescueState, NoPartOfAContentIsRead)
{
    const std::string bytes = RescueBytes(Full());
    for (size_t size = 24; size < bytes.size(); ++size)
        EXPECT_FALSE(ReadRescue(Signed(bytes.substr(0, size)))) << size;
    EXPECT_FALSE(ReadRescue(Signed(bytes + '\0')));
    EXPECT_TRUE(ReadRescue(Signed(bytes)));
}

TEST(RescueState, AChangedByteIsNoticed)
{
    const std::string bytes = RescueBytes(Full());
    for (size_t at = 0; at < bytes.size(); ++at)
        for (const int flip : {1, 0x80, 0xFF}) {
            std::string changed = bytes;
            changed[at] = static_cast<char>(changed[at] ^ flip);
            EXPECT_FALSE(ReadRescue(changed)) << at;
        }
}

// With a right number over it a changed byte is another value, or is refused: a length of any size.
TEST(RescueState, NoLengthLeadsOutOfTheFile)
{
    const std::string bytes = RescueBytes(Full());
    for (size_t at = 24; at < bytes.size(); ++at)
        for (const int value : {0, 1, 0x7F, 0x80, 0xFF}) {
            std::string changed = bytes;
            changed[at] = static_cast<char>(value);
            (void)ReadRescue(Signed(changed));
            changed.replace(at, std::min<size_t>(4, changed.size() - at),
                            std::string(std::min<size_t>(4, changed.size() - at), static_cast<char>(value)));
            (void)ReadRescue(Signed(changed));
        }
}

TEST(RescueState, ATextThatIsTooLongIsNotWritten)
{
    RescueState state;
    state.entry.body.assign(kRescueSizeLimit + 1, L'x');
    EXPECT_TRUE(RescueBytes(state).empty());
}

} // namespace
