// File, "Open structure...": a structure's calculated pattern over the shown
// profile, scaled to it by least squares on the scale alone, with the ticks of
// its reflections; each structure opened adds a phase in a colour of its own.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>

#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "crystal/powder_calc.h"
#include "crystal/structure.h"
#include "graphics/curve_draw.h"
#include "graphics/plot.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kPhaseDialog = 1986, kXrays = 10, kNeutrons = 11, kLambda = 12, kFwhm = 13, kEta = 14;

struct PHASE_TYPE {
    std::string file;
    hxl::STRUCTURE_TYPE st;
    std::vector<hxl::CALC_REFLECTION_TYPE> refl;
    std::vector<hxl::POWDER_LINE_TYPE> lines;
    std::vector<float> x, y;  // the scaled profile at the points of the pattern
    double scale = 0;
    int colour = 0;
};

std::vector<PHASE_TYPE>& phases() {
    static std::vector<PHASE_TYPE> p;
    return p;
}

// Not red: the profiles are drawn in red.
const int kColours[] = {WRGB(0, 0, 230), WRGB(0, 150, 0), WRGB(200, 0, 200), WRGB(230, 130, 0), WRGB(0, 150, 160)};

void define() {
    if (WDialogDefined(kPhaseDialog)) return;
    const DIALOG_FIELD x = Radio(kXrays, "X-rays", kXrays), n = Radio(kNeutrons, "Neutrons", kXrays);
    WDialogDefine({kPhaseDialog, "Calculated pattern of a structure", {},
                   {x, n, Fld(kLambda, FIELD_KIND::Real, "Wavelength (A)"), Fld(kFwhm, FIELD_KIND::Real, "FWHM (deg)"),
                    Fld(kEta, FIELD_KIND::Real, "Eta (Lorentzian fraction)")}});
}

// The settings, from the profile and the user; false when given up or refused.
bool settings(const DIFFRACTION_PATTERN_TYPE& p, hxl::POWDER_CALC_SETTINGS& set, double& fwhm, double& eta) {
    define();
    WDialogLoad(kPhaseDialog);
    WDialogPutRadioButton(hxl::Starts_With(hxl::Lower(p.diff_kind), "neutron") ? kNeutrons : kXrays);
    WDialogPutReal(kLambda, p.lambda1 > 0 ? p.lambda1 : 1.5406f, "(f10.5)");
    WDialogPutReal(kFwhm, 0.1, "(f10.4)");
    WDialogPutReal(kEta, 0.5, "(f10.4)");
    WDialogShow(-1, -1, 0, Modal);
    if (WInfoDialog(4) != kIdOk) {
        WDialogUnload();
        return false;
    }
    int radio = 1;
    double lambda = -1;
    fwhm = -1;
    eta = -1;
    WDialogGetRadioButton(kXrays, radio);
    WDialogGetReal(kLambda, lambda);
    WDialogGetReal(kFwhm, fwhm);
    WDialogGetReal(kEta, eta);
    WDialogUnload();
    set.neutron = radio == 2;
    set.lambda = lambda;
    if (!(lambda > 0 && lambda < 100)) {
        Show_Message("Bad wavelength");
        return false;
    }
    if (!(fwhm > 0 && fwhm < 45) || !(eta >= 0 && eta <= 1)) {
        Show_Message("The FWHM must be positive and Eta between 0 and 1");
        return false;
    }
    return true;
}

// The listing of a structure with its Wyckoff letters, and how the phase was fitted.
std::string listing(const PHASE_TYPE& ph) {
    const hxl::STRUCTURE_TYPE& st = ph.st;
    char buf[200];
    std::string t = "Structure " + st.block + " of " + std::filesystem::path(ph.file).filename().string() + "\r";
    std::snprintf(buf, sizeof buf, "Cell: %.5f %.5f %.5f %.3f %.3f %.3f\r", st.cell[0], st.cell[1], st.cell[2],
                  st.cell[3], st.cell[4], st.cell[5]);
    t += buf;
    t += "Space group: " + st.sg_symbol + (st.sg.number > 0 ? " (" + std::to_string(st.sg.number) + ")" : "") + "\r";
    for (const hxl::ATOM_SITE_TYPE& a : st.atoms) {
        std::snprintf(buf, sizeof buf, "%-6s %-5s %8.5f %8.5f %8.5f  B %.3f  occ %.3f  %d%c\r", a.label.c_str(),
                      a.type.c_str(), a.x[0], a.x[1], a.x[2], a.biso, a.occ, a.mult, a.wyckoff);
        t += buf;
    }
    std::snprintf(buf, sizeof buf, "Lines: %zu, scale to the data: %.6g", ph.lines.size(), ph.scale);
    return t + buf;
}

bool in_two_theta(const DIFFRACTION_PATTERN_TYPE& p) {
    const std::string xs = hxl::Lower(hxl::Trim(p.scat_var));
    return xs == "2theta" || xs == "omega";
}

