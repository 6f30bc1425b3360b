// The dialog of the time-of-flight fit: the job in grids and the choices of
// the run, read back with the texts of the constant-wavelength dialog.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "app/main/tof_fit.h"
#include "app/main/zendrite_app.h"
#include "app/main/fit_grid.h"
#include "app/present.h"
#include "peaks/arcfit_run.h"
#include "peaks/timefit_run.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kHeading = 9, kCycles = 10, kGlobal = 11, kDtt = 12, kBgr = 13, kPeaks = 14, kIrfFileLabel = 15,
              kLoadIrf = 16, kVaryBgr = 17, kFixBgr = 18, kVarySigma = 19, kFixSigma = 20, kFixShifts = 21,
              kVaryPos = 22, kFixPos = 23, kVaryInt = 24, kFixInt = 25, kFixAll = 26, kNullify = 27, kSingle = 28,
              kSaveCalc = 29, kMakeIrf = 30;
const char* const kGlobalRows[hxl::kTofGlobals] = {"Alpha", "Beta", "Sig-2", "Sig-1", "Sig-0", "Eta"};



void define() {
    if (WDialogDefined(kTofDialog)) return;
    std::vector<DIALOG_FIELD> f = {
        Fld(kHeading, FIELD_KIND::Label, "Starting parameters for TOF data profile fitting procedure"),
        Fld(kCycles, FIELD_KIND::Integer, "Number of Cycles:"),
        Fit_Grid(kGlobal, "Global Profile Parameters", {Fit_Real_Column("Value"), Fit_Flag_Column("Flag")}, hxl::kTofGlobals),
        Fld(kDtt, FIELD_KIND::Real, "d to TOF Coeff:"),
        Fit_Grid(kBgr, "Background Information", {Fit_Real_Column("TOF"), Fit_Real_Column("Background"), Fit_Flag_Column("Flag")}, 0),
        Fit_Grid(kPeaks, "Peaks Parameters",
             {Fit_Real_Column("TOF-Bragg"), Fit_Real_Column("Intensity"), Fit_Real_Column("Shift-sigma"), Fit_Real_Column("Shift-alpha"), Fit_Real_Column("Shift-beta"),
              Fit_Real_Column("Shift-eta"), Fit_Flag_Column("Pos"), Fit_Flag_Column("Int"), Fit_Flag_Column("Sig"), Fit_Flag_Column("Alp"), Fit_Flag_Column("Bet"), Fit_Flag_Column("Eta")},
             0),
        Fld(kIrfFileLabel, FIELD_KIND::Label, "IRF  File")};
    const std::pair<int, const char*> buttons[] = {{kLoadIrf, "Load IRF file"},
                                                   {kVaryBgr, "Vary all backg. points"},
                                                   {kFixBgr, "Fix all backg. points"},
                                                   {kVarySigma, "Vary all Shift-Sigma"},
                                                   {kFixSigma, "Fix all Shift-Sigma"},
                                                   {kFixShifts, "Fix all Shifts"},
                                                   {kVaryPos, "Vary all Peak_Positions"},
                                                   {kFixPos, "Fix all Peak_Positions"},
                                                   {kVaryInt, "Vary all Peak_Intensities"},
                                                   {kFixInt, "Fix all Peak_Intensities"},
                                                   {kFixAll, "Fix All Parameters"},
                                                   {kNullify, "Nullify all Shifts"}};
    for (const auto& [id, label] : buttons) f.push_back(Fld(id, FIELD_KIND::PushButton, label));
    f.push_back(Fld(kSingle, FIELD_KIND::CheckBox, "Plot Individual Peaks"));
    f.push_back(Fld(kSaveCalc, FIELD_KIND::CheckBox, "Save Calculated Pattern"));
    f.push_back(Fld(kMakeIrf, FIELD_KIND::CheckBox, "Generate an IRF file"));
    f.push_back(Fld(kIdOk, FIELD_KIND::PushButton, "OK/Start Refinement"));
    f.push_back(Fld(kIdCancel, FIELD_KIND::PushButton, "Cancel"));
    WDialogDefine({kTofDialog, "Zendrite: TOF Fitting Procedure", {}, f});
}

void put(const hxl::TOF_JOB_TYPE& job, const FIT_CHOICES& c) {
    WDialogPutInteger(kCycles, job.ncyc);
    for (int r = 1; r <= hxl::kTofGlobals; ++r) {
        WGridLabelRow(kGlobal, r, kGlobalRows[r - 1]);
        WGridPutCellReal(kGlobal, 1, r, job.glob[static_cast<std::size_t>(r)]);
        WGridPutCellCheckBox(kGlobal, 2, r, job.gflag[static_cast<std::size_t>(r)]);
    }
    WDialogPutReal(kDtt, job.dtt);
    WGridRows(kBgr, job.nbac);
    for (int i = 1; i <= job.nbac; ++i) {
        WGridPutCellReal(kBgr, 1, i, job.bx(i));
        WGridPutCellReal(kBgr, 2, i, job.bv(i));
        WGridPutCellCheckBox(kBgr, 3, i, job.bf(i));
    }
    WGridRows(kPeaks, job.npeak);
    for (int k = 1; k <= job.npeak; ++k)
        for (int q = 0; q < 6; ++q) {
            WGridPutCellReal(kPeaks, 1 + q, k, job.pk(k)[static_cast<std::size_t>(q)]);
            WGridPutCellCheckBox(kPeaks, 7 + q, k, job.pf(k)[static_cast<std::size_t>(q)]);
        }
    WDialogPutCheckBox(kSaveCalc, c.save_calculated ? 1 : 0);
    WDialogPutCheckBox(kSingle, c.single_peaks ? 1 : 0);
    // What a TOF resolution file written by this fit would hold is not settled.
    WDialogFieldState(kMakeIrf, 0);
}

