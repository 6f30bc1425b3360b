#pragma once
// Pictures of the windows into files and onto printers.
#include <string>

#include "app/present.h"

namespace zendrite {

// The options kept beside the preference file, read at each use.
PICTURE_OPTIONS Picture_Options();
bool Keep_Picture_Options(const PICTURE_OPTIONS& o);

// Draws the picture of window `win` (the root window or the Quick View) again into `file`,
// format by extension; the window keeps its picture. False with the reason.
bool Export_Window_Picture(int win, const std::string& file, const PICTURE_OPTIONS& o, std::string& message);

// Save Graphic into file... and Print... for window `win`: selector, options dialog, file or printer.
void Save_Graphic_Command(int win);
void Print_Command(int win);

}  // namespace zendrite
