// The 2D mode's window: frame picture, colour bar, cross sections through the
// cursor, the sum of a box against the step, and the read-out.
#include "app/main/frames_window.h"

#include <algorithm>
#include <cmath>
#include <cctype>
#include <cstdio>
#include <filesystem>

#include "app/main/zendrite_app.h"
#include "app/store/add_profile.h"
#include "app/store/zendrite_param_global.h"
#include "instrument/frame_contours.h"
#include "instrument/tube_pattern.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

// Page zones, as fractions of the window: image, colour bar, row section
// under the image, column section beside it, box sum under that.
struct BOX {
    float x1, y1, x2, y2;
};
constexpr BOX kImage{0.07f, 0.30f, 0.60f, 0.95f}, kBar{0.62f, 0.30f, 0.64f, 0.95f}, kRow{0.07f, 0.05f, 0.60f, 0.24f},
              kCol{0.72f, 0.30f, 0.97f, 0.95f}, kSum{0.72f, 0.05f, 0.97f, 0.24f};

std::string fmt(const char* f, double v) {
    char b[64];
    std::snprintf(b, sizeof b, f, v);
    return b;
}

void frame_box(const BOX& b) {
    IGrColour("grey");
    IGrFillPattern(0);
    IGrRectangle(b.x1, b.y1, b.x2, b.y2);
}

// A curve of n values in a box; `vertical` runs the values along y.
void curve(const BOX& b, const std::vector<double>& v, bool vertical, int mark) {
    frame_box(b);
    if (v.size() < 2) return;
    auto [mn, mx] = std::minmax_element(v.begin(), v.end());
    double lo = *mn, hi = *mx > *mn ? *mx : *mn + 1;
    IGrColour("cyan");
    for (std::size_t i = 0; i < v.size(); ++i) {
        float s = static_cast<float>(i) / static_cast<float>(v.size() - 1), t = static_cast<float>((v[i] - lo) / (hi - lo));
        float x = vertical ? b.x1 + t * (b.x2 - b.x1) : b.x1 + s * (b.x2 - b.x1);
        float y = vertical ? b.y1 + s * (b.y2 - b.y1) : b.y1 + t * (b.y2 - b.y1);
        if (i == 0) IGrMoveTo(x, y);
        else IGrLineTo(x, y);
    }
    if (mark >= 1 && mark <= static_cast<int>(v.size())) {
        float s = static_cast<float>(mark - 1) / static_cast<float>(v.size() - 1);
        IGrColour("yellow");
        if (vertical) {
            IGrMoveTo(b.x1, b.y1 + s * (b.y2 - b.y1));
            IGrLineTo(b.x2, b.y1 + s * (b.y2 - b.y1));
        } else {
            IGrMoveTo(b.x1 + s * (b.x2 - b.x1), b.y1);
            IGrLineTo(b.x1 + s * (b.x2 - b.x1), b.y2);
        }
    }
    IGrColour("white");
    WGrTextFont(1, 0, 0.012f, 0.022f);
    WGrTextString(b.x1 + 0.005f, b.y2 - 0.03f, hxl::Trim(fmt("%.6g", hi)));
    WGrTextString(b.x1 + 0.005f, b.y1 + 0.01f, hxl::Trim(fmt("%.6g", lo)));
}

bool page_to_pixel(float gx, float gy, int& i, int& j) {
    const FRAMES_VIEW_TYPE& v = Frames_View();
    float fx = (gx - kImage.x1) / (kImage.x2 - kImage.x1), fy = (gy - kImage.y1) / (kImage.y2 - kImage.y1);
    if (fx < 0 || fx >= 1 || fy < 0 || fy >= 1) return false;
    i = v.i1 + static_cast<int>(fx * static_cast<float>(v.i2 - v.i1 + 1));
    j = v.j1 + static_cast<int>(fy * static_cast<float>(v.j2 - v.j1 + 1));
    return true;
}

