// What an import asks, and what becomes of the answers.
#include <sqlite3.h>

#include "support/locked_store.h"
#include "transfers.h"

namespace addrbook {

namespace {

using enum ImportChoice;

// Two contacts that are stored, and the cards that would change them.
class ImportQuestions : public Transfers {
  protected:
    void SetUp() override
    {
        Transfers::SetUp();
        ASSERT_EQ(Import(vcard::CardOf("FN:a\nTEL:1\nUID:1") + vcard::CardOf("FN:b\nTEL:2\nUID:2") +
                         vcard::CardOf("FN:c\nUID:3")),
                  State::Done);
        EXPECT_TRUE(m_questions.empty()) << "of cards that are new";
        m_before = All();
    }
    std::string All()
    {
        std::string all;
        for (const CEOID id : Ids()) {
            vcard::Contact contact;
            EXPECT_TRUE(LoadContact(m_contacts, id, &contact));
            all += std::to_string(id) + ":\n" + vcard::LinesOf(contact);
        }
        return all;
    }
    static std::string Changed()
    {
        return vcard::CardOf("FN:a\nNOTE:n\nUID:1") + vcard::CardOf("FN:b\nTEL:3\nUID:2") +
               vcard::CardOf("FN:c\nUID:3") + vcard::CardOf("FN:d\nUID:4");
    }
    // The job, up to its first question.
    std::unique_ptr<ImportJob> Asking(const std::string& text)
    {
        EXPECT_TRUE(WriteFileBytes(m_path, text));
        auto job = std::make_unique<ImportJob>(m_contacts, m_path, Asker());
        EXPECT_EQ(StepToQuestion(*job), State::Asking);
        return job;
    }
    static State StepToQuestion(ImportJob& job)
    {
        State state;
        while ((state = job.Step(20)) == State::Working) {
        }
        return state;
    }
    bool Edit(const char* fileAs, vcard::Field field, const char* text)
    {
        for (const CEOID id : Ids()) {
            vcard::Contact contact;
            if (LoadContact(m_contacts, id, &contact) && contact[vcard::Field::FileAs] == fileAs)
                return SaveField(m_contacts, id, field, text);
        }
        return false;
    }

