#pragma once
// Mouse events of the root window, routed by graph_mode and MoveMode, and the
// wheel and Home zooms. Positions are taken in page units (gx, gy of the event)
// and converted with the limits of the last frame.
#include <string>
#include <vector>

#include "app/present.h"
#include "patterns/diffraction_pattern.h"

namespace zendrite {

inline constexpr int kLeftButton = 1, kRightButton = 2;

struct MOUSE_STATE {
    int drag = 0;                   // 1 while a rubber band or a drag is under way
    float start_px = 0, start_py = 0;  // press point, page units
    float last_px = 0, last_py = 0;    // last point of the rubber band, page units
    float last_x = 0, last_y = 0;      // last point of a plot drag, data units
    std::vector<int> found;            // reflections under the mouse at the last event
    std::vector<int> found_hkl;        // the same in the list of the HKL generator
    bool pivot_chosen = false;         // scaling: first step done
    float pivot_x = 0, pivot_y = 0;    // data units
    std::vector<int> marked;           // slots marked for offset/align and scaling
    bool spectral_lines = false;
    bool line_kalpha1 = false, line_kalpha2 = false, line_kbeta = false, line_lalpha1 = false;
    int spectral_element = 5;  // from 1 in the anode table; its K-alpha1 is where the mouse is
    int rotation = 0, elevation = 22;  // 3D graphs
    bool zone_search = false;          // the next band of the calculation mode is a search zone
};
MOUSE_STATE& Mouse_State();

// Event types 4, 5 and 6 of the root window.
void Mouse_Event(const WIN_MESSAGE& message);

void MouseMovement_Default(const WIN_MESSAGE& message);
void MouseMovement_DragPlot(const WIN_MESSAGE& message);
void MouseMovement_SelExclReg(const WIN_MESSAGE& message);
void MouseMovement_SearchZone(const WIN_MESSAGE& message);
void MouseMovement_OffsetAlign(const WIN_MESSAGE& message);
void MouseMovement_ScaleX(const WIN_MESSAGE& message);
void MouseMovement_ScaleY(const WIN_MESSAGE& message);
void MouseMovement_graph3d(const WIN_MESSAGE& message);
void MouseMovement_graph2dcontour(const WIN_MESSAGE& message);

// What the offset and scaling modes do to one profile, also when the values are typed
// in their dialogs: a shift of x, y, ycalc and bgr; a scaling of x, or of y, ycalc,
// bgr (and sigma by the square) about a pivot.
void Shift_Profile_Drawn(hxl::DIFFRACTION_PATTERN_TYPE& pattern, float dx, float dy);
void Scale_Profile_About(hxl::DIFFRACTION_PATTERN_TYPE& pattern, bool xaxis, float pivot, float factor);

// Reflections of the active Rietveld profile near (x, y), data units; `changed` when the list differs.
void Search_PRF_Refl(float x, float y, bool& changed);

// Edits of the lists by the mouse, by the insert and delete flags; the message, or empty.
std::string Edit_Background(float x, float y);
std::string Edit_Peaks(float x, float y);

// Wheel: X zoomed about the page position px by a factor per step (steps > 0 zoom in).
void Zoom_Wheel(float px, float py, int steps);
// Home: the full range.
void Zoom_Home();

}  // namespace zendrite