void read_out() {
    const FRAMES_VIEW_TYPE& v = Frames_View();
    const hxl::FRAME_SET_TYPE& f = v.frames;
    WindowSelect(v.window);
    std::string step = "frame " + std::to_string(v.current) + " / " + std::to_string(f.n_frames);
    if (!hxl::Is_Blank(f.scan_var)) step += "  " + f.scan_var + " " + fmt("%.3f", f.angle[static_cast<std::size_t>(v.current - 1)]);
    WindowOutStatusBar(1, step);
    if (v.ci < 1) {
        WindowOutStatusBar(2, "");
        return;
    }
    std::string s = "pixel (" + std::to_string(v.ci) + ", " + std::to_string(v.cj) + ")  counts " +
                    hxl::Trim(fmt("%.6g", hxl::Frame_Value(f, v.current, v.ci, v.cj)));
    if (v.has_geometry) {
        double tth, az;
        hxl::Pixel_Angles(v.geometry, v.ci - 0.5, v.cj - 0.5, tth, az);
        double st = std::sin(tth * M_PI / 360);
        s += "  2theta " + fmt("%.3f", tth) + "  azimuth " + fmt("%.2f", az);
        if (st > 0)
            s += "  d " + fmt("%.4f", v.geometry.wavelength / (2 * st)) + "  Q " + fmt("%.4f", 4 * M_PI * st / v.geometry.wavelength);
    } else if (f.format == "NUMOR" && f.scan_var == "2theta") {
        // A bank of tubes: the tube's angle at this step.
        double tth = f.angle[static_cast<std::size_t>(v.current - 1)] - (f.nx - v.ci) * hxl::TUBE_BANK_TYPE{}.tube_step;
        s += "  2theta " + fmt("%.3f", tth);
        if (f.wavelength > 0 && tth > 0)
            s += "  d " + fmt("%.4f", f.wavelength / (2 * std::sin(tth * M_PI / 360)));
    }
    WindowOutStatusBar(2, s);
}

std::vector<double> box_sum() {
    const FRAMES_VIEW_TYPE& v = Frames_View();
    std::vector<double> s;
    for (int k = 1; k <= v.frames.n_frames; ++k) {
        double t = 0;  // a box of a large detector holds millions of counts
        for (int j = v.bj1; j <= v.bj2; ++j)
            for (int i = v.bi1; i <= v.bi2; ++i) t += hxl::Frame_Value(v.frames, k, i, j);
        s.push_back(t);
    }
    return s;
}

void step(int by) {
    FRAMES_VIEW_TYPE& v = Frames_View();
    if (v.frames.n_frames < 1) return;
    int k = v.current + by;
    if (k < 1 || k > v.frames.n_frames) return;
    v.current = k;
    Frames_Redraw();
}

