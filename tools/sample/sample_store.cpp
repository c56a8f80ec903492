#include "sample/sample_store.h"

#include <algorithm>
#include <array>

#include "data/journal_entry.h"
#include "mervane/db_contacts.h"
#include "mervane/db_journal.h"
#include "sample/sample_entry.h"
#include "util/owners.h"

namespace sample {

namespace {

struct Assignable {
    std::array<CEOID, kCategoryCount> categories{};
    std::array<uint32_t, kCategoryCount> uses{};
    std::array<CEOID, kContactCount> contacts{};
};

CEPROPVAL Text(CEPROPID id, const wchar_t* text)
{
    CEPROPVAL value{id, 0, 0, {}};
    value.val.lpwstr = const_cast<wchar_t*>(text);
    return value;
}

CEPROPVAL Short(CEPROPID id, short number)
{
    CEPROPVAL value{id, 0, 0, {}};
    value.val.iVal = number;
    return value;
}

CEPROPVAL Time(CEPROPID id, TimeCount time)
{
    CEPROPVAL value{id, 0, 0, {}};
    value.val.filetime = time.ToFileTime();
    return value;
}

CEPROPVAL Blob(CEPROPID id, const CEBLOB& blob)
{
    CEPROPVAL value{id, 0, 0, {}};
    value.val.blob = blob;
    return value;
}

bool WriteCategories(DbCategories& categories, Assignable* assignable)
{
    for (size_t i = 0; i < kCategoryCount; ++i) {
        const CEPROPVAL name = Text(kCategoriesKey, kCategories[i]);
        assignable->categories[i] = categories.WriteRecord(0, 1, &name);
        if (!assignable->categories[i])
            return false;
    }
    return true;
}

bool WriteContacts(DbContacts& contacts, Assignable* assignable)
{
    for (size_t i = 0; i < kContactCount; ++i) {
        const Contact& contact = kContacts[i];
        const CEPROPVAL values[] = {Text(kContactsKey, contact.fileAs),
                                    Text(kContactCompany, contact.company)};
        assignable->contacts[i] = contacts.WriteRecord(0, *contact.company ? 2 : 1, values);
        if (!assignable->contacts[i])
            return false;
    }
    return true;
}

// The blobs of one entry.
struct Blobs {
    CEBLOB categories{};
    CEBLOB contacts{};
    LocalBlock<BYTE> categoriesOwner;
    LocalBlock<BYTE> contactsOwner;
};

void MakeBlobs(const SampleEntry& entry, const Assignable& assignable, DbCategories& categories, Blobs* blobs)
{
    ZStack stack;
    for (int position : entry.categories)
        stack.Push({assignable.categories[static_cast<size_t>(position)], 0});
    categories.SetBlobFromStack(stack, &blobs->categories);
    blobs->categoriesOwner.reset(blobs->categories.lpb);
    DbContacts assigned;
    for (int position : entry.contacts)
        assigned.Assign(assignable.contacts[static_cast<size_t>(position)]);
    assigned.SetBlob(&blobs->contacts);
    blobs->contactsOwner.reset(blobs->contacts.lpb);
}

// In the order of a save.
WORD PropertiesOf(const SampleEntry& entry, const Blobs& blobs, std::array<CEPROPVAL, kPropertyCount>* values)
{
    CEPROPVAL* next = values->data();
    *next++ = Short(kPropKind, static_cast<short>(kEntryKind));
    if (entry.date)
        *next++ = Time(kPropDate, *entry.date);
    if (entry.endTime)
        *next++ = Time(kPropEndTime, *entry.endTime);
    if (entry.duration)
        *next++ = Time(kPropDuration, *entry.duration);
    if (entry.priority)
        *next++ = Short(kPropPriority, *entry.priority);
    if (entry.sensitivity)
        *next++ = Short(kPropSensitivity, *entry.sensitivity);
    if (entry.type)
        *next++ = Text(kPropType, entry.type->c_str());
    if (entry.body)
        *next++ = Text(kPropBody, entry.body->c_str());
    if (entry.subject)
        *next++ = Text(kPropSubject, entry.subject->c_str());
    if (blobs.categories.dwCount)
        *next++ = Blob(kPropCategories, blobs.categories);
    if (blobs.contacts.dwCount)
        *next++ = Blob(kPropContacts, blobs.contacts);
    return static_cast<WORD>(next - values->data());
}

struct Databases {
    DbJournal journal;
    DbCategories categories;
    DbContacts contacts;

    bool Open() { return journal.Open(nullptr) && categories.Open() && contacts.Open(); }
};

SampleEntry EntryOf(const SamplePlan& plan, uint32_t index)
{
    return plan.bulk ? BulkEntry(plan.seed, index, plan.today)
                     : RealisticEntry(plan.seed, index, plan.count, plan.today);
}

bool WriteEntry(const SampleEntry& entry, Databases& databases, Assignable* assignable)
{
    Blobs blobs;
    MakeBlobs(entry, *assignable, databases.categories, &blobs);
    std::array<CEPROPVAL, kPropertyCount> values;
    const WORD count = PropertiesOf(entry, blobs, &values);
    for (int position : entry.categories)
        ++assignable->uses[static_cast<size_t>(position)];
    return databases.journal.WriteRecord(0, count, values.data()) != 0;
}

bool WriteBatch(const SamplePlan& plan, uint32_t from, uint32_t to, Databases& databases,
                Assignable* assignable)
{
    CeDBase::BulkScope bulk(databases.journal);
    for (uint32_t i = from; i < to; ++i) {
        if (!WriteEntry(EntryOf(plan, i), databases, assignable))
            return false;
    }
    return bulk.Commit() != 0;
}

bool WriteLists(Databases& databases, Assignable* assignable)
{
    CeDBase::BulkScope bulk(databases.journal);
    return WriteCategories(databases.categories, assignable) &&
           WriteContacts(databases.contacts, assignable) && bulk.Commit();
}

bool WriteAllUses(Databases& databases, const Assignable& assignable)
{
    CeDBase::BulkScope bulk(databases.journal);
    for (size_t i = 0; i < kCategoryCount; ++i) {
        if (!SetUses(databases.categories, assignable.categories[i], assignable.uses[i]))
            return false;
    }
    return bulk.Commit() != 0;
}

} // namespace

bool SetUses(DbCategories& categories, CEOID category, uint32_t uses)
{
    const CEPROPVAL value = Short(kCategoryUses, static_cast<short>(std::min<uint32_t>(uses, INT16_MAX)));
    if (!categories.WriteRecord(category, 1, &value))
        return false;
    for (uint32_t counted = INT16_MAX; counted < uses; ++counted) {
        if (!categories.IncUse(category))
            return false;
    }
    return true;
}

bool FillStore(const SamplePlan& plan)
{
    Databases databases;
    Assignable assignable;
    if (!databases.Open() || !WriteLists(databases, &assignable))
        return false;
    for (uint32_t from = 0; from < plan.count;) {
        const uint32_t to = from + std::min(kEntriesPerCommit, plan.count - from);
        if (!WriteBatch(plan, from, to, databases, &assignable))
            return false;
        from = to;
    }
    return WriteAllUses(databases, assignable);
}

} // namespace sample
