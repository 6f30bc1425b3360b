#pragma once
// The Quick View: a child window that browses the profile files of a directory one
// at a time, with records of its own, and hands the file on view to the main window.
#include <string>
#include <vector>

#include "app/present.h"
#include "patterns/diffraction_pattern.h"
#include "prf/prf_info.h"
#include "support/array1.h"

namespace zendrite {

inline constexpr int kQvMaxFiles = 2000;
// Toolbar items of the window.
inline constexpr int kQvChooseDir = 40127, kQvPrevious = 40103, kQvNext = 40131, kQvToMain = 40126,
                     kQvClose = 40114;
// Its picture into a file and onto a printer.
inline constexpr int kQvSaveGraphic = 40250, kQvPrint = 40251;

struct QUICK_VIEW_TYPE {
    hxl::DIFFRACTION_PATTERN_TYPE qv_pattern;
    hxl::PRF_INFO_ADD_TYPE qv_info;
    std::string qv_dir;                                          // 250
    hxl::Array1<std::string> qv_files = hxl::Array1<std::string>(kQvMaxFiles);  // 200 each
    hxl::Array1<std::string> qv_temps = hxl::Array1<std::string>(kQvMaxFiles);  // 40 each
    int qv_count = 0;
    int qv_current = 0;
    int qv_window = 0;
    float qv_xmin = 0, qv_xmax = 1, qv_ymin = 0, qv_ymax = 1;
    // The band under the curves of the file on view: base of the difference curve and
    // the rows of Bragg ticks, from the file's own range as the main plot takes them.
    float diff_base = 0, y_floor = 0;
    std::vector<float> tick_top, tick_bottom;  // [phase - 1]
    int bitmap = 0;                            // the off-screen picture
    // Page and frame of the last picture, for the mouse.
    float page_w = 1200, page_h = 800;
    float zone_left = 0.15f, zone_bottom = 0.15f, zone_right = 0.85f, zone_top = 0.85f;
    bool drawn = false;
    // The rubber band, in page units, while the left button is down.
    bool band = false;
    float band_x0 = 0, band_y0 = 0, band_x1 = 0, band_y1 = 0;
};
QUICK_VIEW_TYPE& Quick_View();

// Menu item 40030.
void Open_Quick_View();
// The event handler of the window, called by the main loop for its events.
void ihand_winqvprf(int type, const WIN_MESSAGE& message);
// Draws qv_pattern into the window's off-screen picture and shows it.
void Plot_Quick_View(float xmin, float xmax, float ymin, float ymax);

// ---- parts shared by the files of the Quick View
// The label of a file: "   Temperature: " tsamp " K -- " tsamp - 273.15 " C", by "(2(a,f8.2),a)".
std::string Quick_View_Label(float tsamp);
// The files "*.prf" then "*.xrf" of `dir`, each group in name order.
std::vector<std::string> Quick_View_Candidates(const std::string& dir);
// Full name of entry `k` of the list.
std::string Quick_View_Path(int k);
// Reads file `k` of the list into the Quick View's records; false with the reader's text.
bool Quick_View_Read(int k, std::string& message);
// The whole range of the file on view, with the band for the difference curve and ticks.
void Quick_View_Full_Range();
// Toolbar states and status bar for the file on view.
void Quick_View_Show_Position();
// Item 40127: chooses a directory and builds the list.
void Quick_View_Choose_Directory();
// Item 40126: the file on view handed to the main window.
void Quick_View_Hand_Over();
// Mouse events in the window.
void Quick_View_Mouse(const WIN_MESSAGE& message);
// Page position <-> data units of the last picture.
void Quick_View_Page_To_Data(float px, float py, float& x, float& y);
void Quick_View_Data_To_Page(float x, float y, float& px, float& py);
// The Quick View as text, for scripts.
std::string Quick_View_Dump();

}  // namespace zendrite
