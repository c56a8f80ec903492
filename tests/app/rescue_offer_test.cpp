// What is offered at a start, and what is not.
#include "app/rescue_offer.h"

#include "app/main_window_fixture.h"
#include "editor/rescue_file.h"
#include "mervane/file/store_path.h"
#include "support/rescue_folder.h"

namespace {

class RescueOffer : public MainWindowTest {
  protected:
    // As a program that is killed leaves it.
    static RescueState Leave(const wchar_t* subject)
    {
        RescueState state;
        state.store = mervane::StoreNumber(mervane::StorePath());
        state.entry.date = state.entry.endTime = TimeCount(5);
        state.entry.type = L"Note";
        state.entry.body = L"Body";
        state.entry.subject = subject;
        EXPECT_TRUE(RescueFile().Write(state));
        return state;
    }
    static CEOID Save(RescueState state)
    {
        const auto properties = PropertiesToWrite(state.entry);
        return App().Journal().WriteRecord(0, static_cast<WORD>(properties.size()), properties.data());
    }

    RescueFolder m_folder;
};

TEST_F(RescueOffer, OneThatIsSavedGoesUnasked)
{
    ASSERT_NE(Create(), nullptr);
    ASSERT_NE(Save(Leave(L"Saved")), 0u);
    Leave(L"Not saved");
    const MessageBoxAnswerer answerer({IDNO});
    OfferRescues(m_window.Handle(), m_window.List());
    ASSERT_EQ(answerer.Boxes().size(), 1u);
    EXPECT_TRUE(answerer.Boxes()[0].text.starts_with(L"An entry that was not saved was found: Not saved, "));
    EXPECT_EQ(m_folder.Unsaved(), 0u);
    EXPECT_EQ(m_folder.Files(L".kept").size(), 1u);
    EXPECT_EQ(App().Journal().RecordCount(), 1u);
}

} // namespace
