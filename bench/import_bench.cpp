#include <sqlite3.h>

#include <cstdio>
#include <vector>

#include "addrbook/contact_rows.h"
#include "addrbook/transfer/import_job.h"
#include "bare_store.h"
#include "figures.h"
#include "formats/vcard/contact.h"
#include "formats/vcard/writer.h"
#include "measure.h"
#include "report.h"
#include "stores.h"

namespace bench {

namespace {

using vcard::Contact;

constexpr int kCards = 10'000;

// A card as this program writes it. In other programs' cards a phone and the birthday say more than their
// fields do.
std::string CardText(int number, bool isForeign)
{
    const std::string n = std::to_string(number);
    std::string card = "BEGIN:VCARD\r\nVERSION:";
    card += isForeign ? "3.0\r\nPRODID:-//Example//Phone//EN\r\n" : "4.0\r\n";
    card += "FN:First" + n + " M\xC3\xBCller" + n + "\r\nN:M\xC3\xBCller" + n + ";First" + n + ";;;\r\n";
    card += "ORG:Company " + std::to_string(number % 500) + "\r\nTITLE:Head of department\r\n";
    card += "EMAIL;TYPE=work:first" + n + "@example.org\r\nEMAIL;TYPE=home:f" + n + "@home.example\r\n";
    card += isForeign ? "TEL;TYPE=CELL;TYPE=VOICE;TYPE=pref:" : "TEL;TYPE=cell:";
    card += "+49 170 " + n + "\r\nTEL;TYPE=work:+49 30 " + n + "\r\n";
    card += "ADR:;;Elm Street " + n + "\\n12345 Springfield;;;;\r\n";
    card += isForeign ? "BDAY:1985-04-15\r\n" : "BDAY:19850415\r\n";
    card += "NOTE:Met at the lake\\, in the second summer\\; wants to be called in the\r\n  morning.\r\n";
    card += "UID:urn:uuid:4fbe8971-0bc3-424c-9c26-" + n + "\r\nEND:VCARD\r\n";
    return card;
}

// A file of cards in the stores' folder; deleted at the end.
class CardFile {
  public:
    explicit CardFile(bool isForeign) : m_path(StorePath(0) + (isForeign ? L"-foreign.vcf" : L".vcf"))
    {
        text::OutputFile file;
        std::string text;
        for (int i = 0; i < kCards; ++i)
            text += CardText(i, isForeign);
        if (!file.Open(m_path) || !file.Write(text) || !file.Finish())
            Fail("cannot write the cards");
    }
    ~CardFile() { DeleteFileW(m_path.c_str()); }
    CardFile(const CardFile&) = delete;
    CardFile& operator=(const CardFile&) = delete;

    const std::wstring& Path() const { return m_path; }
    // What the import makes of it: the fields that the bare statements write.
    std::vector<Contact> Contacts() const
    {
        text::InputFile file;
        if (!file.Open(m_path))
            Fail("cannot read the cards");
        vcard::Reader reader([&](char* buffer, size_t size) { return file.Read(buffer, size); });
        std::vector<Contact> contacts;
        vcard::Card card;
        Contact contact;
        while (reader.Next(&card))
            if (vcard::ContactReader().Read(card, &contact))
                contacts.push_back(contact);
        return contacts;
    }

  private:
    std::wstring m_path;
};

// A new store without contacts, open; deleted at the end.
class EmptyStore {
  public:
    EmptyStore() : m_path(StorePath(0))
    {
        Delete();
        SetEnvironmentVariableW(L"MERVANE_STORE", m_path.c_str());
        if (!m_contacts.Open())
            Fail("cannot make a store");
    }
    ~EmptyStore()
    {
        m_contacts.Close();
        Delete();
    }
    EmptyStore(const EmptyStore&) = delete;
    EmptyStore& operator=(const EmptyStore&) = delete;

    const std::wstring& Path() const { return m_path; }
    DbContacts& Contacts() { return m_contacts; }
    void CheckCount()
    {
        if (m_contacts.RecordCount() != kCards)
            Fail("not every card is in the store");
    }

