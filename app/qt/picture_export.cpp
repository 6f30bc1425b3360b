// Pictures into files: the drawing operations paint through one painter on the
// file's own device, so that vector files hold lines and text.
#include <QImageWriter>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>

#include "app/qt/picture_devices.h"
#include "app/qt/present_state.h"
#include "app/qt/raster_fast.h"

namespace zendrite {
using namespace qt;

namespace {

constexpr double kMinMm = 10, kMaxMm = 1000;
constexpr int kMinPixels = 16, kMaxPixels = 20000;
constexpr double kMaxRasterPixels = 1.0e8;  // 400 MB of picture
constexpr int kMinDpi = 36, kMaxDpi = 1200;

bool raster(const std::string& f) { return f == "png" || f == "jpg" || f == "bmp" || f == "tif"; }

std::string number(double v) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%g", v);
    return buf;
}

}  // namespace

namespace qt {

void Begin_Export(QPainter& p, int width, int height, double dot_scale, const PICTURE_OPTIONS& o) {
    Flush_Spans();
    EXPORT_STATE& ex = L().ex;
    ex.on = true;
    ex.painter = &p;
    ex.width = width, ex.height = height;
    ex.dot_scale = dot_scale;
    ex.options = o;
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
}

void End_Export() {
    EXPORT_STATE& ex = L().ex;
    ex.on = false;
    ex.painter = nullptr;
}

}  // namespace qt

std::string Picture_Format(const std::string& file) {
    std::string ext = std::filesystem::path(file).extension().string();
    if (ext.size() < 2) return "";
    ext = ext.substr(1);
    for (char& c : ext) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (ext == "jpeg") return "jpg";
    if (ext == "tiff") return "tif";
    if (ext == "hpgl") return "plt";
    for (const char* f : {"png", "jpg", "bmp", "tif", "svg", "pdf", "eps", "ps", "emf", "plt", "dxf"})
        if (ext == f) return ext;
    return "";
}

bool Picture_Pixels(const PICTURE_OPTIONS& o, int& width, int& height, std::string& message) {
    if (!(o.dpi >= kMinDpi && o.dpi <= kMaxDpi)) {
        message = "The resolution must lie between " + std::to_string(kMinDpi) + " and " + std::to_string(kMaxDpi) +
                  " dpi, not " + std::to_string(o.dpi);
        return false;
    }
    if (o.pixels) {
        if (!(o.width >= kMinPixels && o.width <= kMaxPixels && o.height >= kMinPixels && o.height <= kMaxPixels)) {
            message = "The size of a picture must lie between " + std::to_string(kMinPixels) + " and " +
                      std::to_string(kMaxPixels) + " pixels a side, not " + number(o.width) + " x " + number(o.height);
            return false;
        }
        width = static_cast<int>(std::lround(o.width)), height = static_cast<int>(std::lround(o.height));
    } else {
        if (!(o.width >= kMinMm && o.width <= kMaxMm && o.height >= kMinMm && o.height <= kMaxMm)) {
            message = "The size of a picture must lie between " + number(kMinMm) + " and " + number(kMaxMm) +
                      " mm a side, not " + number(o.width) + " x " + number(o.height) + " mm";
            return false;
        }
        width = static_cast<int>(std::lround(o.width / 25.4 * o.dpi));
        height = static_cast<int>(std::lround(o.height / 25.4 * o.dpi));
        if (width > kMaxPixels || height > kMaxPixels) {
            message = "At " + std::to_string(o.dpi) + " dpi, " + number(o.width) + " x " + number(o.height) +
                      " mm make more than " + std::to_string(kMaxPixels) + " pixels a side; choose a lower resolution";
            return false;
        }
    }
    if (!(o.line_factor >= 0.1 && o.line_factor <= 10 && o.font_scale >= 0.1 && o.font_scale <= 10)) {
        message = "The line-width factor and the font scale must lie between 0.1 and 10";
        return false;
    }
    return true;
}

bool WPictureExporting() { return L().ex.on; }
const PICTURE_OPTIONS& WPictureExportOptions() { return L().ex.options; }

