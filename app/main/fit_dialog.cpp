#include "app/main/fit_dialog.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "app/main/zendrite_app.h"
#include "app/main/fit_grid.h"
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



void define() {
    if (WDialogDefined(kFitDialog)) return;
    std::vector<DIALOG_FIELD> f = {
        Fit_Grid(kWave, "Wavelength", {Fit_Real_Column("Lambda1"), Fit_Real_Column("Lambda2"), Fit_Real_Column("I (Ka2/Ka1)"), Fit_Flag_Column("Flag")}, 1),
        Fit_Grid(kGlobal, "General Profile Parameters", {Fit_Real_Column("Value"), Fit_Flag_Column("Flag")}, 6),
        Fit_Grid(kAsym, "Asymmetry Parameters", {Fit_Real_Column("Value"), Fit_Flag_Column("Flag")}, 2),
        Fit_Grid(kBgr, "Background Information", {Fit_Real_Column("Position"), Fit_Real_Column("Background"), Fit_Flag_Column("Flag")}, 0),
        Fit_Grid(kPeaks, "Peaks Parameters",
             {Fit_Real_Column("Position"), Fit_Real_Column("Intensity"), Fit_Real_Column("Shift-FWHM"), Fit_Real_Column("Shift-Eta"), Fit_Flag_Column("Pos"), Fit_Flag_Column("Int"),
              Fit_Flag_Column("FWHM"), Fit_Flag_Column("Eta")},
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
}

// Only what the file holds goes in; the other cells keep what they show.
void load_irf() {
    hxl::IRF_TYPE irf;
    if (!Fit_Load_Irf(irf)) return;
    std::string taken;
    // A short record gives only its first values; the cells past them stay.
    const int rows[] = {1, 2, 3, 6, 5};  // the file's U V W X Y against the rows U V W Z Eta X
    const char* const uvwxy[] = {" U", " V", " W", " X", " Eta"};
    for (int i = 0; i < irf.n_uvwxy; ++i)
        WGridPutCellReal(kGlobal, 1, rows[i], irf.uvwxy[i]), taken += uvwxy[i];
    const char* const asym[] = {" S_L", " D_L"};
    for (int i = 0; i < std::min(irf.n_asym, 2); ++i)
        WGridPutCellReal(kAsym, 1, i + 1, irf.asym[i]), taken += asym[i];
    const char* const wave[] = {" Lambda1", " Lambda2", " I(Ka2/Ka1)"};
    for (int i = 0; i < irf.n_wave; ++i) WGridPutCellReal(kWave, i + 1, 1, irf.wave[i]), taken += wave[i];
    Fit_Irf_Taken(taken);
}

// A column of a grid set to one value, for the vary/fix/nullify buttons.

bool button_action(int button) {
    switch (button) {
    case kLoadIrf: load_irf(); return true;
    case kNullify: Fit_Fill_Column(kPeaks, 3, "0"), Fit_Fill_Column(kPeaks, 4, "0"); return true;
    case kVaryBgr: Fit_Fill_Column(kBgr, 3, "1"); return true;
    case kFixBgr: Fit_Fill_Column(kBgr, 3, "0"); return true;
    case kVaryPos: Fit_Fill_Column(kPeaks, 5, "1"); return true;
    case kFixPos: Fit_Fill_Column(kPeaks, 5, "0"); return true;
    case kVaryFwhm: Fit_Fill_Column(kPeaks, 7, "1"); return true;
    case kFixFwhm: Fit_Fill_Column(kPeaks, 7, "0"); return true;
    case kVaryEta: Fit_Fill_Column(kPeaks, 8, "1"); return true;
    case kFixEta: Fit_Fill_Column(kPeaks, 8, "0"); return true;
    case kFixShifts: Fit_Fill_Column(kPeaks, 7, "0"), Fit_Fill_Column(kPeaks, 8, "0"); return true;
    default: return false;
    }
}




// The grids back into `job`; the refusal text, or empty.
std::string read_back(hxl::PIK_JOB_TYPE& job, FIT_CHOICES& c) {
    hxl::PIK_JOB_TYPE j = job;
    if (!Fit_Cell(kWave, 1, 1, j.lambda1) || !Fit_Cell(kWave, 2, 1, j.lambda2) || !Fit_Cell(kWave, 3, 1, j.glob[1]))
        return " Error in the wavelength fields!";
    j.gflag[1] = Fit_Check(kWave, 4, 1);
    // Two different wavelengths in the cells (typed or from a resolution
    // file) mean a second line, as they do when the fit starts from the pattern.
    if (j.lambda2 > 0 && j.lambda2 != j.lambda1 && j.inst != 1 && j.inst != 3) j.inst = 1;
    for (int r = 1; r <= 6; ++r) {
        const auto g = static_cast<std::size_t>(kGlobalIndex[r - 1]);
        if (!Fit_Cell(kGlobal, 1, r, j.glob[g])) return " Errors in the Profiles parameters!";
        j.gflag[g] = Fit_Check(kGlobal, 2, r);
    }
    for (int r = 1; r <= 2; ++r) {
        if (!Fit_Cell(kAsym, 1, r, j.glob[static_cast<std::size_t>(r + 1)])) return " Errors in the Asymmetry parameters!";
        j.gflag[static_cast<std::size_t>(r + 1)] = Fit_Check(kAsym, 2, r);
    }
    j.nbac = WGridRowCount(kBgr);
    if (j.nbac < 1) return hxl::kArcNoBackground;
    j.bx = hxl::Array1<float>(j.nbac), j.bv = hxl::Array1<float>(j.nbac), j.bf = hxl::Array1<int>(j.nbac);
    for (int i = 1; i <= j.nbac; ++i) {
        if (!Fit_Cell(kBgr, 1, i, j.bx(i)) || !Fit_Cell(kBgr, 2, i, j.bv(i)))
            return Fit_On_Line(" Error in the Background parameters on line: ", i);
        j.bf(i) = Fit_Check(kBgr, 3, i);
    }
    j.npeak = WGridRowCount(kPeaks);
    if (j.npeak < 1) return hxl::kArcNoPeak;
    j.pos = hxl::Array1<float>(j.npeak), j.inten = hxl::Array1<float>(j.npeak);
    j.shf_g = hxl::Array1<float>(j.npeak), j.shf_e = hxl::Array1<float>(j.npeak);
    j.pf = hxl::Array1<std::array<int, 4>>(j.npeak);
    for (int k = 1; k <= j.npeak; ++k) {
        if (!Fit_Cell(kPeaks, 1, k, j.pos(k)) || !Fit_Cell(kPeaks, 2, k, j.inten(k)) || !Fit_Cell(kPeaks, 3, k, j.shf_g(k)) ||
            !Fit_Cell(kPeaks, 4, k, j.shf_e(k)))
            return Fit_On_Line(" Error in the Peak parameters on line: ", k);
        for (int f = 0; f < 4; ++f) j.pf(k)[static_cast<std::size_t>(f)] = Fit_Check(kPeaks, 5 + f, k);
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
    return Fit_Dialog_Loop(choices, button_action, [&job](FIT_CHOICES& c) { return read_back(job, c); });
}

}  // namespace zendrite
