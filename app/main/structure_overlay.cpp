// File, "Open structure...": a structure's calculated pattern over the shown
// profile, scaled to it by least squares on the scale alone, with the ticks of
// its reflections; each structure opened adds a phase in a colour of its own.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <numbers>

#include "app/main/menu_groups.h"
#include "app/main/structure_settings.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "crystal/powder_calc.h"
#include "crystal/reflections.h"
#include "crystal/structure.h"
#include "graphics/curve_draw.h"
#include "graphics/plot.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

struct PHASE_TYPE {
    std::string file;
    hxl::STRUCTURE_TYPE st;
    std::vector<hxl::CALC_REFLECTION_TYPE> refl;
    std::vector<hxl::POWDER_LINE_TYPE> lines;
    double lambda = 0;
    // The scaled profile at the points of the pattern, each point by its 2theta
    // at `lambda`, so that it follows the profile into d, Q or s.
    std::vector<double> tth;
    std::vector<float> y;
    double scale = 0;
    hxl::LINE_SHAPE_TYPE shape;
    int colour = 0;
};

std::vector<PHASE_TYPE>& phases() {
    static std::vector<PHASE_TYPE> p;
    return p;
}

// Not red: the profiles are drawn in red.
const int kColours[] = {WRGB(0, 0, 230), WRGB(0, 150, 0), WRGB(200, 0, 200), WRGB(230, 130, 0), WRGB(0, 150, 160)};

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

// The X space of the profiles (as converted) when a calculated pattern can follow it; false in TOF and others.
bool phase_space(hxl::HKL_XSPACE& space) {
    std::string message;
    return hxl::Hkl_XSpace_From_Name(zendrite_param_global().xspace, space, message) && space != hxl::HKL_XSPACE::TOF;
}

// A 2theta at lambda in the X space of the plot.
bool place(hxl::HKL_XSPACE space, double tth, double lambda, float& x) {
    const float s = static_cast<float>(std::sin(tth * std::numbers::pi / 360) / lambda);
    return hxl::Hkl_Position(space, s, static_cast<float>(lambda), 0, 0, x);
}

void overlay() {
    const FRAME_LIMITS& f = Graphics_State().frame;
    if (!f.drawn || phases().empty()) return;
    const int slot = First_Shown_Slot();
    hxl::HKL_XSPACE space = hxl::HKL_XSPACE::TWOTHETA;
    if (slot < 1 || !phase_space(space)) {
        WindowOutStatusBar(4, "Calculated patterns of structures are drawn over profiles in 2theta, d, Q or s");
        return;
    }
    const float h = f.ymax - f.ymin;
    std::vector<float> x, y;
    for (const PHASE_TYPE& ph : phases()) {
        CURVE_LOOK look;
        look.line_type = 0;
        look.line_colour = ph.colour;
        look.line_width = 1;
        x.clear(), y.clear();
        for (std::size_t i = 0; i < ph.tth.size(); ++i)
            if (float at = 0; std::isfinite(ph.tth[i]) && place(space, ph.tth[i], ph.lambda, at))
                x.push_back(at), y.push_back(ph.y[i]);
        if (!x.empty()) Draw_Curve(x.data(), y.data(), static_cast<int>(x.size()), f.log, look);
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
            float at = 0;
            if (!place(space, l.tth, ph.lambda, at) || at < f.xmin || at > f.xmax) continue;
            IGrMoveTo(at, base);
            IGrLineTo(at, base + (0.01f + 0.05f * static_cast<float>(l.intensity) / 100) * h);
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
    hxl::HKL_XSPACE space = hxl::HKL_XSPACE::TWOTHETA;
    if (!phase_space(space)) {
        Show_Message("The calculated pattern is drawn over profiles in 2theta, d, Q or s; these are in " +
                     hxl::Trim(g.xspace));
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
    PHASE_SETTINGS set;
    if (!Structure_Phase_Settings(p, set)) return;
    const int n = std::min(p.npts, std::min(p.x.size(), p.y.size()));
    if (n < 2) {
        Show_Message("The shown profile has too few points");
        return;
    }
    // The points by rising 2theta at the chosen wavelength (d runs the other way);
    // points with none (d below lambda/2) take no part.
    std::vector<double> tth(static_cast<std::size_t>(n));
    std::vector<int> order;
    for (int i = 0; i < n; ++i) {
        double t = 0;
        tth[static_cast<std::size_t>(i)] =
            hxl::Hkl_Two_Theta(space, p.x(i + 1), set.calc.lambda, t) ? t : std::numeric_limits<double>::quiet_NaN();
        if (std::isfinite(tth[static_cast<std::size_t>(i)])) order.push_back(i);
    }
    if (order.size() < 2) {
        Show_Message("No point of the shown profile has a 2theta at this wavelength");
        return;
    }
    std::sort(order.begin(), order.end(), [&tth](int a, int b) {
        return tth[static_cast<std::size_t>(a)] < tth[static_cast<std::size_t>(b)];
    });
    std::vector<double> rising(order.size()), obs(order.size());
    for (std::size_t k = 0; k < order.size(); ++k) {
        rising[k] = tth[static_cast<std::size_t>(order[k])];
        obs[k] = p.y(order[k] + 1);
    }
    set.calc.tth_min = std::max(0.01, rising.front() - 1);
    set.calc.tth_max = std::min(179.0, rising.back() + 1);
    std::string shown;
    // Every structure of the file becomes a phase.
    std::vector<PHASE_TYPE> added;
    for (hxl::STRUCTURE_TYPE& st : list) {
        PHASE_TYPE ph;
        ph.file = file;
        ph.st = std::move(st);
        std::vector<std::string> notes;
        if (!hxl::Calc_Powder_Reflections(ph.st, set.calc, ph.refl, notes, message)) {
            Show_Message("Structure " + ph.st.block + ": " + message);
            return;
        }
        ph.lines = hxl::Powder_Lines(ph.refl);
        std::vector<double> calc;
        hxl::Calc_Profile(ph.refl, rising.data(), static_cast<int>(rising.size()), set.shape, calc);
        ph.scale = hxl::Scale_To_Data(obs, calc);
        ph.lambda = set.calc.lambda;
        ph.shape = set.shape;
        ph.tth.resize(order.size());
        ph.y.resize(order.size());
        // Kept in the order of the profile's points, so that the curve is drawn along them.
        std::vector<std::size_t> back(order.size());
        for (std::size_t k = 0; k < order.size(); ++k) back[k] = k;
        std::sort(back.begin(), back.end(), [&order](std::size_t a, std::size_t b) { return order[a] < order[b]; });
        for (std::size_t k = 0; k < back.size(); ++k) {
            ph.tth[k] = rising[back[k]];
            ph.y[k] = static_cast<float>(ph.scale * calc[back[k]]);
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
    char buf[320];
    for (const PHASE_TYPE& ph : phases()) {
        double top = 0;
        for (float v : ph.y) top = std::max(top, static_cast<double>(v));
        const hxl::LINE_SHAPE_TYPE& w = ph.shape;
        std::snprintf(buf, sizeof buf,
                      "phase %s lines %zu scale %.6g calc_max %.6g lambda %.6g widths %s %g %g %g %g %g %g %g %g\n",
                      ph.st.block.c_str(), ph.lines.size(), ph.scale, top, ph.lambda, w.tch ? "tch" : "caglioti", w.u,
                      w.v, w.w, w.z, w.eta, w.eta_x, w.lx, w.ly);
        out += buf;
    }
    return out;
}

}  // namespace zendrite
