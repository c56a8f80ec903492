// The check boxes of a list view whose items have them.
#pragma once

#include <windows.h>
#include <commctrl.h>

int ItemCount(HWND list);
LPARAM ItemParameter(HWND list, int item);
// The item with the parameter; -1 when there is none.
int FindItem(HWND list, LPARAM parameter);

void CheckItem(HWND list, int item, bool checked);
void UncheckAll(HWND list);

// What an LVN_ITEMCHANGING or LVN_ITEMCHANGED does to the item's box. A list that is filled or walked through
// turns none.
enum class BoxChange { None, Checked, Unchecked };
BoxChange BoxChangeOf(const NMLISTVIEW& change);

// NM_CLICK: a tap on an item's text turns its box; a tap on the box itself is left to the list.
void TurnTappedBox(HWND list, const NMITEMACTIVATE& tap);

// Brings the columns of a report from one resolution to another.
void RescaleColumns(HWND list, int before, int now);

// The width of the columns of a list with items. It lasts: a control that has not drawn its items yet may
// settle on another width when it does.
void SetItemWidth(HWND list, int width);
