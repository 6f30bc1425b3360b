// Normalisation to one monitor (dialog 146) and the dialogs Offset/Align (105),
// Scaling X (153) and Scaling Y (152), which take values or hand over to the mouse.
#include <cmath>

#include "app/main/arith_commands.h"
#include "app/present.h"
#include "calc/arithmetic.h"
#include "graphics/mouse.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kMonitorDialog = 146, kAverage = 1345, kNewMonitor = 1346;
// Below this a monitor counts as missing: readers leave 0 where a file has none.
constexpr float kSmallestMonitor = 1.0e-3f;

constexpr int kOffsetDialog = 105, kScaleXDialog = 153, kScaleYDialog = 152;
constexpr int kGrid = 1340, kDeselectAll = 1333, kPrfNote = 1339;
constexpr int kOffsetX = 1341, kOffsetY = 1342, kOffsetMouse = 1343;
constexpr int kYReference = 1413, kYPresent = 1414, kYNew = 1415, kScaleMouse = 1411;
constexpr int kSelectAllButton = 1332;
constexpr int kColName = 1, kColCheck = 2;

std::size_t at(int slot) { return static_cast<std::size_t>(slot); }

DIALOG_FIELD real(int id, const char* label, const char* start) {
    DIALOG_FIELD f = Fld(id, FIELD_KIND::Real, label);
    f.value = start;
    return f;
}

void define_dialogs() {
    static bool done = false;
    if (done) return;
    done = true;
    DIALOG_FIELD avg = Fld(kAverage, FIELD_KIND::Label, "");
    WDialogDefine({kMonitorDialog, "Normalize to one monitor", {},
                   {Fld(1344, FIELD_KIND::Label, "Average of the monitors"), avg,
                    real(kNewMonitor, "Normalisation monitor", "0")}});
    DIALOG_FIELD grid = Fld(kGrid, FIELD_KIND::Grid, "Profiles");
    grid.columns = {{"Profile", CELL_KIND::Text, {}}, {"Select", CELL_KIND::CheckBox, {}}};
    const std::vector<DIALOG_FIELD> common = {grid, Fld(kPrfNote, FIELD_KIND::Label, "PRF type profiles can't be selected"),
                                              Fld(kSelectAllButton, FIELD_KIND::PushButton, "Select all"),
                                              Fld(kDeselectAll, FIELD_KIND::PushButton, "Deselect all")};
    auto with = [&](std::vector<DIALOG_FIELD> extra) {
        std::vector<DIALOG_FIELD> f = common;
        f.insert(f.end(), extra.begin(), extra.end());
        return f;
    };
    WDialogDefine({kOffsetDialog, "Offset/Align", {},
                   with({real(kOffsetX, "Offset X", "0"), real(kOffsetY, "Offset Y", "0"),
                         Fld(kOffsetMouse, FIELD_KIND::PushButton, "Use the mouse")})});
    WDialogDefine({kScaleXDialog, "Scaling X", {}, with({Fld(kScaleMouse, FIELD_KIND::PushButton, "Use the mouse")})});
    WDialogDefine({kScaleYDialog, "Scaling Y", {},
                   with({real(kYReference, "Y reference", "0"), real(kYPresent, "Present Y value", "1"),
                         real(kYNew, "New Y value", "1"), Fld(kScaleMouse, FIELD_KIND::PushButton, "Use the mouse")})});
}

float get_real(int field, bool& ok) {
    float v = 0;
    std::string t;
    WDialogGetString(field, t);
    double d = 0;
    int err = 0;
    d = IStringToReal(hxl::Trim(t), err);
    if (err != 0 || !std::isfinite(d)) ok = false;
    v = static_cast<float>(d);
    return v;
}

}  // namespace