// A numor of a bank of tubes gives the pattern of its run; an image with a
// geometry beside it is integrated, the mask drawn on it left out.
void to_store() {
    FRAMES_VIEW_TYPE& v = Frames_View();
    hxl::DIFFRACTION_PATTERN_TYPE p;
    std::string message;
    if (v.frames.format == "NUMOR") {
        if (!hxl::Tube_Bank_Pattern(v.frames, hxl::TUBE_BANK_TYPE{}, p, message)) {
            Show_Message(message);
            return;
        }
    } else if (!v.has_geometry) {
        Show_Message("An image needs its geometry to be integrated: put NAME_geometry.json beside it");
        return;
    } else {
        hxl::INTEGRATION_TABLE_TYPE t;
        if (!hxl::Build_Integration_Table(v.geometry, v.frames.nx, v.frames.ny, t, message) ||
            !hxl::Integrate_Image(t, hxl::Frame_Data(v.frames, v.current), v.mask.empty() ? nullptr : &v.mask,
                                  v.geometry, p, message)) {
            Show_Message(message);
            return;
        }
        p.title = hxl::Cut(hxl::Is_Blank(v.frames.title) ? v.frames.source : v.frames.title, hxl::kTitleLen);
    }
    ZENDRITE_STORE& g = zendrite_param_global();
    if (g.nperfiles >= kMaxProfiles) {
        Show_Message("The maximum number of profiles has been attained!");
        return;
    }
    const int slot = ++g.nperfiles;
    std::string dir = v.frames.source.substr(0, v.frames.source.find_last_of('/') + 1);
    p.filename = hxl::Cut(v.frames.source.substr(dir.size()), hxl::kFileLen);
    p.filepath = hxl::Cut(dir, hxl::kFileLen);
    g.pattern[static_cast<std::size_t>(slot)] = std::move(p);
    LOAD_RESULT r;
    if (!Enter_Read_Profile(slot, 1, r)) {
        --g.nperfiles;
    } else {
        g.info[static_cast<std::size_t>(slot)].prf_type = "DATA";
        g.show_profile[static_cast<std::size_t>(slot)] = true;
    }
    for (const auto& m : r.messages) Show_Message(m);
    WindowSelect(kRootWindow);
    Plot_ReMake();
    WindowSelect(v.window);
}

// A slider over the frames, for runs too long to step through one by one.
void go_to_frame() {
    FRAMES_VIEW_TYPE& v = Frames_View();
    constexpr int kGotoDialog = 213, kGotoSlider = 2131;
    if (v.frames.n_frames < 1) return;
    if (!WDialogDefined(kGotoDialog)) {
        DIALOG_FIELD slider = Fld(kGotoSlider, FIELD_KIND::Slider, "Frame");
        WDialogDefine({kGotoDialog, "Go to frame", {}, {slider}});
    }
    WDialogLoad(kGotoDialog);
    WDialogRangeInteger(kGotoSlider, 1, v.frames.n_frames);
    WDialogPutInteger(kGotoSlider, v.current);
    WDialogShow(-1, -1, 0, Modal);
    int k = v.current;
    WDialogGetInteger(kGotoSlider, k);
    const bool ok = WInfoDialog(4) == kIdOk;
    WDialogUnload();
    WindowSelect(v.window);
    if (!ok) return;
    v.current = std::clamp(k, 1, v.frames.n_frames);
    Frames_Redraw();
}

// The counts shown as the first and the last colour, as percentiles of the frame.
void colour_limits() {
    FRAMES_VIEW_TYPE& v = Frames_View();
    constexpr int kLimitsDialog = 215, kLow = 2151, kHigh = 2152;
    if (!WDialogDefined(kLimitsDialog))
        WDialogDefine({kLimitsDialog, "Colour limits of the frame", {},
                       {Fld(kLow, FIELD_KIND::Real, "Lowest colour at the percentile"),
                        Fld(kHigh, FIELD_KIND::Real, "Highest colour at the percentile")}});
    WDialogLoad(kLimitsDialog);
    WDialogPutReal(kLow, v.view.low_percentile, "%.2f");
    WDialogPutReal(kHigh, v.view.high_percentile, "%.2f");
    WDialogShow(-1, -1, 0, Modal);
    float low = v.view.low_percentile, high = v.view.high_percentile;
    WDialogGetReal(kLow, low);
    WDialogGetReal(kHigh, high);
    const bool ok = WInfoDialog(4) == kIdOk;
    WDialogUnload();
    WindowSelect(v.window);
    if (!ok) return;
    if (!(low >= 0 && high <= 100 && low < high)) {
        Show_Message("The percentiles must lie between 0 and 100, the lowest below the highest");
        return;
    }
    v.view.low_percentile = low;
    v.view.high_percentile = high;
    Frames_Redraw();
}

