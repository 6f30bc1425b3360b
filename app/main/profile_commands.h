#pragma once
// The Profiles menu: copy, and the dialogs that list the slots (focus, show,
// sort, delete, play). Slots stay filled from 1 to nperfiles without holes.
#include <string>
#include <vector>

namespace zendrite {

// A copy of slot 1 in the next slot; false with the message at the limit or with nothing loaded.
bool Copy_Profile(std::string& message);

// Slot operations behind the dialogs; every slot array moves with its slot.
// `remove` has one flag per slot 1..nperfiles; the Rietveld profile's removal unloads it.
void Remove_Slots(const std::vector<bool>& remove);
// `order` lists the old slot numbers in their new order (a permutation of 1..nperfiles).
void Reorder_Slots(const std::vector<int>& order);
// Y window from the points of the chosen slots (one flag per slot) inside the X window;
// false when none of them has a point there.
bool Focus_Slots(const std::vector<bool>& chosen);

// The dialogs; each ends with the redraw of its command.
void Focus_Profile_Command();
void Graph_Show_Command();
void Sorting_Command();
void Delete_Profiles_Command();
void Playing_Command();

}  // namespace zendrite
