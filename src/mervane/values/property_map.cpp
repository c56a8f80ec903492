#include "mervane/values/property_map.h"

namespace mervane {

namespace {

constexpr Property kJournalProperties[] = {
    {0x00650040, "date"},     {0x0066001F, "subject"},  {0x0067001F, "body"},     {0x00680041, "categories"},
    {0x0069001F, "type"},     {0x006A0012, "kind"},     {0x006B0002, "priority"}, {0x006C0002, "sensitivity"},
    {0x006D0040, "end_time"}, {0x006E0040, "duration"}, {0x006F0041, "contacts"},
};
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

constexpr TableInfo kTables[kTableCount] = {
    {"journal", kJournalProperties, 0, 0x00650040},
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
