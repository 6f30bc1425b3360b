#pragma once
// The root window's menu items and the routine each runs. Every menu group
// keeps its own routines in its own file and lists them in menu_table.cpp.
#include <vector>

namespace zendrite {

// A routine gets the item it was chosen by, so that one routine can serve a family of items.
using MENU_ROUTINE = void (*)(int item);

struct MENU_COMMAND_TYPE {
    int item;
    MENU_ROUTINE routine;
};

// The routine of `item`, or nullptr when the item has none yet.
MENU_ROUTINE Menu_Routine(int item);

// The whole table, item by item (for tests).
const std::vector<MENU_COMMAND_TYPE>& Menu_Table();

}  // namespace zendrite
