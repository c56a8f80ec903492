#include "formats/vcard/line_text.h"

#include <gtest/gtest.h>

namespace vcard {

namespace {

std::string Unescaped(std::string_view value)
{
    std::string text;
    AppendUnescaped(text, value);
    return text;
}

std::string Escaped(std::string_view text)
{
    std::string value;
    AppendEscaped(value, text);
    return value;
}

TEST(VCardText, UndoesEscapes)
{
    EXPECT_EQ(Unescaped(R"(a\, b\; c\\d\ne\Nf\:g)"), "a, b; c\\d\ne\nf:g");
    EXPECT_EQ(Unescaped(R"(\\n)"), "\\n");
    EXPECT_EQ(Unescaped(R"(C:\temp \)"), R"(C:\temp \)");
    EXPECT_EQ(Unescaped(""), "");
}

TEST(VCardText, Escapes)
{
    EXPECT_EQ(Escaped("a, b; c\\d\ne:f"), R"(a\, b\; c\\d\ne:f)");
    EXPECT_EQ(Unescaped(Escaped("\\n\n,;\\\\;")), "\\n\n,;\\\\;");
}

TEST(VCardText, FindsTheComponentsOfAValue)
{
    constexpr std::string_view kValue = R"(a\;b;c\\;;d)";
    EXPECT_EQ(Component(kValue, 0), R"(a\;b)");
    EXPECT_EQ(Component(kValue, 1), R"(c\\)");
    EXPECT_EQ(Component(kValue, 2), "");
    EXPECT_EQ(Component(kValue, 3), "d");
    EXPECT_EQ(Component(kValue, 4), "");
    EXPECT_EQ(Component("", 0), "");
    EXPECT_EQ(Component("", 1), "");
    EXPECT_EQ(Component("\\", 1), "");
    EXPECT_EQ(ComponentStart(kValue, 1), 5u);
    EXPECT_EQ(ComponentStart(kValue, 4), std::string_view::npos);
}

TEST(VCardText, FindsThePlacesOfALine)
{
    LinePlaces places;
    ASSERT_TRUE(FindPlaces("item1.TEL;TYPE=\"a:b;c\",d:+1:2", &places));
    EXPECT_EQ(places.name, 6u);
    EXPECT_EQ(places.parameters, 9u);
    EXPECT_EQ(places.colon, 24u);
    ASSERT_TRUE(FindPlaces("N:", &places));
    EXPECT_EQ(places.name, 0u);
    EXPECT_EQ(places.colon, 1u);
    ASSERT_TRUE(FindPlaces("X-A;Q=it\"s:v", &places)) << "a quote that is never closed";
    EXPECT_EQ(places.colon, 10u);
    EXPECT_TRUE(FindPlaces("X-_9:v", &places));
    for (const char* line :
         {"", ":v", "FN", "FN;TYPE=x", "F N:v", "a.:v", ".FN:v", "a.b.c:v", "\xC3\xA4:v", "-"})
        EXPECT_FALSE(FindPlaces(line, &places)) << line;
}

TEST(VCardText, WalksParameters)
{
    Parameters parameters(";TYPE=home,work;X=\"a;b=c\";VOICE;E=");
    Parameter parameter;
    std::string all;
    while (parameters.Next(&parameter))
        all.append("[").append(parameter.name).append("|").append(parameter.value).append("]");
    EXPECT_EQ(all, "[TYPE|home,work][X|\"a;b=c\"][|VOICE][E|]");
    EXPECT_EQ(FindParameter(";a=1;B=2;b=3", "b"), "2");
    EXPECT_EQ(FindParameter(";a=1", "b"), "");
}

TEST(VCardText, TakesListsApart)
{
    std::string_view list = "a,\"b,c\",,d";
    EXPECT_EQ(TakeListItem(&list), "a");
    EXPECT_EQ(TakeListItem(&list), "\"b,c\"");
    EXPECT_EQ(TakeListItem(&list), "");
    EXPECT_EQ(TakeListItem(&list), "d");
    EXPECT_TRUE(list.empty());
}

TEST(VCardText, ReadsTheTextOfAParameter)
{
    EXPECT_EQ(ParameterText("\"12 Elm St^n^'Tower^' ^^ ^x^\""), "12 Elm St\n\"Tower\" ^ ^x^");
    EXPECT_EQ(ParameterText("plain"), "plain");
}

TEST(VCardText, ComparesWithoutCase)
{
    EXPECT_TRUE(EqualsNoCase("Tel", "TEL"));
    EXPECT_FALSE(EqualsNoCase("Tel", "TELX"));
    EXPECT_FALSE(EqualsNoCase("[", "{"));
    EXPECT_TRUE(StartsWithNoCase("version:4.0", "VERSION:"));
}

} // namespace

} // namespace vcard
