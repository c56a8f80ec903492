/* Resources of the tests of windows. */
#ifndef UI_TEST_RESOURCE_H
#define UI_TEST_RESOURCE_H

#define TEST_MENU 9101
#define TEST_DIALOG 9201
#define TEST_INNER_DIALOG 9202
#define TEST_BARE_DIALOG 9203
#define TEST_STRIP 9301
#define TEST_STRIP_2X 10301

#define CMD_ONE 201
#define CMD_TWO 202
#define CMD_GREY 203
#define CMD_INNER 204
#define CMD_INNERMOST 205
#define CMD_LAST_OF_SECOND 206
#define CMD_FOURTH 207
#define IDS_MENU_TIP 208

#define ITEM_EDIT 1001
#define ITEM_CHECK 1002
#define ITEM_HIDDEN 1003
#define ITEM_MISSING 1999

#endif
