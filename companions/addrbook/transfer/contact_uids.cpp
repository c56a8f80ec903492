#include "addrbook/transfer/contact_uids.h"

#include <objbase.h>

#include "addrbook/transfer/contact_record.h"
#include "formats/vcard/contact.h"
#include "formats/vcard/line_text.h"
#include "util/owners.h"

namespace addrbook {

namespace {

constexpr std::string_view kUrn = "urn:uuid:";

std::string ComparedForm(std::string_view uid)
{
    if (vcard::StartsWithNoCase(uid, kUrn))
        uid.remove_prefix(kUrn.size());
    std::string form(uid);
    for (char& character : form)
        character = character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
    return form;
}

bool IsNamedUid(std::string_view line)
{
    constexpr std::string_view kName = "UID";
    const std::string_view head = line.substr(0, line.find_first_of(":;"));
    if (head.size() < kName.size() || !vcard::EqualsNoCase(head.substr(head.size() - kName.size()), kName))
        return false;
    return head.size() == kName.size() || head[head.size() - kName.size() - 1] == '.';
}

// The current record's identifier, and its extra lines; 0 when it cannot be read.
CEOID ReadExtra(DbContacts& contacts, std::string* extra)
{
    WORD count = 1;
    CEPROPVAL* read = nullptr;
    const CEOID id = contacts.ReadRecord(&count, &kContactExtra, &read);
    const LocalBlock<CEPROPVAL> block(read);
    const bool hasExtra = id && (read->wFlags & CEDB_PROPNOTFOUND) == 0;
    *extra = hasExtra ? ToUtf8(read->val.lpwstr) : std::string();
    return id;
}

} // namespace

std::string UidOf(std::string_view extra)
{
    std::string uid;
    vcard::ForEachLine(extra, [&](std::string_view line) {
        vcard::LinePlaces places;
        if (uid.empty() && IsNamedUid(line) && vcard::FindPlaces(line, &places))
            uid = ComparedForm(line.substr(places.colon + 1));
    });
    return uid;
}

std::string NewUidLine()
{
    GUID guid;
    wchar_t text[39];
    if (FAILED(CoCreateGuid(&guid)) || !StringFromGUID2(guid, text, 39))
        return {};
    const std::wstring_view digits(text + 1, 36); // between braces
    return "UID:" + std::string(kUrn) + ComparedForm(ToUtf8(digits));
}

bool ContactUids::Load(DbContacts& contacts)
{
    const CeDBase::ReadScope scope(contacts);
    m_ids.clear();
    std::string extra;
    int found = contacts.SeekFirstRecord();
    for (; found; found = contacts.SeekNextRecord()) {
        const CEOID id = ReadExtra(contacts, &extra);
        if (!id && contacts.Trouble() != StoreTrouble::None)
            break;
        if (std::string uid = UidOf(extra); id && !uid.empty())
            m_ids.emplace(std::move(uid), id);
    }
    const bool isWhole = !found && contacts.Trouble() == StoreTrouble::None;
    if (!isWhole)
        m_ids.clear();
    return isWhole;
}

CEOID ContactUids::Take(const std::string& uid)
{
    const auto found = uid.empty() ? m_ids.end() : m_ids.lower_bound(uid);
    if (found == m_ids.end() || found->first != uid)
        return 0;
    const CEOID id = found->second;
    m_ids.erase(found);
    return id;
}

} // namespace addrbook
