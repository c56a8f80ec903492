// JournalTest: what the tests of the built journal share. Each starts from an empty store and default
// settings; what a test needs otherwise it writes before it starts the program.
#pragma once

#include <gtest/gtest.h>

#include "e2e/harness/journal_process.h"
#include "support/test_store.h"

class JournalTest : public testing::Test {
  protected:
    // Declared so that the program ends before its store and its settings go.
    TestStore m_store;
    TestRegistry m_registry;
    JournalProcess m_journal;
};
