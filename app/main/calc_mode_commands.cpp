// Calculation modes on and off, the edit flags of the lists, the excluded-region mouse mode.
#include "app/main/calc_mode_commands.h"

#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"

namespace zendrite {

namespace {

constexpr int kStatusPart = 4;  // where the modes tell the user what the mouse does
constexpr int kArrow = 0, kCrossHair = 3;

void status(const std::string& text) { WindowOutStatusBar(kStatusPart, text); }

// Back to the plain plot from the peak or background mode.
void leave_list_mode() {
    Enter_Calculation_Mode(0);
    Enter_Single_Mode(0);
    WCursorShape(kArrow);
    status("");
    Plot_Again();
}

void edit_flag(bool peaks, bool insert, const std::string& text) {
    ZENDRITE_STORE& g = zendrite_param_global();
    // one of the two at a time, else a delete would never be reached after an insert
    (peaks ? g.peak_insert : g.bgr_insert) = insert;
    (peaks ? g.peak_delete : g.bgr_delete) = !insert;
    WCursorShape(kCrossHair);
    status(text);
}

}  // namespace

bool Calculation_Mode_Command(int item) {
    ZENDRITE_STORE& g = zendrite_param_global();
    // the modes work on loaded profiles; their items are greyed without them
    if ((item == 40095 || item == 40096 || item == 40138) && g.nperfiles < 1) return true;
    // leaving a mode that is not on would plot nothing as "single"
    if ((item == 40099 || item == 40097 || item == 40139) && g.graph_mode != "calculation") return true;
    switch (item) {
    case 40095:
        Enter_Calculation_Mode(1);
        status("Select the range for fitting procedure on two Background points");
        Plot_Again();
        return true;
    case 40099:
        if (WMenuGetState(40194, 2) == 1) WMenuSetState(40194, 2, 0);
        Enter_Calculation_Mode(0);
        Enter_Single_Mode(-1);
        g.prf_loaded = false;
        status("");
        Plot_Again();
        return true;
    case 40096:
        g.peak_insert = g.peak_delete = false;
        Enter_Calculation_Mode(2);
        status("Peaks allocation: ");
        Plot_Again();
        return true;
    case 40097:
    case 40139:
        leave_list_mode();
        return true;
    case 40147:
        g.Peak_List.count = 0;
        Plot_Again();
        return true;
    case 40093: edit_flag(true, true, "Peaks allocation: Insert peak"); return true;
    case 40094: edit_flag(true, false, "Peaks allocation: Delete peak"); return true;
    case 40138:
        g.bgr_insert = g.bgr_delete = false;
        Enter_Calculation_Mode(3);
        status("Background allocation: ");
        Plot_Again();
        return true;
    case 40148:
        g.Bgr_List.count = 0;
        Plot_Again();
        return true;
    case 40144: edit_flag(false, true, "Background allocation: Insert point"); return true;
    case 40145: edit_flag(false, false, "Background allocation: Delete point"); return true;
    case 40110:
        g.MoveMode = 2;
        WMenuSetState(40110, 2, 1);
        return true;
    default: return false;
    }
}

}  // namespace zendrite