void close_window() {
    FRAMES_VIEW_TYPE& v = Frames_View();
    WMenuSetState(40169, 2, 0);
    if (v.bitmap) WBitmapDestroy(v.bitmap);
    WindowCloseChild(v.window);
    v = FRAMES_VIEW_TYPE{};
    WindowShow(kRootWindow, true);
    WindowSelect(kRootWindow);
}

}  // namespace

std::string Frames_Dump() {
    const FRAMES_VIEW_TYPE& v = Frames_View();
    return "window " + std::to_string(v.window) + "\nformat " + v.frames.format + "\nframes " +
           std::to_string(v.frames.n_frames) + "\ncurrent " + std::to_string(v.current) + "\nsize " +
           std::to_string(v.frames.nx) + " " + std::to_string(v.frames.ny) + "\nzoom " + std::to_string(v.i1) + " " +
           std::to_string(v.i2) + " " + std::to_string(v.j1) + " " + std::to_string(v.j2) + "\npercentiles " + fmt("%.2f", v.view.low_percentile) + " " +
           fmt("%.2f", v.view.high_percentile) + "\nmain_window " +
           (WindowShown(kRootWindow) ? "shown" : "hidden") + "\n";
}

FRAMES_VIEW_TYPE& Frames_View() {
    static FRAMES_VIEW_TYPE v;
    return v;
}

