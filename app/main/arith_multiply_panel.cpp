// The Multiply Y / Shift X panel (dialog 159), which stays open while Apply is
// pressed, and the efficiency correction that reads the file it saves.
#include <algorithm>
#include <cmath>

#include "app/main/arith_commands.h"
#include "app/main/menu_groups.h"
#include "app/store/history.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "calc/arithmetic.h"
#include "calc/efficiency_file.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace zendrite {

namespace {

constexpr int kPanel = 159, kGrid = 1527, kSelectAll = 1332, kDeselectAll = 1333;
constexpr int kSetShift = 1528, kShiftValue = 1530, kSetMult = 1529, kMultValue = 1531;
constexpr int kNormalize = 1665, kNormValue = 1666, kSave = 1534, kApply = 1532, kClose = 1533;
constexpr int kColName = 1, kColCheck = 2, kColShift = 3, kColMult = 4;

std::size_t at(int slot) { return static_cast<std::size_t>(slot); }

void define_panel() {
    if (WDialogDefined(kPanel)) return;
    DIALOG_FIELD grid = Fld(kGrid, FIELD_KIND::Grid, "Profiles");
    grid.columns = {{"Profile", CELL_KIND::Text, {}},
                    {"Apply", CELL_KIND::CheckBox, {}},
                    {"X shift", CELL_KIND::Real, {}},
                    {"Y multiplier", CELL_KIND::Real, {}}};
    DIALOG_FIELD shift = Fld(kShiftValue, FIELD_KIND::Real, "X shift");
    shift.value = "0";
    DIALOG_FIELD mult = Fld(kMultValue, FIELD_KIND::Real, "Y multiplier");
    mult.value = "1";
    DIALOG_FIELD norm = Fld(kNormValue, FIELD_KIND::Real, "Maximum");
    norm.value = "1000";
    WDialogDefine({kPanel, "Multiply Y / Shift X / Normalize", {},
                   {grid, Fld(kSelectAll, FIELD_KIND::PushButton, "Selec. All"),
                    Fld(kDeselectAll, FIELD_KIND::PushButton, "Deselec. All"), shift,
                    Fld(kSetShift, FIELD_KIND::PushButton, "Set X-Shift"), mult,
                    Fld(kSetMult, FIELD_KIND::PushButton, "Set Y-Multiplier"), norm,
                    Fld(kNormalize, FIELD_KIND::PushButton, "Set Y-Multipliers to normalize maxima to the given valu"),
                    Fld(kSave, FIELD_KIND::PushButton, "Save Shifts/Mult"), Fld(kApply, FIELD_KIND::PushButton, "Apply"),
                    Fld(kClose, FIELD_KIND::PushButton, "Close")}});
}

// A real of the panel, or the fallback when the field holds no finite number.
float field_real(int field, float fallback) {
    float v = fallback;
    WDialogGetReal(field, v);
    return std::isfinite(v) ? v : fallback;
}

// Apply: every checked row's shift and multiplier, read and tested before any slot changes.
std::string apply_rows() {
    ZENDRITE_STORE& g = zendrite_param_global();
    std::vector<int> rows;
    std::vector<float> shift, mult;
    for (int s = 1; s <= g.nperfiles; ++s) {
        int on = 0;
        WGridGetCellCheckBox(kGrid, kColCheck, s, on);
        if (!on) continue;
        std::string ts, tm;
        WGridGetCellString(kGrid, kColShift, s, ts);
        WGridGetCellString(kGrid, kColMult, s, tm);
        float sv = 0, mv = 1;
        if (!hxl::Parse_Real(hxl::Trim(ts), sv) || !hxl::Parse_Real(hxl::Trim(tm), mv) || !std::isfinite(sv) ||
            !std::isfinite(mv))
            return "The X shift and the Y multiplier of profile " + std::to_string(s) + " must be numbers";
        rows.push_back(s);
        shift.push_back(sv);
        mult.push_back(mv);
    }
    if (rows.empty()) return "ERROR: No profile selected to multiply";
    for (std::size_t k = 0; k < rows.size(); ++k) {
        const int s = rows[k];
        hxl::Multiply_Shift_Pattern(g.pattern[at(s)], shift[k], mult[k]);
        g.x_shift_total[at(s)] += shift[k];
        g.y_mult_total[at(s)] *= mult[k];
    }
    return {};
}

std::string save_totals() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    std::vector<float> shift, inverse;
    for (int s = 1; s <= g.nperfiles; ++s) {
        shift.push_back(g.x_shift_total[at(s)]);
        inverse.push_back(1.0f / g.y_mult_total[at(s)]);
    }
    if (!Write_File_Replace(hxl::kEfficiencyFile, hxl::Efficiency_Lines(shift, inverse)))
        return std::string("ERROR writing the file ") + hxl::kEfficiencyFile;
    return {};
}

}  // namespace