  private:
    void Delete() const
    {
        for (const wchar_t* suffix : {L"", L"-wal", L"-shm"})
            DeleteFileW((m_path + suffix).c_str());
    }

    std::wstring m_path;
    DbContacts m_contacts;
};

double TimeImport(const CardFile& cards, bool hasList)
{
    EmptyStore store;
    addrbook::ContactRows rows(store.Contacts());
    if (hasList)
        rows.Load();
    const Stopwatch watch;
    addrbook::ImportJob job(store.Contacts(), cards.Path(), {});
    auto state = addrbook::Transfer::State::Working;
    while (state == addrbook::Transfer::State::Working)
        state = job.Step(60);
    if (hasList)
        rows.Load();
    const double time = watch.Microseconds();
    store.CheckCount();
    return time;
}

constexpr const char* kInsert = "INSERT INTO contacts(file_as, first_name, last_name, company, job_title, "
                                "emails, phones, address, birthday, note, "
                                "vcard_extra) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";

void InsertBare(sqlite3_stmt* statement, const Contact& contact)
{
    for (size_t i = 0; i < vcard::kFieldCount; ++i) {
        const std::string& text = contact.texts[i];
        if (text.empty())
            sqlite3_bind_null(statement, static_cast<int>(i) + 1);
        else
            sqlite3_bind_text(statement, static_cast<int>(i) + 1, text.c_str(), static_cast<int>(text.size()),
                              SQLITE_STATIC);
    }
    if (sqlite3_step(statement) != SQLITE_DONE)
        Fail("SQLite cannot write a contact");
    sqlite3_reset(statement);
}

double TimeBare(const std::vector<Contact>& contacts)
{
    EmptyStore store;
    BareStore bare(store.Path());
    const BareStatement insert(bare, kInsert);
    const Stopwatch watch;
    bare.Execute("BEGIN IMMEDIATE");
    for (const Contact& contact : contacts)
        InsertBare(insert.Get(), contact);
    bare.Execute("COMMIT");
    const double time = watch.Microseconds();
    store.CheckCount();
    return time;
}

// A contact with so many phones of which every other says more than its field.
Contact ContactOfPhones(int phones)
{
    Contact contact;
    contact[vcard::Field::FileAs] = "x";
    for (int i = 0; i < phones; ++i) {
        const std::string number = "+49 30 " + std::to_string(1'000'000 + i);
        contact[vcard::Field::Phones] += number + "\n";
        if (i % 2)
            contact[vcard::Field::Extra] += "TEL;PREF=1:" + number + "\n";
    }
    return contact;
}

double TimeCard(const Contact& contact)
{
    const Stopwatch watch;
    std::string card;
    vcard::AppendCard(card, contact);
    return watch.Microseconds();
}

void MeasureLargeCards()
{
    constexpr int kPhones = 20'000; // 0.5 MB
    const Contact contact = ContactOfPhones(kPhones), twice = ContactOfPhones(2 * kPhones);
    const auto times = MediansByTurns({[&] { return TimeCard(twice); }, [&] { return TimeCard(contact); }});
    PrintHeading("Writing one large card");
    PrintRatio("a card of 1 MB, to one of 0.5 MB", times[0], times[1], 3);
}

} // namespace

void MeasureImports()
{
    const CardFile own(false), foreign(true);
    const std::vector<Contact> ownContacts = own.Contacts(), foreignContacts = foreign.Contacts();
    const auto times =
        MediansByTurns({[&] { return TimeImport(own, false); }, [&] { return TimeBare(ownContacts); },
                        [&] { return TimeImport(own, true); }, [&] { return TimeImport(foreign, true); },
                        [&] { return TimeBare(foreignContacts); }});
    PrintHeading("Importing 10,000 cards, on disk at its end");
    PrintRatio("cards of version 4.0, to bare INSERTs in one transaction", times[0], times[1], 3);
    PrintRatio("the same with the list of contacts open", times[2], times[1], 3);
    PrintRatio("other programs' cards of version 3.0, list open", times[3], times[4], 3);
    MeasureLargeCards();
}

} // namespace bench
