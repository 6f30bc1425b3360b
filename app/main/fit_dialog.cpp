#include "app/main/fit_dialog.h"

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "peaks/arcfit_run.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kWave = 10, kGlobal = 11, kAsym = 12, kBgr = 13, kPeaks = 14, kCycles = 15, kIrfLabel = 16,
              kIrfNone = 17, kIrfFileLabel = 20, kLoadIrf = 21, kNullify = 22, kVaryBgr = 23, kFixBgr = 24,
              kVaryPos = 25, kFixPos = 26, kVaryFwhm = 27, kFixFwhm = 28, kVaryEta = 29, kFixEta = 30,
              kFixShifts = 31, kSaveCalc = 32, kSingle = 33;
// Rows of the general grid and the job's global index of each.
constexpr int kGlobalIndex[] = {4, 5, 6, 7, 8, 9};
const char* const kGlobalRows[] = {"U", "V", "W", "Z", "Eta", "X"};

GRID_COLUMN real(const char* label) { return {label, CELL_KIND::Real, {}}; }
GRID_COLUMN flag(const char* label) { return {label, CELL_KIND::CheckBox, {}}; }

DIALOG_FIELD grid(int id, const char* label, std::vector<GRID_COLUMN> columns, int rows) {
    DIALOG_FIELD f = Fld(id, FIELD_KIND::Grid, label);
    f.columns = std::move(columns);
    f.rows = rows;
    return f;
}

void define() {
    if (WDialogDefined(kFitDialog)) return;
    std::vector<DIALOG_FIELD> f = {
        grid(kWave, "Wavelength", {real("Lambda1"), real("Lambda2"), real("I (Ka2/Ka1)"), flag("Flag")}, 1),
        grid(kGlobal, "General Profile Parameters", {real("Value"), flag("Flag")}, 6),
        grid(kAsym, "Asymmetry Parameters", {real("Value"), flag("Flag")}, 2),
        grid(kBgr, "Background Information", {real("Position"), real("Background"), flag("Flag")}, 0),
        grid(kPeaks, "Peaks Parameters",
             {real("Position"), real("Intensity"), real("Shift-FWHM"), real("Shift-Eta"), flag("Pos"), flag("Int"),
              flag("FWHM"), flag("Eta")},
             0),
        Fld(kCycles, FIELD_KIND::Integer, "Number of Cycles:"),
        Fld(kIrfLabel, FIELD_KIND::Label, "IRF / IPC File")};
    const char* irf[] = {"None", "Create .IRF File", "Create .IPC File"};
    for (int k = 0; k < 3; ++k) {
        DIALOG_FIELD r = Fld(kIrfNone + k, FIELD_KIND::Radio, irf[k]);
        r.group = kIrfNone;
        f.push_back(r);
    }
    f.push_back(Fld(kIrfFileLabel, FIELD_KIND::Label, "IRF  File"));
    const std::pair<int, const char*> buttons[] = {
        {kLoadIrf, "Load IRF file"},
        {kNullify, "Nullify all Shifts"},
        {kVaryBgr, "Vary all backg. points"},
        {kFixBgr, "Fix all backg. points"},
        {kVaryPos, "Vary all 2Theta_Positions"},
        {kFixPos, "Fix all 2Theta_Positions"},
        {kVaryFwhm, "Vary all Shift-FWHM"},
        {kFixFwhm, "Fix all Shift-FWHM"},
        {kVaryEta, "Vary all Shift-ETA"},
        {kFixEta, "Fix all Shift-ETA"},
        {kFixShifts, "Fix all Shifts"}};
    for (const auto& [id, label] : buttons) f.push_back(Fld(id, FIELD_KIND::PushButton, label));
    f.push_back(Fld(kSaveCalc, FIELD_KIND::CheckBox, "Save Calculated Pattern"));
    f.push_back(Fld(kSingle, FIELD_KIND::CheckBox, "Plot Individual Peaks"));
    f.push_back(Fld(kIdOk, FIELD_KIND::PushButton, "OK/Start Refinement"));
    f.push_back(Fld(kIdCancel, FIELD_KIND::PushButton, "Cancel"));
    WDialogDefine({kFitDialog, "Starting parameters for CWL data profile fitting procedure", {}, f});
}

