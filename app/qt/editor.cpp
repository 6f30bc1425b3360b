// The internal text editor: a child window with the file's text and Save/Close buttons.
#include <QFile>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextStream>
#include <QVBoxLayout>

#include "app/qt/canvas.h"
#include "app/qt/present_state.h"

namespace zendrite {
using namespace qt;

int WEditFile(const std::string& file, bool read_only) {
    LAYER& l = L();
    if (l.edit_window) WindowCloseChild(l.edit_window);
    const int handle = l.next_child++;
    auto* frame = new Child_Frame(handle);
    frame->setWindowTitle(Q(file));
    auto* lay = new QVBoxLayout(frame);
    auto* text = new QPlainTextEdit;
    text->setFont(QFont("Monospace"));
    text->setReadOnly(read_only);
    QFile f(Q(file));
    if (f.open(QIODevice::ReadOnly | QIODevice::Text)) text->setPlainText(QTextStream(&f).readAll());
    lay->addWidget(text);
    auto* row = new QHBoxLayout;
    row->addStretch();
    auto* save = new QPushButton("Save");
    auto* close = new QPushButton("Close");
    save->setEnabled(!read_only);
    row->addWidget(save);
    row->addWidget(close);
    lay->addLayout(row);
    const std::string name = file;
    QObject::connect(save, &QPushButton::clicked, [text, name] {
        Write_File_Replace(name, S(text->toPlainText()));
    });
    QObject::connect(close, &QPushButton::clicked, [handle] {
        WIN_MESSAGE m;
        m.type = PushButton;
        m.win = handle;
        m.value1 = kIdCancel;
        WMessagePost(m);
    });
    WINDOW_STATE& w = l.windows[handle];
    w.handle = handle;
    w.top = frame;
    frame->resize(700, 500);
    frame->show();
    l.edit_window = handle;
    return handle;
}

int WEditWindow() { return L().edit_window; }

}  // namespace zendrite
