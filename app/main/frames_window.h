#pragma once
// The 2D mode: a child window that shows the frames of a detector, steps
// through them, and turns a run of a bank of tubes into a profile of the store.
#include <vector>

#include "app/present.h"
#include "instrument/azimuthal.h"
#include "instrument/frame_image.h"
#include "instrument/frame_set.h"

namespace zendrite {

// Toolbar items of the window.
inline constexpr int kFrOpen = 40601, kFrPrevious = 40602, kFrNext = 40603, kFrAnimate = 40604, kFrScale = 40605,
                     kFrUnzoom = 40606, kFrPattern = 40607, kFrClose = 40608, kFrIso = 40609, kFrGoto = 40610,
                     kFrGeometry = 40611, kFrMask = 40612, kFrLimits = 40613;

struct FRAMES_VIEW_TYPE {
    int window = 0;
    int bitmap = 0;
    hxl::FRAME_SET_TYPE frames;
    hxl::FRAME_VIEW_TYPE view;
    int current = 1;
    int i1 = 1, i2 = 1, j1 = 1, j2 = 1;  // the pixels in view (zoom)
    int ci = 0, cj = 0;                  // the pixel under the cursor; 0 none
    int bi1 = 0, bi2 = 0, bj1 = 0, bj2 = 0;  // the box summed against the step; 0 none
    bool band = false;                   // left button down: a zoom or box rubber band
    int band_i = 0, band_j = 0;
    bool iso = false;                    // iso-lines over the picture
    std::vector<unsigned char> mask;     // pixels left out of an integration (middle button boxes)
    bool has_geometry = false;
    hxl::DETECTOR_GEOMETRY_TYPE geometry;
};

FRAMES_VIEW_TYPE& Frames_View();

// Opens the window (or brings it up) and asks for a file.
void Open_Frames_Window();
// Loads `path` into the window; false with a message, or true with a note
// in `message` when the mask its geometry names cannot be used.
bool Frames_Load(const std::string& path, std::string& message, const std::string& dataset = "");
void Frames_Event(int type, const WIN_MESSAGE& message);
void Frames_Redraw();
// The state of the window as "key value" lines, for scripts.
std::string Frames_Dump();

}  // namespace zendrite
