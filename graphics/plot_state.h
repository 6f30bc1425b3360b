#pragma once
// What the plot keeps between calls (the last frame, the off-screen picture)
// and the few links to routines that other subsystems supply.
#include <string>

namespace zendrite {

// Data limits of the last frame drawn; the mouse converts with these.
struct FRAME_LIMITS {
    float xmin = 0, xmax = 1, ymin = 0, ymax = 1;
    bool log = false;  // the frame shows the logarithm of Y
    bool drawn = false;
};

struct GRAPHICS_STATE {
    FRAME_LIMITS frame;
    int bitmap = 0;  // the off-screen picture; 0 before the first frame
};
GRAPHICS_STATE& Graphics_State();

// Routines owned elsewhere; unset ones are skipped (or use the plain default noted).
struct GRAPHICS_HOOKS {
    void (*title_screen)() = nullptr;           // drawn when nothing is loaded
    void (*enable_data_menus)() = nullptr;      // menu items of the commands that need data
    void (*fit_overlay)() = nullptr;            // calc_mode 1
    bool (*fit_running)() = nullptr;
    void (*hkl_overlay)() = nullptr;            // calc_mode 4
    bool (*hklgen_open)() = nullptr;
    void (*structure_overlay)() = nullptr;      // calculated patterns of structures, every 2D mode
    void (*search_hklgen)(float x, float y) = nullptr;
    void (*graph_other)(const std::string& graph_mode) = nullptr;  // contour and 3D graphs
    // The excluded-region dialog with the limits of the mouse; status false with a text on failure.
    void (*add_excluded_region)(float low, float high, bool& error, std::string& text) = nullptr;
    // The zone of a peak search chosen by a band, data units (low < high).
    void (*search_zone)(float low, float high) = nullptr;
    void (*message)(const std::string& text) = nullptr;  // default: a message box with OK
    void (*fault)(const std::string& text) = nullptr;    // default: the text on stderr, then the end
};
GRAPHICS_HOOKS& Graphics_Hooks();

// Shows a message to the user (the "Msg" of a command).
void Graphics_Message(const std::string& text);
// A state that cannot happen: writes the text and ends the process.
[[noreturn]] void Graphics_Fault(const std::string& text);

// Y of the frame from a window Y: the window keeps plain Y in every mode, a log frame its logarithm.
float Frame_Y(float window_y, bool log);
float Window_Y(float frame_y, bool log);

// Page units <-> data units of the last frame. Page_To_Data returns whether the point lies in the frame.
bool Page_To_Data(float px, float py, float& x, float& y);
void Data_To_Page(float x, float y, float& px, float& py);

// Status bar read-out of a mouse position.
void Status_Position(float px, float py, bool with_point_number);
// The first slot whose profile is shown, 0 when none: its constants serve the read-out
// of X in several spaces and the second X axis.
int First_Shown_Slot();

}  // namespace zendrite
