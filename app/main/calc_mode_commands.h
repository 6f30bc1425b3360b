#pragma once
// The Calculation menu items that switch the calculation modes and the mouse edits
// of the peak and background lists, and the selection of excluded regions.
namespace zendrite {

// Carries out `item` when it is one of these commands; false for any other item.
bool Calculation_Mode_Command(int item);

}  // namespace zendrite
