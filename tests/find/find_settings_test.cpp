#include "find/find_settings.h"

#include <gtest/gtest.h>

#include "support/test_session.h"
#include "support/test_store.h"

namespace {

using Texts = std::vector<std::wstring>;

class FindSettings : public testing::Test {
  protected:
    static DWORD Stored(const wchar_t* name) { return Own().GetNumber(kSettings, name, 0xDEAD); }
    static void Store(const wchar_t* name, DWORD value) { Own().SetNumber(kSettings, name, value); }
    static void StoreText(int index, const std::wstring& text)
    {
        Own().SetString(kOptions, (L"Find" + std::to_wstring(index)).c_str(), text.c_str());
    }
    static std::wstring StoredText(int index)
    {
        wchar_t text[kSettingTextSize];
        Own().GetString(kOptions, (L"Find" + std::to_wstring(index)).c_str(), L"", text);
        return text;
    }
    static void StoreBytes(const wchar_t* subkey, const wchar_t* name, DWORD type, const std::string& bytes)
    {
        const std::wstring path = std::wstring(L"Software\\Quillmarsh\\Journal\\") + subkey;
        EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, path.c_str(), name, type, bytes.data(),
                                  static_cast<DWORD>(bytes.size())),
                  ERROR_SUCCESS);
    }
    static void Add(const std::wstring& text) { AddToFindHistory(&Own(), text); }
    static Texts History() { return ReadFindHistory(Own()); }

    TestRegistry m_registry;
};

} // namespace

TEST_F(FindSettings, NothingStoredReadsAsTheDefaults)
{
    EXPECT_EQ(ReadSearchBy(Own()), kPropDate);
    EXPECT_EQ(ReadSearchFrom(Own()), SearchFrom::Top);
    EXPECT_FALSE(ReadMatchCase(Own()));
    EXPECT_EQ(History(), Texts{});
}

TEST_F(FindSettings, ButtonsAreStoredByTheirNumbers)
{
    const std::pair<CEPROPID, DWORD> kinds[] = {{kPropDate, 1106}, {kPropSubject, 1107}, {kPropBody, 1108}};
    for (const auto& [by, button] : kinds) {
        FindRequest request;
        request.by = by;
        request.matchCase = by == kPropSubject;
        request.from = by == kPropBody ? SearchFrom::Current : SearchFrom::Top;
        StoreFindChoices(&Own(), request);
        EXPECT_EQ(Stored(L"SearchBy"), button);
        EXPECT_EQ(Stored(L"MatchCase"), by == kPropSubject ? 1u : 0u);
        EXPECT_EQ(Stored(L"SearchFrom"), by == kPropBody ? 1049u : 1047u);
        EXPECT_EQ(ReadSearchBy(Own()), by);
        EXPECT_EQ(ReadMatchCase(Own()), request.matchCase);
        EXPECT_EQ(ReadSearchFrom(Own()), request.from);
    }
}

TEST_F(FindSettings, NumbersOfNoSuchButtonReadAsTheDefaults)
{
    for (const DWORD number : {0u, 1u, 2u, 1105u, 1109u, 1048u, 0xFFFFFFFFu}) {
        Store(L"SearchBy", number);
        Store(L"SearchFrom", number);
        EXPECT_EQ(ReadSearchBy(Own()), kPropDate) << number;
        EXPECT_EQ(ReadSearchFrom(Own()), SearchFrom::Top) << number;
    }
    Store(L"MatchCase", 0xFFFFFFFF);
    EXPECT_TRUE(ReadMatchCase(Own()));
}

TEST_F(FindSettings, ANewTextComesFirstAndTheSixthDropsTheOldest)
{
    for (const wchar_t* text : {L"one", L"two", L"three", L"four", L"five"})
        Add(text);
    EXPECT_EQ(History(), (Texts{L"five", L"four", L"three", L"two", L"one"}));
    Add(L"six");
    EXPECT_EQ(History(), (Texts{L"six", L"five", L"four", L"three", L"two"}));
    EXPECT_EQ(StoredText(5), L"");
}

TEST_F(FindSettings, ATextThatIsThereAlreadyChangesNothing)
{
    for (const wchar_t* text : {L"one", L"two", L"three"})
        Add(text);
    for (const wchar_t* text : {L"one", L"THREE", L"Two"}) {
        Add(text);
        EXPECT_EQ(History(), (Texts{L"three", L"two", L"one"}));
    }
}

TEST_F(FindSettings, TheOldestOfFiveIsStillThere)
{
    for (const wchar_t* text : {L"one", L"two", L"three", L"four", L"five"})
        Add(text);
    Add(L"ONE");
    EXPECT_EQ(History(), (Texts{L"five", L"four", L"three", L"two", L"one"}));
}

TEST_F(FindSettings, ATextBehindAnEmptyOneIsNotInTheHistory)
{
    StoreText(0, L"one");
    StoreText(2, L"three");
    Add(L"three");
    EXPECT_EQ(History(), (Texts{L"three", L"one", L"three"})) << "the gap is closed";
}

TEST_F(FindSettings, LettersBeyondAsciiHaveTwoCasesToo)
{
    Add(L"\u00e4rger");
    Add(L"\u00c4RGER");
    EXPECT_EQ(History(), (Texts{L"\u00e4rger"}));
}

TEST_F(FindSettings, AnEmptyTextChangesNothing)
{
    Add(L"one");
    Add(L"");
    EXPECT_EQ(History(), (Texts{L"one"}));
    EXPECT_EQ(StoredText(0), L"one");
}

