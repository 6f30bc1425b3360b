// DXF (release 12, text) for drawing programs: millimetres, Y up; lines as polylines,
// filled areas as closed polylines on a layer of their own, texts as TEXT entities.
#include <QByteArray>
#include <cmath>
#include <cstdio>

#include "app/qt/vector_engine.h"

namespace zendrite::qt {

namespace {

// The nearest colour of the drawing programs' first nine, and their greys.
int aci(const QColor& c) {
    struct ENTRY {
        int index, r, g, b;
    };
    static const ENTRY table[] = {{1, 255, 0, 0},     {2, 255, 255, 0},   {3, 0, 255, 0},     {4, 0, 255, 255},
                                  {5, 0, 0, 255},     {6, 255, 0, 255},   {7, 0, 0, 0},       {8, 128, 128, 128},
                                  {9, 192, 192, 192}, {250, 51, 51, 51},  {251, 91, 91, 91},  {252, 132, 132, 132},
                                  {253, 173, 173, 173}, {254, 214, 214, 214}, {255, 255, 255, 255}};
    int best = 7;
    long least = -1;
    for (const ENTRY& e : table) {
        const long d = (c.red() - e.r) * (c.red() - e.r) + (c.green() - e.g) * (c.green() - e.g) +
                       (c.blue() - e.b) * (c.blue() - e.b);
        if (least < 0 || d < least) least = d, best = e.index;
    }
    return best;
}

class Dxf : public Vector_Writer {
public:
    void Begin(double width, double height, int dpi) override {
        k_ = 25.4 / dpi;
        w_ = width * k_, h_ = height * k_;
        height_ = height;
    }
    void Stroke(const QPolygonF& line, bool closed, const QColor& colour, double, int) override {
        polyline(line, closed, colour, "0");
    }
    void Fill(const QPolygonF& polygon, const QColor& colour) override { polyline(polygon, true, colour, "FILLED"); }
    void Text(const VECTOR_TEXT& t) override {
        QByteArray s;
        for (QChar c : t.text) {
            const ushort u = c.unicode();
            if (u >= 32 && u < 127) {
                s += static_cast<char>(u);
            } else {
                char buf[16];
                std::snprintf(buf, sizeof buf, "\\U+%04X", u);
                s += buf;
            }
        }
        char buf[256];
        // TEXT heights are those of a capital, about 0.7 of the font's size.
        std::snprintf(buf, sizeof buf, "0\nTEXT\n8\n0\n62\n%d\n10\n%.3f\n20\n%.3f\n30\n0.0\n40\n%.3f\n50\n%.3f\n1\n", aci(t.colour),
                      t.at.x() * k_, (height_ - t.at.y()) * k_, t.size * k_ * 0.7, t.angle);
        body_ += buf;
        body_ += s;
        body_ += "\n";
    }
    bool End(QIODevice& out) override {
        char buf[512];
        std::snprintf(buf, sizeof buf,
                      "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n9\n$INSUNITS\n70\n4\n9\n$EXTMIN\n10\n0.0\n20\n0.0\n"
                      "9\n$EXTMAX\n10\n%.3f\n20\n%.3f\n0\nENDSEC\n"
                      "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n70\n2\n"
                      "0\nLAYER\n2\n0\n70\n0\n62\n7\n6\nCONTINUOUS\n"
                      "0\nLAYER\n2\nFILLED\n70\n0\n62\n7\n6\nCONTINUOUS\n0\nENDTAB\n0\nENDSEC\n"
                      "0\nSECTION\n2\nENTITIES\n",
                      w_, h_);
        const QByteArray head = buf;
        const QByteArray tail = "0\nENDSEC\n0\nEOF\n";
        return out.write(head) == head.size() && out.write(body_) == body_.size() && out.write(tail) == tail.size();
    }

private:
    void polyline(const QPolygonF& p, bool closed, const QColor& colour, const char* layer) {
        char buf[128];
        std::snprintf(buf, sizeof buf, "0\nPOLYLINE\n8\n%s\n62\n%d\n66\n1\n70\n%d\n10\n0.0\n20\n0.0\n30\n0.0\n", layer,
                      aci(colour), closed ? 1 : 0);
        body_ += buf;
        for (const QPointF& q : p) {
            std::snprintf(buf, sizeof buf, "0\nVERTEX\n8\n%s\n10\n%.3f\n20\n%.3f\n30\n0.0\n", layer, q.x() * k_,
                          (height_ - q.y()) * k_);
            body_ += buf;
        }
        std::snprintf(buf, sizeof buf, "0\nSEQEND\n8\n%s\n", layer);
        body_ += buf;
    }
    double k_ = 1, w_ = 0, h_ = 0, height_ = 0;
    QByteArray body_;
};

}  // namespace

std::unique_ptr<Vector_Writer> Dxf_Writer() { return std::make_unique<Dxf>(); }

}  // namespace zendrite::qt
