// The enhanced metafile (EMF): little-endian records in device pixels, Y down; one pen,
// one brush and one font object, made again when they change.
#include <QByteArray>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "app/qt/vector_engine.h"

namespace zendrite::qt {

namespace {

// Record types.
constexpr std::uint32_t kHeader = 1, kPolygon = 3, kPolyline = 4, kEof = 14, kSetBkMode = 18, kSetTextAlign = 22,
                        kSetTextColor = 24, kSelectObject = 37, kCreatePen = 38, kCreateBrush = 39,
                        kDeleteObject = 40, kCreateFont = 82, kTextOutW = 84;
// Stock objects, and the handles of ours.
constexpr std::uint32_t kNullBrush = 0x80000005, kNullPen = 0x80000008, kBlackPen = 0x80000007;
constexpr std::uint32_t kPen = 1, kBrush = 2, kFont = 3;

std::uint32_t colorref(const QColor& c) {
    return static_cast<std::uint32_t>(c.red()) | (static_cast<std::uint32_t>(c.green()) << 8) |
           (static_cast<std::uint32_t>(c.blue()) << 16);
}

class Record {
public:
    explicit Record(std::uint32_t type) { u32(type), u32(0); }
    Record& u32(std::uint32_t v) {
        for (int i = 0; i < 4; ++i) data_ += static_cast<char>((v >> (8 * i)) & 0xFF);
        return *this;
    }
    Record& i32(std::int32_t v) { return u32(static_cast<std::uint32_t>(v)); }
    Record& u16(std::uint16_t v) {
        data_ += static_cast<char>(v & 0xFF), data_ += static_cast<char>(v >> 8);
        return *this;
    }
    Record& u8(std::uint8_t v) {
        data_ += static_cast<char>(v);
        return *this;
    }
    Record& f32(float v) {
        std::uint32_t u = 0;
        std::memcpy(&u, &v, 4);
        return u32(u);
    }
    Record& pad4() {
        while (data_.size() % 4) data_ += '\0';
        return *this;
    }
    int size() const { return static_cast<int>(data_.size()); }
    QByteArray done() {
        const std::uint32_t n = static_cast<std::uint32_t>(data_.size());
        for (int i = 0; i < 4; ++i) data_[4 + i] = static_cast<char>((n >> (8 * i)) & 0xFF);
        return data_;
    }

private:
    QByteArray data_;
};

class Emf : public Vector_Writer {
public:
    void Begin(double width, double height, int dpi) override {
        w_ = static_cast<int>(std::lround(width)), h_ = static_cast<int>(std::lround(height));
        dpi_ = dpi;
        add(Record(kSetBkMode).u32(1));          // transparent behind texts
        add(Record(kSetTextAlign).u32(24));      // the point is on the base line, at the left
    }
    void Stroke(const QPolygonF& line, bool closed, const QColor& colour, double width, int dash) override {
        pen(colour, std::max(1L, std::lround(width)), dash);
        select_brush(false);
        points(closed ? kPolygon : kPolyline, line);
    }
    void Fill(const QPolygonF& polygon, const QColor& colour) override {
        brush(colour);
        select_pen(false);
        points(kPolygon, polygon);
    }
    void Text(const VECTOR_TEXT& t) override {
        font(t);
        if (colorref(t.colour) != text_colour_) {
            text_colour_ = colorref(t.colour);
            add(Record(kSetTextColor).u32(text_colour_));
        }
        const QString& s = t.text;
        const int n = static_cast<int>(s.size());
        QFont f(t.family == 2 ? "Serif" : t.family == 3 ? "Monospace" : "Sans Serif");
        f.setPixelSize(std::max(1, static_cast<int>(std::lround(t.size))));
        f.setBold(t.bold);
        f.setItalic(t.italic);
        const QFontMetricsF fm(f);
        Record r(kTextOutW);
        const int x = static_cast<int>(std::lround(t.at.x())), y = static_cast<int>(std::lround(t.at.y()));
        const int width = static_cast<int>(std::lround(fm.horizontalAdvance(s)));
        r.i32(x).i32(y - static_cast<int>(t.size)).i32(x + width).i32(y);  // bounds
        r.u32(1).f32(1.0f).f32(1.0f);                                        // compatible graphics mode, scales
        const std::uint32_t off_string = 76, off_dx = off_string + static_cast<std::uint32_t>((2 * n + 3) / 4 * 4);
        r.i32(x).i32(y).u32(static_cast<std::uint32_t>(n)).u32(off_string).u32(0);
        r.i32(0).i32(0).i32(-1).i32(-1);  // no clipping rectangle
        r.u32(off_dx);
        for (QChar c : s) r.u16(c.unicode());
        r.pad4();
        for (QChar c : s) r.i32(static_cast<std::int32_t>(std::lround(fm.horizontalAdvance(c))));
        add(r);
    }
    bool End(QIODevice& out) override {
        Record eof(kEof);
        eof.u32(0).u32(16).u32(20);
        add(eof);
        Record h(kHeader);
        h.i32(0).i32(0).i32(w_ - 1).i32(h_ - 1);  // bounds, pixels
        const double mm = 25.4 / dpi_;
        h.i32(0).i32(0).i32(static_cast<std::int32_t>(std::lround(w_ * mm * 100))).i32(static_cast<std::int32_t>(std::lround(h_ * mm * 100)));
        h.u32(0x464D4520).u32(0x10000);
        const std::uint32_t total = static_cast<std::uint32_t>(body_.size()) + 108;
        h.u32(total).u32(records_ + 1).u16(4).u16(0);
        h.u32(0).u32(0).u32(0);  // no description, no palette
        // The reference device is the picture itself: a logical unit is a pixel at the resolution.
        h.i32(w_).i32(h_);
        h.i32(static_cast<std::int32_t>(std::lround(w_ * mm))).i32(static_cast<std::int32_t>(std::lround(h_ * mm)));
        h.u32(0).u32(0).u32(0);
        h.i32(static_cast<std::int32_t>(std::lround(w_ * mm * 1000))).i32(static_cast<std::int32_t>(std::lround(h_ * mm * 1000)));
        const QByteArray head = h.done();
        return out.write(head) == head.size() && out.write(body_) == body_.size();
    }

private:
    void add(Record& r) {
        body_ += r.done();
        ++records_;
    }
    void points(std::uint32_t type, const QPolygonF& p) {
        const QRect b = p.boundingRect().toAlignedRect();
        Record r(type);
        r.i32(b.left()).i32(b.top()).i32(b.right()).i32(b.bottom()).u32(static_cast<std::uint32_t>(p.size()));
        for (const QPointF& q : p) r.i32(static_cast<std::int32_t>(std::lround(q.x()))).i32(static_cast<std::int32_t>(std::lround(q.y())));
        add(r);
    }
    void select_pen(bool ours) {
        if (pen_selected_ == ours) return;
        add(Record(kSelectObject).u32(ours ? kPen : kNullPen));
        pen_selected_ = ours;
    }
    void select_brush(bool ours) {
        if (brush_selected_ == ours) return;
        add(Record(kSelectObject).u32(ours ? kBrush : kNullBrush));
        brush_selected_ = ours;
    }
    // Pen styles PS_SOLID 0, PS_DASH 1, PS_DOT 2, PS_DASHDOT 3, PS_DASHDOTDOT 4.
    void pen(const QColor& c, long width, int dash) {
        static const std::uint32_t styles[5] = {0, 2, 1, 3, 4};
        const std::uint32_t style = styles[std::clamp(dash, 0, 4)];
        if (has_pen_ && colorref(c) == pen_colour_ && width == pen_width_ && style == pen_style_) {
            select_pen(true);
            return;
        }
        if (has_pen_) {
            add(Record(kSelectObject).u32(kBlackPen));
            add(Record(kDeleteObject).u32(kPen));
        }
        pen_colour_ = colorref(c), pen_width_ = width, pen_style_ = style, has_pen_ = true;
        add(Record(kCreatePen).u32(kPen).u32(style).i32(static_cast<std::int32_t>(width)).i32(0).u32(pen_colour_));
        pen_selected_ = false;
        select_pen(true);
    }
    void brush(const QColor& c) {
        if (has_brush_ && colorref(c) == brush_colour_) {
            select_brush(true);
            return;
        }
        if (has_brush_) {
            add(Record(kSelectObject).u32(kNullBrush));
            add(Record(kDeleteObject).u32(kBrush));
        }
        brush_colour_ = colorref(c), has_brush_ = true;
        add(Record(kCreateBrush).u32(kBrush).u32(0).u32(brush_colour_).u32(0));
        brush_selected_ = false;
        select_brush(true);
    }
    void font(const VECTOR_TEXT& t) {
        const int height = static_cast<int>(std::lround(t.size));
        const int angle = static_cast<int>(std::lround(t.angle * 10));
        const int key = (height << 16) ^ (angle << 4) ^ (t.family << 2) ^ (t.bold ? 2 : 0) ^ (t.italic ? 1 : 0);
        if (has_font_ && key == font_key_) return;
        if (has_font_) add(Record(kDeleteObject).u32(kFont));
        Record r(kCreateFont);
        r.u32(kFont).i32(-height).i32(0).i32(angle).i32(angle).i32(t.bold ? 700 : 400);
        r.u8(t.italic ? 1 : 0).u8(0).u8(0).u8(1).u8(0).u8(0).u8(0);  // charset: the default
        r.u8(t.family == 3 ? 0x31 : t.family == 2 ? 0x12 : 0x22);     // pitch and family
        const QString face = t.family == 3 ? "Courier New" : t.family == 2 ? "Times New Roman" : "Arial";
        for (int i = 0; i < 32; ++i) r.u16(i < face.size() ? face[i].unicode() : 0);
        add(r);
        add(Record(kSelectObject).u32(kFont));
        has_font_ = true, font_key_ = key;
    }
    int w_ = 1, h_ = 1, dpi_ = 96;
    std::uint32_t records_ = 0;
    QByteArray body_;
    bool has_pen_ = false, has_brush_ = false, has_font_ = false, pen_selected_ = false, brush_selected_ = false;
    std::uint32_t pen_colour_ = 0, pen_style_ = 0, brush_colour_ = 0, text_colour_ = 0xFFFFFFFF;
    long pen_width_ = 0;
    int font_key_ = 0;
};

}  // namespace

std::unique_ptr<Vector_Writer> Emf_Writer() { return std::make_unique<Emf>(); }

}  // namespace zendrite::qt
