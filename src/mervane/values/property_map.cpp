#include "mervane/values/property_map.h"

#include <iterator>

#include "mervane/values/journal_table.h"

namespace mervane {

namespace {

constexpr Property kCategoryProperties[] = {
    {kCategoriesKey, "name"},
    {kCategoryUses, "uses", true},
    {kCategoryHidden, "hidden"},
};
constexpr Property kContactProperties[] = {
    {kContactCompany, "company"},    {kContactsKey, "file_as"},       {kContactFirstName, "first_name"},
    {kContactLastName, "last_name"}, {kContactJobTitle, "job_title"}, {kContactEmails, "emails"},
    {kContactPhones, "phones"},      {kContactAddress, "address"},    {kContactBirthday, "birthday"},
    {kContactNote, "note"},          {kContactExtra, "vcard_extra"},
};

static_assert(std::size(kJournalProperties) <= kMaxProperties &&
              std::size(kContactProperties) <= kMaxProperties);

constexpr TableInfo kTables[kTableCount] = {
    {"journal", kJournalProperties, 0, kPropDate},
    {"categories", kCategoryProperties, kCategoriesKey, kCategoriesKey},
    {"contacts", kContactProperties, kContactsKey, kContactsKey},
};

} // namespace

const TableInfo& InfoOf(TableId table)
{
    return kTables[IndexOf(table)];
}

int FindProperty(const TableInfo& table, CEPROPID id)
{
    for (size_t i = 0; i < table.properties.size(); ++i)
        if (table.properties[i].id == id)
            return static_cast<int>(i);
    return -1;
}

} // namespace mervane
