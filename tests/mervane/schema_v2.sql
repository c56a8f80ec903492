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
, first_name TEXT, last_name TEXT, job_title TEXT, emails TEXT, phones TEXT, address TEXT, birthday TEXT, note TEXT, vcard_extra TEXT);
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
CREATE INDEX contacts_names ON contacts(file_as, company);
CREATE INDEX journal_numbers ON journal(date, end_time, duration, kind, priority, sensitivity);