// Only what the file holds goes in; the other cells keep what they show.
// The fit's alpha and beta do not change with d: the file's constant terms.
void load_irf() {
    hxl::IRF_TYPE irf;
    if (!Fit_Load_Irf(irf)) return;
    std::string taken;
    // A short record gives only its first values; the cells past them stay.
    const char* const alfbe[] = {" Alpha(alpha0)", " Beta(beta0)"};
    for (int i = 0; i < std::min(irf.n_alfbe, 2); ++i)
        WGridPutCellReal(kGlobal, 1, i + 1, irf.alfbe[i]), taken += alfbe[i];
    const char* const sigma[] = {" Sig-2", " Sig-1", " Sig-0"};
    for (int i = 0; i < irf.n_sigma; ++i) WGridPutCellReal(kGlobal, 1, 3 + i, irf.sigma[i]), taken += sigma[i];
    if (irf.n_d2tof > 0) WDialogPutReal(kDtt, irf.d2tof[0]), taken += " d to TOF Coeff(Dtt1)";
    Fit_Irf_Taken(taken);
}


bool button_action(int button) {
    switch (button) {
    case kLoadIrf: load_irf(); return true;
    case kVaryBgr: Fit_Fill_Column(kBgr, 3, "1"); return true;
    case kFixBgr: Fit_Fill_Column(kBgr, 3, "0"); return true;
    case kVarySigma: Fit_Fill_Column(kPeaks, 9, "1"); return true;
    case kFixSigma: Fit_Fill_Column(kPeaks, 9, "0"); return true;
    case kFixShifts:
        for (int c = 9; c <= 12; ++c) Fit_Fill_Column(kPeaks, c, "0");
        return true;
    case kVaryPos: Fit_Fill_Column(kPeaks, 7, "1"); return true;
    case kFixPos: Fit_Fill_Column(kPeaks, 7, "0"); return true;
    case kVaryInt: Fit_Fill_Column(kPeaks, 8, "1"); return true;
    case kFixInt: Fit_Fill_Column(kPeaks, 8, "0"); return true;
    case kFixAll:
        Fit_Fill_Column(kBgr, 3, "0");
        for (int c = 7; c <= 12; ++c) Fit_Fill_Column(kPeaks, c, "0");
        Fit_Fill_Column(kGlobal, 2, "0");
        return true;
    case kNullify:
        for (int c = 3; c <= 6; ++c) Fit_Fill_Column(kPeaks, c, "0");
        return true;
    default: return false;
    }
}




std::string read_back(hxl::TOF_JOB_TYPE& job, FIT_CHOICES& c) {
    hxl::TOF_JOB_TYPE j = job;
    for (int r = 1; r <= hxl::kTofGlobals; ++r) {
        if (!Fit_Cell(kGlobal, 1, r, j.glob[static_cast<std::size_t>(r)])) return " Errors in the Profiles parameters!";
        j.gflag[static_cast<std::size_t>(r)] = Fit_Check(kGlobal, 2, r);
    }
    std::string text;
    WDialogGetString(kDtt, text);
    int err = 0;
    const double dtt = IStringToReal(hxl::Trim(text), err);
    if (err != 0 || hxl::Is_Blank(text) || !(dtt > 0) || !(dtt < 3.4e38)) return hxl::kTofBadDtt;
    j.dtt = static_cast<float>(dtt);
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
    hxl::Size_Tof_Peaks(j);
    for (int k = 1; k <= j.npeak; ++k)
        for (int q = 0; q < 6; ++q) {
            if (!Fit_Cell(kPeaks, 1 + q, k, j.pk(k)[static_cast<std::size_t>(q)]))
                return Fit_On_Line(" Error in the Peak parameters on line: ", k);
            j.pf(k)[static_cast<std::size_t>(q)] = Fit_Check(kPeaks, 7 + q, k);
        }
    int cycles = 0;
    WDialogGetInteger(kCycles, cycles);
    j.ncyc = cycles > 0 ? cycles : job.ncyc;
    int v = 0;
    WDialogGetCheckBox(kSaveCalc, v), c.save_calculated = v != 0;
    WDialogGetCheckBox(kSingle, v), c.single_peaks = v != 0;
    job = std::move(j);
    return {};
}

}  // namespace

bool Tof_Start_Dialog(hxl::TOF_JOB_TYPE& job, FIT_CHOICES& choices) {
    define();
    WDialogLoad(kTofDialog);
    put(job, choices);
    return Fit_Dialog_Loop(choices, button_action, [&job](FIT_CHOICES& c) { return read_back(job, c); });
}

}  // namespace zendrite
