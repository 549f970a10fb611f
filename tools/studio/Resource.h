/* The numbers of what stands in the resources, for the program and for Studio.rc. */
#pragma once

#define IDR_MAIN 100 /* menu and accelerators */
#define IDI_STUDIO 101

/* Windows within the main one. Tests and tools of the system find them by these. */
#define IDW_TOOLBAR 200
#define IDW_TABS 201
#define IDW_MESSAGE 202
#define IDW_TREE 203
#define IDW_ATTRIBUTES 204
#define IDW_CANVAS 205
#define IDW_FINDINGS 206
#define IDW_RUN 207
#define IDW_STATUS 208
#define IDW_SPLIT_LEFT 209
#define IDW_SPLIT_RIGHT 210
#define IDW_SPLIT_TREE 211
#define IDW_SPLIT_FINDINGS 212

/* Commands. The text of a command's hint has the number of the command. */
#define IDM_OPEN 1000
#define IDM_RELOAD 1001
#define IDM_CLOSE 1002
#define IDM_EXIT 1003
#define IDM_RECENT_FIRST 1010
#define IDM_RECENT_LAST 1019
#define IDM_RECENT_NONE 1020
#define IDM_TAB_NEXT 1030
#define IDM_TAB_BACK 1031
#define IDM_FIT 1100
#define IDM_FILL 1101
#define IDM_ACTUAL 1102
#define IDM_ZOOM_IN 1103
#define IDM_ZOOM_OUT 1104
#define IDM_SMOOTH 1110
#define IDM_UPDATES 1111
#define IDM_GROUND_LIGHT 1120
#define IDM_GROUND_DARK 1121
#define IDM_GROUND_CHESS 1122
#define IDM_SHOW_TREE 1130
#define IDM_SHOW_RUN 1131
#define IDM_SHOW_FINDINGS 1132
#define IDM_NEXT_PANE 1140
#define IDM_BACK_PANE 1141
#define IDM_SELECT_NONE 1150
#define IDM_SELECT_PARENT 1151
#define IDM_FINDING_NEXT 1152
#define IDM_ABOUT 1200

/* Texts. */
#define IDS_TITLE 2000
#define IDS_EMPTY_HINT 2001
#define IDS_FILTER_DRAWINGS 2002
#define IDS_FILTER_ALL 2003
#define IDS_OPEN_TITLE 2004
#define IDS_CANNOT_OPEN 2005
#define IDS_CANNOT_OPEN_AT 2006
#define IDS_LAST_GOOD 2008
#define IDS_ATTR_NAME 2010
#define IDS_ATTR_VALUE 2011
#define IDS_ATTR_LINE 2012
#define IDS_FINDING_LINE 2013
#define IDS_FINDING_KIND 2014
#define IDS_FINDING_TEXT 2015
#define IDS_ERROR 2016
#define IDS_WARNING 2017
#define IDS_STATUS_READY 2020
#define IDS_STATUS_ZOOM 2021
#define IDS_STATUS_SIZE 2022
#define IDS_STATUS_POINTER 2023
#define IDS_STATUS_CLEAN 2024
#define IDS_STATUS_FINDINGS 2025
#define IDS_STATUS_ONE_FINDING 2026
#define IDS_UPDATE_TIME 2030
#define IDS_ABOUT_TEXT 2040
#define IDS_RECENT_NONE 2041
#define IDS_TEXT_ROW 2042
#define IDS_OPTION_UNKNOWN 2050
#define IDS_OPTION_PORT_MISSING 2051
#define IDS_OPTION_PORT_WRONG 2052
#define IDS_OPTION_TWICE 2053
#define IDS_OPTION_USAGE 2054
#define IDS_RUN_EMPTY 2060
