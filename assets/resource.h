// Numbers of the program's resources. Read by the resource compiler, too: definitions only.
#pragma once

#define IDI_TOBBIN 1
#define IDI_JUKEBOX 2

// Strips of pictures: the number named is that of the strip of 16 pixels, the next ones are those
// of 20, 24, 32 and 48.
#define IDB_TOOLBAR 110
#define IDB_RANKS 120
#define IDB_FOLDERS 130

#define IDD_ABOUT 300
#define IDC_ABOUT_VERSION 301
#define IDC_ABOUT_OPEN 302
#define IDC_ABOUT_FOLDER 303

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
