// The address book's work under faults: saving a contact, importing and exporting cards.
#include <gtest/gtest.h>

#include "addrbook/transfers.h"
#include "fault_sweep.h"

namespace {

class FaultedContacts : public FaultSweep {
  protected:
    ~FaultedContacts() override { DeleteFileW(Cards().c_str()); }
    std::wstring Cards() const { return Path() + L".vcf"; }
    Outcome OutcomeOf(addrbook::Transfer& transfer)
    {
        const bool done = addrbook::RunToEnd(transfer) == addrbook::Transfer::State::Done;
        m_report = transfer.Report();
        EXPECT_FALSE(m_report.empty());
        return done ? Outcome::Done : Outcome::Failed;
    }
    Outcome ExportAll()
    {
        std::vector<CEOID> ids;
        for (CEOID id = 1; id <= 20; ++id)
            ids.push_back(id);
        addrbook::ExportJob job(m_contacts, ids, Cards());
        return OutcomeOf(job);
    }
    bool TellsWhatIsMissing() const { return m_report.find(L"not be read") != std::wstring::npos; }

    std::wstring m_report;
};

constexpr const char* kNewCard = "INSERT INTO contacts(file_as, vcard_extra) VALUES";

TEST_F(FaultedContacts, Saving)
{
    vcard::Contact contact;
    contact[vcard::Field::FileAs] = "Doe, Jane";
    contact[vcard::Field::Note] = "one\ntwo";
    Sweep(
        {.prepare = [this] { return OpenAll(); },
         .run =
             [&] {
                 if (addrbook::ContactSaver().Save(m_contacts, 5, contact) == 5)
                     return Outcome::Done;
                 EXPECT_NE(m_contacts.Trouble(), StoreTrouble::None);
                 return Outcome::Failed;
             },
         .end = [this] { CloseAll(); },
         .model =
             "UPDATE contacts SET file_as = 'Doe, Jane', company = NULL, vcard_extra = NULL, note = 'one' || "
             "char(13, 10) || 'two' WHERE oid = 5"});
}

// New cards, and one that a stored contact's card is updated with.
TEST_F(FaultedContacts, Importing)
{
    using vcard::CardOf;
    ASSERT_TRUE(WriteFileBytes(Cards(), CardOf("FN:New one\nUID:a") +
                                            CardOf("FN:Contact 7\nORG:Other\nUID:7") +
                                            CardOf("FN:New two\nUID:b")));
    const auto update = [](HWND, const addrbook::ImportQuestion&) {
        return addrbook::ImportAnswer{addrbook::ImportChoice::Update, true};
    };
    Sweep({.prepare = [this] { return OpenAll(); },
           .run =
               [&] {
                   addrbook::ImportJob job(m_contacts, Cards(), update);
                   return OutcomeOf(job);
               },
           .end = [this] { CloseAll(); },
           .model = std::string(kNewCard) +
                    "('New one', 'UID:a'), ('New two', 'UID:b'); UPDATE contacts SET company "
                    "= 'Other' WHERE oid = 7"});
}

// Cards that ask: one updates, one is added beside its contact, one is passed over.
TEST_F(FaultedContacts, ImportingWithQuestions)
{
    using addrbook::ImportChoice;
    using vcard::CardOf;
    ASSERT_TRUE(WriteFileBytes(
        Cards(), CardOf("FN:Contact 3\nORG:Other\nUID:3") + CardOf("FN:Contact 4\nORG:Beside\nUID:4") +
                     CardOf("FN:New\nUID:n") + CardOf("FN:Contact 5\nORG:Never\nUID:5")));
    const auto answer = [](HWND, const addrbook::ImportQuestion& question) {
        const bool updates = question.name == "Contact 3", adds = question.name == "Contact 4";
        return addrbook::ImportAnswer{updates ? ImportChoice::Update
                                      : adds  ? ImportChoice::AddAsNew
                                              : ImportChoice::Skip,
                                      false};
    };
    Sweep({.prepare = [this] { return OpenAll(); },
           .run =
               [&] {
                   addrbook::ImportJob job(m_contacts, Cards(), answer);
                   return OutcomeOf(job);
               },
           .end = [this] { CloseAll(); },
           .model =
               "UPDATE contacts SET company = 'Other' WHERE oid = 3; INSERT INTO contacts(file_as, company, "
               "vcard_extra) VALUES('Contact 4', 'Beside', NULL), ('New', NULL, 'UID:n')"});
}

// What is exported is whole or tells what is missing, or the file that was there stays.
TEST_F(FaultedContacts, Exporting)
{
    const std::string old = "the file before";
    std::string whole;
    Sweep({.prepare = [&] { return OpenAll() && WriteFileBytes(Cards(), old); },
           .run =
               [&] {
                   const Outcome outcome = ExportAll();
                   const std::string file = ReadFileBytes(Cards());
                   if (outcome == Outcome::Failed) {
                       EXPECT_EQ(file, old);
                       return outcome;
                   }
                   whole = whole.empty() ? file : whole;
                   EXPECT_TRUE(file == whole || TellsWhatIsMissing());
                   return outcome;
               },
           .end = [this] { CloseAll(); }});
    size_t cards = 0;
    for (size_t at = whole.find("FN:"); at != std::string::npos; at = whole.find("FN:", at + 1))
        ++cards;
    EXPECT_EQ(cards, 20u);
}

} // namespace