void put(const hxl::PIK_JOB_TYPE& job, const FIT_CHOICES& c) {
    WGridPutCellReal(kWave, 1, 1, job.lambda1);
    WGridPutCellReal(kWave, 2, 1, job.lambda2);
    WGridPutCellReal(kWave, 3, 1, job.glob[1]);
    WGridPutCellCheckBox(kWave, 4, 1, job.gflag[1]);
    for (int r = 1; r <= 6; ++r) {
        WGridLabelRow(kGlobal, r, kGlobalRows[r - 1]);
        WGridPutCellReal(kGlobal, 1, r, job.glob[static_cast<std::size_t>(kGlobalIndex[r - 1])]);
        WGridPutCellCheckBox(kGlobal, 2, r, job.gflag[static_cast<std::size_t>(kGlobalIndex[r - 1])]);
    }
    for (int r = 1; r <= 2; ++r) {
        WGridLabelRow(kAsym, r, r == 1 ? "S_L" : "D_L");
        WGridPutCellReal(kAsym, 1, r, job.glob[static_cast<std::size_t>(r + 1)]);
        WGridPutCellCheckBox(kAsym, 2, r, job.gflag[static_cast<std::size_t>(r + 1)]);
    }
    WGridRows(kBgr, job.nbac);
    for (int i = 1; i <= job.nbac; ++i) {
        WGridPutCellReal(kBgr, 1, i, job.bx(i));
        WGridPutCellReal(kBgr, 2, i, job.bv(i));
        WGridPutCellCheckBox(kBgr, 3, i, job.bf(i));
    }
    WGridRows(kPeaks, job.npeak);
    for (int k = 1; k <= job.npeak; ++k) {
        WGridPutCellReal(kPeaks, 1, k, job.pos(k));
        WGridPutCellReal(kPeaks, 2, k, job.inten(k));
        WGridPutCellReal(kPeaks, 3, k, job.shf_g(k));
        WGridPutCellReal(kPeaks, 4, k, job.shf_e(k));
        for (int j = 0; j < 4; ++j) WGridPutCellCheckBox(kPeaks, 5 + j, k, job.pf(k)[static_cast<std::size_t>(j)]);
    }
    WDialogPutInteger(kCycles, job.ncyc);
    WDialogPutRadioButton(kIrfNone + c.irf - 1);
    WDialogPutCheckBox(kSaveCalc, c.save_calculated ? 1 : 0);
    WDialogPutCheckBox(kSingle, c.single_peaks ? 1 : 0);
    // Filling the global parameters from a resolution file is not offered yet.
    WDialogFieldState(kLoadIrf, 0);
}

// A column of a grid set to one value, for the vary/fix/nullify buttons.
void fill(int field, int col, const std::string& text) {
    for (int r = 1; r <= WGridRowCount(field); ++r) WGridPutCellString(field, col, r, text);
}

bool button_action(int button) {
    switch (button) {
    case kNullify: fill(kPeaks, 3, "0"), fill(kPeaks, 4, "0"); return true;
    case kVaryBgr: fill(kBgr, 3, "1"); return true;
    case kFixBgr: fill(kBgr, 3, "0"); return true;
    case kVaryPos: fill(kPeaks, 5, "1"); return true;
    case kFixPos: fill(kPeaks, 5, "0"); return true;
    case kVaryFwhm: fill(kPeaks, 7, "1"); return true;
    case kFixFwhm: fill(kPeaks, 7, "0"); return true;
    case kVaryEta: fill(kPeaks, 8, "1"); return true;
    case kFixEta: fill(kPeaks, 8, "0"); return true;
    case kFixShifts: fill(kPeaks, 7, "0"), fill(kPeaks, 8, "0"); return true;
    default: return false;
    }
}

bool cell(int field, int col, int row, float& v) {
    std::string text;
    WGridGetCellString(field, col, row, text);
    int err = 0;
    const double d = IStringToReal(hxl::Trim(text), err);
    if (err != 0 || hxl::Is_Blank(text) || !std::isfinite(d) || std::fabs(d) > 3.4e38) return false;
    v = static_cast<float>(d);
    return true;
}

