#pragma once
// The drawing area of a window: shows the window's front picture and turns
// mouse, wheel, keys, resize and close into events of the layer's FIFO.
#include <QWidget>

namespace zendrite::qt {

class Canvas : public QWidget {
public:
    Canvas(int handle, QWidget* parent);
    int handle() const { return handle_; }

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void wheelEvent(QWheelEvent*) override;
    void keyPressEvent(QKeyEvent*) override;

private:
    void post_mouse(int type, QMouseEvent* e);
    int handle_;
    int wheel_rest_ = 0;  // wheel angle not yet a whole step
};

// A top-level child window that reports its close request instead of closing.
class Child_Frame : public QWidget {
public:
    explicit Child_Frame(int handle);
    bool closing = false;  // set when the program itself closes it

protected:
    void closeEvent(QCloseEvent*) override;

private:
    int handle_;
};

}  // namespace zendrite::qt
