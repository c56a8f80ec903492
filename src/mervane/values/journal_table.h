// The journal's properties: the one place for their identifiers and for the columns that the store keeps them
// in.
#pragma once

#include "mervane/values/property_map.h"

// Also the start of the activity; local wall-clock time.
constexpr CEPROPID kPropDate = MakePropertyId(101, CEVT_FILETIME);
constexpr CEPROPID kPropSubject = MakePropertyId(102, CEVT_LPWSTR);
constexpr CEPROPID kPropBody = MakePropertyId(103, CEVT_LPWSTR); // lines separated by CR LF
constexpr CEPROPID kPropCategories = MakePropertyId(104, CEVT_BLOB);
constexpr CEPROPID kPropType = MakePropertyId(105, CEVT_LPWSTR);
constexpr CEPROPID kPropKind = MakePropertyId(106, CEVT_UI2); // always written as 3
constexpr CEPROPID kPropPriority = MakePropertyId(107, CEVT_I2);
constexpr CEPROPID kPropSensitivity = MakePropertyId(108, CEVT_I2);
constexpr CEPROPID kPropEndTime = MakePropertyId(109, CEVT_FILETIME);
constexpr CEPROPID kPropDuration = MakePropertyId(110, CEVT_FILETIME); // the count of the length itself
constexpr CEPROPID kPropContacts = MakePropertyId(111, CEVT_BLOB);

namespace mervane {

// Numbers without a gap, in ascending order.
inline constexpr Property kJournalProperties[] = {
    {kPropDate, "date"},         {kPropSubject, "subject"},
    {kPropBody, "body"},         {kPropCategories, "categories"},
    {kPropType, "type"},         {kPropKind, "kind"},
    {kPropPriority, "priority"}, {kPropSensitivity, "sensitivity"},
    {kPropEndTime, "end_time"},  {kPropDuration, "duration"},
    {kPropContacts, "contacts"},
};

} // namespace mervane
