// The Profile fitting menu: the mode items, the job from the lists or a job
// file, the dialog, and the run of the fit on the visible part of the first
// profile with its lines on the status bar and its Stop.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <string>
#include <vector>

#include "app/main/calc_mode_commands.h"
#include "app/main/fit_dialog.h"
#include "app/main/menu_groups.h"
#include "app/main/progress_dialog.h"
#include "app/main/tof_fit.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "peaks/arcfit_input.h"
#include "peaks/arcfit_run.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kModePart = 4, kRunPart = 1;
constexpr int kRunText = 1, kRunBar = 2;
const char* const kRangeText = "Select the range for fitting procedure on two Background points";

// The job of the fit while the mode lasts: prepared from the lists or read from a file.
struct FIT_STATE {
    bool prepared = false;
    hxl::PIK_JOB_TYPE job;
    std::string pik;  // the job file read by Load PIK/NEW file; empty: beside the data
    FIT_CHOICES choices;
    bool fitted = false;  // job holds the values of a finished fit
};
FIT_STATE& state() {
    static FIT_STATE s;
    return s;
}

std::size_t at(int s) { return static_cast<std::size_t>(s); }

std::string lower(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

// The job from the peak and background lists inside the visible window.
bool prepare_from_lists(std::string& message) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const DIFFRACTION_PATTERN_TYPE& p = g.pattern[1];
    std::vector<hxl::PEAK_POINT_TYPE> peaks, bgr;
    for (int i = 1; i <= std::min(g.Peak_List.count, kMaxPeaks + 1); ++i) {
        const PEAK_RECORD& r = g.Peak_List.p[at(i)];
        if (r.x >= g.win_xmin && r.x <= g.win_xmax) peaks.push_back({r.x, r.y, r.bgr});
    }
    for (int i = 1; i <= std::min(g.Bgr_List.count, kMaxBgrPoints); ++i) {
        const BGR_RECORD& r = g.Bgr_List.p[at(i)];
        if (r.x >= g.win_xmin && r.x <= g.win_xmax) bgr.push_back({r.x, r.y, 0.0f});
    }
    std::sort(bgr.begin(), bgr.end(), [](const auto& a, const auto& b) { return a.x < b.x; });
    const hxl::WAVELENGTHS_TYPE w = Fit_Wavelengths(p.lambda1, p.lambda2);
    hxl::PIK_JOB_TYPE job;
    job.title = p.title;
    if (!hxl::Arc_Start_Job(hxl::Arc_Data_From_Pattern(p), p.step, peaks, hxl::Arc_Thin_Background(bgr), w.lambda1,
                            w.lambda2, 30, job, message))
        return false;
    // Both wavelengths given and different: the second line is computed with its ratio.
    if (w.lambda2 > 0 && w.lambda2 != w.lambda1) job.inst = 1, job.glob[1] = w.ratio;
    state().job = std::move(job);
    state().pik.clear();
    state().prepared = true;
    return true;
}

void split_name(const DIFFRACTION_PATTERN_TYPE& p, std::string& folder, std::string& stem) {
    folder = hxl::Trim(p.filepath);
    stem = hxl::Trim(p.filename);
    if (const auto dot = stem.find_last_of('.'); dot != std::string::npos && dot > 0) stem.erase(dot);
}

