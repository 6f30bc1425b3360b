// Encapsulated PostScript and PostScript: one page the size of the picture, in points.
#include <QByteArray>
#include <cmath>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/qt/vector_engine.h"

namespace zendrite::qt {

namespace {

class Eps : public Vector_Writer {
public:
    explicit Eps(bool eps) : eps_(eps) {}
    void Begin(double width, double height, int dpi) override {
        k_ = 72.0 / dpi;
        w_ = width * k_, h_ = height * k_;
        height_ = height;
    }
    void Stroke(const QPolygonF& line, bool closed, const QColor& colour, double width, int dash) override {
        set_colour(colour);
        if (width * k_ != line_width_) {
            line_width_ = width * k_;
            put("%.3f setlinewidth\n", line_width_);
            dash_ = -1;  // the pattern follows the width
        }
        if (dash != dash_) {
            // The painter's patterns, in line widths: dash 4 gap 2, dot 1 gap 2.
            static const char* patterns[5] = {"", "1 2", "4 2", "4 2 1 2", "4 2 1 2 1 2"};
            body_ += "[";
            std::string pattern = patterns[std::clamp(dash, 0, 4)];
            for (std::size_t at = 0; at < pattern.size();) {
                const std::size_t end = pattern.find(' ', at);
                put("%.3f ", std::atof(pattern.substr(at, end - at).c_str()) * std::max(line_width_, 0.1));
                at = end == std::string::npos ? pattern.size() : end + 1;
            }
            body_ += "] 0 setdash\n";
            dash_ = dash;
        }
        // Paths are cut at 1000 points, a limit of some interpreters.
        for (int from = 0; from + 1 < line.size(); from += 999) {
            const int to = std::min<int>(static_cast<int>(line.size()), from + 1000);
            path(line, from, to);
            body_ += closed && from == 0 && to == line.size() ? "closepath stroke\n" : "stroke\n";
        }
    }
    void Fill(const QPolygonF& polygon, const QColor& colour) override {
        set_colour(colour);
        path(polygon, 0, static_cast<int>(polygon.size()));
        body_ += "closepath fill\n";
    }
    void Text(const VECTOR_TEXT& t) override {
        set_colour(t.colour);
        static const char* names[3][4] = {{"Helvetica", "Helvetica-Bold", "Helvetica-Oblique", "Helvetica-BoldOblique"},
                                          {"Times-Roman", "Times-Bold", "Times-Italic", "Times-BoldItalic"},
                                          {"Courier", "Courier-Bold", "Courier-Oblique", "Courier-BoldOblique"}};
        const char* font = names[std::clamp(t.family, 1, 3) - 1][(t.bold ? 1 : 0) + (t.italic ? 2 : 0)];
        put("/%s-L1 %.2f selectfont\n", font, t.size * k_);
        put("gsave %.2f %.2f translate %.2f rotate 0 0 moveto (", t.at.x() * k_, (height_ - t.at.y()) * k_, t.angle);
        for (QChar c : t.text) {
            const ushort u = c.unicode();
            if (u == '(' || u == ')' || u == '\\') body_ += '\\', body_ += static_cast<char>(u);
            else if (u >= 32 && u < 127) body_ += static_cast<char>(u);
            else if (u >= 160 && u < 256) put("\\%03o", static_cast<double>(u), true);
            else body_ += '?';
        }
        body_ += ") show grestore\n";
    }
    bool End(QIODevice& out) override {
        QByteArray head;
        char buf[256];
        head += eps_ ? "%!PS-Adobe-3.0 EPSF-3.0\n" : "%!PS-Adobe-3.0\n";
        std::snprintf(buf, sizeof buf, "%%%%BoundingBox: 0 0 %d %d\n%%%%HiResBoundingBox: 0 0 %.3f %.3f\n",
                      static_cast<int>(std::ceil(w_)), static_cast<int>(std::ceil(h_)), w_, h_);
        head += buf;
        head += "%%Creator: Zendrite\n%%LanguageLevel: 2\n";
        if (!eps_) head += "%%Pages: 1\n";
        head += "%%EndComments\n%%BeginProlog\n"
                "/m {moveto} bind def /l {lineto} bind def\n"
                // The standard fonts with the Latin-1 letters, under names ending in -L1.
                "/L1 {findfont dup length dict begin {1 index /FID ne {def} {pop pop} ifelse} forall\n"
                "  /Encoding ISOLatin1Encoding def currentdict end definefont pop} bind def\n";
        for (const char* f : {"Helvetica", "Helvetica-Bold", "Helvetica-Oblique", "Helvetica-BoldOblique", "Times-Roman",
                              "Times-Bold", "Times-Italic", "Times-BoldItalic", "Courier", "Courier-Bold",
                              "Courier-Oblique", "Courier-BoldOblique"}) {
            std::snprintf(buf, sizeof buf, "/%s-L1 /%s L1\n", f, f);
            head += buf;
        }
        head += "%%EndProlog\n";
        if (!eps_) {
            std::snprintf(buf, sizeof buf, "%%%%Page: 1 1\n<< /PageSize [%.3f %.3f] >> setpagedevice\n", w_, h_);
            head += buf;
        }
        head += "gsave 0 setlinecap 1 setlinejoin\n";
        const QByteArray tail = "grestore\nshowpage\n%%EOF\n";
        return out.write(head) == head.size() && out.write(body_) == body_.size() && out.write(tail) == tail.size();
    }

private:
    void put(const char* fmt, double a, bool integer = false) {
        char buf[64];
        if (integer) std::snprintf(buf, sizeof buf, fmt, static_cast<int>(a));
        else std::snprintf(buf, sizeof buf, fmt, a);
        body_ += buf;
    }
    void put(const char* fmt, const char* s, double a) {
        char buf[128];
        std::snprintf(buf, sizeof buf, fmt, s, a);
        body_ += buf;
    }
    void put(const char* fmt, double a, double b, double c) {
        char buf[128];
        std::snprintf(buf, sizeof buf, fmt, a, b, c);
        body_ += buf;
    }
    void set_colour(const QColor& c) {
        if (c.rgb() == colour_) return;
        colour_ = c.rgb();
        char buf[64];
        std::snprintf(buf, sizeof buf, "%.3f %.3f %.3f setrgbcolor\n", c.redF(), c.greenF(), c.blueF());
        body_ += buf;
    }
    void path(const QPolygonF& p, int from, int to) {
        char buf[64];
        body_ += "newpath\n";
        for (int i = from; i < to; ++i) {
            std::snprintf(buf, sizeof buf, "%.2f %.2f %s\n", p[i].x() * k_, (height_ - p[i].y()) * k_, i == from ? "m" : "l");
            body_ += buf;
        }
    }
    bool eps_;
    double k_ = 1, w_ = 0, h_ = 0, height_ = 0, line_width_ = -1;
    int dash_ = 0;
    QRgb colour_ = 0;  // no colour has alpha 0: the first one is always written
    QByteArray body_;
};

}  // namespace

std::unique_ptr<Vector_Writer> Eps_Writer(bool encapsulated) { return std::make_unique<Eps>(encapsulated); }

}  // namespace zendrite::qt