void Frames_Redraw() {
    FRAMES_VIEW_TYPE& v = Frames_View();
    if (v.window == 0) return;
    Child_Picture_Start(v.window, v.bitmap);
    const hxl::FRAME_SET_TYPE& f = v.frames;
    if (f.n_frames > 0) {
        float lo = 0, hi = 0;
        std::vector<std::uint8_t> all = hxl::Frame_RGB(f, v.current, v.view, lo, hi);
        // The zoomed part, row j1 at the bottom.
        int w = v.i2 - v.i1 + 1, h = v.j2 - v.j1 + 1;
        std::vector<std::uint8_t> rgb(static_cast<std::size_t>(w) * static_cast<std::size_t>(h) * 3);
        for (int r = 0; r < h; ++r)
            for (int c = 0; c < w; ++c)
                std::copy_n(&all[(static_cast<std::size_t>(v.j2 - 1 - r) * static_cast<std::size_t>(f.nx) +
                                  static_cast<std::size_t>(v.i1 - 1 + c)) * 3],
                            3, &rgb[(static_cast<std::size_t>(r) * static_cast<std::size_t>(w) + static_cast<std::size_t>(c)) * 3]);
        if (!v.mask.empty())
            for (int r = 0; r < h; ++r)
                for (int c = 0; c < w; ++c)
                    if (v.mask[static_cast<std::size_t>(v.j2 - 1 - r) * static_cast<std::size_t>(f.nx) + static_cast<std::size_t>(v.i1 - 1 + c)])
                        std::fill_n(&rgb[(static_cast<std::size_t>(r) * static_cast<std::size_t>(w) + static_cast<std::size_t>(c)) * 3], 3, 90);
        IGrImageRGB(kImage.x1, kImage.y1, kImage.x2, kImage.y2, w, h, rgb);
        if (v.iso) {
            // Three levels, at a quarter, half and three quarters of the colour scale.
            IGrColour("white");
            const float sx = (kImage.x2 - kImage.x1) / static_cast<float>(w), sy = (kImage.y2 - kImage.y1) / static_cast<float>(h);
            for (float t : {0.25f, 0.5f, 0.75f})
                for (const auto& seg : hxl::Iso_Segments(f, v.current, hxl::Scale_Level(t, lo, hi, v.view.scale), v.i1, v.i2, v.j1, v.j2)) {
                    IGrMoveTo(kImage.x1 + (seg[0] - static_cast<float>(v.i1 - 1)) * sx, kImage.y1 + (seg[1] - static_cast<float>(v.j1 - 1)) * sy);
                    IGrLineTo(kImage.x1 + (seg[2] - static_cast<float>(v.i1 - 1)) * sx, kImage.y1 + (seg[3] - static_cast<float>(v.j1 - 1)) * sy);
                }
        }
        frame_box(kImage);
        // Colour bar with the counts its ends stand for.
        std::vector<std::uint8_t> bar(64 * 3);
        for (int i = 0; i < 64; ++i) hxl::Ramp_Colour(static_cast<float>(63 - i) / 63.0f, &bar[static_cast<std::size_t>(i) * 3]);
        IGrImageRGB(kBar.x1, kBar.y1, kBar.x2, kBar.y2, 1, 64, bar);
        IGrColour("white");
        WGrTextFont(1, 0, 0.012f, 0.022f);
        WGrTextString(kBar.x1, kBar.y2 + 0.01f, hxl::Trim(fmt("%.6g", hi)));
        WGrTextString(kBar.x1, kBar.y1 - 0.03f, hxl::Trim(fmt("%.6g", lo)));
        const char* scale = v.view.scale == hxl::Frame_Scale::Log ? "log" : v.view.scale == hxl::Frame_Scale::Sqrt ? "sqrt" : "linear";
        WGrTextString(kImage.x1, kImage.y2 + 0.012f,
                      hxl::Trim(f.title) + "   [" + f.format + ", " + std::to_string(f.nx) + " x " + std::to_string(f.ny) +
                          ", " + scale + "]");
        auto px = [&](int i) { return kImage.x1 + (static_cast<float>(i - v.i1) + 0.5f) / static_cast<float>(w) * (kImage.x2 - kImage.x1); };
        auto py = [&](int j) { return kImage.y1 + (static_cast<float>(j - v.j1) + 0.5f) / static_cast<float>(h) * (kImage.y2 - kImage.y1); };
        if (v.bi1 > 0) {
            IGrColour("green");
            IGrRectangle(px(v.bi1) - 0.5f * (kImage.x2 - kImage.x1) / static_cast<float>(w), py(v.bj1) - 0.5f * (kImage.y2 - kImage.y1) / static_cast<float>(h),
                         px(v.bi2) + 0.5f * (kImage.x2 - kImage.x1) / static_cast<float>(w), py(v.bj2) + 0.5f * (kImage.y2 - kImage.y1) / static_cast<float>(h));
            curve(kSum, box_sum(), false, v.current);
            WGrTextString(kSum.x1, kSum.y2 + 0.01f, "box sum against the step");
        } else {
            frame_box(kSum);
            WGrTextString(kSum.x1, kSum.y2 + 0.01f, "box sum: right button drag");
        }
        if (v.ci >= v.i1 && v.ci <= v.i2 && v.cj >= v.j1 && v.cj <= v.j2) {
            std::vector<double> row, col;
            for (int i = v.i1; i <= v.i2; ++i) row.push_back(hxl::Frame_Value(f, v.current, i, v.cj));
            for (int j = v.j1; j <= v.j2; ++j) col.push_back(hxl::Frame_Value(f, v.current, v.ci, j));
            curve(kRow, row, false, v.ci - v.i1 + 1);
            curve(kCol, col, true, v.cj - v.j1 + 1);
            IGrColour("yellow");
            IGrLineType(1);
            IGrMoveTo(px(v.ci), kImage.y1);
            IGrLineTo(px(v.ci), kImage.y2);
            IGrMoveTo(kImage.x1, py(v.cj));
            IGrLineTo(kImage.x2, py(v.cj));
            IGrLineType(0);
            IGrColour("white");
            WGrTextString(kRow.x1, kRow.y2 + 0.01f, "row " + std::to_string(v.cj));
            WGrTextString(kCol.x1, kCol.y2 + 0.01f, "column " + std::to_string(v.ci));
        } else {
            frame_box(kRow);
            frame_box(kCol);
        }
    }
    IGrSelect(1, v.window);
    WBitmapPut(v.bitmap, 0);
    read_out();
}

