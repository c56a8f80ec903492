// The store's schema: the one place for its tables. Making a store, bringing an older one up to date and
// knowing its own tables again all go by this text.
#pragma once

#include <cstdint>
#include <iterator>

namespace mervane {

// What each version adds to the one before it: CREATE TABLE, ALTER TABLE ... ADD COLUMN, CREATE INDEX. An
// older version's text is never changed.
inline constexpr const char* kSchemaSteps[] = {
    // 1:
    R"sql(
CREATE TABLE journal(
  oid INTEGER PRIMARY KEY AUTOINCREMENT,
  date INTEGER,
  subject TEXT,
  body TEXT,
  categories BLOB,
  type TEXT,
  kind INTEGER,
  priority INTEGER,
  sensitivity INTEGER,
  end_time INTEGER,
  duration INTEGER,
  contacts BLOB
);
CREATE INDEX journal_numbers ON journal(date, end_time, duration, kind, priority, sensitivity);
CREATE TABLE categories(
  oid INTEGER PRIMARY KEY AUTOINCREMENT,
  name TEXT NOT NULL COLLATE NOCASE UNIQUE,
  uses INTEGER DEFAULT 0,
  hidden INTEGER DEFAULT 0
);
CREATE TABLE contacts(
  oid INTEGER PRIMARY KEY AUTOINCREMENT,
  file_as TEXT,
  company TEXT
);
)sql",
    // 2: more of a contact, and an index with what lists of contacts show, so that they are read without
    // notes
    // and pictures.
    R"sql(
ALTER TABLE contacts ADD COLUMN first_name TEXT;
ALTER TABLE contacts ADD COLUMN last_name TEXT;
ALTER TABLE contacts ADD COLUMN job_title TEXT;
ALTER TABLE contacts ADD COLUMN emails TEXT;
ALTER TABLE contacts ADD COLUMN phones TEXT;
ALTER TABLE contacts ADD COLUMN address TEXT;
ALTER TABLE contacts ADD COLUMN birthday TEXT;
ALTER TABLE contacts ADD COLUMN note TEXT;
ALTER TABLE contacts ADD COLUMN vcard_extra TEXT;
CREATE INDEX contacts_names ON contacts(file_as, company);
)sql",
};

constexpr int64_t kSchemaVersion = std::size(kSchemaSteps);
// The oldest version that a program must know to use the store: raised only where such a program would damage
// it. One that does not know added columns leaves them as they are.
constexpr int64_t kOldestProgram = 1;

} // namespace mervane
