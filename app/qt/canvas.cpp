#include "app/qt/canvas.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <QPainter>

#include "app/qt/present_state.h"

namespace zendrite::qt {

Canvas::Canvas(int handle, QWidget* parent) : QWidget(parent), handle_(handle) {
    setMouseTracking(true);
    setFocusPolicy(Qt::WheelFocus);  // Home reaches the plot
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(200, 150);
}

void Canvas::paintEvent(QPaintEvent*) {
    QPainter p(this);
    WINDOW_STATE* w = Window(handle_);
    if (w && !w->front.isNull()) p.drawImage(QPoint(0, 0), w->front);
    else p.fillRect(rect(), Qt::white);
}

void Canvas::resizeEvent(QResizeEvent*) {
    WINDOW_STATE* w = Window(handle_);
    if (!w) return;
    if (w->front.size() == size()) return;
    QImage grown(size(), QImage::Format_RGB32);
    grown.fill(Qt::white);
    if (!w->front.isNull()) {
        QPainter p(&grown);
        p.drawImage(QPoint(0, 0), w->front);
    }
    w->front = grown;
    WIN_MESSAGE m;
    m.type = Resize;
    m.win = handle_;
    m.width = width();
    m.height = height();
    WMessagePost(m);
}

void Canvas::post_mouse(int type, QMouseEvent* e) {
    if (type == MouseMove && !L().mouse_move) return;
    WINDOW_STATE* w = Window(handle_);
    if (!w) return;
    WIN_MESSAGE m;
    m.type = type;
    m.win = handle_;
    const Qt::MouseButton b = type == MouseMove ? Qt::NoButton : e->button();
    m.value1 = b == Qt::LeftButton ? 1 : b == Qt::RightButton ? 2 : b == Qt::MiddleButton ? 3 : 0;
    const QPointF pos = e->position();
    m.gx = static_cast<float>(pos.x() / std::max(1, width()) * w->page_w);
    m.gy = static_cast<float>((1.0 - pos.y() / std::max(1, height())) * w->page_h);
    IPgPageToXY(m.gx, m.gy, m.x, m.y);
    WMessagePost(m);
}

void Canvas::mousePressEvent(QMouseEvent* e) { post_mouse(MouseButDown, e); }
void Canvas::mouseReleaseEvent(QMouseEvent* e) { post_mouse(MouseButUp, e); }
void Canvas::mouseMoveEvent(QMouseEvent* e) { post_mouse(MouseMove, e); }

void Canvas::wheelEvent(QWheelEvent* e) {
    WINDOW_STATE* w = Window(handle_);
    // one notch is 120; touch pads send less, gathered until a whole step is reached
    wheel_rest_ += e->angleDelta().y();
    const int steps = wheel_rest_ / 120;
    wheel_rest_ -= steps * 120;
    e->accept();
    if (!w || steps == 0) return;
    WIN_MESSAGE m;
    m.type = MouseWheel;
    m.win = handle_;
    m.value1 = steps;
    const QPointF pos = e->position();
    m.gx = static_cast<float>(pos.x() / std::max(1, width()) * w->page_w);
    m.gy = static_cast<float>((1.0 - pos.y() / std::max(1, height())) * w->page_h);
    IPgPageToXY(m.gx, m.gy, m.x, m.y);
    WMessagePost(m);
}

void Canvas::keyPressEvent(QKeyEvent* e) {
    int code = 0;
    switch (e->key()) {
    case Qt::Key_Home: code = kKeyHome; break;
    case Qt::Key_Up: code = kKeyUp; break;
    case Qt::Key_Down: code = kKeyDown; break;
    case Qt::Key_Left: code = kKeyLeft; break;
    case Qt::Key_Right: code = kKeyRight; break;
    case Qt::Key_PageUp: code = kKeyPageUp; break;
    case Qt::Key_PageDown: code = kKeyPageDown; break;
    case Qt::Key_Escape: code = kKeyEscape; break;
    default: break;
    }
    if (code == 0) {
        QWidget::keyPressEvent(e);
        return;
    }
    WIN_MESSAGE m;
    m.type = KeyDown;
    m.win = handle_;
    m.value1 = code;
    WMessagePost(m);
}

Child_Frame::Child_Frame(int handle) : handle_(handle) {}

void Child_Frame::closeEvent(QCloseEvent* e) {
    if (closing) {
        e->accept();
        return;
    }
    e->ignore();
    WIN_MESSAGE m;
    m.type = CloseRequest;
    m.win = handle_;
    WMessagePost(m);
}

}  // namespace zendrite::qt
