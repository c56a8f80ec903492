// What the tests of the editor's record share.
#pragma once

#include <sqlite3.h>

#include <string>
#include <vector>

#include "editor/editor_record.h"
#include "editor_fixture.h"

// A record as the editor has it open, or none yet.
class OpenRecord : public EditorRecord {
  public:
    explicit OpenRecord(CEOID* id) : EditorRecord(App().Journal(), id)
    {
        OpenStores(nullptr);
        JournalEntry loaded;
        EXPECT_EQ(Load(&loaded), *id ? Loaded::Done : Loaded::Nothing);
    }
};

class EditorRecordTest : public EditorTest {
  protected:
    CEOID Category(const wchar_t* name)
    {
        DbCategories categories;
        EXPECT_TRUE(categories.Open());
        std::wstring text = name;
        CEPROPVAL value{};
        value.propid = kCategoriesKey;
        value.val.lpwstr = text.data();
        return categories.WriteRecord(0, 1, &value);
    }
    int Uses(CEOID category)
    {
        DbCategories categories;
        EXPECT_TRUE(categories.Open());
        EXPECT_EQ(categories.SeekRecord(category), category);
        WORD count = 1;
        CEPROPVAL* read = nullptr;
        EXPECT_NE(categories.ReadRecord(&count, &kCategoryUses, &read), 0u);
        const LocalBlock<CEPROPVAL> block(read);
        return read->wFlags & CEDB_PROPNOTFOUND ? 0 : read->val.iVal;
    }
    EntryToWrite Entry(const wchar_t* subject = L"Subject")
    {
        EntryToWrite entry;
        entry.date = At(kTuesday);
        entry.endTime = At(kTuesday);
        entry.type = L"Note";
        entry.body = L"Body";
        entry.subject = subject;
        return entry;
    }
    // Changes the store as another program would.
    bool Change(const char* sql)
    {
        sqlite3* store = nullptr;
        const bool done = sqlite3_open16(m_store.Path().c_str(), &store) == SQLITE_OK &&
                          sqlite3_exec(store, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
        sqlite3_close(store);
        return done;
    }
    static std::vector<BYTE> Ids(std::vector<DWORD> ids)
    {
        std::vector<DWORD> words{static_cast<DWORD>(ids.size())};
        words.insert(words.end(), ids.begin(), ids.end());
        const auto* bytes = reinterpret_cast<const BYTE*>(words.data());
        return {bytes, bytes + words.size() * sizeof(DWORD)};
    }
    CEOID WriteWith(CEPROPID property, std::vector<BYTE> blob)
    {
        const CEOID id = Write(Entry());
        CEPROPVAL value{};
        value.propid = property;
        value.val.blob = {static_cast<DWORD>(blob.size()), blob.data()};
        EXPECT_EQ(App().Journal().WriteRecord(id, 1, &value), id);
        return id;
    }
};
