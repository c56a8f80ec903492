#include "editor/editor_record.h"

#include <algorithm>
#include <cwchar>
#include <utility>

#include "data/category_flags.h"
#include "data/same_value.h"
#include "pick/category_assignment.h"

namespace {

constexpr DWORD kContactFlags = 256;

bool IsTime(const Field& field)
{
    return PropertyType(field.id) == CEVT_FILETIME;
}

CEBLOB BlobOf(std::vector<BYTE>& bytes)
{
    return {static_cast<DWORD>(bytes.size()), bytes.data()};
}

void Append(std::vector<BYTE>* image, const void* bytes, size_t size)
{
    const auto* start = static_cast<const BYTE*>(bytes);
    image->insert(image->end(), start, start + size);
}

// Identifier, size and bytes, so that no two records have the same image.
void AppendProperty(std::vector<BYTE>* image, const CEPROPVAL& property)
{
    const CEVALUNION& value = property.val;
    const void* bytes = &value;
    size_t size = 0;
    switch (property.propid & 0xFFFF) {
    case CEVT_LPWSTR:
        bytes = value.lpwstr;
        size = value.lpwstr ? wcslen(value.lpwstr) * sizeof(wchar_t) : 0;
        break;
    case CEVT_BLOB:
        bytes = value.blob.lpb;
        size = value.blob.lpb ? value.blob.dwCount : 0;
        break;
    case CEVT_FILETIME: size = sizeof value.filetime; break;
    default: size = sizeof value.iVal; break;
    }
    Append(image, &property.propid, sizeof property.propid);
    Append(image, &size, sizeof size);
    if (size)
        Append(image, bytes, size);
}

std::vector<BYTE> ImageOf(const CEPROPVAL* properties, WORD count)
{
    std::vector<BYTE> image;
    for (WORD i = 0; i < count; ++i)
        AppendProperty(&image, properties[i]);
    return image;
}

// Not when it cannot be told.
bool IsGone(CeDBase& records, CEOID id)
{
    return records.IsOpen() && records.SeekRecord(id) != id && records.Trouble() == StoreTrouble::None;
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

bool IsSameSet(std::vector<CEOID> a, std::vector<CEOID> b)
{
    std::sort(a.begin(), a.end());
    std::sort(b.begin(), b.end());
    return a == b;
}

void EditorRecord::OpenStores(HWND owner)
{
    // A failure shows as empty lists; what the record refers to is kept all the same.
    (void)m_categoryStore.Open(kCategoriesKey, owner);
    (void)m_contacts.Open(kContactsKey, owner);
}

EditorRecord::Loaded EditorRecord::Load(JournalEntry* entry)
{
    m_mask = 0;
    if (m_known.id == 0)
        return Loaded::Nothing;
    const CeDBase::ReadScope scope(m_journal);
    if (m_journal.SeekRecord(m_known.id) != m_known.id && m_journal.Trouble() == StoreTrouble::None)
        return Loaded::Nothing;
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    const bool read = m_journal.Trouble() == StoreTrouble::None &&
                      m_journal.ReadRecord(&count, nullptr, &properties) == m_known.id;
    const LocalBlock<CEPROPVAL> block(properties);
    if (read)
        m_known.foreign = m_journal.ForeignProperties();
    m_unread = !read || m_journal.Trouble() != StoreTrouble::None;
    if (m_unread) {
        (void)Fail(m_journal.Trouble());
        return Loaded::Failed;
    }
    ReadEntry(properties, count, entry);
    entry->id = m_known.id;
    m_known.image = ImageOf(properties, count);
    m_subject = entry->subject;
    m_mask = LoadedMask(*entry);
    LoadSets(entry);
    return Loaded::Done;
}

void EditorRecord::LoadSets(JournalEntry* entry)
{
    m_known.partOfCategories.reset();
    m_known.partOfContacts.reset();
    if (IsForeign(kPropCategories))
        m_known.partOfCategories.emplace();
    if (IsForeign(kPropContacts))
        m_known.partOfContacts.emplace();
    if (entry->categories &&
        !m_categoryStore.SetStackFromBlob(&m_categories, BlobOf(*entry->categories), kCategoryLoaded))
        m_known.partOfCategories = AssignedCategories(m_categories);
    if (entry->contacts && !m_contacts.SetAssigned(BlobOf(*entry->contacts), kContactFlags))
        m_known.partOfContacts = m_contacts.Assigned();
}

std::optional<std::wstring> EditorRecord::StoredSubject()
{
    std::optional<std::wstring> stored = m_journal.GetSubject(m_known.id);
    if (m_journal.Trouble() == StoreTrouble::None && stored->empty())
        stored = ReadSubject();
    return m_journal.Trouble() == StoreTrouble::None ? stored : m_subject;
}

// Which tells an empty one from none.
std::optional<std::wstring> EditorRecord::ReadSubject()
{
    if (m_journal.SeekRecord(m_known.id) != m_known.id)
        return std::nullopt;
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    (void)m_journal.ReadRecord(&count, nullptr, &properties);
    const LocalBlock<CEPROPVAL> block(properties);
    JournalEntry entry;
    ReadEntry(properties, count, &entry);
    return entry.subject;
}

EditorRecord::Saved EditorRecord::Save(EntryToWrite* entry, Theirs theirs)
{
    const ZStack before = m_categories;
    const Saved saved = CountUsesAndWrite(entry, theirs);
    if (saved == Saved::Failed || saved == Saved::Changed) {
        m_categories = before;
        return saved;
    }
    if (!LeavesCategories())
        m_known.partOfCategories.reset();
    if (!LeavesContacts())
        m_known.partOfContacts.reset();
    m_written = AssignedCategories(m_categories);
    m_categories.DeleteStack();
    return saved;
}

EditorRecord::Saved EditorRecord::SaveAsNew(EntryToWrite* entry)
{
    const ZStack before = m_categories;
    const CEOID id = std::exchange(m_known.id, 0);
    AddWritten();
    CountAllAsAdded(&m_categories);
    const Saved saved = Save(entry);
    if (saved == Saved::Failed) {
        m_known.id = id;
        m_categories = before;
        return saved;
    }
    m_isBesides = true;
    return saved;
}

// A failure without a reason is one all the same.
EditorRecord::Saved EditorRecord::Fail(StoreTrouble trouble)
{
    m_trouble = trouble == StoreTrouble::None ? StoreTrouble::Other : trouble;
    return Saved::Failed;
}

// In one transaction: nobody can change the record between the look at it and the write.
EditorRecord::Saved EditorRecord::CountUsesAndWrite(EntryToWrite* entry, Theirs theirs)
{
    CeDBase::BulkScope together(m_journal);
    if (together.Trouble() != StoreTrouble::None)
        return Fail(together.Trouble());
    const Known before = m_known;
    const CEOID reference = *m_reference;
    Saved saved = FindAndWrite(entry, theirs);
    if (saved == Saved::Changed)
        return saved;
    if (saved != Saved::Failed && !together.Commit())
        saved = Fail(together.Trouble());
    if (saved == Saved::Failed) {
        m_known = before;
        *m_reference = reference;
    }
    return saved;
}

EditorRecord::Saved EditorRecord::FindAndWrite(EntryToWrite* entry, Theirs theirs)
{
    const Target target = FindTarget(theirs);
    if (target == Target::Changed)
        return Saved::Changed;
    return target != Target::Failed && CountUses() ? WriteTo(target, entry) : Saved::Failed;
}

EditorRecord::Target EditorRecord::FindTarget(Theirs theirs)
{
    if (m_known.id == 0)
        return Target::New;
    const bool isThere = m_journal.SeekRecord(m_known.id) == m_known.id;
    if (m_unread || m_journal.Trouble() != StoreTrouble::None) {
        (void)Fail(m_journal.Trouble());
        return Target::Failed;
    }
    if (!isThere)
        return Target::New;
    const std::optional<Image> now = ReadImage();
    if (!now) {
        (void)Fail(m_journal.Trouble());
        return Target::Failed;
    }
    if (now == m_known.image)
        return Target::Record;
    const bool isAgreed = theirs == Theirs::Replace && now == m_theirs;
    m_theirs = now;
    if (!isAgreed)
        return Target::Changed;
    m_known.partOfCategories.reset(); // theirs are written over as well
    m_known.partOfContacts.reset();
    m_known.foreign.clear();
    return Target::Record;
}

// Of the journal's current record; nothing when it cannot be read.
std::optional<EditorRecord::Image> EditorRecord::ReadImage()
{
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    const bool read = m_journal.ReadRecord(&count, nullptr, &properties) != 0;
    const LocalBlock<CEPROPVAL> block(properties);
    if (!read || m_journal.Trouble() != StoreTrouble::None)
        return std::nullopt;
    return ImageOf(properties, count);
}

// A category that is gone has nothing to count.
bool EditorRecord::CountUses()
{
    ZStack kept;
    for (size_t i = 0; const ZCategory* item = m_categories.GetItem(i); ++i) {
        const bool released = (item->flags & kCategoryReleased) != 0;
        const bool counts = released || (item->flags & kCategoryAdded);
        const bool done =
            !counts || (released ? m_categoryStore.DecUse(item->id) : m_categoryStore.IncUse(item->id));
        if (!done && m_categoryStore.Trouble() != StoreTrouble::None) {
            (void)Fail(m_categoryStore.Trouble());
            return false;
        }
        if (!released)
            kept.Push(*item);
    }
    m_categories = kept;
    return true;
}

// False where a set cannot be put into a blob: it must not be taken for an empty one, which would be deleted.
bool EditorRecord::FillBlobs(EntryToWrite* entry, LocalBlock<BYTE>* categories, LocalBlock<BYTE>* contacts)
{
    const int categoriesMade = m_categoryStore.SetBlobFromStack(m_categories, &entry->categories);
    categories->reset(entry->categories.lpb);
    const int contactsChanged = m_contacts.SetBlob(&entry->contacts);
    contacts->reset(entry->contacts.lpb);
    return (m_categories.IsEmpty() || (categoriesMade && *categories)) &&
           (m_contacts.Assigned().empty() || (contactsChanged && *contacts));
}

bool EditorRecord::LeavesCategories() const
{
    const bool isEmptiedBySave = m_written && m_categories.IsEmpty();
    return m_known.partOfCategories &&
           (isEmptiedBySave || IsSameSet(*m_known.partOfCategories, AssignedCategories(m_categories)));
}

bool EditorRecord::LeavesContacts() const
{
    return m_known.partOfContacts && IsSameSet(*m_known.partOfContacts, m_contacts.Assigned());
}

// A property that is not sent stays as it is.
void EditorRecord::LeaveUnreadSets(EntryToWrite* entry) const
{
    if (LeavesCategories()) {
        entry->categories = {};
        entry->loadedMask &= ~kMaskDeletesCategories;
    }
    if (LeavesContacts()) {
        entry->contacts = {};
        entry->loadedMask &= ~kMaskDeletesContacts;
    }
}

bool EditorRecord::IsForeign(CEPROPID property) const
{
    return std::count(m_known.foreign.begin(), m_known.foreign.end(), property) != 0;
}

// The times belong together: for a time that cannot be read, what is shown is not the entry's, and the other
// times follow from it. The sets are left in their own way.
bool EditorRecord::LeavesForeign(CEPROPID property, const EntryToWrite& entry) const
{
    const Field* field = m_shown ? FieldOf(property) : nullptr;
    bool isForeign = false, isSame = field != nullptr;
    for (const Field& other : Fields()) {
        if (!field || (&other != field && !(IsTime(other) && IsTime(*field))))
            continue;
        isForeign = isForeign || IsForeign(other.id);
        isSame = isSame && HaveSameValue(other, entry, *m_shown);
    }
    return isForeign && isSame;
}

// What is written is foreign no more.
void EditorRecord::LeaveForeign(const EntryToWrite& entry, std::vector<CEPROPVAL>* properties)
{
    std::erase_if(*properties, [&](const CEPROPVAL& value) { return LeavesForeign(value.propid, entry); });
    std::vector<CEPROPID> left;
    for (const CEPROPID property : m_known.foreign)
        if (LeavesForeign(property, entry))
            left.push_back(property);
    m_known.foreign = left;
}

EditorRecord::Saved EditorRecord::WriteTo(Target target, EntryToWrite* entry)
{
    LocalBlock<BYTE> categories;
    LocalBlock<BYTE> contacts;
    entry->categories = {};
    entry->contacts = {};
    if (!FillBlobs(entry, &categories, &contacts))
        return Fail(StoreTrouble::NoMemory);
    entry->exists = m_known.id != 0;
    entry->loadedMask = m_isBesides ? m_mask & kMaskDeletesContacts : m_mask;
    const bool update = target == Target::Record;
    if (update)
        LeaveUnreadSets(entry);
    else
        m_known.foreign.clear();
    std::vector<CEPROPVAL> properties = PropertiesToWrite(*entry);
    LeaveForeign(*entry, &properties);
    const CEOID written = m_journal.WriteRecord(update ? m_known.id : 0, static_cast<WORD>(properties.size()),
                                                properties.data());
    if (written == 0)
        return Fail(m_journal.Trouble());
    *m_reference = m_known.id = written;
    // Unless it can be read back, the next save takes the record for changed and asks.
    m_known.image = m_journal.SeekRecord(m_known.id) == m_known.id ? ReadImage() : std::nullopt;
    return update ? Saved::Updated : Saved::Created;
}

uint64_t EditorRecord::ImageNumber() const
{
    if (!m_known.image)
        return 0;
    return NumberOfBytes({reinterpret_cast<const char*>(m_known.image->data()), m_known.image->size()});
}

void EditorRecord::DescribeTo(RescueState* state) const
{
    state->id = m_known.id;
    state->image = ImageNumber();
    if (!m_written || !m_categories.IsEmpty())
        state->categories = AssignedCategories(m_categories);
    state->contacts = m_contacts.Assigned();
}

void EditorRecord::GoOnWith(const RescueState& state)
{
    if (ImageNumber() != state.image)
        m_known.image.reset();
    if (state.categories)
        AssignOnly(*state.categories);
    const std::vector<CEOID> loaded = m_contacts.Assigned();
    for (const CEOID id : loaded)
        m_contacts.Unassign(id);
    for (const CEOID id : state.contacts)
        if (!IsGone(m_contacts, id))
            m_contacts.Assign(id);
}

void EditorRecord::AddWritten()
{
    for (const CEOID id : m_written.value_or(std::vector<CEOID>()))
        if (!m_categories.Find(id))
            m_categories.Push({id, kCategoryLoaded});
}

// Through the stack's own steps, so that a save counts each use once.
void EditorRecord::AssignOnly(const std::vector<CEOID>& categories)
{
    for (const CEOID id : AssignedCategories(m_categories))
        if (!std::count(categories.begin(), categories.end(), id))
            ReleaseCategory(&m_categories, id);
    for (const CEOID id : categories)
        if (m_categories.Find(id) || !IsGone(m_categoryStore, id))
            AssignCategory(&m_categories, id);
}
