// The address book's window over a store and settings of the test's own.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "addrbook/address_window.h"
#include "support/test_store.h"

namespace addrbook {

class AddressWindowTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_contacts.Open(), 1); }
    void TearDown() override;

    CEOID Add(const std::string& fileAs, const char* note = "");
    // Makes the window and shows it as the program does.
    void Open();
    void Close();

    HWND Item(int id) const { return GetDlgItem(m_window->Handle(), id); }
    HWND List() const;
    // What is shown and selected, by File As.
    std::vector<std::wstring> Names() const;
    std::vector<std::wstring> Selected() const;
    std::wstring Current() const;
    void Select(int row, bool selected = true);
    void Command(int id);
    void PressInList(WPARAM key);
    // As the store does when another program has changed something (kChange...).
    void TellOfAChange(WPARAM code);

    TestStore m_store;
    TestRegistry m_registry;
    std::wstring m_path = m_store.Path() + L".vcf";
    DbContacts m_contacts;
    std::unique_ptr<AddressWindow> m_window;

  private:
    std::wstring NameIn(int row) const;
};

using Texts = std::vector<std::wstring>;

} // namespace addrbook