namespace {

// A mask image (its first frame; a pixel not zero is left out) of the size of the image
// shown; false with the reason.
bool read_mask(const std::string& file, std::vector<unsigned char>& bits, std::string& why) {
    const FRAMES_VIEW_TYPE& v = Frames_View();
    hxl::FRAME_SET_TYPE m;
    if (!hxl::Read_Frames(file, m, why)) return false;
    if (m.nx != v.frames.nx || m.ny != v.frames.ny) {
        why = "it is not the size of the image";
        return false;
    }
    bits.resize(static_cast<std::size_t>(m.nx) * static_cast<std::size_t>(m.ny));
    for (std::size_t i = 0; i < bits.size(); ++i) bits[i] = m.counts[i] != 0;
    return true;
}

// The geometry of the image (and the mask it names) from `file`; on a refusal the present
// geometry and mask stay and `message` says why.
bool take_geometry(const std::string& file, std::string& message) {
    FRAMES_VIEW_TYPE& v = Frames_View();
    hxl::DETECTOR_GEOMETRY_TYPE geometry;
    std::string mask, why;
    if (!hxl::Read_Geometry_File(file, geometry, mask, why)) {
        message = "The geometry " + file + " is not used: " + why;
        return false;
    }
    std::vector<unsigned char> bits;
    if (!mask.empty() && !read_mask(mask, bits, why)) message = "The mask " + mask + " of the geometry is not used: " + why;
    v.geometry = geometry;
    v.has_geometry = true;
    if (!bits.empty()) v.mask = std::move(bits);
    return true;
}

bool hdf5_name(const std::string& name) {
    const std::size_t dot = name.find_last_of('.');
    if (dot == std::string::npos) return false;
    std::string ext = name.substr(dot + 1);
    for (char& c : ext) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return ext == "h5" || ext == "hdf5" || ext == "hdf" || ext == "nxs" || ext == "nx5";
}

constexpr int kDatasetDialog = 214, kDatasetField = 2141;

// The data set of the frames in an HDF5 or NeXus file; empty when cancelled.
std::string ask_dataset() {
    if (!WDialogDefined(kDatasetDialog))
        WDialogDefine({kDatasetDialog, "HDF5 data set of the frames", {},
                       {Fld(1, FIELD_KIND::Label, "Path of the data set (frames x rows x columns, or rows x columns)"),
                        Fld(kDatasetField, FIELD_KIND::Text, "")}});
    static std::string last = "/entry/data/data";
    WDialogLoad(kDatasetDialog);
    WDialogPutString(kDatasetField, last);
    WDialogShow(-1, -1, 0, Modal);
    std::string path;
    const bool ok = WInfoDialog(4) == kIdOk;
    if (ok) WDialogGetString(kDatasetField, path);
    WDialogUnload();
    path = hxl::Trim(path);
    if (ok && !path.empty()) last = path;
    return ok ? path : "";
}

// A file for the image shown (its geometry or mask); empty when there is no image or the
// choice was cancelled.
std::string file_for_image(const std::string& what, const std::string& filter, const std::string& title) {
    const FRAMES_VIEW_TYPE& v = Frames_View();
    if (v.frames.n_frames < 1) {
        Show_Message("Open an image before its " + what);
        return "";
    }
    std::string name;
    WSelectFile(filter, LoadDialog, name, title);
    WindowSelect(v.window);
    return WInfoDialog(4) == kIdOk && !hxl::Is_Blank(name) ? name : "";
}

void choose_geometry() {
    const std::string name = file_for_image("geometry", "Geometry (*.json)|*.json|All files|*.*|", "Select the geometry of the image");
    if (name.empty()) return;
    std::string message;
    take_geometry(name, message);
    if (!message.empty()) Show_Message(message);
    Frames_Redraw();
}

void choose_mask() {
    const std::string name = file_for_image("mask", "Mask image|*.*|", "Select a mask (pixels not zero are left out)");
    if (name.empty()) return;
    std::vector<unsigned char> bits;
    std::string why;
    if (!read_mask(name, bits, why)) {
        Show_Message("The mask " + name + " is not used: " + why);
        return;
    }
    Frames_View().mask = std::move(bits);
    Frames_Redraw();
}

}  // namespace

