// Identifiers of the small program that the harness is tried on.
#pragma once

#define SAMPLE_MENU 10
#define SAMPLE_POPUP 11
#define SAMPLE_DIALOG 12

#define SAMPLE_CMD_BOX 100
#define SAMPLE_CMD_DIALOG 101
#define SAMPLE_CMD_CHECKED 102
#define SAMPLE_CMD_GREY 103
#define SAMPLE_CMD_CRASH 104

#define SAMPLE_LIST 200
#define SAMPLE_BAR 201

#define SAMPLE_EDIT 300
#define SAMPLE_COMBO 301
#define SAMPLE_CHECK 302
#define SAMPLE_DATE 303
#define SAMPLE_ECHO 304
