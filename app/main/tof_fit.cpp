// The run of the time-of-flight fit from the Profile fitting menu: the job
// kept, loaded or made from the lists, its dialog, the fit on the first
// profile with its status lines and Stop, the job file and the curves.
#include "app/main/tof_fit.h"

#include <cstdio>
#include <vector>

#include "app/main/menu_groups.h"
#include "app/main/progress_dialog.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "peaks/arcfit_input.h"
#include "peaks/timefit_pik.h"
#include "peaks/timefit_run.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kRunPart = 1, kRunText = 1, kRunBar = 2;

struct TOF_STATE {
    bool held = false;
    hxl::TOF_JOB_TYPE job;
    std::string pik;  // the job file loaded; empty: beside the data
    FIT_CHOICES choices;
};
TOF_STATE& state() {
    static TOF_STATE s;
    return s;
}

}  // namespace

bool Tof_Load_Job(const std::string& file) {
    hxl::PIK_JOB_TYPE cw;
    hxl::TOF_JOB_TYPE job;
    bool tof = false;
    std::string message;
    if (!hxl::Read_Any_Pik(file, cw, job, tof, message) || !tof) return false;
    state().job = std::move(job);
    state().pik = file;
    state().held = true;
    return true;
}

void Tof_Fit_Clear() { state() = TOF_STATE{}; }

void Tof_Fit_Run(const std::function<bool(hxl::PIK_JOB_TYPE& start, std::string& message)>& start) {
    ZENDRITE_STORE& g = zendrite_param_global();
    TOF_STATE& f = state();
    const DIFFRACTION_PATTERN_TYPE& p = g.pattern[1];
    hxl::TOF_JOB_TYPE job = f.job;
    if (!f.held) {
        hxl::PIK_JOB_TYPE cw;
        std::string message;
        if (!start(cw, message)) {
            if (message != "Cancelled") Show_Message(message);
            Plot_Again();
            return;
        }
        // Dtt1 of the pattern, when it has one; else the dialog asks.
        hxl::Tof_Job_From_Start(cw, p.lambda1 > 0 ? p.lambda1 : 0.0f, job);
        job.title = p.title;
    }
    FIT_CHOICES choices = f.choices;
    if (!Tof_Start_Dialog(job, choices)) return;

    hxl::ARC_FIT_OPTIONS_TYPE o;
    o.folder = hxl::Trim(p.filepath);
    o.stem = hxl::Trim(p.filename);
    if (const auto dot = o.stem.find_last_of('.'); dot != std::string::npos && dot > 0) o.stem.erase(dot);
    o.save_calculated = choices.save_calculated;
    o.single_peaks = choices.single_peaks;
    o.ask = [](const std::string& question) {
        WMessageBox(YesNo, QuestionIcon, 1, question, "Zendrite-2006");
        return WInfoDialog(4) == kIdOk;
    };
    const int id = Progress_Dialog("Profile fitting", kRunText, kRunBar);
    std::vector<WIN_MESSAGE> later;
    o.status = [id](const std::string& line) {
        WindowOutStatusBar(kRunPart, line);
        WDialogSelect(id);
        WDialogPutString(kRunText, line);
    };
    o.stop = [id, &later] { return Progress_Cancel_Pressed(id, later); };
    WDialogLoad(id);
    WDialogPutString(kRunText, "Fitting: Cancel stops at the end of the current iteration");
    WDialogRangeProgressBar(kRunBar, 0, 0);
    WDialogShow(-1, -1, 0, Modeless);
    hxl::TOF_FIT_RESULT_TYPE result;
    std::string message;
    const bool ok = hxl::Tof_Fit(job, hxl::Arc_Data_From_Pattern(p), o, result, message);
    Progress_Close(id, later);
    if (!ok) {
        Show_Message(message);
        return;
    }
    const std::string pik = f.pik.empty() ? hxl::Join_Folder(o.folder, o.stem + ".pik") : f.pik;
    if (!hxl::Write_Tof_Pik(pik, result.job, message)) {
        Show_Message(message);
        return;
    }
    char line[120];
    std::snprintf(line, sizeof line, " => Final   Chi2:%15.5f", static_cast<double>(result.chi2));
    WindowOutStatusBar(kRunPart, hxl::Trim(result.info) + line);
    Show_Message(hxl::Trim(result.info) + "\r" + line + (result.stopped ? std::string("\r") + hxl::kArcStoppedLine : ""));
    f.job = result.job;
    f.held = true;
    f.choices = choices;
    hxl::ARC_FIT_RESULT_TYPE curves;
    curves.x = result.x, curves.ycalc = result.ycalc, curves.bgr = result.bgr, curves.single = result.single;
    Fit_Store_Curves(curves, choices.single_peaks);
    Plot_Again();
}

}  // namespace zendrite