void overlay() {
    const FRAME_LIMITS& f = Graphics_State().frame;
    if (!f.drawn || phases().empty()) return;
    // Positions are in 2theta: over a profile converted to another X space they would lie.
    const int slot = First_Shown_Slot();
    if (slot < 1 || !in_two_theta(zendrite_param_global().pattern[static_cast<std::size_t>(slot)])) {
        WindowOutStatusBar(4, "Calculated patterns of structures are drawn over profiles in 2theta only");
        return;
    }
    const float h = f.ymax - f.ymin;
    for (const PHASE_TYPE& ph : phases()) {
        CURVE_LOOK look;
        look.line_type = 0;
        look.line_colour = ph.colour;
        look.line_width = 1;
        if (!ph.x.empty()) Draw_Curve(ph.x.data(), ph.y.data(), static_cast<int>(ph.x.size()), f.log, look);
    }
    // The ticks stand in a row for each phase under the curves, as high as the line is strong.
    WindowSelect(kRootWindow);
    IGrSelect(1, kRootWindow);
    IGrPlotMode(PlotNormal);
    IPgToGrUnits();
    IGrLineWidth(1);
    int k = 0;
    for (const PHASE_TYPE& ph : phases()) {
        IGrColourN(ph.colour);
        const float base = f.ymin + (0.01f + 0.07f * static_cast<float>(k)) * h;
        for (const hxl::POWDER_LINE_TYPE& l : ph.lines) {
            if (l.tth < f.xmin || l.tth > f.xmax) continue;
            IGrMoveTo(static_cast<float>(l.tth), base);
            IGrLineTo(static_cast<float>(l.tth), base + (0.01f + 0.05f * static_cast<float>(l.intensity) / 100) * h);
        }
        ++k;
    }
}

}  // namespace

void File_Open_Structure(int) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const int slot = First_Shown_Slot();
    if (slot < 1) {
        Show_Message("Open a pattern first: the calculated pattern is drawn over the shown profile");
        return;
    }
    const DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(slot)];
    if (!in_two_theta(p)) {
        Show_Message("The calculated pattern is drawn over profiles in 2theta; this one is in " + hxl::Trim(p.scat_var));
        return;
    }
    std::string file;
    WSelectFile("Structure files (*.cif,*.res,*.ins,*.shx,*.qvl,*.pcr)|*.cif;*.res;*.ins;*.shx;*.qvl;*.pcr|",
                LoadDialog, file, "Open structure");
    if (WInfoDialog(4) != kIdOk || hxl::Is_Blank(file)) return;
    file = hxl::Trim(file);
    std::vector<hxl::STRUCTURE_TYPE> list;
    std::string message;
    if (!hxl::Read_Structure_File(file, list, message)) {
        Show_Message(message);
        return;
    }
    hxl::POWDER_CALC_SETTINGS set;
    double fwhm = 0.1, eta = 0.5;
    if (!settings(p, set, fwhm, eta)) return;
    const int n = std::min(p.npts, std::min(p.x.size(), p.y.size()));
    if (n < 2) {
        Show_Message("The shown profile has too few points");
        return;
    }
    set.tth_min = std::max(0.01, static_cast<double>(p.x(1)) - 1);
    set.tth_max = std::min(179.0, static_cast<double>(p.x(n)) + 1);
    std::string shown;
    // Every structure of the file becomes a phase.
    std::vector<PHASE_TYPE> added;
    for (hxl::STRUCTURE_TYPE& st : list) {
        PHASE_TYPE ph;
        ph.file = file;
        ph.st = std::move(st);
        std::vector<std::string> notes;
        if (!hxl::Calc_Powder_Reflections(ph.st, set, ph.refl, notes, message)) {
            Show_Message("Structure " + ph.st.block + ": " + message);
            return;
        }
        ph.lines = hxl::Powder_Lines(ph.refl);
        std::vector<double> x(static_cast<std::size_t>(n)), obs(static_cast<std::size_t>(n)), calc;
        for (int i = 1; i <= n; ++i) {
            x[static_cast<std::size_t>(i - 1)] = p.x(i);
            obs[static_cast<std::size_t>(i - 1)] = p.y(i);
        }
        hxl::Calc_Profile(ph.refl, x.data(), n, 0, 0, fwhm * fwhm, eta, calc);
        ph.scale = hxl::Scale_To_Data(obs, calc);
        for (int i = 0; i < n; ++i) {
            ph.x.push_back(static_cast<float>(x[static_cast<std::size_t>(i)]));
            ph.y.push_back(static_cast<float>(ph.scale * calc[static_cast<std::size_t>(i)]));
        }
        ph.colour = kColours[(phases().size() + added.size()) % std::size(kColours)];
        for (const std::string& note : notes) shown += note + "\r";
        shown += listing(ph) + "\r";
        added.push_back(std::move(ph));
    }
    for (PHASE_TYPE& ph : added) phases().push_back(std::move(ph));
    Show_Message(shown.substr(0, shown.size() - 1));
    Plot_Again();
}

void Clear_Structure_Phases() { phases().clear(); }

void Connect_Structure_Overlay() { Graphics_Hooks().structure_overlay = overlay; }

std::string Structure_Overlay_Dump() {
    std::string out;
    char buf[160];
    for (const PHASE_TYPE& ph : phases()) {
        double top = 0;
        for (float v : ph.y) top = std::max(top, static_cast<double>(v));
        std::snprintf(buf, sizeof buf, "phase %s lines %zu scale %.6g calc_max %.6g\n", ph.st.block.c_str(),
                      ph.lines.size(), ph.scale, top);
        out += buf;
    }
    return out;
}

}  // namespace zendrite
