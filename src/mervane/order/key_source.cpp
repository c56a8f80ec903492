#include "mervane/order/key_source.h"

#include "mervane/values/id_blob.h"
#include "mervane/values/journal_table.h"
#include "mervane/values/text_codec.h"

namespace mervane {

namespace {

// What keeps two names apart in a sort key: it comes before every letter and digit.
constexpr wchar_t kSeparator = L',';

} // namespace

std::optional<TableId> ReferredTable(CEPROPID blobProperty)
{
    switch (blobProperty) {
    case kPropCategories: return TableId::Categories;
    case kPropContacts: return TableId::Contacts;
    default: return std::nullopt;
    }
}

KeySource::KeySource(Database& database, const TableInfo& table, const Property& property, NameCaches& names)
    : m_database(database), m_table(table), m_property(property), m_names(names)
{}

std::optional<std::string_view> KeySource::KeyOfCell(const Statement& row, int column)
{
    if (PropertyType(m_property.id) == CEVT_BLOB) {
        const auto blob = row.Blob(column);
        return blob ? std::optional(KeyOfBlob(*blob)) : std::nullopt;
    }
    const auto text = row.Text(column);
    if (!text)
        return std::nullopt;
    if (m_text.size() < text->size())
        m_text.resize(text->size());
    const size_t length = DecodeText(*text, m_text.data());
    return m_maker.Make(std::wstring_view(m_text).substr(0, length));
}

std::optional<std::string_view> KeySource::KeyOfValue(const CEPROPVAL* value)
{
    if (!value)
        return std::nullopt;
    if (PropertyType(m_property.id) == CEVT_BLOB)
        return KeyOfBlob({value->val.blob.lpb, value->val.blob.dwCount});
    return m_maker.Make(value->val.lpwstr);
}

std::optional<std::string_view> KeySource::ReadKey(CEOID id)
{
    if (!m_select.IsValid())
        m_select = Statement(m_database, std::string("SELECT ") + m_property.column + " FROM " +
                                             m_table.name + " WHERE oid = ?");
    const ScopedReset reset(m_select);
    m_select.BindInteger(1, id);
    return m_select.Step() == Statement::Result::Row ? KeyOfCell(m_select, 0) : std::nullopt;
}

std::string_view KeySource::KeyOfBlob(std::span<const BYTE> bytes)
{
    const auto referred = ReferredTable(m_property.id);
    if (!referred)
        return {};
    return m_maker.Make(m_names.Of(*referred).Join(ReadIdBlob(bytes).ids, kSeparator));
}

} // namespace mervane