bool Frames_Load(const std::string& path, std::string& message, const std::string& dataset) {
    hxl::FRAME_SET_TYPE f;
    if (!hxl::Read_Frames(path, f, message, dataset)) return false;
    message.clear();
    FRAMES_VIEW_TYPE& v = Frames_View();
    v.frames = std::move(f);
    v.current = 1;
    v.i1 = v.j1 = 1;
    v.i2 = v.frames.nx;
    v.j2 = v.frames.ny;
    v.ci = (v.frames.nx + 1) / 2;
    v.cj = (v.frames.ny + 1) / 2;
    v.bi1 = v.bi2 = v.bj1 = v.bj2 = 0;
    v.mask.clear();
    v.has_geometry = false;
    // A geometry beside the image (NAME_geometry.json for NAME.ext) gives the read-out its angles.
    std::size_t dot = path.find_last_of('.'), slash = path.find_last_of('/');
    std::string base = dot != std::string::npos && (slash == std::string::npos || dot > slash) ? path.substr(0, dot) : path;
    std::string why;
    if (std::filesystem::exists(base + "_geometry.json")) take_geometry(base + "_geometry.json", why);
    message = why;  // a geometry or mask beside the image that cannot be used is told
    WindowSelect(v.window);
    WindowTitle("Zendrite 2D: " + path);
    Frames_Redraw();
    return true;
}

void Open_Frames_Window() {
    FRAMES_VIEW_TYPE& v = Frames_View();
    WMenuSetState(40169, 2, 1);
    if (v.window == 0 || !WindowExists(v.window)) {
        v = FRAMES_VIEW_TYPE{};
        v.window = WindowOpenChild(ChildStatusBar, 40, 40, 1100, 760, "Zendrite 2D");
        WindowShow(kRootWindow, false);  // the 2D mode has the screen; closing it brings the main window back
        WChildToolbar(v.window, {{kFrOpen, "open", "Open frames (numor, EDF, TIFF, CBF)"},
                                 {0, "", ""},
                                 {kFrPrevious, "left", "Previous frame"},
                                 {kFrNext, "right", "Next frame"},
                                 {kFrAnimate, "Run", "Run through the frames"},
                                 {kFrGoto, "Go", "Go to a frame with a slider"},
                                 {0, "", ""},
                                 {kFrScale, "Lin", "Colour scale: linear, log, square root"},
                                 {kFrLimits, "%", "Colour limits by percentiles of the frame"},
                                 {kFrIso, "Iso", "Iso-lines on or off"},
                                 {kFrUnzoom, "reset", "Unzoom"},
                                 {0, "", ""},
                                 {kFrGeometry, "Geo", "Geometry of the image (a .json file, with its mask)"},
                                 {kFrMask, "Mask", "Mask of the image from a file (pixels not zero are left out)"},
                                 {kFrPattern, "Main", "Pattern into the store (a run of tubes, or an image with its geometry)"},
                                 {0, "", ""},
                                 {kFrClose, "exit", "Close"}});
        WMessageMouseMove(true);
    }
    WindowSelect(v.window);
    Frames_Redraw();
    std::string name;
    WSelectFile("Frames|*.*|", LoadDialog, name, "Select frames to show");
    if (WInfoDialog(4) != kIdOk || hxl::Is_Blank(name)) return;
    std::string dataset;
    if (hdf5_name(name)) {
        dataset = ask_dataset();
        WindowSelect(v.window);
        if (dataset.empty()) return;
    }
    std::string message;
    Frames_Load(name, message, dataset);
    if (!message.empty()) Show_Message(message);
}

