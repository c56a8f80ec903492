// What is selected in the address book, what a deletion takes, and what other programs change below it.
#include "addrbook/resource.h"
#include "addrbook/transfer/contact_record.h"
#include "address_window_fixture.h"
#include "support/locked_store.h"
#include "support/test_windows.h"

namespace addrbook {

namespace {

TEST_F(AddressWindowTest, DeletesWhatIsSelectedAndAsksBefore)
{
    for (const char* name : {"Anna", "Bert", "Carl", "Dora"})
        Add(name);
    Open();
    const MessageBoxAnswerer answerer({IDNO, IDYES, IDYES});
    PressInList(VK_DELETE);
    EXPECT_EQ(Names().size(), 4u);
    PressInList(VK_DELETE);
    EXPECT_EQ(Names(), (Texts{L"Bert", L"Carl", L"Dora"}));
    EXPECT_EQ(Current(), L"Bert");
    Command(CMD_SELECT_ALL);
    Command(CMD_DELETE_CONTACT);
    EXPECT_EQ(m_contacts.RecordCount(), 0u);
    ASSERT_EQ(answerer.Boxes().size(), 3u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Delete \"Anna\"?");
    EXPECT_EQ(answerer.Boxes()[2].text, L"Delete 3 contacts?");
    PressInList(VK_DELETE);
    EXPECT_EQ(answerer.Boxes().size(), 3u) << "there is nothing to delete";
}

TEST_F(AddressWindowTest, FollowsAnotherProgramsChanges)
{
    Add("Anna");
    const CEOID bert = Add("Bert");
    Open();
    ASSERT_EQ(m_contacts.DeleteRecord(bert), 1);
    TellOfAChange(kChangeDeleted);
    EXPECT_EQ(Names(), Texts{L"Anna"});
}

TEST_F(AddressWindowTest, ASelectionIsNotHandedOnToOthers)
{
    Add("Anna", "lake");
    Add("Bert", "hill");
    Add("Carl", "lake");
    Add("Dora", "hill");
    Open();
    SetWindowTextW(Item(IDC_FIND), L"lake");
    Command(CMD_SELECT_ALL);
    SetWindowTextW(Item(IDC_FIND), L"hill");
    EXPECT_EQ(Names(), (Texts{L"Bert", L"Dora"}));
    EXPECT_EQ(Selected(), Texts{L"Bert"}) << "nobody has selected these two";
}

TEST_F(AddressWindowTest, WhatStaysInSightStaysSelected)
{
    Add("Anna", "lake");
    Add("Bert");
    Add("Carl", "lake");
    Add("Dora", "lake");
    Open();
    Select(0, false);
    Select(1);
    Select(3);
    SetWindowTextW(Item(IDC_FIND), L"lake");
    EXPECT_EQ(Selected(), Texts{L"Dora"});
    Command(CMD_SELECT_ALL);
    Command(IDCANCEL);
    EXPECT_EQ(Selected(), (Texts{L"Anna", L"Carl", L"Dora"}));
}

TEST_F(AddressWindowTest, AfterADeletionTheNextOneIsCurrent)
{
    for (const char* name : {"Anna", "Bert", "Carl"})
        Add(name);
    Open();
    const MessageBoxAnswerer answerer({IDYES});
    PressInList(VK_DOWN);
    PressInList(VK_DELETE);
    EXPECT_EQ(Current(), L"Carl");
    PressInList(VK_DELETE);
    EXPECT_EQ(Current(), L"Anna") << "the last one is gone: the one before it";
    EXPECT_EQ(WindowText(Item(IDC_COUNT)), L"1 contact");
}

// A card may bring a name of any length.
TEST_F(AddressWindowTest, TheQuestionOfADeletionFitsTheScreen)
{
    Add(std::string(5'000, 'x'));
    Open();
    const MessageBoxAnswerer answerer({IDNO});
    PressInList(VK_DELETE);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Delete \"" + std::wstring(80, L'x') + L"...\"?");
    EXPECT_EQ(answerer.Boxes()[0].answers, (std::vector{IDYES, IDNO}));
    EXPECT_EQ(answerer.Boxes()[0].owner, m_window->Handle());
}

TEST_F(AddressWindowTest, TheQuestionOfADeletionCutsNoCharacter)
{
    Add(std::string(79, 'x') + "\xF0\x9F\x98\x80\xF0\x9F\x98\x80");
    Open();
    const MessageBoxAnswerer answerer({IDNO});
    PressInList(VK_DELETE);
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(answerer.Boxes()[0].text, L"Delete \"" + std::wstring(79, L'x') + L"...\"?");
}

// All of them or none.
TEST_F(AddressWindowTest, ADeletionThatFailsSaysSoAndLosesNothing)
{
    Add("Anna");
    Add("Bert");
    Open();
    Command(CMD_SELECT_ALL);
    const MessageBoxAnswerer answerer({IDYES, IDOK});
    {
        const LockedStore trouble(m_store.Path());
        PressInList(VK_DELETE);
    }
    ASSERT_EQ(answerer.Boxes().size(), 2u);
    EXPECT_EQ(answerer.Boxes()[1].text, NotDoneText(L"The contacts were not deleted", StoreTrouble::Locked));
    EXPECT_EQ(Selected(), (Texts{L"Anna", L"Bert"})) << "what was selected stays so";
    EXPECT_EQ(Names(), (Texts{L"Anna", L"Bert"}));
    EXPECT_EQ(m_contacts.RecordCount(), 2u);
}

// What another program was quicker with is no failure.
TEST_F(AddressWindowTest, ADeletionGoesOnPastWhatIsGoneAlready)
{
    Add("Anna");
    const CEOID bert = Add("Bert");
    Add("Carl");
    Open();
    Command(CMD_SELECT_ALL);
    ASSERT_EQ(m_contacts.DeleteRecord(bert), 1);
    const MessageBoxAnswerer answerer({IDYES});
    PressInList(VK_DELETE);
    EXPECT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_EQ(Names(), Texts());
}

TEST_F(AddressWindowTest, WhatAnotherProgramDeletesTakesNobodyElsewhere)
{
    Add("Anna");
    const CEOID bert = Add("Bert");
    Add("Carl");
    Open();
    PressInList(VK_DOWN);
    EXPECT_EQ(Current(), L"Bert");
    ASSERT_EQ(m_contacts.DeleteRecord(bert), 1);
    TellOfAChange(kChangeDeleted);
    EXPECT_EQ(Names(), (Texts{L"Anna", L"Carl"}));
    EXPECT_EQ(Current(), L"Carl");
    EXPECT_EQ(WindowText(Item(IDC_COUNT)), L"2 contacts");
}

TEST_F(AddressWindowTest, AnotherProgramsContactsAreFoundToo)
{
    Add("Anna", "lake");
    Open();
    SetWindowTextW(Item(IDC_FIND), L"lake");
    Add("Zoe", "lake");
    TellOfAChange(kChangeWorkBegins);
    EXPECT_EQ(Names(), Texts{L"Anna"}) << "bulk work is waited for";
    TellOfAChange(kChangeWorkEnded);
    EXPECT_EQ(Names(), (Texts{L"Anna", L"Zoe"}));
    EXPECT_EQ(Current(), L"Anna");
}

TEST_F(AddressWindowTest, FindsWhatWasChangedWhileItLooks)
{
    const CEOID anna = Add("Anna", "lake");
    Add("Bert");
    Open();
    SetWindowTextW(Item(IDC_FIND), L"lake");
    EXPECT_EQ(Names(), Texts{L"Anna"});
    vcard::Contact changed;
    changed[vcard::Field::FileAs] = "Anna";
    changed[vcard::Field::Note] = "hill";
    ASSERT_EQ(ContactSaver().Save(m_contacts, anna, changed), anna);
    Add("Aaron", "lake");
    TellOfAChange(kChangeModified);
    EXPECT_EQ(Names(), Texts{L"Aaron"});
    EXPECT_EQ(WindowText(Item(IDC_COUNT)), L"1 of 3 contacts");
}

} // namespace

} // namespace addrbook