int check(int field, int col, int row) {
    int v = 0;
    WGridGetCellCheckBox(field, col, row, v);
    return v;
}

std::string on_line(const char* text, int line) {
    char b[16];
    std::snprintf(b, sizeof b, "%4d", line);
    return std::string(text) + b;
}

// The grids back into `job`; the refusal text, or empty.
std::string read_back(hxl::PIK_JOB_TYPE& job, FIT_CHOICES& c) {
    hxl::PIK_JOB_TYPE j = job;
    if (!cell(kWave, 1, 1, j.lambda1) || !cell(kWave, 2, 1, j.lambda2) || !cell(kWave, 3, 1, j.glob[1]))
        return " Error in the wavelength fields!";
    j.gflag[1] = check(kWave, 4, 1);
    for (int r = 1; r <= 6; ++r) {
        const auto g = static_cast<std::size_t>(kGlobalIndex[r - 1]);
        if (!cell(kGlobal, 1, r, j.glob[g])) return " Errors in the Profiles parameters!";
        j.gflag[g] = check(kGlobal, 2, r);
    }
    for (int r = 1; r <= 2; ++r) {
        if (!cell(kAsym, 1, r, j.glob[static_cast<std::size_t>(r + 1)])) return " Errors in the Asymmetry parameters!";
        j.gflag[static_cast<std::size_t>(r + 1)] = check(kAsym, 2, r);
    }
    j.nbac = WGridRowCount(kBgr);
    if (j.nbac < 1) return hxl::kArcNoBackground;
    j.bx = hxl::Array1<float>(j.nbac), j.bv = hxl::Array1<float>(j.nbac), j.bf = hxl::Array1<int>(j.nbac);
    for (int i = 1; i <= j.nbac; ++i) {
        if (!cell(kBgr, 1, i, j.bx(i)) || !cell(kBgr, 2, i, j.bv(i)))
            return on_line(" Error in the Background parameters on line: ", i);
        j.bf(i) = check(kBgr, 3, i);
    }
    j.npeak = WGridRowCount(kPeaks);
    if (j.npeak < 1) return hxl::kArcNoPeak;
    j.pos = hxl::Array1<float>(j.npeak), j.inten = hxl::Array1<float>(j.npeak);
    j.shf_g = hxl::Array1<float>(j.npeak), j.shf_e = hxl::Array1<float>(j.npeak);
    j.pf = hxl::Array1<std::array<int, 4>>(j.npeak);
    for (int k = 1; k <= j.npeak; ++k) {
        if (!cell(kPeaks, 1, k, j.pos(k)) || !cell(kPeaks, 2, k, j.inten(k)) || !cell(kPeaks, 3, k, j.shf_g(k)) ||
            !cell(kPeaks, 4, k, j.shf_e(k)))
            return on_line(" Error in the Peak parameters on line: ", k);
        for (int f = 0; f < 4; ++f) j.pf(k)[static_cast<std::size_t>(f)] = check(kPeaks, 5 + f, k);
    }
    int cycles = 0;
    WDialogGetInteger(kCycles, cycles);
    j.ncyc = cycles > 0 ? cycles : job.ncyc;
    int irf = 1, v = 0;
    WDialogGetRadioButton(kIrfNone, irf);
    c.irf = irf;
    WDialogGetCheckBox(kSaveCalc, v), c.save_calculated = v != 0;
    WDialogGetCheckBox(kSingle, v), c.single_peaks = v != 0;
    job = std::move(j);
    return {};
}

}  // namespace

bool Fit_Start_Dialog(hxl::PIK_JOB_TYPE& job, FIT_CHOICES& choices) {
    define();
    WDialogLoad(kFitDialog);
    put(job, choices);
    bool ok = false;
    for (;;) {
        WDialogShow(-1, -1, 0, Modal);
        const int button = WInfoDialog(4);
        if (button_action(button)) continue;
        if (button != kIdOk) break;
        FIT_CHOICES c = choices;
        const std::string refusal = read_back(job, c);
        if (refusal.empty()) {
            choices = c;
            ok = true;
            break;
        }
        Show_Message(refusal);
    }
    WDialogUnload();
    return ok;
}

}  // namespace zendrite
