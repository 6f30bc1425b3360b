// HP-GL/2 for plotters: plotter units of 0.025 mm, Y up, a pen for each colour.
#include <QByteArray>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

#include "app/qt/vector_engine.h"

namespace zendrite::qt {

namespace {

class Hpgl : public Vector_Writer {
public:
    void Begin(double, double height, int dpi) override {
        k_ = 1016.0 / dpi;  // plotter units an inch
        mm_ = 25.4 / dpi;
        height_ = height;
    }
    void Stroke(const QPolygonF& line, bool closed, const QColor& colour, double width, int dash) override {
        pen(colour, width);
        if (dash != dash_) {
            // Fixed line types of 4 mm: dotted, dashed, dash-dot, dash-dot-dot.
            static const char* types[5] = {"LT;", "LT1,4,1;", "LT2,4,1;", "LT4,4,1;", "LT6,4,1;"};
            body_ += types[std::clamp(dash, 0, 4)];
            dash_ = dash;
        }
        QPolygonF p = line;
        if (closed) p << line.first();
        point("PU", p[0]);
        pd(p, 1);
        body_ += "\n";
    }
    void Fill(const QPolygonF& polygon, const QColor& colour) override {
        pen(colour, 0);
        // The polygon buffer, then filled with the pen's colour.
        point("PU", polygon[0]);
        body_ += "PM0;";
        pd(polygon, 1);
        body_ += "PM2;FP;\n";
    }
    void Text(const VECTOR_TEXT& t) override {
        pen(t.colour, 0);
        char buf[160];
        // SI takes the width and height of a capital in centimetres.
        const double h = t.size * mm_ * 0.07, w = h * 0.6;
        const double a = t.angle * M_PI / 180.0;
        std::snprintf(buf, sizeof buf, "SI%.3f,%.3f;DI%.4f,%.4f;", w, h, std::cos(a), std::sin(a));
        body_ += buf;
        point("PU", t.at);
        body_ += "LB";
        for (QChar c : t.text) {
            const ushort u = c.unicode();
            body_ += u >= 32 && u < 127 ? static_cast<char>(u) : '?';
        }
        body_ += "\x03;\n";
    }
    bool End(QIODevice& out) override {
        QByteArray head = "IN;";
        char buf[96];
        std::snprintf(buf, sizeof buf, "NP%d;", std::max<int>(2, static_cast<int>(pens_.size()) + 1));
        head += buf;
        for (const auto& [rgb, n] : pens_) {
            std::snprintf(buf, sizeof buf, "PC%d,%d,%d,%d;", n, qRed(rgb), qGreen(rgb), qBlue(rgb));
            head += buf;
        }
        head += "DT\x03;\n";
        const QByteArray tail = "PU;SP0;\n";
        return out.write(head) == head.size() && out.write(body_) == body_.size() && out.write(tail) == tail.size();
    }

private:
    void pen(const QColor& c, double width) {
        auto [it, fresh] = pens_.try_emplace(c.rgb(), static_cast<int>(pens_.size()) + 1);
        char buf[64];
        if (it->second != current_) {
            std::snprintf(buf, sizeof buf, "SP%d;", it->second);
            body_ += buf;
            current_ = it->second;
        }
        if (width > 0 && width != width_) {
            std::snprintf(buf, sizeof buf, "PW%.3f;", width * mm_);
            body_ += buf;
            width_ = width;
        }
    }
    void point(const char* op, const QPointF& p) {
        char buf[64];
        std::snprintf(buf, sizeof buf, "%s%ld,%ld;", op, std::lround(p.x() * k_), std::lround((height_ - p.y()) * k_));
        body_ += buf;
    }
    void pd(const QPolygonF& p, int from) {
        body_ += "PD";
        char buf[64];
        for (int i = from; i < p.size(); ++i) {
            std::snprintf(buf, sizeof buf, "%s%ld,%ld", i == from ? "" : ",", std::lround(p[i].x() * k_),
                          std::lround((height_ - p[i].y()) * k_));
            body_ += buf;
        }
        body_ += ";";
    }
    double k_ = 1, mm_ = 1, height_ = 0, width_ = -1;
    int current_ = 0, dash_ = 0;
    std::map<QRgb, int> pens_;
    QByteArray body_;
};

}  // namespace

std::unique_ptr<Vector_Writer> Hpgl_Writer() { return std::make_unique<Hpgl>(); }

}  // namespace zendrite::qt
