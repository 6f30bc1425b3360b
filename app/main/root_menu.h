#pragma once
// Menu bar 30001 of the root window, its toolbar, and the menu states of the modes.
#include <utility>
#include <vector>

namespace zendrite {

inline constexpr int kRootMenu = 30001;
// File, "Open folder of patterns...": the first number after the original table.
inline constexpr int kOpenFolderItem = 40230;
inline constexpr int kOpenStructureItem = 40231;
inline constexpr int kRecentItems[5] = {40038, 40067, 40068, 40069, 40070};

void Define_Root_Menu();     // registers the template and the toolbar
void Show_Root_Toolbar();
// menu_hints.cpp: the status-bar line of every item and the keys of the everyday ones
const std::vector<std::pair<int, const char*>>& Menu_Hints();
const std::vector<std::pair<int, const char*>>& Menu_Keys();
void Set_Menu_Hints_And_Keys();
// Items of the commands that need data; greyed in the "none" mode.
const std::vector<int>& Data_Menu_Items();
void Grey_Data_Menus(bool enabled);
// Menu states of a calculation mode (0 off, 1 fitting, 2 peaks, 3 background, 4 HKL).
void Calculation_Mode_Menus(int mode);
// Every item number of the menu bar, in menu order.
std::vector<int> Root_Menu_Items();

}  // namespace zendrite
