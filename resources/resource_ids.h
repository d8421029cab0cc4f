// Numbers of the resources in Bromvale.exe.
//
// Plain macros, because the resource compiler reads this file as well.
#pragma once

// The program's own icon. Explorer shows the one with the lowest number, so it must stay first.
#define BROMVALE_ICON_PROGRAM 1

// Pictures of the navigation bar, 32 to 96 pixels in steps of 8, in the order of its items. All but those of
// 32 pixels and one of 48 are PNG pictures, which Windows reads from Vista on.
#define BROMVALE_ICON_NAV_FIRST 101
#define BROMVALE_ICON_NAV_COUNT 11

// Pictures of the lists, 16 to 48 pixels in steps of 4, in the order of the image list's keys.
#define BROMVALE_ICON_LIST_FIRST 201
#define BROMVALE_ICON_LIST_COUNT 6
#define BROMVALE_ICON_LIST_TASKBAR 204

// Pictures of the error dialog, as those of the navigation bar: stop, exclamation, question, information.
#define BROMVALE_ICON_ERROR_FIRST 301
#define BROMVALE_ICON_ERROR_COUNT 4

// The manifest has the number that Windows looks for in a program file.
#define BROMVALE_MANIFEST 1
