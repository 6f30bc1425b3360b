// The root window, child windows, the status bar and the cursor.
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QLabel>
#include <QMainWindow>
#include <QPainter>
#include <QStatusBar>
#include <QVBoxLayout>

#include "app/qt/canvas.h"
#include "app/qt/present_state.h"

namespace zendrite {
using namespace qt;

namespace {

class Root_Frame : public QMainWindow {
public:
    bool closing = false;

protected:
    // Local files and folders only; what they are is the program's to decide.
    void dragEnterEvent(QDragEnterEvent* e) override {
        if (e->mimeData()->hasUrls()) e->acceptProposedAction();
    }
    void dropEvent(QDropEvent* e) override {
        WIN_MESSAGE m;
        m.type = FilesDropped;
        m.win = kRootWindow;
        for (const QUrl& u : e->mimeData()->urls())
            if (u.isLocalFile()) m.paths.push_back(S(u.toLocalFile()));
        if (m.paths.empty()) return;
        e->acceptProposedAction();
        WMessagePost(m);
    }

    void closeEvent(QCloseEvent* e) override {
        if (closing) {
            e->accept();
            return;
        }
        e->ignore();
        WIN_MESSAGE m;
        m.type = CloseRequest;
        m.win = kRootWindow;
        WMessagePost(m);
    }
};

void layout_status_parts() {
    LAYER& l = L();
    if (!l.status) return;
    for (QLabel* lab : l.status_parts) {
        l.status->removeWidget(lab);
        delete lab;
    }
    l.status_parts.clear();
    for (std::size_t i = 0; i < l.status_widths.size(); ++i) {
        auto* lab = new QLabel(l.status);
        lab->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        lab->setMinimumWidth(40);
        const int w = l.status_widths[i];
        // Relative widths: -1 takes what the others leave.
        l.status->addWidget(lab, w < 0 ? 2 : std::max(1, w / 500));
        if (i + 1 < l.status_texts.size()) lab->setText(Q(l.status_texts[i + 1]));
        l.status_parts.push_back(lab);
    }
}

}  // namespace

namespace qt {
WINDOW_STATE* Window(int handle) {
    auto it = L().windows.find(handle);
    return it == L().windows.end() ? nullptr : &it->second;
}

void Refresh_Window(int handle) {
    WINDOW_STATE* w = Window(handle);
    if (w && w->canvas) w->canvas->update();
}
}  // namespace qt

void WindowOpen(int /*flags*/, int menu, int width, int height, const std::string& title) {
    LAYER& l = L();
    auto* frame = new Root_Frame;
    frame->setAcceptDrops(true);
    frame->setWindowTitle(Q(title));
    auto* canvas = new Canvas(kRootWindow, frame);
    frame->setCentralWidget(canvas);
    l.root = frame;
    l.status = frame->statusBar();
    WINDOW_STATE& w = l.windows[kRootWindow];
    w.handle = kRootWindow;
    w.top = frame;
    w.canvas = canvas;
    if (menu > 0) WMenu(menu);
    if (l.status_widths.empty()) l.status_widths = {-1};
    layout_status_parts();
    frame->resize(std::max(width, 200), std::max(height, 150));
    frame->show();
    if (QApplication::instance()) QApplication::processEvents();
    if (w.front.isNull() || w.front.size() != canvas->size()) {
        w.front = QImage(canvas->size(), QImage::Format_RGB32);
        w.front.fill(Qt::white);
    }
    l.selected_window = kRootWindow;
    // The size settles when the window is shown; the first resize is not news.
    std::erase_if(l.fifo, [](const WIN_MESSAGE& m) { return m.type == Resize && m.win == kRootWindow; });
}

int WindowOpenChild(int flags, int x, int y, int width, int height, const std::string& title) {
    LAYER& l = L();
    const int handle = l.next_child++;
    auto* frame = new Child_Frame(handle);
    frame->setWindowTitle(Q(title));
    auto* canvas = new Canvas(handle, frame);
    auto* lay = new QVBoxLayout(frame);
    lay->setContentsMargins(0, 0, 0, 0);
    lay->addWidget(canvas);
    WINDOW_STATE& w = l.windows[handle];
    w.handle = handle;
    w.top = frame;
    w.canvas = canvas;
    if (flags & ChildStatusBar) {
        w.status = new QStatusBar(frame);
        w.status->setSizeGripEnabled(false);
        w.status->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        lay->addWidget(w.status);
        lay->setStretchFactor(canvas, 1);  // the picture takes what the bars leave
    }
    frame->setGeometry(x > 0 ? x : 80, y > 0 ? y : 80, std::max(width, 200), std::max(height, 150));
    frame->show();
    if (QApplication::instance()) QApplication::processEvents();
    w.front = QImage(canvas->size(), QImage::Format_RGB32);
    w.front.fill(Qt::white);
    l.selected_window = handle;
    std::erase_if(l.fifo, [handle](const WIN_MESSAGE& m) { return m.type == Resize && m.win == handle; });
    return handle;
}

void WindowCloseChild(int handle) {
    LAYER& l = L();
    if (handle == kRootWindow) return;
    WINDOW_STATE* w = Window(handle);
    if (!w) return;
    for (int item : w->tool_items) l.actions.erase(item);  // they go with the frame
    if (auto* f = dynamic_cast<Child_Frame*>(w->top.data())) f->closing = true;
    if (w->top) w->top->deleteLater();
    l.windows.erase(handle);
    if (l.edit_window == handle) l.edit_window = 0;
    if (l.selected_window == handle) l.selected_window = kRootWindow;
    std::erase_if(l.fifo, [handle](const WIN_MESSAGE& m) { return m.win == handle; });
}

void WindowSelect(int handle) {
    if (Window(handle)) L().selected_window = handle;
}
int WindowSelected() { return L().selected_window; }
bool WindowExists(int handle) { return Window(handle) != nullptr; }

void WindowShow(int handle, bool shown) {
    WINDOW_STATE* w = Window(handle);
    if (!w || !w->top) return;
    w->top->setVisible(shown);
    if (shown) w->top->raise();
    if (QApplication::instance()) QApplication::processEvents();
}

bool WindowShown(int handle) {
    const WINDOW_STATE* w = Window(handle);
    return w && w->top && w->top->isVisible();
}

void WindowClose() {
    LAYER& l = L();
    std::vector<int> children;
    for (auto& [h, w] : l.windows)
        if (h != kRootWindow) children.push_back(h);
    for (int h : children) WindowCloseChild(h);
    if (auto* r = dynamic_cast<Root_Frame*>(l.root)) {
        r->closing = true;
        r->close();
    }
}

void WindowTitle(const std::string& title) {
    WINDOW_STATE* w = Window(L().selected_window);
    if (w && w->top) w->top->setWindowTitle(Q(title));
}

void WindowSize(int handle, int width, int height) {
    WINDOW_STATE* w = Window(handle);
    if (!w || !w->top || !w->canvas || width < 1 || height < 1) return;
    const QSize extra = w->top->size() - w->canvas->size();
    w->top->resize(width + extra.width(), height + extra.height());
    if (QApplication::instance()) QApplication::processEvents();
}

int WInfoWindow(int code) {
    if (L().ex.on) return code == 1 ? L().ex.width : code == 2 ? L().ex.height : 0;
    WINDOW_STATE* w = Window(L().selected_window);
    if (!w) return 0;
    const QSize s = w->canvas ? w->canvas->size() : w->front.size();
    return code == 1 ? s.width() : code == 2 ? s.height() : 0;
}

void WStatusBarParts(int count, const std::vector<int>& widths) {
    LAYER& l = L();
    l.status_widths.assign(widths.begin(), widths.begin() + std::min<std::size_t>(widths.size(), std::max(count, 0)));
    l.status_texts.resize(std::max<std::size_t>(l.status_texts.size(), l.status_widths.size() + 1));
    layout_status_parts();
}

void WindowOutStatusBar(int part, const std::string& text) {
    LAYER& l = L();
    if (part < 1) return;
    if (WINDOW_STATE* w = Window(l.selected_window); w && l.selected_window != kRootWindow && w->status) {
        const auto k = static_cast<std::size_t>(part);
        if (k >= w->status_texts.size()) w->status_texts.resize(k + 1);
        w->status_texts[k] = text;
        while (w->status_labels.size() < k) {
            auto* lab = new QLabel(w->status);
            lab->setFrameStyle(QFrame::Panel | QFrame::Sunken);
            w->status->addWidget(lab, 1);
            w->status_labels.emplace_back(lab);
        }
        if (w->status_labels[k - 1]) w->status_labels[k - 1]->setText(Q(text));
        return;
    }
    if (static_cast<std::size_t>(part) >= l.status_texts.size()) l.status_texts.resize(static_cast<std::size_t>(part) + 1);
    l.status_texts[static_cast<std::size_t>(part)] = text;
    if (static_cast<std::size_t>(part) <= l.status_parts.size()) l.status_parts[static_cast<std::size_t>(part - 1)]->setText(Q(text));
}

std::string WindowStatusBarText(int part) {
    if (WINDOW_STATE* w = Window(L().selected_window); w && L().selected_window != kRootWindow && w->status) {
        const auto& c = w->status_texts;
        return part >= 1 && static_cast<std::size_t>(part) < c.size() ? c[static_cast<std::size_t>(part)] : std::string();
    }
    const auto& t = L().status_texts;
    return part >= 1 && static_cast<std::size_t>(part) < t.size() ? t[static_cast<std::size_t>(part)] : std::string();
}

void WCursorShape(int shape) {
    LAYER& l = L();
    l.cursor = shape;
    WINDOW_STATE* w = Window(l.selected_window);
    if (!w || !w->canvas) return;
    const Qt::CursorShape c = shape == 3 ? Qt::CrossCursor : shape == 6 ? Qt::OpenHandCursor : Qt::ArrowCursor;
    w->canvas->setCursor(c);
}
int WCursorShapeNow() { return L().cursor; }

bool WPictureSave(int window, const std::string& file) {
    WINDOW_STATE* w = Window(window);
    if (!w) return false;
    // A window without a drawing area (the editor) is taken as its widgets show it.
    if (w->front.isNull()) return w->top && w->top->grab().save(Q(file), "PNG");
    return w->front.save(Q(file), "PNG");
}

}  // namespace zendrite
