// Property arrays of any identifiers, types, flags and values: a write keeps exactly what a plain model
// keeps, or answers 0 and leaves the record as it was.
#include <gtest/gtest.h>

#include <map>

#include "mervane/records/record_values.h"
#include "mervane/values/text_codec.h"
#include "records.h"
#include "seeded.h"
#include "support/test_store.h"

namespace {

using fuzz::Chance;

const std::vector<CEPROPID> kKnown = {kDate,     kSubject,     kBody,    kCategories, kType,    kKind,
                                      kPriority, kSensitivity, kEndTime, kDuration,   kContacts};
using Model = std::map<CEPROPID, std::string>; // the bytes of each value

template <typename T> std::string BytesOf(const T& value)
{
    return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

std::string BytesOf(const CEPROPVAL& property)
{
    switch (PropertyType(property.propid)) {
    case CEVT_LPWSTR: return mervane::EncodeText(property.val.lpwstr);
    case CEVT_BLOB: return {reinterpret_cast<const char*>(property.val.blob.lpb), property.val.blob.dwCount};
    case CEVT_FILETIME: return BytesOf(property.val.filetime);
    default: return BytesOf(property.val.uiVal);
    }
}

// One write: the array, and what it points to.
struct Written {
    std::vector<CEPROPVAL> properties;
    std::vector<std::unique_ptr<std::wstring>> texts;
    std::vector<std::unique_ptr<std::string>> blobs;
    bool mayBeDone = true;
};

CEPROPID AnyIdentifier(Chance& chance)
{
    if (!chance.OneIn(40))
        return chance.Pick(kKnown);
    const CEPROPID known = chance.Pick(kKnown);
    return chance.OneIn(2) ? static_cast<CEPROPID>(chance.Number()) : known ^ (1u << chance.Below(32));
}

std::wstring AnyText(Chance& chance)
{
    std::wstring text;
    for (size_t units = chance.Pick(std::vector<size_t>{0, 1, 2, 15, 16, 17, 60, 300}); units; --units)
        text += static_cast<wchar_t>(chance.OneIn(3) ? 1 + chance.Below(0xFFFF) : 32 + chance.Below(90));
    return text;
}

void AddProperty(Written& written, Chance& chance)
{
    CEPROPVAL property{};
    property.propid = AnyIdentifier(chance);
    property.wLenData = static_cast<WORD>(chance.Bits());
    const bool removes = chance.OneIn(6), isSilent = !removes && chance.OneIn(20);
    property.wFlags = static_cast<WORD>((removes ? CEDB_PROPDELETE : 0) | (isSilent ? CEDB_PROPNOTFOUND : 0));
    const bool hasAddress = !chance.OneIn(60);
    switch (PropertyType(property.propid)) {
    case CEVT_LPWSTR:
        written.texts.push_back(std::make_unique<std::wstring>(AnyText(chance)));
        property.val.lpwstr = hasAddress ? written.texts.back()->data() : nullptr;
        break;
    case CEVT_BLOB:
        written.blobs.push_back(std::make_unique<std::string>(chance.Bytes(1 + chance.Below(40))));
        property.val.blob = {static_cast<DWORD>(written.blobs.back()->size()),
                             hasAddress ? reinterpret_cast<BYTE*>(written.blobs.back()->data()) : nullptr};
        break;
    default: {
        const uint64_t number = chance.Number();
        property.val.filetime = TimeOf(number);
    }
    }
    const bool isKnown = std::find(kKnown.begin(), kKnown.end(), property.propid) != kKnown.end();
    const bool points =
        PropertyType(property.propid) == CEVT_LPWSTR || PropertyType(property.propid) == CEVT_BLOB;
    written.mayBeDone = written.mayBeDone && isKnown && (hasAddress || !points || removes || isSilent);
    written.properties.push_back(property);
}

Model After(Model model, const Written& written)
{
    for (const CEPROPVAL& property : written.properties)
        if (property.wFlags & CEDB_PROPDELETE)
            model.erase(property.propid);
        else if (!(property.wFlags & CEDB_PROPNOTFOUND))
            model[property.propid] = BytesOf(property);
    return model;
}

Model Stored(DbJournal& journal, CEOID id)
{
    Model model;
    const Received read(journal, id);
    for (WORD i = 0; read.HasBlock() && i < read.Count(); ++i)
        model[read.At(i).propid] = BytesOf(read.At(i));
    return model;
}

class RecordCases : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(m_journal.Open(nullptr), 1); }

    void TryOne(Chance& chance)
    {
        Written written;
        for (size_t count = 1 + chance.Below(12); count; --count)
            AddProperty(written, chance);
        const bool isNew = m_records.empty() || chance.OneIn(20);
        const CEOID id =
            isNew
                ? 0
                : std::next(m_records.begin(), static_cast<ptrdiff_t>(chance.Below(m_records.size())))->first;
        const CEOID answer = m_journal.WriteRecord(id, static_cast<WORD>(written.properties.size()),
                                                   written.properties.data());
        ASSERT_EQ(answer != 0, written.mayBeDone);
        if (answer)
            m_records[answer] = After(isNew ? Model() : m_records[id], written);
        if (const CEOID looked = answer ? answer : id) {
            ASSERT_EQ(Stored(m_journal, looked), m_records[looked]);
        }
    }

    TestStore m_store;
    DbJournal m_journal;
    std::map<CEOID, Model> m_records;
};

TEST_F(RecordCases, AreKeptAsAModelKeepsThem)
{
    Chance chance(fuzz::Seed());
    CeDBase::BulkScope bulk(m_journal);
    for (size_t i = 0, cases = fuzz::CasesOr(2000); i < cases && !HasFailure(); ++i) {
        SCOPED_TRACE("case " + std::to_string(i) + " of seed " + std::to_string(fuzz::Seed()));
        TryOne(chance);
    }
    EXPECT_EQ(bulk.Commit(), 1);
    for (const auto& [id, model] : m_records)
        ASSERT_EQ(Stored(m_journal, id), model) << id;
}

} // namespace
