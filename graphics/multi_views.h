#pragma once
// The views of many patterns at once: contour map (linear or log), stack (waterfall) and
// shaded surface of the shown profiles of the store, in slot order. Each draws the whole
// page on the target selected with IGrSelect, so that the window, a bitmap of any size or
// an export target take the same picture.
#include <string>
#include <vector>

namespace zendrite {

enum class MULTI_VIEW { Contour, Contour_Log, Stack, Surface };

// "contour", "contour-log", "stack", "surface"; false for any other name.
bool Multi_View_From_Name(const std::string& name, MULTI_VIEW& view);
// The graph_mode of a view, and back; false when the mode is not one of the four.
std::string Multi_View_Mode(MULTI_VIEW view);
bool Multi_View_Of_Mode(const std::string& graph_mode, MULTI_VIEW& view);

// Why the shown profiles cannot make these views, or empty: fewer than two shown, more
// than one X space, or a profile from a Rietveld profile file. Shown after "ERROR: ".
std::string Multi_View_Refusal();

// Draws `view` on the selected target, `width` x `height` pixels, with the present zoom,
// rotation and elevation. False with the refusal's text (no "ERROR: ") when refused; the
// target is then untouched.
bool Draw_Multi_View(MULTI_VIEW view, int width, int height, std::string& message);

// What the views keep between redraws; the mouse and keys change it.
struct MULTI_VIEW_STATE {
    int colour_scale = 1;             // 1 viridis, 2 grey
    bool zoomed = false;              // contour: X and Y windows set by a drag
    double x1 = 0, x2 = 0, y1 = 0, y2 = 0;
    double offset = 0;                // stack: rise of the last pattern over the first, in box heights
    std::vector<double> levels;       // contour: intensities of the iso-lines
    // The last contour drawn, for the read-out: its data limits, rows and map.
    bool contour_drawn = false;
    double fx1 = 0, fx2 = 1, fy1 = 0, fy2 = 1;
    std::vector<int> slots;
    std::vector<double> row_low, row_high;
    bool by_temperature = false;
    bool by_time = false;
    std::vector<double> row_time;  // minutes of each row from the earliest start, with by_time
    // The show flags before a click showed one profile alone; restored when a many-pattern
    // view or Graph 2D is chosen while that profile is still the only one shown.
    std::vector<bool> shown_before;
    int alone_slot = 0;
};
MULTI_VIEW_STATE& Multi_View_State();

// Enters the view's graph mode after the checks, with the start rotation and elevation of
// the 3D views, and draws it in the root window. False with the message when refused.
bool Enter_Multi_View(MULTI_VIEW view, std::string& message);
// Redraws the present view in the root window (the graph_other hook of the plot).
void Multi_View_Again(const std::string& graph_mode);
// The store's profiles may have changed: the next redraw samples them again.
void Multi_Data_Changed();
// The show flags from before a click on a contour row, when they still apply.
void Restore_Shown_Before();

// Mouse of the contour modes: read-out of X, pattern and intensity; drag zooms, right
// button unzooms, a click shows the pattern under the mouse alone in the 2D graph.
void Contour_Mouse(int type, int button, float px, float py);
// Keys of the 3D views: left/right turn, up/down raise or lower the eye, page up/down
// change the offset of the stack.
void Multi_View_Key(int key);
// The status bar parts 3 and 4 of the 3D views.
void Show_Rotation_Elevation();

}  // namespace zendrite
