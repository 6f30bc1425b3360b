#pragma once
// The HKL generator: its setup dialog, the modeless panel of sliders, the list of
// reflections drawn over the plot in calculation mode 4, and the spectral lines.
#include <string>
#include <vector>

#include "app/present.h"
#include "crystal/reflections.h"
#include "crystal/space_group.h"

namespace zendrite {

inline constexpr int kHklSetupDialog = 155, kHklPanel = 156, kSpectralDialog = 157;

struct HKL_GEN_STATE {
    float cell[6] = {5.4f, 5.5f, 7.7f, 90, 90, 90};  // the trial cell
    float base[6] = {5.4f, 5.5f, 7.7f, 90, 90, 90};  // the slider's middle
    std::string spgr = "P b m n";                    // 30
    std::string crystal_system;
    float lambda = 0, dtt1 = 0, dtt2 = 0;
    hxl::HKL_XSPACE space = hxl::HKL_XSPACE::TWOTHETA;
    hxl::SPACE_GROUP_TYPE sg;
    hxl::Cell_Record record;
    std::vector<hxl::HKL_GEN_TYPE> list;  // Hkl_Gen_List
    bool drawing = false;                 // between "Start HKL Gen" and "Stop HKL Gen"
    float made_xmin = 0, made_xmax = 0;   // the window the list was made for
    std::string merit;                    // the figure of merit's line for the trial cell
    bool refined = false;                 // a refinement waits to be used
    float refined_cell[6] = {0, 0, 0, 0, 0, 0};
    std::string refined_text, sigma_text;
};
HKL_GEN_STATE& Hkl_Gen_State();

// The setup dialog: group, wavelength or dtt1/dtt2, X space. False with the text
// ("Cancelled" when given up) and the state unchanged.
bool Hkl_Gen_Setup(std::string& text);
// Regenerates the list for the trial cell and the present window; false with the text,
// and then the list stays as it was.
bool Hkl_Gen_Update(std::string& text);
// Item 40154: the setup, then the modeless panel (dialog 156) in calculation mode 4.
void Tools_Hkl_Gen(int item);
// The figure of merit of the trial cell against the peak list, one line (kept in the state).
std::string Hkl_Gen_Merit();
// The panel's field of the figure of merit brought up to date, after a change of the peaks.
void Hkl_Gen_Refresh_Merit();
// "Refine cell": the trial cell fitted to the matched peaks; false with the library's text,
// and then the state is unchanged.
bool Hkl_Gen_Refine(bool refine_zero, std::string& text);
// Events of the open panel, from the main loop.
void Hkl_Gen_Panel_Event(int type, const WIN_MESSAGE& message);
// The links of the plot: ticks in mode 4, the search under the mouse.
void Connect_Hkl_Gen();
// The list, the figure of merit, the refinement and the reflections under the mouse, one a
// line, for scripts.
std::string Hkl_Gen_Dump();

// Items 40215 to 40222: the spectral lines and their settings.
void Spectral_Lines_Command(int item);

}  // namespace zendrite
