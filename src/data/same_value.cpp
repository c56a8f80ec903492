#include "data/same_value.h"

namespace {

template <typename Value> bool IsSame(const Field&, const std::optional<Value>& stored, const Value& value)
{
    return stored == value;
}

bool IsSame(const Field& field, const std::optional<std::wstring>& stored, const std::wstring& text)
{
    const bool isNone = field.placeholder && IsPlaceholder(text, field.placeholder);
    return stored.value_or(L"") == (isNone ? std::wstring() : text);
}

} // namespace

bool IsPlainValue(const Field& field)
{
    return field.id != kPropKind && PropertyType(field.id) != CEVT_BLOB;
}

bool HaveSameValue(const Field& field, const EntryToWrite& a, const EntryToWrite& b)
{
    return std::visit(
        [&]<typename Value>(Value EntryToWrite::*member) {
            if constexpr (std::is_same_v<Value, CEBLOB>)
                return false;
            else
                return a.*member == b.*member;
        },
        field.written);
}

bool IsStoredValue(const Field& field, const JournalEntry& stored, const EntryToWrite& entry)
{
    return std::visit(
        [&]<typename Value>(Value EntryToWrite::*member) {
            if constexpr (std::is_same_v<Value, CEBLOB>)
                return false;
            else
                return IsSame(field, stored.*std::get<InEntry<Value>>(field.read), entry.*member);
        },
        field.written);
}
