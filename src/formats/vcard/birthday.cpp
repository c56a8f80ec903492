#include "formats/vcard/birthday.h"

namespace vcard {

namespace {

// A form of a date: y, m, d stand for digits, all else for itself.
struct Form {
    std::string_view compact;
    std::string_view readable;
};
// "yyyy-mm" and "yyyy" are the same in both.
constexpr Form kForms[] = {
    {"yyyymmdd", "yyyy-mm-dd"}, {"--mmdd", "--mm-dd"}, {"yyyy-mm", "yyyy-mm"},
    {"yyyy", "yyyy"},           {"---dd", "---dd"},    {"--mm", "--mm"},
};

// How many characters of the text have the form: all of the form's, at the end or before a time; 0 for none.
size_t Match(std::string_view text, std::string_view form)
{
    if (text.size() < form.size())
        return 0;
    for (size_t i = 0; i < form.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (form[i] == '-' ? text[i] != '-' : !isDigit)
            return 0;
    }
    const bool ends = text.size() == form.size() || text[form.size()] == 'T';
    return ends ? form.size() : 0;
}

std::string Digits(std::string_view text)
{
    std::string digits;
    for (const char character : text)
        if (character != '-')
            digits += character;
    return digits;
}

// The digits of the text in another form of the same date.
std::string InForm(std::string_view text, std::string_view form)
{
    const std::string digits = Digits(text);
    std::string out;
    size_t next = 0;
    for (const char place : form)
        out += place == '-' ? '-' : digits[next++];
    return out;
}

} // namespace

std::string CompactDate(std::string_view value)
{
    for (const Form& form : kForms)
        for (const std::string_view known : {form.readable, form.compact})
            if (const size_t length = Match(value, known)) {
                std::string time(value.substr(length));
                std::erase(time, ':');
                return InForm(value.substr(0, length), form.compact) + time;
            }
    return std::string(value);
}

std::string ReadableDate(std::string_view value)
{
    for (const Form& form : kForms)
        for (const std::string_view known : {form.compact, form.readable})
            if (const size_t length = Match(value, known))
                return InForm(value.substr(0, length), form.readable);
    return std::string(value);
}

bool IsDate(std::string_view text)
{
    for (const Form& form : kForms)
        if (!text.empty() &&
            (Match(text, form.compact) == text.size() || Match(text, form.readable) == text.size()))
            return true;
    return false;
}

} // namespace vcard
