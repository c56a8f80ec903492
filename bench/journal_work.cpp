#include "journal_work.h"

#include "stores.h"

namespace bench {

namespace {

void ReadAllProperties(CeDBase& journal)
{
    WORD count = 0;
    CEPROPVAL* properties = nullptr;
    if (!journal.ReadRecord(&count, nullptr, &properties))
        Fail("a record cannot be read");
    LocalFree(properties);
}

} // namespace

void ReadPage(CeDBase& journal, uint32_t row)
{
    const CeDBase::ReadScope scope(journal);
    int more = journal.SeekRow(row) != 0;
    uint32_t rows = 0;
    for (; rows < kPageRows && more; ++rows) {
        ReadAllProperties(journal);
        more = journal.SeekNextRecord();
    }
    if (rows != kPageRows)
        Fail("rows of a page are missing");
}

uint32_t WalkAll(CeDBase& journal)
{
    const CeDBase::ReadScope scope(journal);
    uint32_t records = 0;
    for (int more = journal.SeekFirstRecord(); more; more = journal.SeekNextRecord()) {
        ReadAllProperties(journal);
        ++records;
    }
    return records;
}

void SortBy(CeDBase& journal, CEPROPID property, DWORD flags)
{
    journal.SetSort({property, flags}, 1);
    const CeDBase::ReadScope scope(journal);
    const uint32_t rows = journal.RecordCount();
    if (!rows || !journal.IdOfRow(0) || !journal.IdOfRow(rows - 1))
        Fail("the order is not complete");
}

} // namespace bench