void Multiply_Shift_Panel(int& status, std::string& text) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    status = -1;
    define_panel();
    WDialogLoad(kPanel);
    WGridRows(kGrid, g.nperfiles);
    for (int s = 1; s <= g.nperfiles; ++s) {
        WGridPutCellString(kGrid, kColName, s, hxl::Trim(g.info[at(s)].prf_name));
        WGridPutCellCheckBox(kGrid, kColCheck, s, 0);
        WGridPutCellReal(kGrid, kColShift, s, 0.0);
        WGridPutCellReal(kGrid, kColMult, s, 1.0);
    }
    WDialogShow(-1, -1, 0, Modeless);
    for (;;) {
        int type = 0;
        WIN_MESSAGE m;
        WMessage(type, m);
        if (type == Expose) {
            Plot_Again();
            continue;
        }
        if (type == CloseRequest) {
            WMessagePost(m);  // the main loop ends the program
            break;
        }
        if (type != PushButton || m.win != kPanel) continue;
        WDialogSelect(kPanel);
        const int b = m.value1;
        if (b == kClose || b == kIdCancel) break;
        if (b == kSelectAll || b == kDeselectAll) {
            for (int s = 1; s <= g.nperfiles; ++s) WGridPutCellCheckBox(kGrid, kColCheck, s, b == kSelectAll);
        } else if (b == kSetShift || b == kSetMult) {
            const float v = field_real(b == kSetShift ? kShiftValue : kMultValue, b == kSetShift ? 0.0f : 1.0f);
            for (int s = 1; s <= g.nperfiles; ++s) WGridPutCellReal(kGrid, b == kSetShift ? kColShift : kColMult, s, v);
        } else if (b == kNormalize) {
            const float v = field_real(kNormValue, 0.0f);
            for (int s = 1; s <= g.nperfiles; ++s) {
                const float ymax = g.pattern[at(s)].ymax;
                // a maximum of 0 cannot be brought to a value: its multiplier stays
                if (ymax != 0.0f && std::isfinite(v / ymax)) WGridPutCellReal(kGrid, kColMult, s, v / ymax);
            }
        } else if (b == kSave) {
            if (std::string e = save_totals(); !e.empty()) Show_Message(e);
        } else if (b == kApply || b == kIdOk) {
            // each Apply is a step of its own, so that one of several can be taken back
            History_Begin("Multiply Y / Shift X", kHistoryArrays);
            if (std::string e = apply_rows(); !e.empty()) Show_Message(e);
            Plot_Again();
            Command_End();
        }
    }
    WDialogSelect(kPanel);
    WDialogUnload();
    text = "Cancelled";
}

void Apply_Efficiency(int& status, std::string& text) {
    ZENDRITE_STORE& g = zendrite_param_global();
    status = -1;
    int n = 0;
    for (int s = 1; s <= g.nperfiles; ++s) n = std::max(n, g.pattern[at(s)].npts);
    if (n <= 0) {
        text = "ERROR zero points in profiles!";
        return;
    }
    std::string name;
    WSelectFile("Input Efficiency File |*.eff;*.xy|", LoadDialog, name, "Select Eff files to open");
    if (WInfoDialog(4) != kIdOk || name.empty()) {
        text = "Cancelled";
        return;
    }
    hxl::Array1<float> e;
    int read = 0;
    if (!hxl::Read_Efficiency_File(name, n, e, read, text)) return;
    for (int s = 1; s <= g.nperfiles; ++s) {
        hxl::Apply_Efficiency_Pattern(g.pattern[at(s)], e);
        hxl::Pattern_Y_Limits(g.pattern[at(s)]);
    }
    status = 0;
    text.clear();
    // a short or unreadable file is not an error, but the user must know how much of it was used
    if (read < n)
        text = "Efficiencies were read for " + std::to_string(read) + " of " + std::to_string(n) +
               " points from " + name + "; the other points were left unchanged";
}

}  // namespace zendrite
