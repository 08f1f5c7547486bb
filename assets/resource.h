// Numbers of the program's resources. Read by the resource compiler, too: definitions only.
#pragma once

#define IDI_TOBBIN 1
#define IDI_JUKEBOX 2

// Strips of pictures: the number named is that of the strip of 16 pixels, the next ones are those
// of 20, 24, 32 and 48.
#define IDB_TOOLBAR 110
#define IDB_RANKS 120
#define IDB_FOLDERS 130

#define IDR_FRAME_MENU 200
#define IDR_FOLDER_POPUP 201
#define IDR_SONG_POPUP 202
#define IDR_ACCELERATORS 203

#define IDD_ABOUT 300
#define IDC_ABOUT_VERSION 301

#define IDD_TIP 310
#define IDC_TIP_TEXT 311
#define IDC_NEXT_TIP 312
#define IDC_TIPS_AT_STARTUP 313

#define IDD_PICTURE 320
#define IDC_PICTURE_BROWSE 321
#define IDC_PICTURE_TILE 322
#define IDC_PICTURE_SHOW 323
#define IDC_PICTURE_PATH 324
#define IDC_PICTURE_PREVIEW 325

#define IDD_FIND 330
#define IDC_FIND_TEXT1 331
#define IDC_FIND_COMMAND1 332

// Places of the menus in the menu bar, from 0.
#define MENU_FILE 0
#define MENU_WINDOW 4

// The frame's commands. FrameCommands.h has the same numbers.
#define IDM_NEW 1001
#define IDM_OPEN 1002
#define IDM_CLOSE 1003
#define IDM_SAVE 1004
#define IDM_SAVE_AS 1005
#define IDM_EXIT 1006
#define IDM_CUT 1101
#define IDM_COPY 1102
#define IDM_PASTE 1103
#define IDM_DELETE 1104
#define IDM_FIND 1105
#define IDM_ADD_FOLDER_TO_ROOT 1106
#define IDM_ADD_FOLDER_TO_SELECTED 1107
#define IDM_UNDO 1108
#define IDM_REDO 1109
#define IDM_FIND_NEXT 1110
#define IDM_SORT_LIST 1111
#define IDM_NEW_SONGS_NORMAL 1201
#define IDM_NEW_SONGS_COMPUTER 1202
#define IDM_PLAY_SELECTED 1203
#define IDM_PLAY_ALL 1204
#define IDM_NEXT_TRACK 1205
#define IDM_PREVIOUS_TRACK 1206
#define IDM_PAUSE 1207
#define IDM_PLAY 1208
#define IDM_STOP 1209
#define IDM_STOP_AFTER_TRACK 1210
#define IDM_CLOSE_PLAYER 1211
#define IDM_CHANGE_PICTURE 1301
#define IDM_NO_PICTURE 1302
#define IDM_TOGGLE_TILE 1303
#define IDM_NEXT_PICTURE 1304
#define IDM_PREVIOUS_PICTURE 1305
#define IDM_CASCADE 1401
#define IDM_TILE 1402
#define IDM_ARRANGE_ICONS 1403
#define IDM_HELP 1501
#define IDM_TIP 1502
#define IDM_ABOUT 1503

// Recent jukebox k (1 to 3) has the number IDM_RECENT + k; its separator is IDM_RECENT itself.
#define IDM_RECENT 1600

// Entry k (from 1) of a pop-up menu has the number of its menu + k.
#define IDM_FOLDER_POPUP 2000
#define IDM_SONG_POPUP 2100

// Button k (from 1) of the toolbar has the number IDM_TOOLBAR + k.
#define IDM_TOOLBAR 2200

// The window list at the end of the Window menu.
#define IDM_FIRST_CHILD 40000