TEST_F(FindSettings, TheHistoryEndsAtItsFirstEmptyText)
{
    StoreText(0, L"one");
    StoreText(2, L"three");
    EXPECT_EQ(History(), (Texts{L"one"}));
    Add(L"new");
    EXPECT_EQ(StoredText(0), L"new");
    EXPECT_EQ(StoredText(1), L"one");
    EXPECT_EQ(StoredText(2), L"three") << "what stands behind an empty one is left alone";
}

TEST_F(FindSettings, StoredRepetitionsAreNotCarriedOn)
{
    StoreText(0, L"a");
    StoreText(1, L"A");
    StoreText(2, L"b");
    Add(L"new");
    EXPECT_EQ(History(), (Texts{L"new", L"A", L"b"}));
}

TEST_F(FindSettings, ATextTooLongToBeReadEndsTheHistory)
{
    StoreText(0, L"one");
    StoreText(1, std::wstring(156, L'x'));
    StoreText(2, L"three");
    EXPECT_EQ(History(), (Texts{L"one"}));
    StoreText(1, std::wstring(155, L'x'));
    EXPECT_EQ(History(), (Texts{L"one", std::wstring(155, L'x'), L"three"}));
}

TEST_F(FindSettings, ATextTooLongToBeReadIsReplacedAndNotCarriedOn)
{
    StoreText(0, std::wstring(200, L'x'));
    StoreText(1, L"one");
    Add(L"new");
    EXPECT_EQ(History(), (Texts{L"new", L"one"}));
}

TEST_F(FindSettings, ButtonsOfAnyTypeAndLengthReadAsANumberOrTheDefault)
{
    using namespace std::string_literals;
    const struct {
        DWORD type;
        std::string bytes;
        CEPROPID by;
    } values[] = {
        {REG_BINARY, "\x53\x04\0\0"s, kPropSubject}, // the type is not looked at
        {REG_BINARY, "\x53\x04\0"s, kPropDate},          {REG_BINARY, ""s, kPropDate},
        {REG_QWORD, "\x53\x04\0\0\0\0\0\0"s, kPropDate}, {REG_SZ, "1\0001\0000\0007\0\0\0"s, kPropDate},
    };
    Store(L"SearchBy", 0); // makes the key
    for (const auto& [type, bytes, by] : values) {
        for (const wchar_t* name : {L"SearchBy", L"SearchFrom", L"MatchCase"})
            StoreBytes(kSettings, name, type, bytes);
        EXPECT_EQ(ReadSearchBy(Own()), by) << type << ", " << bytes.size();
        EXPECT_EQ(ReadSearchFrom(Own()), SearchFrom::Top) << type << ", " << bytes.size();
        EXPECT_EQ(ReadMatchCase(Own()), by == kPropSubject) << type << ", " << bytes.size();
    }
}

TEST_F(FindSettings, TextsOfAnyTypeAndLengthReadAsATextOrNone)
{
    using namespace std::string_literals;
    const struct {
        DWORD type;
        std::string bytes;
        Texts history;
    } values[] = {
        {REG_DWORD, "\0\0\0\0"s, {}},
        {REG_BINARY, ""s, {}},
        {REG_BINARY, "A\0B"s, {L"A"}}, // half a character at its end
        {REG_SZ, "A\0B\0"s, {L"AB"}},  // not terminated
        {REG_EXPAND_SZ, "%\0A\0%\0\0\0"s, {L"%A%"}},
        {REG_MULTI_SZ, "A\0\0\0B\0\0\0\0\0"s, {L"A"}},
        {REG_BINARY, std::string(5'000, 'A'), {}},
    };
    StoreText(1, L""); // makes the key
    for (const auto& [type, bytes, history] : values) {
        StoreBytes(kOptions, L"Find0", type, bytes);
        EXPECT_EQ(History(), history) << type << ", " << bytes.size();
    }
}

TEST_F(FindSettings, NumbersWhereTextsShouldBeDoNoHarm)
{
    Own().SetNumber(kOptions, L"Find0", 0x00410042);
    EXPECT_EQ(History(), (Texts{L"BA"}));
    Own().SetString(kSettings, L"SearchBy", L"text");
    EXPECT_EQ(ReadSearchBy(Own()), kPropDate);
}

TEST(SearchText, IsTheFirstThirteenCharacters)
{
    EXPECT_EQ(SearchTextOf(L"12345678901234567890"), L"1234567890123");
    EXPECT_EQ(SearchTextOf(L"1234567890123"), L"1234567890123");
    EXPECT_EQ(SearchTextOf(L"walk"), L"walk");
    EXPECT_EQ(SearchTextOf(L""), L"");
}

TEST(SearchText, DoesNotEndInHalfACharacter)
{
    EXPECT_EQ(SearchTextOf(L"123456789012\xD83C\xDF82"), L"123456789012");
    EXPECT_EQ(SearchTextOf(L"12345678901\xD83C\xDF82x"), L"12345678901\xD83C\xDF82");
    EXPECT_EQ(SearchTextOf(L"123456789012\xD83C"), L"123456789012\xD83C") << "half as it was given";
}

TEST(SearchText, ThePlaceholderIsNoText)
{
    EXPECT_EQ(SearchTextOf(L"<Search Text>"), L"");
    EXPECT_EQ(SearchTextOf(L"<Search Text> and more"), L"") << "it is as long as what is taken";
    EXPECT_EQ(SearchTextOf(L"<search text>"), L"<search text>");
    EXPECT_EQ(SearchTextOf(L"<Search Text"), L"<Search Text");
}
