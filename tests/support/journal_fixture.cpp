#include "support/journal_fixture.h"

TimeCount Instant(WORD year, WORD month, WORD day, WORD hour, WORD minute)
{
    TimeCount instant;
    EXPECT_TRUE(instant.FromSystemTime({year, month, 0, day, hour, minute, 0, 0}));
    return instant;
}

CEPROPVAL& TestRecord::Add(CEPROPID id)
{
    CEPROPVAL property{};
    property.propid = id;
    m_properties.push_back(property);
    return m_properties.back();
}

TestRecord& TestRecord::Time(CEPROPID id, TimeCount time)
{
    Add(id).val.filetime = time.ToFileTime();
    return *this;
}

TestRecord& TestRecord::Text(CEPROPID id, std::wstring text)
{
    m_texts.push_back(std::make_unique<std::wstring>(std::move(text)));
    Add(id).val.lpwstr = m_texts.back()->data();
    return *this;
}

TestRecord& TestRecord::Short(CEPROPID id, short value)
{
    Add(id).val.iVal = value;
    return *this;
}

TestRecord& TestRecord::Blob(CEPROPID id, std::vector<DWORD> words)
{
    m_blobs.push_back(std::make_unique<std::vector<DWORD>>(std::move(words)));
    std::vector<DWORD>& content = *m_blobs.back();
    Add(id).val.blob = {static_cast<DWORD>(content.size() * sizeof(DWORD)),
                        reinterpret_cast<BYTE*>(content.data())};
    return *this;
}

TestRecord& TestRecord::Missing(CEPROPID id)
{
    Add(id).wFlags = CEDB_PROPNOTFOUND;
    return *this;
}

CEOID TestRecord::Write() const
{
    const CEOID id = Own().Journal().WriteRecord(0, Count(), Properties());
    EXPECT_NE(id, 0u);
    return id;
}

CEOID AddEntry(int minute, const std::wstring& subject)
{
    TimeCount date = Instant(2000, 1, 1);
    date.AddMinutes(minute);
    return TestRecord().Time(kPropDate, date).Text(kPropSubject, subject).Write();
}

std::vector<CEOID> AddEntries(int count)
{
    std::vector<CEOID> ids;
    CeDBase::BulkScope bulk(Own().Journal());
    for (int i = 0; i < count; ++i)
        ids.push_back(AddEntry(i, L"entry " + std::to_wstring(i)));
    EXPECT_EQ(bulk.Commit(), 1);
    return ids;
}

JournalTest::JournalTest()
{
    Own().Filter() = {};
    EXPECT_NE(Own().Journal().Open(nullptr), 0);
}

JournalTest::~JournalTest()
{
    Own().Journal().Close();
    Own().Filter() = {};
    // The log goes with the last connection: nobody else has the store open still.
    EXPECT_EQ(GetFileAttributesW((m_store.Path() + L"-wal").c_str()), INVALID_FILE_ATTRIBUTES);
}
