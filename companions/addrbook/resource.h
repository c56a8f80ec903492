/* Every identifier of the address book's resources and controls. The icon is 101, as every program's. */
#ifndef ADDRBOOK_RESOURCE_H
#define ADDRBOOK_RESOURCE_H

#define IDR_ADDRESS_MENU 101
#define IDR_ADDRESS_KEYS 101
#define IDD_CONTACT 102
#define IDD_TRANSFER 103
#define IDD_IMPORT_QUESTION 104

/* Main window: controls */
#define IDC_FIND_LABEL 1000
#define IDC_FIND 1001
#define IDC_COUNT 1002
#define IDC_CONTACTS 1003

/* Main window: commands */
#define CMD_NEW_CONTACT 200
#define CMD_EDIT_CONTACT 201
#define CMD_DELETE_CONTACT 202
#define CMD_SELECT_ALL 203
#define CMD_FIND_CONTACT 204
#define CMD_IMPORT 205
#define CMD_EXPORT_CARDS 206
#define CMD_CLOSE 207
#define CMD_SHOW_HELP 208

/* vcard::Contact: one control for each field, in the order of the fields */
#define IDC_FILE_AS 1100
#define IDC_FIRST_NAME 1101
#define IDC_LAST_NAME 1102
#define IDC_COMPANY 1103
#define IDC_JOB_TITLE 1104
#define IDC_EMAILS 1105
#define IDC_PHONES 1106
#define IDC_ADDRESS 1107
#define IDC_BIRTHDAY 1108
#define IDC_NOTE 1109
/* The labels of those that move */
#define IDC_PHONES_LABEL 1110
#define IDC_ADDRESS_LABEL 1111
#define IDC_NOTE_LABEL 1112

/* Import and export */
#define IDC_TRANSFER_TEXT 1200
#define IDC_TRANSFER_BAR 1201

/* The question about a card: OK is Skip */
#define IDC_CARD_NAME 1300
#define IDC_CARD_CHANGES 1301
#define IDC_CARD_LACKS 1302
#define IDC_CARD_FOR_ALL 1303
#define IDC_CARD_UPDATE 1304
#define IDC_CARD_ADD 1305

#endif
