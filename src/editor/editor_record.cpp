#include "editor/editor_record.h"

#include <optional>

#include "editor/category_flags.h"
#include "util/owners.h"

namespace {

constexpr DWORD kContactFlags = 256;

CEBLOB BlobOf(std::vector<BYTE>& bytes)
{
    return {static_cast<DWORD>(bytes.size()), bytes.data()};
}

bool ChangesUses(const ZStack& categories)
{
    for (size_t i = 0; const ZCategory* item = categories.GetItem(i); ++i)
        if (item->flags & (kCategoryReleased | kCategoryAdded))
            return true;
    return false;
}

} // namespace

DWORD LoadedMask(const JournalEntry& entry)
{
    DWORD mask = 0;
    mask |= entry.subject ? kLoadedSubject : 0;
    mask |= entry.body ? kLoadedBody : 0;
    mask |= entry.type ? kLoadedType : 0;
    mask |= entry.categories ? kLoadedCategories : 0;
    mask |= entry.priority ? kLoadedPriority : 0;
    mask |= entry.sensitivity ? kLoadedSensitivity : 0;
    mask |= entry.contacts ? kLoadedContacts : 0;
    return mask;
}

void EditorRecord::OpenStores(HWND owner)
{
    // A failure shows as empty lists; what the record refers to is kept all the same.
    (void)m_categoryStore.Open(kCategoriesKey, owner);
    (void)m_contacts.Open(kContactsKey, owner);
}

bool EditorRecord::Load(JournalEntry* entry)
{
    m_mask = 0;
    if (m_id == 0 || m_journal.SeekRecord(m_id) != m_id)
        return false;
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    if (m_journal.ReadRecord(&count, nullptr, &properties) == 0) {
        m_id = 0;
        return false;
    }
    const LocalBlock<CEPROPVAL> block(properties);
    ReadEntry(properties, count, entry);
    entry->id = m_id;
    m_mask = LoadedMask(*entry);
    if (entry->categories)
        m_categoryStore.SetStackFromBlob(&m_categories, BlobOf(*entry->categories), kCategoryLoaded);
    if (entry->contacts)
        m_contacts.SetAssigned(BlobOf(*entry->contacts), kContactFlags);
    return true;
}

EditorRecord::Saved EditorRecord::Save(EntryToWrite* entry)
{
    const ZStack before = m_categories;
    const Saved saved = CountUsesAndWrite(entry);
    if (saved == Saved::Failed)
        m_categories = before;
    else
        m_categories.DeleteStack();
    return saved;
}

EditorRecord::Saved EditorRecord::CountUsesAndWrite(EntryToWrite* entry)
{
    std::optional<CeDBase::BulkScope> together;
    if (ChangesUses(m_categories)) {
        together.emplace(m_journal);
        CountUses();
    }
    CEOID written = 0;
    const Saved saved = Write(entry, &written);
    if (saved == Saved::Failed || (together && !together->Commit()))
        return Saved::Failed;
    if (saved == Saved::Created)
        *m_reference = m_id = written;
    return saved;
}

void EditorRecord::CountUses()
{
    ZStack kept;
    for (size_t i = 0; const ZCategory* item = m_categories.GetItem(i); ++i) {
        if (item->flags & kCategoryReleased) {
            m_categoryStore.DecUse(item->id);
            continue;
        }
        if (item->flags & kCategoryAdded)
            m_categoryStore.IncUse(item->id);
        kept.Push(*item);
    }
    m_categories = kept;
}

EditorRecord::Saved EditorRecord::Write(EntryToWrite* entry, CEOID* written)
{
    CEBLOB categories{};
    CEBLOB contacts{};
    const int categoriesMade = m_categoryStore.SetBlobFromStack(m_categories, &categories);
    const LocalBlock<BYTE> categoryBlock(categories.lpb);
    const int contactsChanged = m_contacts.SetBlob(&contacts);
    const LocalBlock<BYTE> contactBlock(contacts.lpb);
    // A set that cannot be put into a blob must not be taken for an empty one, which would be deleted.
    if ((!m_categories.IsEmpty() && (!categoriesMade || !categories.lpb)) ||
        (!m_contacts.Assigned().empty() && (!contactsChanged || !contacts.lpb)))
        return Saved::Failed;

    entry->categories = categories;
    entry->contacts = contacts;
    entry->exists = m_id != 0;
    entry->loadedMask = m_mask;
    const std::vector<CEPROPVAL> properties = PropertiesToWrite(*entry);
    const bool update = m_id != 0 && m_journal.SeekRecord(m_id) == m_id;
    *written =
        m_journal.WriteRecord(update ? m_id : 0, static_cast<WORD>(properties.size()), properties.data());
    if (*written == 0)
        return Saved::Failed;
    return update ? Saved::Updated : Saved::Created;
}