void Frames_Event(int type, const WIN_MESSAGE& m) {
    FRAMES_VIEW_TYPE& v = Frames_View();
    if (v.window == 0 || m.win != v.window) return;
    WindowSelect(v.window);
    int i = 0, j = 0;
    switch (type) {
    case MenuSelect:
        switch (m.value1) {
        case kFrOpen: Open_Frames_Window(); break;
        case kFrPrevious: step(-1); break;
        case kFrNext: step(+1); break;
        case kFrAnimate:
            // One pass through the frames; each shows as the events let it.
            for (int k = 1; k <= v.frames.n_frames; ++k) {
                v.current = k;
                Frames_Redraw();
                if (WMessagePending()) break;
            }
            break;
        case kFrScale:
            v.view.scale = v.view.scale == hxl::Frame_Scale::Linear ? hxl::Frame_Scale::Log
                           : v.view.scale == hxl::Frame_Scale::Log  ? hxl::Frame_Scale::Sqrt
                                                                    : hxl::Frame_Scale::Linear;
            Frames_Redraw();
            break;
        case kFrGoto: go_to_frame(); break;
        case kFrLimits: colour_limits(); break;
        case kFrIso:
            v.iso = !v.iso;
            Frames_Redraw();
            break;
        case kFrUnzoom:
            v.i1 = v.j1 = 1;
            v.i2 = v.frames.nx;
            v.j2 = v.frames.ny;
            Frames_Redraw();
            break;
        case kFrPattern: to_store(); break;
        case kFrGeometry: choose_geometry(); break;
        case kFrMask: choose_mask(); break;
        case kFrClose: close_window(); break;
        default: break;
        }
        break;
    case KeyDown:
        if (m.value1 == kKeyLeft || m.value1 == kKeyUp || m.value1 == kKeyPageUp) step(-1);
        else if (m.value1 == kKeyRight || m.value1 == kKeyDown || m.value1 == kKeyPageDown) step(+1);
        else if (m.value1 == kKeyHome) step(1 - v.current);
        break;
    case MouseMove:
        if (v.frames.n_frames > 0 && page_to_pixel(m.gx, m.gy, i, j) && !v.band) {
            v.ci = i;
            v.cj = j;
            Frames_Redraw();
        }
        break;
    case MouseButDown:
        if (v.frames.n_frames > 0 && page_to_pixel(m.gx, m.gy, i, j)) {
            v.band = true;
            v.band_i = i;
            v.band_j = j;
        }
        break;
    case MouseButUp:
        if (v.band && page_to_pixel(m.gx, m.gy, i, j)) {
            int a1 = std::min(i, v.band_i), a2 = std::max(i, v.band_i), b1 = std::min(j, v.band_j), b2 = std::max(j, v.band_j);
            if (m.value1 == 2) {  // right button: the box summed against the step
                v.bi1 = a1, v.bi2 = a2, v.bj1 = b1, v.bj2 = b2;
            } else if (m.value1 == 3) {  // middle button: a box of the mask
                v.mask.resize(static_cast<std::size_t>(v.frames.nx) * static_cast<std::size_t>(v.frames.ny), 0);
                for (int jj = b1; jj <= b2; ++jj)
                    for (int ii = a1; ii <= a2; ++ii)
                        v.mask[static_cast<std::size_t>(jj - 1) * static_cast<std::size_t>(v.frames.nx) + static_cast<std::size_t>(ii - 1)] = 1;
            } else if (a2 > a1 && b2 > b1) {
                v.i1 = a1, v.i2 = a2, v.j1 = b1, v.j2 = b2;
            }
            Frames_Redraw();
        }
        v.band = false;
        break;
    case Resize:
    case Expose: Frames_Redraw(); break;
    case CloseRequest: close_window(); break;
    default: break;
    }
}

}  // namespace zendrite