// A new slot holding one curve over the fitted points, drawn as a line.
void add_curve(const std::string& name, const hxl::Array1<float>& x, const hxl::Array1<float>& y) {
    ZENDRITE_STORE& g = zendrite_param_global();
    if (g.nperfiles + 1 > kMaxProfiles) return;
    const int s = ++g.nperfiles;
    DIFFRACTION_PATTERN_TYPE& p = g.pattern[at(s)];
    Clear_Pattern_Record(p);
    Clear_Prf_Info(g.info[at(s)]);
    const DIFFRACTION_PATTERN_TYPE& first = g.pattern[1];
    p.title = name;
    p.filename = name;
    p.scat_var = first.scat_var;
    p.lambda1 = first.lambda1, p.lambda2 = first.lambda2;
    p.npts = x.size();
    p.x = x, p.y = y;
    p.sigma = hxl::Array1<float>(p.npts);
    p.xmin = x(1), p.xmax = x(p.npts);
    p.step = p.npts > 1 ? (p.xmax - p.xmin) / static_cast<float>(p.npts - 1) : 0.0f;
    p.ymin = *std::min_element(y.begin(), y.end()), p.ymax = *std::max_element(y.begin(), y.end());
    g.info[at(s)].prf_name = name;
    g.info[at(s)].prf_type = "CALC";
    g.show_profile[at(s)] = true;
    Reset_Slot_Totals(s);
}

// The calculated curve of slot 1 over the fitted points; elsewhere it follows the data.
void store_result(const hxl::ARC_FIT_RESULT_TYPE& r, bool single) {
    ZENDRITE_STORE& g = zendrite_param_global();
    DIFFRACTION_PATTERN_TYPE& p = g.pattern[1];
    p.ycalc = p.y;
    p.bgr = p.y;
    int j = 1;
    for (int i = 1; i <= p.npts && j <= r.x.size(); ++i)
        if (p.x(i) == r.x(j)) p.ycalc(i) = r.ycalc(j), p.bgr(i) = r.bgr(j), ++j;
    g.plot_calc[1] = true;
    if (single)
        for (std::size_t k = 0; k < r.single.size(); ++k)
            add_curve("Peak #" + std::to_string(k + 1), r.x, r.single[k]);
}

void run_cwl() {
    ZENDRITE_STORE& g = zendrite_param_global();
    FIT_STATE& f = state();
    if (!f.prepared) {
        std::string message;
        if (!Fit_Detection(message) || !prepare_from_lists(message)) {
            if (message != "Cancelled") Show_Message(message);
            Plot_Again();
            return;
        }
    }
    hxl::PIK_JOB_TYPE job = f.job;
    FIT_CHOICES choices = f.choices;
    if (!Fit_Start_Dialog(job, choices)) return;

    const DIFFRACTION_PATTERN_TYPE& p = g.pattern[1];
    hxl::ARC_FIT_OPTIONS_TYPE o;
    split_name(p, o.folder, o.stem);
    o.irf = choices.irf == 2;
    o.save_calculated = choices.save_calculated;
    o.single_peaks = choices.single_peaks;
    o.ask = [](const std::string& question) {
        WMessageBox(YesNo, QuestionIcon, 1, question, "Zendrite-2006");
        return WInfoDialog(4) == kIdOk;
    };
    const int id = Progress_Dialog("Profile fitting", kRunText, kRunBar);
    std::vector<WIN_MESSAGE> later;
    int lines = 0;
    o.status = [id, &lines](const std::string& line) {
        WindowOutStatusBar(kRunPart, line);
        WDialogSelect(id);
        WDialogPutString(kRunText, line);
        WDialogPutProgressBar(kRunBar, ++lines);  // the bar runs busy; its value counts the lines
    };
    o.stop = [id, &later] { return Progress_Cancel_Pressed(id, later); };
    WDialogLoad(id);
    WDialogPutString(kRunText, "Fitting: Cancel or Escape stops at the end of the current iteration");
    WDialogRangeProgressBar(kRunBar, 0, 0);
    WDialogShow(-1, -1, 0, Modeless);
    hxl::ARC_FIT_RESULT_TYPE result;
    std::string message;
    const bool ok = hxl::Arc_Fit(job, hxl::Arc_Data_From_Pattern(p), o, result, message);
    Progress_Close(id, later);
    if (!ok) {
        Show_Message(message);
        return;
    }
    const std::string pik = f.pik.empty() ? hxl::Join_Folder(o.folder, o.stem + ".pik") : f.pik;
    if (!hxl::Write_Pik(pik, result.job, message)) {
        Show_Message(message);
        return;
    }
    char line[120];
    std::snprintf(line, sizeof line, " => Final   Chi2:%15.5f", static_cast<double>(result.chi2));
    WindowOutStatusBar(kRunPart, hxl::Trim(result.info) + line);
    Show_Message(hxl::Trim(result.info) + "\r" + line + (result.stopped ? std::string("\r") + hxl::kArcStoppedLine : ""));
    f.job = result.job;
    f.choices = choices;
    f.fitted = true;
    store_result(result, choices.single_peaks);
    Plot_Again();
}

