/* Every identifier of the program's resources and controls, grouped by window. The numbers are given. */
#ifndef RES_RESOURCE_H
#define RES_RESOURCE_H

/* Resources */
#define IDR_MAIN_MENU 101
#define IDR_ACCELERATORS 101
#define IDI_JOURNAL 101
#define IDD_ABOUT 104
#define IDD_ENTRY_EDITOR 139
#define IDB_EDITOR_BAR 201    /* 12 px wide images */
#define IDB_LIST_IMAGES 210   /* 12 px: priority low, normal, high, blank */
#define IDB_HEADER_IMAGES 211 /* 12 px: none, ascending, descending, priority, priority sorted */
#define IDB_BANDS 212         /* 16 px */
#define IDB_FILTER 213        /* 16 px: button image 2 */
#define IDB_NEW_ENTRY 214     /* 16 px: button image 0 */
#define IDB_EDIT_ENTRY 215    /* 16 px: button image 1 */

/* Strings */
#define IDS_BODY_LIMIT 61218
#define IDS_SUBJECTS_LIMIT 61219
#define IDS_FIELD_DATE 61300
#define IDS_FIELD_SUBJECT 61301
#define IDS_FIELD_TYPE 61302
#define IDS_FIELD_BODY 61303
#define IDS_FIELD_CATEGORIES 61304
#define IDS_FIELD_START_TIME 61305
#define IDS_FIELD_END_TIME 61306
#define IDS_FIELD_DURATION 61307
#define IDS_FIELD_CONTACTS 61308
#define IDS_FIELD_SENSITIVITY 61309
#define IDS_FIELD_PRIORITY 61310

/* Main window: controls */
#define IDC_BANDS 102
#define IDC_MENU_BAND 103
#define IDC_BUTTON_BAND 104
#define IDC_ENTRY_LIST 105 /* free choice; notifications are told apart by window */

/* Main window: commands */
#define CMD_NEW_ENTRY 100
#define CMD_EDIT_ENTRY 101
#define CMD_DELETE_ENTRY 102
#define CMD_CATEGORIES_LIST 103
#define CMD_SUBJECTS_LIST 104
#define CMD_CLEAR_CATEGORIES 105
#define CMD_CALENDAR 110
#define CMD_CONTACTS 111
#define CMD_INBOX 112
#define CMD_TASKS 113
#define CMD_FIND 115
#define CMD_OPTIONS 117
#define CMD_FILTER_CATEGORIES 118
#define CMD_FILTER_MONTHS 120
#define CMD_CLEAR_FILTER 121
#define CMD_EXPORT 122
#define CMD_CUSTOMIZE_COLUMNS 124
#define CMD_MY_HANDHELD 125
#define CMD_HELP_CONTENTS 127
#define CMD_QUIT 140
#define CMD_CUT 141
#define CMD_PASTE 142
#define CMD_COPY 143
#define CMD_ABOUT 160

/* Entry editor (template 139): controls */
#define IDC_START_DATE 1000
#define IDC_START_TIME 1001
#define IDC_SUBJECT 1002
#define IDC_TYPE 1003
#define IDC_DURATION 1004
#define IDC_EDITOR_BAR 1005
#define IDC_BODY 1006
#define IDC_CATEGORIES_LINE 1023
#define IDC_CATEGORIES_LABEL 1024 /* also the Save command: a static sends none of its own */
#define IDC_CATEGORY_LIST 111
#define IDC_CONTACT_LIST 112

/* Entry editor: commands */
#define CMD_PRIORITY 1020
#define CMD_PRIORITY_LOW 1021
#define CMD_PRIORITY_HIGH 1022
#define CMD_PRIORITY_NORMAL 1023
#define CMD_SAVE 1024
#define CMD_SENSITIVITY 1030
#define CMD_SENSITIVITY_NORMAL 1031
#define CMD_SENSITIVITY_PERSONAL 1032
#define CMD_SENSITIVITY_PRIVATE 1033
#define CMD_SENSITIVITY_CONFIDENTIAL 1034
#define CMD_ZOOM 1040
#define CMD_ZOOM_50 1041
#define CMD_ZOOM_100 1042
#define CMD_ZOOM_150 1043
#define CMD_ZOOM_200 1044
#define CMD_TIME_STAMP 1050
#define CMD_ASSIGN_CATEGORIES 1051
#define CMD_EDIT_ENTRY_VIEW 1052
#define CMD_EDIT_CATEGORIES 1053
#define CMD_TIMER 1054
#define CMD_ASSIGN_CONTACTS 1055

/* Edit commands of the accelerator table: deliberate no-ops in the main window */
#define CMD_EDIT_COPY 57634
#define CMD_EDIT_CUT 57635
#define CMD_EDIT_PASTE 57637
#define CMD_EDIT_UNDO 57643

/* About (template 104): controls */
#define IDC_ABOUT_PRODUCT 1100
#define IDC_ABOUT_PLATFORM 1101
#define IDC_ABOUT_BUILD 1102 /* empty in the template: the program writes the build text */
#define IDC_ABOUT_NOTICE 1103

