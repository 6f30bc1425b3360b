#pragma once
// The modeless progress dialogs of long work (a folder read, a directory
// searched, a sibling program running): a text line, a bar, Cancel.
#include <string>
#include <vector>

#include "app/present.h"

namespace zendrite {

// The dialog of `title`, defined on first use; `text_field` 0 for none. A
// bar whose range is 0 to 0 shows work of unknown length.
int Progress_Dialog(const std::string& title, int text_field, int bar_field);

// Lets the dialog move and tells whether its Cancel (or Escape, in any window)
// was pressed. Other events
// wait in `later` for the main loop; a close request of any window also stops
// the work; mouse events meanwhile are dropped.
bool Progress_Cancel_Pressed(int id, std::vector<WIN_MESSAGE>& later);

// Unloads the dialog and hands the events kept back to the main loop.
void Progress_Close(int id, const std::vector<WIN_MESSAGE>& later);

}  // namespace zendrite
