// The automatic searches of the Peak detection and Background menus: the
// conditions dialogs, the search on the plot window of the first profile,
// and the copy of the result into the lists that the plot draws.
#include <algorithm>
#include <string>
#include <vector>

#include "app/main/commands.h"
#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "peaks/peak_lists.h"
#include "peaks/search_points.h"
#include "support/fixed_text.h"
#if ZD_WITH_PLOT
#include "graphics/mouse.h"
#endif

namespace zendrite {

namespace {

constexpr int kPeakDialog = 1960, kBgrDialog = 1961;
constexpr int kPeakThreshold = 1, kShoulder = 2, kBkgThreshold = 3, kIterations = 4, kTypeLabel = 9,
              kSingle = 5;  // +1..+3 the doublets

// The settings of the conditions dialogs, kept for the whole run.
hxl::SEARCH_CONDITIONS_TYPE& conditions() {
    static hxl::SEARCH_CONDITIONS_TYPE c;
    return c;
}

// The wavelengths the peak command hands to the fit; a zero first one: not chosen yet.
hxl::WAVELENGTHS_TYPE& fit_wavelengths() {
    static hxl::WAVELENGTHS_TYPE w{0.0f, 0.0f, 1.0f};
    return w;
}

DIALOG_FIELD real(int id, const char* label) { return Fld(id, FIELD_KIND::Real, label); }

void define_dialogs() {
    if (!WDialogDefined(kPeakDialog)) {
        std::vector<DIALOG_FIELD> f = {real(kPeakThreshold, ": peak_threshold"),
                                       real(kShoulder, ": shoulder_threshold"), real(kBkgThreshold, ": bkg_threshold"),
                                       Fld(kIterations, FIELD_KIND::Integer, ": Iterations"),
                                       Fld(kTypeLabel, FIELD_KIND::Label, "Peak type")};
        const char* types[] = {"Single peaks", "doublets: (Cu-Ka)", "doublets: (Mo-Ka)", "doublets: (Co-Ka)"};
        for (int k = 0; k < 4; ++k) {
            DIALOG_FIELD r = Fld(kSingle + k, FIELD_KIND::Radio, types[k]);
            r.group = kSingle;
            f.push_back(r);
        }
        WDialogDefine({kPeakDialog, "Peaks detection condition", {}, f});
    }
    if (!WDialogDefined(kBgrDialog))
        WDialogDefine({kBgrDialog, "Background detect condition", {},
                       {real(kBkgThreshold, ": bkg_threshold"), Fld(kIterations, FIELD_KIND::Integer, ": Iterations")}});
}

// False when the user cancelled; the settings change only on OK.
bool ask_conditions(bool background) {
    define_dialogs();
    hxl::SEARCH_CONDITIONS_TYPE& c = conditions();
    WDialogLoad(background ? kBgrDialog : kPeakDialog);
    WDialogPutReal(kBkgThreshold, c.bkg_threshold);
    WDialogPutInteger(kIterations, c.iterations);
    if (!background) {
        WDialogPutReal(kPeakThreshold, c.peak_threshold);
        WDialogPutReal(kShoulder, c.shoulder_threshold);
        WDialogPutRadioButton(kSingle + std::clamp(c.peak_type, 1, 4) - 1);
    }
    WDialogShow(-1, -1, 0, Modal);
    const bool ok = WInfoDialog(4) == kIdOk;
    if (ok) {
        WDialogGetReal(kBkgThreshold, c.bkg_threshold);
        WDialogGetInteger(kIterations, c.iterations);
        if (!background) {
            WDialogGetReal(kPeakThreshold, c.peak_threshold);
            WDialogGetReal(kShoulder, c.shoulder_threshold);
            int radio = 1;
            WDialogGetRadioButton(kSingle, radio);
            c.peak_type = radio;
        }
    }
    WDialogUnload();
    return ok;
}

// One of the three commands; -1 with `status` when the list was not filled.
int auto_search(int item, std::string& status) {
    ZENDRITE_STORE& g = zendrite_param_global();
    const bool background = item == 40159, satellites = item == 40180;
    status.clear();
    if (g.nperfiles < 1) {
        status = "No profile is loaded";
        return -1;
    }
    if (!ask_conditions(background)) {
        status = "Cancelled";
        return -1;
    }
    const DIFFRACTION_PATTERN_TYPE& p = g.pattern[1];
    if (item == 40092) fit_wavelengths() = hxl::Peak_Type_Wavelengths(conditions().peak_type, p.lambda1);
    const hxl::SEARCH_FILE_TYPE file{"", hxl::Join_Folder(p.filepath, p.filename), p.instr, true};
    hxl::PKB_TYPE r;
    const char* mode = background ? "background" : satellites ? "satellites" : " ";
    const int n = hxl::Search_Points(p, g.win_xmin, g.win_xmax, mode, conditions(), file, r);
    if (hxl::ERR_Search) {
        status = hxl::Cut(hxl::ERR_Search_Mess, 80);
        return -1;
    }
    if (n == 0) {
        status = "No peak stands above its background";
        return -1;
    }
    std::vector<hxl::PEAK_POINT_TYPE> list;
    const bool ok = background ? hxl::Background_For_List(r, list, status)
                               : hxl::Peaks_For_List(r, hxl::Profile_Step(p), !satellites, list, status);
    if (!ok) return -1;
    if (background) {
        g.Bgr_List.count = static_cast<int>(list.size());
        for (std::size_t i = 0; i < list.size(); ++i) g.Bgr_List.p[i + 1] = {list[i].x, list[i].y};
    } else {
        g.Peak_List.count = static_cast<int>(list.size());
        for (std::size_t i = 0; i < list.size(); ++i) g.Peak_List.p[i + 1] = {list[i].x, list[i].y, list[i].bgr};
    }
    return 0;
}

// The background under x from the background points (straight lines between
// them, the end values beyond); 0 without points.
float Background_Under(float x) {
    const BGR_LIST_TYPE& b = zendrite_param_global().Bgr_List;
    const int n = std::clamp(b.count, 0, kMaxBgrPoints);
    if (n == 0) return 0.0f;
    if (x <= b.p[1].x) return b.p[1].y;
    for (int i = 2; i <= n; ++i) {
        const BGR_RECORD &a = b.p[static_cast<std::size_t>(i - 1)], &c = b.p[static_cast<std::size_t>(i)];
        if (x <= c.x) return c.x > a.x ? a.y + (c.y - a.y) * (x - a.x) / (c.x - a.x) : c.y;
    }
    return b.p[static_cast<std::size_t>(n)].y;
}

}  // namespace

bool Fit_Detection(std::string& status) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    if (g.Bgr_List.count < 2 && auto_search(40159, status) != 0) return false;
    if (g.Peak_List.count < 1 && auto_search(40092, status) != 0) return false;
    return true;
}