void Normalize_Monitor(int& status, std::string& text) {
    ZENDRITE_STORE& g = zendrite_param_global();
    status = -1;
    if (g.prf_loaded) {
        text = "Profile PRF in memory. Operation not permitted";
        return;
    }
    double sum = 0;
    for (int s = 1; s <= g.nperfiles; ++s) {
        const float m = g.pattern[at(s)].monitor;
        if (!(m > kSmallestMonitor) || !std::isfinite(m)) {
            text = "Normalization impossible: some profile has no valid monitor";
            return;
        }
        // profiles of different radiations or X spaces have monitors that do not compare
        if (!hxl::Same(g.pattern[at(s)].diff_kind, g.pattern[1].diff_kind) ||
            !hxl::Same(g.pattern[at(s)].scat_var, g.pattern[1].scat_var)) {
            text = "Normalization impossible: non-uniform profiles";
            return;
        }
        sum += m;
    }
    if (g.nperfiles < 1) {
        text = "Normalization impossible: some profile has no valid monitor";
        return;
    }
    define_dialogs();
    WDialogLoad(kMonitorDialog);
    const double average = sum / g.nperfiles;
    WDialogPutString(kAverage, IRealToString(average));
    WDialogPutReal(kNewMonitor, average);
    WDialogShow(-1, -1, 0, Modal);
    const bool ok = WInfoDialog(4) == kIdOk;
    bool good = true;
    const float to = get_real(kNewMonitor, good);
    WDialogUnload();
    if (!ok) {
        text = "Cancelled";
        return;
    }
    if (!good || !(to > kSmallestMonitor)) {
        text = "The normalisation monitor must be a number above 0.001";
        return;
    }
    for (int s = 1; s <= g.nperfiles; ++s) hxl::Normalize_Pattern_Monitor(g.pattern[at(s)], to);
    status = 0;
    text.clear();
}

void Offset_Scale_Dialog(int kind, bool& mouse, int& status, std::string& text) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    status = -1;
    mouse = false;
    define_dialogs();
    const int id = kind == 3 ? kOffsetDialog : kind == 5 ? kScaleXDialog : kScaleYDialog;
    WDialogLoad(id);
    WGridRows(kGrid, g.nperfiles);
    for (int s = 1; s <= g.nperfiles; ++s) {
        WGridPutCellString(kGrid, kColName, s, hxl::Trim(g.info[at(s)].prf_name));
        WGridPutCellCheckBox(kGrid, kColCheck, s, 0);
        if (Prf_Like(g.info[at(s)])) WGridStateCell(kGrid, kColCheck, s, 0);
    }
    const int mouse_button = kind == 3 ? kOffsetMouse : kScaleMouse;
    int b = 0;
    for (;;) {
        WDialogShow(-1, -1, 0, Modal);
        b = WInfoDialog(4);
        if (b == kSelectAllButton || b == kDeselectAll) {
            for (int s = 1; s <= g.nperfiles; ++s)
                WGridPutCellCheckBox(kGrid, kColCheck, s, b == kSelectAllButton && !Prf_Like(g.info[at(s)]));
            continue;
        }
        if (b == kIdOk || b == kIdCancel || b == mouse_button) break;
    }
    std::vector<int> marked;
    for (int s = 1; s <= g.nperfiles; ++s) {
        int v = 0;
        WGridGetCellCheckBox(kGrid, kColCheck, s, v);
        if (v && !Prf_Like(g.info[at(s)])) marked.push_back(s);
    }
    bool good = true;
    float a = 0, c = 0, d = 0;
    if (kind == 3) {
        a = get_real(kOffsetX, good), c = get_real(kOffsetY, good);
    } else if (kind == 4) {
        a = get_real(kYReference, good), c = get_real(kYPresent, good), d = get_real(kYNew, good);
    }
    WDialogUnload();
    if (b == kIdCancel) {
        text = "Cancelled";
        return;
    }
    if (marked.empty()) {
        text = kind == 3   ? "No files have been selected for offset/align. Operation cancelled"
               : kind == 5 ? "No files have been selected for scaling X. Operation cancelled"
                           : "No files have been selected for scaling Y. Operation cancelled";
        return;
    }
    if (b == mouse_button || kind == 5) {
        Mouse_State().marked = marked;
        mouse = true;
        status = 0;
        text.clear();
        return;
    }
    if (!good || (kind == 4 && c == a)) {
        text = kind == 3 ? "The offsets must be numbers"
                         : "The Y values must be numbers, and the present one must differ from the reference";
        return;
    }
    ZENDRITE_STORE& w = zendrite_param_global();
    for (int s : marked) {
        if (kind == 3)
            Shift_Profile_Drawn(w.pattern[at(s)], a, c);
        else
            Scale_Profile_About(w.pattern[at(s)], false, a, (d - a) / (c - a));
    }
    status = 0;
    text.clear();
}

}  // namespace zendrite