/* The bitmaps at other resolutions: the number of the bitmap plus one of these, images in the same order,
   larger in proportion, the same mask colour. */
#define IDB_AT_192_DPI 1000
#define IDB_AT_120_DPI 2000
#define IDB_AT_144_DPI 3000
#define IDB_AT_240_DPI 4000
#define IDB_AT_288_DPI 5000
/* Cut, copy, paste, delete and find; at 96 dpi the system has them. */
#define IDB_STANDARD 216

/* Quick Subjects (template 106) */
#define IDD_QUICK_SUBJECTS 106
#define IDC_QUICK_SUBJECT 1402 /* the text being worked on */
#define IDC_QUICK_SUBJECT_LIST 1029
#define IDC_ADD_SUBJECT 1026
#define IDC_MODIFY_SUBJECT 1027
#define IDC_DELETE_SUBJECT 1031

/* Customize Columns (template 137; 138 is the same for an upright screen and is not loaded) */
#define IDD_CUSTOMIZE_COLUMNS 137
#define IDD_CUSTOMIZE_COLUMNS_UPRIGHT 138
#define IDC_DEFAULT_COLUMNS 123
#define IDC_ADD_FIELD 1170
#define IDC_REMOVE_FIELD 1171
#define IDC_FIELD_UP 1172
#define IDC_FIELD_DOWN 1173
#define IDC_RESET_FIELDS 1174
#define IDC_SHOWN_FIELDS 1175
#define IDC_AVAILABLE_FIELDS 1177

/* The filter's drop-down menu: the categories, from this one on */
#define CMD_FIRST_CATEGORY 150

/* Filter (template 107) */
#define IDD_FILTER 107
#define IDC_FILTER_BY_MONTHS 1011
#define IDC_FILTER_BY_CATEGORIES 1012
#define IDC_RANGE_START_LABEL 1014
#define IDC_RANGE_END_LABEL 1015
#define IDC_RANGE_FRAME 1016
#define IDC_FILTER_ON_RANGE 1201
#define IDC_CLEAR_SELECTION 1408
#define IDC_RANGE_START 114
#define IDC_RANGE_END 115
#define IDC_MONTH_LIST 116
#define IDC_FILTER_CATEGORY_LIST 117 /* free choice */

/* Options (template 103) */
#define IDD_OPTIONS 103
#define IDC_CONFIRM_DELETE 1010
#define IDC_OPEN_ON_FIND 1011
#define IDC_USE_INPUT_PANEL 1012
#define IDC_SHOW_CATEGORIES 1014
#define IDC_CLEAR_PASSWORD 1017
#define IDC_SET_PASSWORD 1018
#define IDC_PASSWORD_STATUS 1019
#define IDC_REMEMBER_FILTER 1202

/* Password prompt (template 105) */
#define IDD_PASSWORD 105
#define IDC_PASSWORD 1018

/* Find (template 102) */
#define IDD_FIND 102
#define IDC_FIND_DATE 1106 /* Search by */
#define IDC_FIND_SUBJECT 1107
#define IDC_FIND_ENTRY 1108
#define IDC_FIND_FROM_TOP 1047 /* Search from */
#define IDC_FIND_FROM_CURRENT 1049
#define IDC_FIND_MATCH_CASE 1407
#define IDC_FIND_TEXT 1105
#define IDC_FIND_DAY 1109 /* from here on free choices; the date picker, which the program makes */
#define IDC_FIND_TEXT_FRAME 1110
#define IDC_FIND_CASE_FRAME 1111

/* Find Results (template 142; 143 for a portrait screen) */
#define IDD_FIND_RESULTS 142
#define IDD_FIND_RESULTS_PORTRAIT 143
#define IDC_FOUND_LIST 1041
#define IDC_FOUND_COUNT 1042
#define IDC_FOUND_HINT 1043 /* free choice */

/* Export (the templates' numbers are a free choice) */
#define IDD_EXPORT_WIDE 144
#define IDD_EXPORT_TALL 145
#define IDC_EXPORT_ALL 1034
#define IDC_EXPORT_SELECTED 1035
#define IDC_EXPORT_FILTERED 1036
#define IDC_EXPORT_FIELDS 1037
#define IDC_EXPORT_HEADER 1038
#define IDC_EXPORT_FORMAT 1039
#define IDC_EXPORT_PROGRESS 1040

/* Edit Categories, and the name of one (free choices) */
#define IDD_EDIT_CATEGORIES 146
#define IDC_CATEGORIES 1000
#define IDC_ADD_CATEGORY 1001
#define IDC_RENAME_CATEGORY 1002
#define IDC_DELETE_CATEGORY 1003
#define IDC_HIDE_CATEGORY 1004
#define IDD_CATEGORY_NAME 147
#define IDC_CATEGORY_NAME 1002

#endif