void start(int item) {
    ZENDRITE_STORE& g = zendrite_param_global();
    if (g.nperfiles < 1) return;
    const std::string v = lower(hxl::Trim(g.pattern[1].scat_var));
    if (v == "tof") {
        Tof_Fit_Run([](hxl::PIK_JOB_TYPE& job, std::string& message) {
            if (!state().prepared && (!Fit_Detection(message) || !prepare_from_lists(message))) return false;
            job = state().job;
            return true;
        });
    } else if (v == "2theta" || v == "omega" || v == "distance" || v == "r.l.u.") {
        (void)item;
        run_cwl();
    } else {
        Show_Message("Fitting procedure is not available for this type of data");
    }
}

void load_job(int item) {
    std::string name;
    WSelectFile("Input PIK/NEW File (*.pik,*.new)|*.pik;*.new|", LoadDialog, name, "Select PIK/NEW file to open");
    if (WInfoDialog(4) != kIdOk || hxl::Is_Blank(name)) return;
    hxl::PIK_JOB_TYPE job;
    std::string message;
    if (Tof_Load_Job(hxl::Trim(name))) {
        start(item);
        return;
    }
    if (!hxl::Read_Pik(hxl::Trim(name), job, message)) {
        Show_Message("Error Reading the PIK file!");
        return;
    }
    FIT_STATE& f = state();
    f.job = std::move(job);
    f.pik = hxl::Trim(name);
    f.prepared = true;
    start(item);
}

void clear_all() {
    ZENDRITE_STORE& g = zendrite_param_global();
    WMenuSetState(40194, 2, 0);
    // The curves a fit added stay only while the first profile is alone.
    g.nperfiles = std::min(g.nperfiles, 1);
    g.prf_loaded = false;
    g.Peak_List.count = 0;
    g.Bgr_List.count = 0;
    g.plot_calc[1] = false;
    state() = FIT_STATE{};
    Tof_Fit_Clear();
    WindowOutStatusBar(kModePart, kRangeText);
    Plot_Again();
}

}  // namespace

void Fit_Store_Curves(const hxl::ARC_FIT_RESULT_TYPE& r, bool single) { store_result(r, single); }

const hxl::PIK_JOB_TYPE* Last_Profile_Fit() { return state().fitted ? &state().job : nullptr; }

void Fit_Command(int item) {
    ZENDRITE_STORE& g = zendrite_param_global();
    switch (item) {
    case 40024:
    case 40095:
        state() = FIT_STATE{};
        Tof_Fit_Clear();
        Calculation_Mode_Command(40095);
        return;
    case 40099:
        state() = FIT_STATE{};
        Tof_Fit_Clear();
        Calculation_Mode_Command(40099);
        return;
    case 40194: {
        if (g.nperfiles < 1) return;
        WMenuSetState(40194, 2, 1);
        WindowOutStatusBar(kModePart, "Insert or delete peaks can be done before fitting procedure");
        std::string message;
        if (Fit_Detection(message) && prepare_from_lists(message)) {
            Plot_Again();
        } else {
            if (message != "Cancelled") Show_Message(message);
            Plot_Again();
        }
        return;
    }
    case 40146: clear_all(); return;
    case 40150: start(item); return;
    case 40224: load_job(item); return;
    default: return;
    }
}

}  // namespace zendrite
