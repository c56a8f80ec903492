// Imports and exports of whole files, as the tests run them.
#pragma once

#include <gtest/gtest.h>

#include "addrbook/transfer/export_job.h"
#include "addrbook/transfer/import_job.h"
#include "support/cards.h"
#include "support/test_store.h"

namespace addrbook {

using State = Transfer::State;

// Works until the end, watching that the progress goes forward.
inline State RunToEnd(Transfer& transfer)
{
    State state;
    int before = 0;
    while ((state = transfer.Step(20)) == State::Working || state == State::Asking) {
        if (state == State::Asking && (state = transfer.Ask(nullptr)) != State::Working)
            break;
        EXPECT_GE(transfer.PerMille(), before);
        EXPECT_LE(before = transfer.PerMille(), 1000);
    }
    return state;
}

// So many cards with a name and a line that no field has a place for.
inline std::string ManyCards(int count)
{
    std::string text;
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        text += vcard::CardOf("FN:First" + number + " Last" + number + "\nN:Last" + number + ";First" +
                              number + ";;;\nX-N:" + number);
    }
    return text;
}

// The contact's UID, which its extra lines end with, and takes it off them.
inline std::string TakeUid(vcard::Contact* contact)
{
    std::string& extra = (*contact)[vcard::Field::Extra];
    const size_t start = extra.rfind("UID:");
    const std::string uid = start == std::string::npos ? "" : extra.substr(start + 4);
    extra.resize(start == std::string::npos ? extra.size() : start - (start ? 1 : 0));
    return uid;
}

// A store, its contacts open, and a path for a file.
class Transfers : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_contacts.Open(), 1); }
    void TearDown() override
    {
        DeleteFileW(m_path.c_str());
        DeleteFileW((m_path + L".part").c_str());
    }
    State Import(const std::string& text)
    {
        EXPECT_TRUE(WriteFileBytes(m_path, text));
        ImportJob job(m_contacts, m_path, Asker());
        const State state = RunToEnd(job);
        m_report = job.Report();
        return state;
    }
    // Answers each question with the answers in their order, the last one again and again.
    ImportAsker Asker()
    {
        m_questions.clear();
        return [this](HWND, const ImportQuestion& question) {
            m_questions.push_back(question);
            return m_answers[std::min(m_questions.size(), m_answers.size()) - 1];
        };
    }
    State Export(std::vector<CEOID> ids)
    {
        ExportJob job(m_contacts, std::move(ids), m_path);
        const State state = RunToEnd(job);
        m_report = job.Report();
        return state;
    }
    // The stored contact of this File As.
    vcard::Contact Stored(const std::string& fileAs)
    {
        vcard::Contact contact;
        for (const CEOID id : Ids())
            if (LoadContact(m_contacts, id, &contact) && contact[vcard::Field::FileAs] == fileAs)
                return contact;
        ADD_FAILURE() << fileAs << " is not stored";
        return {};
    }
    std::vector<CEOID> Ids()
    {
        std::vector<CEOID> ids;
        for (uint32_t row = 0; const CEOID id = m_contacts.IdOfRow(row); ++row)
            ids.push_back(id);
        return ids;
    }

    TestStore m_store;
    DbContacts m_contacts;
    std::wstring m_path = m_store.Path() + L".\u00FC.vcf";
    std::wstring m_report;
    std::vector<ImportAnswer> m_answers{{ImportChoice::Update, false}};
    std::vector<ImportQuestion> m_questions; // that the last import asked
};

} // namespace addrbook