    std::string m_before;
};

TEST_F(ImportQuestions, AreAskedOnlyWhereACardChangesSomething)
{
    ASSERT_EQ(Import(Changed()), State::Done);
    ASSERT_EQ(m_questions.size(), 2u);
    EXPECT_EQ(m_questions[0].name, "a");
    ASSERT_EQ(m_questions[0].changes.size(), 1u);
    EXPECT_STREQ(m_questions[0].changes[0].field, L"Note");
    EXPECT_EQ(m_questions[1].name, "b");
    ASSERT_EQ(m_questions[1].changes.size(), 1u);
    EXPECT_EQ(m_questions[1].changes[0].before, "2");
    EXPECT_EQ(m_questions[1].changes[0].after, "2\n3");
    EXPECT_EQ(m_report, L"1 contact was imported, 2 were updated, 1 was unchanged.");
    EXPECT_EQ(vcard::LinesOf(Stored("a")), "FN:a\nTEL:1\nNOTE:n\nUID:1\n");
    ASSERT_EQ(Import(Changed()), State::Done);
    EXPECT_TRUE(m_questions.empty()) << "of what was updated";
    EXPECT_EQ(m_report, L"4 contacts were unchanged.");
}

TEST_F(ImportQuestions, EachAnswerIsForItsCard)
{
    m_answers = {{Skip, false}, {AddAsNew, false}};
    ASSERT_EQ(Import(Changed()), State::Done);
    EXPECT_EQ(m_report, L"2 contacts were imported, 1 was unchanged, 1 was skipped.");
    EXPECT_EQ(vcard::LinesOf(Stored("a")), "FN:a\nTEL:1\nUID:1\n");
    const std::string all = All();
    EXPECT_NE(all.find("FN:b\nTEL:2\nUID:2\n"), std::string::npos) << all;
    EXPECT_NE(all.find("FN:b\nTEL:3\n"), std::string::npos)
        << "without the UID, which is the other's: " << all;
    EXPECT_EQ(m_contacts.RecordCount(), 5u);
}

// The UID stays with one contact: a later import finds that one, and no second.
TEST_F(ImportQuestions, WhatWasAddedAsNewIsNotFoundByTheUid)
{
    m_answers = {{AddAsNew, false}};
    ASSERT_EQ(Import(vcard::CardOf("FN:a\nTEL:9\nUID:1")), State::Done);
    ASSERT_EQ(m_contacts.RecordCount(), 4u);
    m_answers = {{Update, false}};
    const std::string later = vcard::CardOf("FN:a\nTEL:1\nNOTE:later\nUID:1");
    ASSERT_EQ(Import(later + later), State::Done);
    EXPECT_EQ(m_report, L"1 contact was imported, 1 was updated.") << "the second card is a contact too many";
    ASSERT_EQ(m_questions.size(), 1u);
    ASSERT_EQ(m_questions[0].changes.size(), 1u);
    EXPECT_STREQ(m_questions[0].changes[0].field, L"Note");
    int added = 0;
    for (const CEOID id : Ids()) {
        vcard::Contact contact;
        ASSERT_TRUE(LoadContact(m_contacts, id, &contact));
        added += vcard::LinesOf(contact) == "FN:a\nTEL:9\n";
    }
    EXPECT_EQ(added, 1) << All();
}

TEST_F(ImportQuestions, OneAnswerIsForAllThatCome)
{
    m_answers = {{Skip, true}};
    ASSERT_EQ(Import(Changed()), State::Done);
    EXPECT_EQ(m_questions.size(), 1u);
    EXPECT_EQ(m_report, L"1 contact was imported, 1 was unchanged, 2 were skipped.");
    m_answers = {{Skip, false}, {Update, true}};
    ASSERT_EQ(Import(Changed() + vcard::CardOf("FN:e\nUID:3")), State::Done);
    EXPECT_EQ(m_questions.size(), 2u);
    EXPECT_EQ(m_report, L"1 contact was imported, 1 was updated, 2 were unchanged, 1 was skipped.")
        << "two cards of one UID are two contacts";
}

TEST_F(ImportQuestions, CancelChangesNothing)
{
    m_answers = {{Update, false}, {Cancel, false}};
    EXPECT_EQ(Import(vcard::CardOf("FN:new") + Changed()), State::Cancelled);
    EXPECT_EQ(m_questions.size(), 2u);
    EXPECT_EQ(All(), m_before);
}

// While an import reads and asks, others can write.
TEST_F(ImportQuestions, HoldNobodyOff)
{
    ASSERT_TRUE(WriteFileBytes(m_path, ManyCards(5000) + Changed()));
    ImportJob job(m_contacts, m_path, Asker());
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open16(m_store.Path().c_str(), &other), SQLITE_OK);
    int steps = 0;
    for (State state = State::Working; state != State::Asking; state = job.Step(0)) {
        ASSERT_EQ(state, State::Working);
        ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE; ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK)
            << steps;
        ++steps;
    }
    EXPECT_GT(steps, 10);
    EXPECT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE; ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(other);
    EXPECT_EQ(job.Ask(nullptr), State::Working);
    EXPECT_EQ(RunToEnd(job), State::Done);
}

TEST_F(ImportQuestions, AreAskedAgainWhenTheContactHasChangedMeanwhile)
{
    const auto job = Asking(Changed());
    ASSERT_EQ(job->Ask(nullptr), State::Working);
    ASSERT_EQ(StepToQuestion(*job), State::Asking);
    ASSERT_TRUE(Edit("a", vcard::Field::Company, "Acme"));
    m_answers = {{Update, false}};
    ASSERT_EQ(job->Ask(nullptr), State::Working);
    ASSERT_EQ(StepToQuestion(*job), State::Asking) << "the first one, again";
    EXPECT_EQ(m_contacts.RecordCount(), 3u) << "nothing is written yet";
    ASSERT_EQ(job->Ask(nullptr), State::Working);
    ASSERT_EQ(m_questions.size(), 3u);
    EXPECT_EQ(m_questions[2].name, "a");
    EXPECT_EQ(StepToQuestion(*job), State::Done);
    EXPECT_EQ(vcard::LinesOf(Stored("a")), "FN:a\nORG:Acme\nTEL:1\nNOTE:n\nUID:1\n");
}

