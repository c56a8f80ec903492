// The three databases of the store, and the properties of the two that programs share.
#pragma once

#include "mervane/values/ce_types.h"

namespace mervane {
enum class TableId { Journal, Categories, Contacts };
} // namespace mervane

// Database keys: the name property of the two shared databases.
constexpr CEPROPID kCategoriesKey = 0x4001001F;
constexpr CEPROPID kContactsKey = 0x4013001F;

constexpr CEPROPID kCategoryUses = 0x43EF0002;   // the use count, as far as 16 bits hold it (saturates)
constexpr CEPROPID kCategoryHidden = 0x43F00012; // non-zero: hidden
constexpr int kCategoryNameSize = 60;            // with the terminator

// A contact's properties beside the File As text, all of them texts. E-mails and phones are one on a line,
// lines end with CR LF.
constexpr CEPROPID kContactCompany = 0x4006001F;
constexpr CEPROPID kContactFirstName = 0x4020001F;
constexpr CEPROPID kContactLastName = 0x4021001F;
constexpr CEPROPID kContactJobTitle = 0x4022001F;
constexpr CEPROPID kContactEmails = 0x4023001F;
constexpr CEPROPID kContactPhones = 0x4024001F;
constexpr CEPROPID kContactAddress = 0x4025001F;
constexpr CEPROPID kContactBirthday = 0x4026001F;
constexpr CEPROPID kContactNote = 0x4027001F;
constexpr CEPROPID kContactExtra = 0x4028001F; // lines of a vCard that the others have no place for
