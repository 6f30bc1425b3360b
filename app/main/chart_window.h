#pragma once
// The generic graphics mode: its child window and what the root loop hands it.
#include <string>

#include "app/present.h"

namespace zendrite {

// The window's tool buttons (Reload is the system's item 40198).
inline constexpr int kChOpen = 30041, kChReload = 40198, kChColumns = 30042, kChPrint = 30043, kChExport = 30044,
                     kChClose = 30045, kChExportPs = 30046, kChExportEmf = 30047, kChCloseFile = 30048,
                     kChPreferences = 40033;

// Opens the window (once) on a ".gdf" or ".seq" file; a blank name asks for one.
void Open_Generic_File(const std::string& name);
void Generic_Graphs(int item);  // 40179 and the toolbar's 40155
int Chart_Window();             // 0 when closed
void Chart_Event(int type, const WIN_MESSAGE& m);
std::string Chart_Dump();       // for scripts

}  // namespace zendrite