TEST_F(ImportQuestions, AnAnswerForAllHoldsForAContactThatHasChanged)
{
    m_answers = {{Update, true}};
    const auto job = Asking(Changed());
    ASSERT_TRUE(Edit("a", vcard::Field::Company, "Acme"));
    ASSERT_EQ(job->Ask(nullptr), State::Working);
    EXPECT_EQ(StepToQuestion(*job), State::Done);
    EXPECT_EQ(m_questions.size(), 1u);
    EXPECT_EQ(vcard::LinesOf(Stored("a")), "FN:a\nORG:Acme\nTEL:1\nNOTE:n\nUID:1\n");
}

TEST_F(ImportQuestions, AContactThatIsGoneMeanwhileIsImported)
{
    for (const ImportChoice choice : {Update, Skip}) {
        m_answers = {{choice, true}};
        const auto job = Asking(Changed());
        ASSERT_EQ(m_contacts.DeleteRecord(Ids()[0]), 1);
        ASSERT_EQ(job->Ask(nullptr), State::Working);
        EXPECT_EQ(StepToQuestion(*job), State::Done);
        EXPECT_EQ(job->Report(), choice == Update
                                     ? L"2 contacts were imported, 1 was updated, 1 was unchanged."
                                     : L"3 contacts were unchanged, 1 was skipped.");
        if (choice == Update) {
            EXPECT_EQ(vcard::LinesOf(Stored("a")), "FN:a\nNOTE:n\nUID:1\n");
            ASSERT_TRUE(Edit("a", vcard::Field::Note, ""));
        }
    }
    EXPECT_EQ(m_contacts.RecordCount(), 3u);
}

// Two programs that import the same file.
TEST_F(ImportQuestions, AContactThatHasComeMeanwhileIsNoDouble)
{
    const auto job = Asking(Changed());
    ASSERT_EQ(job->Ask(nullptr), State::Working);
    ASSERT_EQ(StepToQuestion(*job), State::Asking);
    ASSERT_NE(ContactSaver().Save(m_contacts, 0, vcard::ContactOf("FN:d\nORG:Other\nUID:4")), 0u);
    ASSERT_EQ(job->Ask(nullptr), State::Working);
    EXPECT_EQ(StepToQuestion(*job), State::Done);
    EXPECT_EQ(m_contacts.RecordCount(), 4u);
    EXPECT_EQ(job->Report(), L"2 contacts were updated, 2 were unchanged.");
}

// More cards than stay in memory.
TEST_F(ImportQuestions, AnswersStayWithTheirCardsInALargeFile)
{
    std::string text = ManyCards(30'000);
    ASSERT_GT(text.size() * 2, CardSpool::kInMemory);
    text += vcard::CardOf("FN:z\nNOTE:" + std::string(CardSpool::kInMemory, 'n')) + Changed();
    m_answers = {{Skip, false}, {Update, false}};
    ASSERT_EQ(Import(text), State::Done);
    EXPECT_EQ(m_contacts.RecordCount(), 30'005u);
    EXPECT_EQ(vcard::LinesOf(Stored("b")), "FN:b\nTEL:2\nTEL:3\nUID:2\n");
    EXPECT_EQ(Stored("z")[vcard::Field::Note].size(), CardSpool::kInMemory);
    EXPECT_EQ(Stored("Last29999, First29999"),
              vcard::ContactOf("FN:First29999 Last29999\nN:Last29999;First29999;;;\nX-N:29999"));
}

} // namespace

} // namespace addrbook
