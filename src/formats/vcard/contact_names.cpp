#include "formats/vcard/contact_names.h"

namespace vcard {

namespace {

std::string_view FirstLine(std::string_view text)
{
    return text.substr(0, text.find('\n'));
}

// Nothing is appended when both are empty.
void AppendJoined(std::string& out, const std::string& first, const char* between, const std::string& second)
{
    out.append(first).append(first.empty() || second.empty() ? "" : between).append(second);
}

} // namespace

void AppendFileAs(std::string& out, const Contact& contact, std::string_view formattedName)
{
    const size_t start = out.size();
    AppendJoined(out, contact[Field::LastName], ", ", contact[Field::FirstName]);
    for (const std::string_view other :
         {formattedName, std::string_view(contact[Field::Company]), FirstLine(contact[Field::Emails]),
          FirstLine(contact[Field::Phones])})
        if (out.size() == start)
            out += other;
}

std::string FileAsOf(const Contact& contact, std::string_view formattedName)
{
    std::string name;
    AppendFileAs(name, contact, formattedName);
    return name;
}

void AppendFormattedName(std::string& out, const Contact& contact)
{
    const size_t start = out.size();
    AppendJoined(out, contact[Field::FirstName], " ", contact[Field::LastName]);
    if (out.size() == start)
        out += contact[Field::FileAs];
    if (out.size() == start)
        AppendFileAs(out, contact, {});
}

std::string FormattedNameOf(const Contact& contact)
{
    std::string name;
    AppendFormattedName(name, contact);
    return name;
}

} // namespace vcard