hxl::WAVELENGTHS_TYPE Fit_Wavelengths(float lambda1, float lambda2) {
    const hxl::WAVELENGTHS_TYPE& w = fit_wavelengths();
    return w.lambda1 > 0 ? w : hxl::WAVELENGTHS_TYPE{lambda1, lambda2, 0.5f};
}

int Peak_Search_Type() { return std::clamp(conditions().peak_type, 1, 4); }

void Peak_Zone_Search(int) {
#if ZD_WITH_PLOT
    ZENDRITE_STORE& g = zendrite_param_global();
    if (g.nperfiles < 1 || g.calc_mode != 2) return;
    Mouse_State().zone_search = true;
    WCursorShape(3);
    WindowOutStatusBar(5, "Peaks allocation: Search peaks in zone");
#endif
}

void Search_Zone_Peaks(float low, float high) {
    ZENDRITE_STORE& g = zendrite_param_global();
    WindowOutStatusBar(5, "Peaks allocation: ");
    if (g.nperfiles < 1) return;
    hxl::PKB_TYPE r;
    std::string message;
    const bool whole = hxl::Search_Peaks_In_Zone(g.pattern[1], low, high, hxl::kListLimit, r, message);
    if (!whole && r.np == 0) {
        Show_Message(message);
        return;
    }
    // The zone's peaks replace those the list had inside the zone.
    std::vector<PEAK_RECORD> kept;
    for (int i = 1; i <= std::clamp(g.Peak_List.count, 0, kMaxPeaks + 1); ++i) {
        const PEAK_RECORD& q = g.Peak_List.p[static_cast<std::size_t>(i)];
        if (q.x < low || q.x > high) kept.push_back(q);
    }
    std::vector<PEAK_RECORD> found;
    for (int i = 1; i <= r.np; ++i) found.push_back({r.x(i), r.y(i), Background_Under(r.x(i))});
    if (kept.size() + found.size() > static_cast<std::size_t>(kMaxPeaks)) {
        Show_Message(hxl::kMsgMaxPeaks);
        return;
    }
    kept.insert(kept.end(), found.begin(), found.end());
    std::stable_sort(kept.begin(), kept.end(), [](const PEAK_RECORD& a, const PEAK_RECORD& b) { return a.x < b.x; });
    g.Peak_List.count = static_cast<int>(kept.size());
    std::copy(kept.begin(), kept.end(), g.Peak_List.p.begin() + 1);
    if (!whole) Show_Message(message);
    Plot_Again();
}

void Peak_Auto_Search(int item) {
    std::string status;
    const int rc = auto_search(item, status);
    Show_Command_Result(rc != 0, status);
    if (rc == 0) Plot_Again();
}

}  // namespace zendrite
