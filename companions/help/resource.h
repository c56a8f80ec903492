/* Every identifier of the help viewer's resources and controls. The icon is 101, as every program's. */
#ifndef HELP_RESOURCE_H
#define HELP_RESOURCE_H

#define IDR_HELP_MENU 101
#define IDR_HELP_KEYS 101

/* Controls */
#define IDC_BACK 1000
#define IDC_FORWARD 1001
#define IDC_FIND_LABEL 1002
#define IDC_FIND 1003
#define IDC_STATUS 1004
#define IDC_CONTENTS 1005
#define IDC_TEXT 1006
#define IDC_CONTENTS_LABEL 1007
#define IDC_TEXT_LABEL 1008

/* Commands; the two buttons have their own */
#define CMD_PRINT_TOPIC 200
#define CMD_PRINT_ALL 201
#define CMD_EXIT 202
#define CMD_COPY_TEXT 203
#define CMD_SELECT_ALL 204
#define CMD_FIND_TEXT 205
#define CMD_FIND_NEXT 206
#define CMD_FIND_PREVIOUS 207
#define CMD_ZOOM_IN 208
#define CMD_ZOOM_OUT 209
#define CMD_ZOOM_NORMAL 210
#define CMD_BACK 211
#define CMD_FORWARD 212
#define CMD_FIRST_TOPIC 213
#define CMD_PREVIOUS_TOPIC 214
#define CMD_NEXT_TOPIC 215
#define CMD_NEXT_PANE 216
#define CMD_PREVIOUS_PANE 217
#define CMD_HELP_ON_HELP 218

#endif
