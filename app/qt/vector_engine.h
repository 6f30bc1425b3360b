#pragma once
// A paint engine for the vector formats Qt has no engine for: what the painter draws
// comes out as lines, polylines, filled polygons and texts in device pixels (Y down),
// clipped to the painter's clip rectangle, for a writer of one format.
#include <QColor>
#include <QFont>
#include <QIODevice>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPolygonF>
#include <QString>
#include <memory>

namespace zendrite::qt {

// One text: its start on the base line, the angle in degrees (counter-clockwise on the
// page), its height in device pixels and the font family (1 sans, 2 serif, 3 fixed).
struct VECTOR_TEXT {
    QPointF at;
    QString text;
    double angle = 0, size = 10;
    int family = 1;
    bool bold = false, italic = false;
    QColor colour;
};

class Vector_Writer {
public:
    virtual ~Vector_Writer() = default;
    // Called once before anything is drawn, with the device's size in pixels and its resolution.
    virtual void Begin(double width, double height, int dpi) = 0;
    // dash: 0 solid, 1 dotted, 2 dashed, 3 dash-dot, 4 dash-dot-dot.
    virtual void Stroke(const QPolygonF& line, bool closed, const QColor& colour, double width, int dash) = 0;
    virtual void Fill(const QPolygonF& polygon, const QColor& colour) = 0;
    virtual void Text(const VECTOR_TEXT& t) = 0;
    // The whole file; false when it cannot be written.
    virtual bool End(QIODevice& out) = 0;
};

class Vector_Engine : public QPaintEngine {
public:
    Vector_Engine(std::unique_ptr<Vector_Writer> writer, QIODevice* out, int width, int height, int dpi);
    bool begin(QPaintDevice*) override;
    bool end() override;
    void updateState(const QPaintEngineState& state) override;
    void drawPath(const QPainterPath& path) override;
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
    void drawLines(const QLineF* lines, int count) override;
    void drawRects(const QRectF* rects, int count) override;
    void drawPoints(const QPointF* points, int count) override;
    void drawTextItem(const QPointF& p, const QTextItem& item) override;
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}  // pictures hold no bitmaps
    Type type() const override { return QPaintEngine::User; }

private:
    void stroke(const QPolygonF& device_points, bool closed);
    void fill(const QPolygonF& device_points);
    bool hatch(const QPolygonF& device_points);
    std::unique_ptr<Vector_Writer> writer_;
    QIODevice* out_;
    int width_, height_, dpi_;
    QTransform matrix_;
    QPen pen_;
    QBrush brush_;
    QFont font_;
    bool clipping_ = false;
    QRectF clip_;
};

class Vector_Paint_Device : public QPaintDevice {
public:
    Vector_Paint_Device(std::unique_ptr<Vector_Writer> writer, QIODevice* out, int width, int height, int dpi);
    QPaintEngine* paintEngine() const override { return engine_.get(); }

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    std::unique_ptr<Vector_Engine> engine_;
    int width_, height_, dpi_;
};

// The writers of the formats.
std::unique_ptr<Vector_Writer> Eps_Writer(bool encapsulated);
std::unique_ptr<Vector_Writer> Emf_Writer();
std::unique_ptr<Vector_Writer> Hpgl_Writer();
std::unique_ptr<Vector_Writer> Dxf_Writer();

}  // namespace zendrite::qt
