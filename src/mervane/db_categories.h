// DbCategories: the master list of categories, which entries refer to. A category has a name
// (kCategoriesKey, unique without regard to case, at most 59 characters), a use count and a hidden flag.
#pragma once

#include <span>
#include <string>

#include "mervane/ce_dbase.h"
#include "mervane/z_stack.h"

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

    // The master list. Refused are an empty name, one of more than 59 characters, one that another category
    // has, and any change of a category that is not there. DeleteRecord takes one away: the entries keep
    // their reference, which is simply not named any more.
    [[nodiscard]] CEOID Add(const std::wstring& name); // the new one's identifier, 0 on failure
    [[nodiscard]] int Rename(CEOID id, const std::wstring& name);
    [[nodiscard]] int SetHidden(CEOID id, bool hidden);

    // Makes an empty list with check boxes, in columns that go on to the right: a child of parent, visible, a
    // tab stop, with a sunken edge, of one selected item. rectangle: in the parent's client area. Null on
    // failure. The caller owns the window and may not change its view. What the list tells of an item that
    // changes has the item's whole state: a box is turned only where the old and the new state image differ,
    // not where an item merely gets the focus.
    HWND CreateListView(HINSTANCE instance, HWND parent, const RECT& rectangle, int id);
    // Empties the list and fills it with the categories that are not hidden, in the order of their names,
    // unchecked (state image 1), each item's parameter being its category's identifier. The focus stays on
    // its category, or near it when that is gone, and is on the first item when there was none. 0 when the
    // categories are not open or the list is no window; a list that needs no fill is a success.
    int UpdateListView(HWND list);

    // Makes the stack's blob: a count and the identifiers, 32 bits each, little-endian. blob->lpb is a
    // LocalAlloc block that the caller frees. An empty stack gives {0, null}.
    int SetBlobFromStack(const ZStack& stack, CEBLOB* blob);
    // Empties the stack and fills it with the blob's categories, each carrying the low 16 bits of flags. 0
    // for a blob of a wrong shape, whose valid leading identifiers are taken all the same.
    int SetStackFromBlob(ZStack* stack, const CEBLOB& blob, DWORD flags);
    // Whether SetStackFromBlob would give one of the wanted categories, which ascend: for many blobs in a
    // row. No database need be open.
    [[nodiscard]] static bool HoldsAny(const CEBLOB& blob, std::span<const CEOID> wanted);
};