bool WPictureExport(const std::string& file, const PICTURE_OPTIONS& o, const std::function<void()>& draw,
                    std::string& message) {
    const std::string format = Picture_Format(file);
    if (format.empty()) {
        message = "Unable to write " + file +
                  ": its extension names no picture format (png, jpg, bmp, tif, svg, pdf, eps, ps, emf, plt, dxf)";
        return false;
    }
    int width = 0, height = 0;
    if (!Picture_Pixels(o, width, height, message)) return false;
    if (raster(format) && static_cast<double>(width) * height > kMaxRasterPixels) {
        message = "A picture of " + std::to_string(width) + " x " + std::to_string(height) +
                  " pixels is too large; choose a smaller size or a lower resolution";
        return false;
    }
    if (L().ex.on) {
        message = "A picture is being written already";
        return false;
    }
    QSaveFile out(Q(file));
    if (!out.open(QIODevice::WriteOnly)) {
        message = "Unable to write " + file + ": " + S(out.errorString());
        return false;
    }
    // Pixels of the screen stand for 1/96 inch; a size given in pixels is drawn as the window would be.
    const double dot = o.pixels ? 1.0 : o.dpi / 96.0;
    const double mm_w = o.pixels ? o.width / o.dpi * 25.4 : o.width, mm_h = o.pixels ? o.height / o.dpi * 25.4 : o.height;
    bool written = true;
    if (raster(format)) {
        QImage img(width, height, QImage::Format_RGB32);
        if (img.isNull()) {
            message = "Not enough memory for a picture of " + std::to_string(width) + " x " + std::to_string(height) + " pixels";
            return false;
        }
        img.fill(Qt::white);
        img.setDotsPerMeterX(static_cast<int>(std::lround(o.dpi / 0.0254)));
        img.setDotsPerMeterY(static_cast<int>(std::lround(o.dpi / 0.0254)));
        {
            QPainter p(&img);
            Begin_Export(p, width, height, dot, o);
            draw();
            End_Export();
        }
        QImageWriter w(&out, format == "jpg" ? "jpeg" : format == "tif" ? "tiff" : format.c_str());
        if (format == "jpg") w.setQuality(95);
        written = w.write(img);
        // A full disk shows in the file's own error; the writer's text says less.
        if (!written)
            message = "Unable to write " + file + ": " + S(out.error() != QFileDevice::NoError ? out.errorString() : w.errorString());
    } else if (format == "svg") {
        QSvgGenerator svg;
        svg.setOutputDevice(&out);
        svg.setSize(QSize(width, height));
        svg.setViewBox(QRect(0, 0, width, height));
        svg.setResolution(o.dpi);
        svg.setTitle("Zendrite");
        QPainter p(&svg);
        Begin_Export(p, width, height, dot, o);
        draw();
        End_Export();
        written = p.end();
    } else if (format == "pdf") {
        QPdfWriter pdf(&out);
        pdf.setCreator("Zendrite");
        pdf.setResolution(o.dpi);
        pdf.setPageSize(QPageSize(QSizeF(mm_w, mm_h), QPageSize::Millimeter, QString(), QPageSize::ExactMatch));
        pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
        QPainter p(&pdf);
        Begin_Export(p, pdf.width(), pdf.height(), dot, o);
        draw();
        End_Export();
        written = p.end();
    } else {
        std::unique_ptr<QPaintDevice> dev = Vector_Device(format, &out, width, height, o.dpi);
        if (!dev) {
            message = "Unable to write " + file + ": no writer for this format";
            out.cancelWriting();
            return false;
        }
        QPainter p(dev.get());
        Begin_Export(p, width, height, dot, o);
        draw();
        End_Export();
        written = p.end();
    }
    if (!written) {
        if (message.empty()) message = "Unable to write " + file + ": " + S(out.errorString());
        out.cancelWriting();
        return false;
    }
    if (!out.commit()) {
        message = "Unable to write " + file + ": " + S(out.errorString());
        return false;
    }
    return true;
}

}  // namespace zendrite
