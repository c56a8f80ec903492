// DbCategories: the master list of categories, which entries refer to. A category has a name
// (kCategoriesKey, unique without regard to case, at most 59 characters), a use count and a hidden flag.
#pragma once

#include "mervane/ce_dbase.h"
#include "mervane/z_stack.h"

constexpr CEPROPID kCategoryUses = 0x43EF0002;   // the use count, as far as 16 bits hold it (saturates)
constexpr CEPROPID kCategoryHidden = 0x43F00012; // non-zero: hidden
constexpr int kCategoryNameSize = 60;            // with the terminator

class DbCategories : public CeDBase {
  public:
    DbCategories();

    // key is kCategoriesKey; owner, which may be null, gets the change notifications.
    [[nodiscard]] int Open(CEPROPID key = kCategoriesKey, HWND owner = nullptr);

    int IncUse(CEOID id);
    int DecUse(CEOID id); // stops at 0
    [[nodiscard]] int IsHidden(CEOID id);
    [[nodiscard]] int Exists(CEOID id);
    // How many categories are not hidden.
    [[nodiscard]] int GetNumActiveRecords();
    // Sets all use counts to 0.
    int Reset();

    // Makes the stack's blob: a count and the identifiers, 32 bits each, little-endian. blob->lpb is a
    // LocalAlloc block that the caller frees. An empty stack gives {0, null}.
    int SetBlobFromStack(const ZStack& stack, CEBLOB* blob);
    // Empties the stack and fills it with the blob's categories, each carrying the low 16 bits of flags. 0
    // for a blob of a wrong shape, whose valid leading identifiers are taken all the same.
    int SetStackFromBlob(ZStack* stack, const CEBLOB& blob, DWORD flags);
};
