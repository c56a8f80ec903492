#include "addrbook/contact_names.h"

namespace addrbook {

namespace {

std::string_view FirstLine(std::string_view text)
{
    return text.substr(0, text.find('\n'));
}

std::string Joined(const std::string& first, const char* between, const std::string& second)
{
    return first + (first.empty() || second.empty() ? "" : between) + second;
}

} // namespace

std::string FileAsOf(const Contact& contact, std::string_view formattedName)
{
    std::string name = Joined(contact[Field::LastName], ", ", contact[Field::FirstName]);
    for (const std::string_view other :
         {formattedName, std::string_view(contact[Field::Company]), FirstLine(contact[Field::Emails]),
          FirstLine(contact[Field::Phones])})
        if (name.empty())
            name = other;
    return name;
}

std::string FormattedNameOf(const Contact& contact)
{
    const std::string name = Joined(contact[Field::FirstName], " ", contact[Field::LastName]);
    return name.empty() ? contact[Field::FileAs] : name;
}

} // namespace addrbook
