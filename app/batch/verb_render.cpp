// zendrite-batch render: loads files as the File menu does and writes the picture the
// main window would show, drawn on the file's own device.
#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "app/batch/batch_format.h"
#include "app/batch/batch_verbs.h"
#include "app/batch/batch_window.h"
#include "app/present.h"
#include "app/store/add_profile.h"
#include "app/store/load_folder.h"
#include "app/store/open_prf.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/multi_views.h"
#include "graphics/plot.h"
#include "graphics/plot_settings.h"
#include "graphics/plot_state.h"
#include "patterns/format_table.h"
#include "support/fixed_text.h"
#include "support/folder_files.h"

namespace zendrite {
namespace {

// The pictures render can draw: a view name, the routine that readies the store for it
// (false with the refusal) and the one that draws it on the present target once the files
// are in the store and the limits computed.
struct RENDER_VIEW {
    const char* name;
    bool (*ready)(std::string& message);
    void (*draw)(bool log);
};

bool ready_2d(std::string&) { return true; }

void draw_2d(bool log) {
    ZENDRITE_STORE& g = zendrite_param_global();
    if (log) {
        Enter_Multi_Mode(true);
        plot_graph2d(g.nperfiles, g.win_xmin, g.win_xmax, 0.0f, Frame_Y(g.win_ymax, true), true);
    } else {
        plot_graph2d(g.nperfiles, g.win_xmin, g.win_xmax, g.win_ymin, g.win_ymax);
    }
}

// The many-pattern views draw the whole page at the target's size, as in the window.
template <MULTI_VIEW VIEW>
bool ready_multi(std::string& message) {
    if (Enter_Multi_View(VIEW, message)) return true;
    message = "ERROR: " + message;
    return false;
}

template <MULTI_VIEW VIEW>
void draw_multi(bool) {
    std::string message;
    Draw_Multi_View(VIEW, std::max(WInfoWindow(1), 1), std::max(WInfoWindow(2), 1), message);
}

const std::vector<RENDER_VIEW>& views() {
    static const std::vector<RENDER_VIEW> v = {
        {"2d", ready_2d, draw_2d},
        {"contour", ready_multi<MULTI_VIEW::Contour>, draw_multi<MULTI_VIEW::Contour>},
        {"contour-log", ready_multi<MULTI_VIEW::Contour_Log>, draw_multi<MULTI_VIEW::Contour_Log>},
        {"stack", ready_multi<MULTI_VIEW::Stack>, draw_multi<MULTI_VIEW::Stack>},
        {"surface", ready_multi<MULTI_VIEW::Surface>, draw_multi<MULTI_VIEW::Surface>}};
    return v;
}

std::string view_names() {
    std::string s;
    for (const RENDER_VIEW& v : views()) s += (s.empty() ? "" : ", ") + std::string(v.name);
    return s;
}

struct RENDER_ARGS {
    std::vector<std::string> files;
    std::string mode, out, view = "2d", style = "classic";
    PICTURE_OPTIONS picture;
    bool log = false, error_bars = false;
};

// WxH in pixels, or WxHmm in millimetres; plain decimal numbers only.
bool size_option(const std::string& text, PICTURE_OPTIONS& o) {
    std::string t = text;
    const bool mm = t.size() > 2 && t.substr(t.size() - 2) == "mm";
    if (mm) t.resize(t.size() - 2);
    const std::size_t x = t.find_first_of("xX");
    if (x == std::string::npos || t.find_first_not_of("0123456789.xX") != std::string::npos) return false;
    int e1 = 0, e2 = 0;
    o.width = IStringToReal(t.substr(0, x), e1);
    o.height = IStringToReal(t.substr(x + 1), e2);
    o.pixels = !mm;
    return e1 == 0 && e2 == 0 && x > 0 && x + 1 < t.size();
}

// 0 when the arguments are good; else the exit status, with the message on `err`.
int parse(const std::vector<std::string>& args, RENDER_ARGS& r, std::ostream& err) {
    r.picture.width = 1200, r.picture.height = 800, r.picture.pixels = true, r.picture.dpi = 96;
    r.picture.white = false;  // the window's own colours, as it shows them
    bool dpi_given = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const bool valued =
            a == "--format" || a == "--out" || a == "--size" || a == "--dpi" || a == "--view" || a == "--style";
        if (valued && i + 1 >= args.size()) {
            err << "zendrite-batch render: " << a << " needs a value\n";
            return 2;
        }
        if (a == "--format") {
            r.mode = args[++i];
        } else if (a == "--out") {
            r.out = args[++i];
        } else if (a == "--size") {
            if (!size_option(args[++i], r.picture)) {
                err << "zendrite-batch render: --size takes WxH in pixels or WxHmm, not " << args[i] << "\n";
                return 2;
            }
        } else if (a == "--dpi") {
            int e = 0;
            r.picture.dpi = IStringToInteger(args[++i], e);
            dpi_given = true;
            if (e != 0) {
                err << "zendrite-batch render: --dpi takes a whole number, not " << args[i] << "\n";
                return 2;
            }
        } else if (a == "--view") {
            r.view = args[++i];
        } else if (a == "--style") {
            r.style = args[++i];
            if (r.style != "classic" && r.style != "publication") {
                err << "zendrite-batch render: --style takes classic or publication, not " << r.style << "\n";
                return 2;
            }
        } else if (a == "--log") {
            r.log = true;
        } else if (a == "--error-bars") {
            r.error_bars = true;
        } else if (hxl::Starts_With(a, "--")) {
            err << "zendrite-batch render: unknown option " << a << "\n";
            return 2;
        } else {
            r.files.push_back(a);
        }
    }
    if (!r.picture.pixels && !dpi_given) r.picture.dpi = 300;
    if (r.files.empty() || r.out.empty()) {
        err << "zendrite-batch render: give the files and --out OUT\n";
        return 2;
    }
    return 0;
}

// Loads every file; false with the reason when one gives no profile.
bool load(const RENDER_ARGS& r, std::ostream& err) {
    BATCH_FORMAT format;
    if (!r.mode.empty() && !Batch_Format_Option("render", r.mode, format, err)) return false;
    std::vector<std::string> files;
    for (const std::string& f : r.files) {
        if (!hxl::Is_Folder(f)) {
            files.push_back(f);
            continue;
        }
        std::vector<std::string> found, skipped;
        std::vector<int> rows;
        std::string why;
        if (!Folder_Pattern_Files(f, found, rows, skipped, why)) {
            err << why << "\n";
            return false;
        }
        files.insert(files.end(), found.begin(), found.end());
    }
    for (const std::string& f : files) {
        const std::string ext = hxl::Upper_Extension(f);
        if (r.mode.empty() && (ext == ".PRF" || ext == ".XRF")) {
            const PRF_OPEN_RESULT p = Open_Prf_File(f);
            if (!p.ok) {
                err << f << ": " << p.message << "\n";
                return false;
            }
            continue;
        }
        const int row = Batch_Format_Row(f, format, err);
        if (row == 0) return false;
        const LOAD_RESULT l = Load_Data_File(f, row);
        for (const auto& m : l.messages) err << m << "\n";
        if (l.slots.empty()) {
            err << f << ": no profile could be read from it\n";
            return false;
        }
        if (l.limit_reached) break;
    }
    return true;
}

int run_render(const std::vector<std::string>& args, std::ostream&, std::ostream& err) {
    RENDER_ARGS r;
    if (const int status = parse(args, r, err)) return status;
    const RENDER_VIEW* view = nullptr;
    for (const RENDER_VIEW& v : views())
        if (r.view == v.name) view = &v;
    if (!view) {
        err << "zendrite-batch render: unknown view " << r.view << " (" << view_names() << ")\n";
        return 2;
    }
    int w = 0, h = 0;
    std::string message;
    if (Picture_Format(r.out).empty()) {
        err << "zendrite-batch render: Unable to write " << r.out
            << ": its extension names no picture format (png, jpg, bmp, tif, svg, pdf, eps, ps, emf, plt, dxf)\n";
        return 1;
    }
    if (!Picture_Pixels(r.picture, w, h, message)) {
        err << "zendrite-batch render: " << message << "\n";
        return 1;
    }
    Start_Batch_Window("render");
    Reset_Store();
    Enter_None_Mode();
    Plot_Settings().error_bars = r.error_bars;
    Set_Plot_Style(r.style == "publication" ? "Publication" : "Classic");
    if (!load(r, err)) return 1;
    Compute_Plot_Limits();
    if (!view->ready(message)) {
        err << "zendrite-batch render: " << message << "\n";
        return 1;
    }
    const bool log = r.log;
    if (!WPictureExport(r.out, r.picture, [view, log] { view->draw(log); }, message)) {
        err << "zendrite-batch render: " << message << "\n";
        return 1;
    }
    return 0;
}

const bool registered = Register_Batch_Verb(
    {"render", "render FILE... [--format MODE|auto] --out OUT.{png,jpg,bmp,tif,svg,pdf,eps,ps,emf,plt,dxf} "
               "[--size WxH|WxHmm] [--dpi N] [--log] [--view NAME] [--style classic|publication] [--error-bars]",
     "      loads the files as the File menu does and writes the picture the main window\n"
     "      would show, the whole page, 1200 x 800 pixels unless --size says otherwise\n"
     "      (WxHmm in millimetres at --dpi, 300 by default then); --log draws Y in\n"
     "      logarithm; --view names the picture: 2d (the default), contour,\n"
     "      contour-log, stack or surface (the many-pattern views); --style publication\n"
     "      draws on a white page with twelve colours that colour-blind readers tell apart;\n"
     "      --error-bars draws the sigma of the profiles that have one;\n"
     "      the format comes from OUT's extension",
     run_render});

}  // namespace
}  // namespace zendrite
