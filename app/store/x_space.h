#pragma once
// The X space of the store: identification of new loads, conversion of all
// profiles, the guards of their constants, and the axis legends of the space.
#include <string>
#include <vector>

namespace zendrite {

// Axis legends set with the space; the plot writes them.
struct X_SPACE_STATE {
    std::string legend_x, legend_y;
    bool legend_scaled = false;  // the plot scale flag: G(R) x 1000
};
X_SPACE_STATE& X_Space_State();

// The window system sets these; without them the guards refuse with their
// text (batch), and no menu changes.
struct X_SPACE_HOOKS {
    // The grid of the constants of `slots` (wavelength, or dtt1 and dtt2); true at OK,
    // after the grid was copied into the records.
    bool (*edit_constants)(bool dtt, const std::vector<int>& slots) = nullptr;
    void (*menu_states)() = nullptr;                        // the X space menu after a change of space
    void (*message)(const std::string& text) = nullptr;     // a text shown on the way (deleted regions)
};
X_SPACE_HOOKS& X_Space_Hooks();

// True when the profiles of the store differ in scat_var; sets mixed_scat_var.
bool Update_Mixed_Scat_Var();

void Set_X_Space(const std::string& name, const std::string& legend_x = "", const std::string& legend_y = "");

// At every load, with the newest slot: false with a message refuses it (the
// caller removes the slot). Sets the space at the first load; converts a
// pattern joining d, q or s.
bool Identify_X_Space(int slot, std::string& message);

// The command: every profile of the store into `target`. A refusal leaves the store.
void Convert_X_Space(const std::string& target, bool& error, std::string& message);

// The guards: every profile needs a positive wavelength (dtt1); failures open the grid.
void Check_Lambda(bool& error, std::string& message);
void Check_Dtt(bool& error, std::string& message);

}  // namespace zendrite
