// A journal of a test's own, and records to write into it.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "data/journal_entry.h"
#include "support/test_session.h"
#include "support/test_store.h"

// A record's properties with the texts and blobs they point into.
class TestRecord {
  public:
    TestRecord& Time(CEPROPID id, TimeCount time);
    TestRecord& Text(CEPROPID id, std::wstring text);
    TestRecord& Short(CEPROPID id, short value);
    TestRecord& Blob(CEPROPID id, std::vector<DWORD> words);
    TestRecord& Missing(CEPROPID id); // flagged as not found

    WORD Count() const { return static_cast<WORD>(m_properties.size()); }
    const CEPROPVAL* Properties() const { return m_properties.data(); }
    // Writes it as a new record; its identifier.
    CEOID Write() const;

  private:
    CEPROPVAL& Add(CEPROPID id);

    std::vector<CEPROPVAL> m_properties;
    std::vector<std::unique_ptr<std::wstring>> m_texts;
    std::vector<std::unique_ptr<std::vector<DWORD>>> m_blobs;
};

TimeCount Instant(WORD year, WORD month, WORD day, WORD hour = 0, WORD minute = 0);
// An entry of the given minute of the year 2000.
CEOID AddEntry(int minute, const std::wstring& subject);
// "entry 0" and so on, one minute apart, in one transaction; the identifiers, oldest first.
std::vector<CEOID> AddEntries(int count);

// The program's settings, journal and filter as at a first start.
class JournalTest : public testing::Test {
  protected:
    JournalTest();
    ~JournalTest() override;

    TestRegistry m_registry;
    TestStore m_store;
};
