#include "addrbook/transfer/contact_record.h"

#include <algorithm>

#include "mervane/values/text_codec.h"
#include "util/owners.h"

namespace addrbook {

namespace {

// In the order of Field.
constexpr CEPROPID kProperties[vcard::kFieldCount] = {
    kContactsKey,   kContactFirstName, kContactLastName, kContactCompany, kContactJobTitle, kContactEmails,
    kContactPhones, kContactAddress,   kContactBirthday, kContactNote,    kContactExtra,
};

// The store's lines end with CR LF. From the end on, so that each character moves once.
void Widen(std::string_view text, std::wstring* wide)
{
    wide->resize(text.size());
    size_t from = mervane::DecodeText(text, wide->data());
    wide->resize(from);
    size_t to = from + static_cast<size_t>(std::count(wide->begin(), wide->end(), L'\n'));
    wide->resize(to);
    while (from < to) {
        (*wide)[--to] = (*wide)[--from];
        if ((*wide)[to] == L'\n')
            (*wide)[--to] = L'\r';
    }
}

} // namespace

CEPROPID PropertyOf(vcard::Field field)
{
    return kProperties[static_cast<size_t>(field)];
}

std::wstring ToWide(std::string_view text)
{
    std::wstring wide;
    Widen(text, &wide);
    return wide;
}

std::string ToUtf8(std::wstring_view text)
{
    std::string narrow = mervane::EncodeText(text);
    size_t to = 0;
    for (size_t from = 0; from < narrow.size(); ++from) {
        const bool isReturn = narrow[from] == '\r';
        if (!isReturn || from + 1 == narrow.size() || narrow[from + 1] != '\n')
            narrow[to++] = isReturn ? '\n' : narrow[from];
    }
    narrow.resize(to);
    return narrow;
}

bool LoadContact(DbContacts& contacts, CEOID id, vcard::Contact* contact)
{
    const CeDBase::ReadScope scope(contacts);
    WORD count = vcard::kFieldCount;
    CEPROPVAL* read = nullptr;
    if (!contacts.SeekRecord(id) || !contacts.ReadRecord(&count, kProperties, &read))
        return false;
    const LocalBlock<CEPROPVAL> block(read);
    for (size_t i = 0; i < vcard::kFieldCount; ++i)
        contact->texts[i] = read[i].wFlags & CEDB_PROPNOTFOUND ? std::string() : ToUtf8(read[i].val.lpwstr);
    return true;
}

bool SaveField(DbContacts& contacts, CEOID id, vcard::Field field, const std::string& text)
{
    std::wstring wide = ToWide(text);
    CEPROPVAL value{};
    value.propid = PropertyOf(field);
    value.wFlags = wide.empty() ? CEDB_PROPDELETE : WORD{0};
    value.val.lpwstr = wide.data();
    return contacts.WriteRecord(id, 1, &value) != 0;
}

CEOID ContactSaver::Save(DbContacts& contacts, CEOID id, const vcard::Contact& contact)
{
    return Write(contacts, id, nullptr, contact);
}

CEOID ContactSaver::SaveChanges(DbContacts& contacts, CEOID id, const vcard::Contact& before,
                                const vcard::Contact& after)
{
    return Write(contacts, id, &before, after);
}

CEOID ContactSaver::Write(DbContacts& contacts, CEOID id, const vcard::Contact* before,
                          const vcard::Contact& contact)
{
    std::array<CEPROPVAL, vcard::kFieldCount> values{};
    WORD count = 0;
    for (size_t i = 0; i < vcard::kFieldCount; ++i) {
        if (before && before->texts[i] == contact.texts[i])
            continue;
        Widen(contact.texts[i], &m_texts[i]);
        CEPROPVAL& value = values[count++];
        value.propid = kProperties[i];
        value.wFlags = m_texts[i].empty() ? CEDB_PROPDELETE : WORD{0};
        value.val.lpwstr = m_texts[i].data();
    }
    return contacts.WriteRecord(id, count, values.data());
}

} // namespace addrbook
