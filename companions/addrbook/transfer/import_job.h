// Imports a vCard file: reads it, asks about the contacts that it would change, and writes all of it in one
// transaction.
#pragma once

#include <memory>
#include <optional>
#include <unordered_map>

#include "addrbook/transfer/card_spool.h"
#include "addrbook/transfer/contact_record.h"
#include "addrbook/transfer/contact_uids.h"
#include "addrbook/transfer/import_question.h"
#include "addrbook/transfer/transfer.h"
#include "formats/text/byte_file.h"
#include "formats/vcard/contact_reader.h"
#include "formats/vcard/reader.h"

namespace addrbook {

// Without the state Done nothing was changed: the file could not be read, no card in it could, the question
// was cancelled, or the store could not be written. Ending this before is how it is cancelled. Other programs
// can write to the store until everything is read and answered. What they change in a contact after it was
// asked about is asked about again.
class ImportJob : public Transfer {
  public:
    ImportJob(DbContacts& contacts, const std::wstring& path, ImportAsker asker);

    State Step(unsigned milliseconds) override;
    State Ask(HWND owner) override;
    void Abandon() override { m_bulk.reset(); }
    int PerMille() const override;
    std::wstring Report() const override;

    size_t Cards() const { return m_cardCount; }          // that were read so far
    size_t Imported() const { return m_counts.imported; } // as new contacts
    size_t Updated() const { return m_counts.updated; }
    size_t Unreadable() const { return m_reader.Unreadable(); }

  private:
    enum class Phase { Reading, Comparing, Writing };
    struct Counts {
        size_t imported = 0;
        size_t updated = 0;
        size_t unchanged = 0;
        size_t skipped = 0;
    };
    // What was decided about a card, for the contact as it was then.
    struct Decision {
        CEOID id;
        size_t contactHash;
        ImportChoice choice;
    };
    // The contact that a card would change, as it is now.
    struct Match {
        CEOID id = 0;
        size_t hash = 0;
        vcard::Contact stored;
        vcard::Contact merged;
    };
    enum class Found { Nothing, Gone, Same, Change, Failed };

    State Read();
    State EndOfFile();
    State Compare();
    State Write();
    State Finish();
    State Fail(std::wstring why);
    State BeginPass(Phase phase);
    State FailReading();
    State FailWriting();
    Found FindMatch();
    std::optional<ImportChoice> ChoiceForMatch() const;
    bool WriteNew();
    bool WriteChoice(ImportChoice choice);
    std::wstring CountsText() const;

    DbContacts& m_contacts;
    ImportAsker m_asker;
    text::InputFile m_file;
    bool m_isOpen;
    vcard::Reader m_reader;
    vcard::Card m_vcard;
    vcard::ContactReader m_contactReader;
    Phase m_phase = Phase::Reading;
    CardSpool m_spool;
    vcard::ImportedCard m_card;
    size_t m_cardNumber = 0; // in the spool
    size_t m_cardCount = 0;
    ContactUids m_uids;
    Match m_match;
    std::unordered_map<size_t, Decision> m_decisions; // by the card's number
    std::optional<ImportChoice> m_choiceForAll;
    ContactSaver m_saver;
    std::optional<CeDBase::BulkScope> m_bulk;
    Counts m_counts;
    std::wstring m_failure;
};

} // namespace addrbook
