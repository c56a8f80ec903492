#include "support/cards.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "formats/vcard/contact_reader.h"
#include "formats/vcard/writer.h"

namespace vcard {

text::ByteSource SourceOf(const std::string& text, size_t piece)
{
    return [text, piece, place = size_t{0}](char* buffer, size_t size) mutable {
        const size_t count = std::min({size, piece, text.size() - place});
        text.copy(buffer, count, place);
        place += count;
        return count;
    };
}

ReadCards ReadAll(const std::string& text, size_t piece)
{
    ReadCards read;
    Reader reader(SourceOf(text, piece));
    Card card;
    Contact contact;
    while (reader.Next(&card))
        if (ContactReader().Read(card, &contact))
            read.contacts.push_back(contact);
        else
            reader.Reject("nobody");
    read.unreadable = reader.Unreadable();
    read.errorLine = reader.ErrorLine();
    read.errorText = reader.ErrorText();
    return read;
}

std::string CardOf(const std::string& lines, const std::string& version)
{
    return "BEGIN:VCARD\nVERSION:" + version + "\n" + lines + "\nEND:VCARD\n";
}

Contact ContactOf(const std::string& lines, const std::string& version)
{
    const ReadCards read = ReadAll(CardOf(lines, version));
    EXPECT_EQ(read.contacts.size(), 1u) << read.errorText;
    return read.contacts.empty() ? Contact() : read.contacts[0];
}

ImportedCard ImportedOf(const std::string& lines, const std::string& version)
{
    Reader reader(SourceOf(CardOf(lines, version)));
    Card card;
    ImportedCard imported;
    EXPECT_TRUE(reader.Next(&card) && ContactReader().Read(card, &imported)) << reader.ErrorText();
    return imported;
}

std::string LinesOf(const Contact& contact)
{
    std::string card;
    AppendCard(card, contact);
    for (size_t fold; (fold = card.find("\r\n ")) != std::string::npos;)
        card.erase(fold, 3);
    std::erase(card, '\r');
    const std::string begin = "BEGIN:VCARD\nVERSION:4.0\n", end = "END:VCARD\n";
    EXPECT_TRUE(card.starts_with(begin)) << card;
    EXPECT_TRUE(card.ends_with(end)) << card;
    return card.substr(begin.size(), card.size() - begin.size() - end.size());
}

} // namespace vcard
