// Menu bars from templates, item states and labels, the toolbar.
#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QToolBar>
#include <QBoxLayout>
#include <QKeySequence>

#include "app/qt/present_state.h"

namespace zendrite {
using namespace qt;

namespace {

QAction* make_action(const MENU_ENTRY& e, QObject* parent) {
    LAYER& l = L();
    auto* a = new QAction(Q(e.label), parent);
    a->setCheckable(e.checkable);
    const int item = e.item;
    if (auto k = l.menu_shortcuts.find(item); k != l.menu_shortcuts.end())
        a->setShortcuts(QKeySequence::listFromString(Q(k->second)));
    if (auto h = l.menu_hints.find(item); h != l.menu_hints.end()) a->setStatusTip(Q(h->second));
    QObject::connect(a, &QAction::triggered, [item](bool) {
        WIN_MESSAGE m;
        m.type = MenuSelect;
        m.win = kRootWindow;
        m.value1 = item;
        WMessagePost(m);
        // A checkable action toggles itself; the program owns the state.
        if (auto it = L().actions.find(item); it != L().actions.end())
            it->second->setChecked(L().menu_checked[item]);
    });
    l.actions[item] = a;
    l.menu_labels[item] = e.label;
    if (!l.menu_enabled.count(item)) l.menu_enabled[item] = true;
    a->setEnabled(l.menu_enabled[item]);
    a->setChecked(l.menu_checked[item]);
    return a;
}

// The action posts its item as a MenuSelect event of the child window.
void post_item_of(QAction* a, int handle, int item) {
    QObject::connect(a, &QAction::triggered, [item, handle](bool) {
        WIN_MESSAGE m;
        m.type = MenuSelect;
        m.win = handle;
        m.value1 = item;
        WMessagePost(m);
    });
}

QIcon tool_icon(const std::string& name) {
    QStyle* st = QApplication::style();
    if (name == "open") return st->standardIcon(QStyle::SP_DialogOpenButton);
    if (name == "save") return st->standardIcon(QStyle::SP_DialogSaveButton);
    if (name == "reset") return st->standardIcon(QStyle::SP_BrowserReload);
    if (name == "left") return st->standardIcon(QStyle::SP_ArrowLeft);
    if (name == "right") return st->standardIcon(QStyle::SP_ArrowRight);
    if (name == "up") return st->standardIcon(QStyle::SP_ArrowUp);
    if (name == "down") return st->standardIcon(QStyle::SP_ArrowDown);
    if (name == "start") return st->standardIcon(QStyle::SP_MediaSkipBackward);
    if (name == "end") return st->standardIcon(QStyle::SP_MediaSkipForward);
    if (name == "edit") return st->standardIcon(QStyle::SP_FileDialogDetailedView);
    if (name == "help") return st->standardIcon(QStyle::SP_DialogHelpButton);
    // The others are drawn: a short text on a small tile.
    QPixmap pm(24, 24);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(40, 60, 110), 1.5));
    p.setBrush(QColor(225, 232, 245));
    p.drawRoundedRect(QRectF(1.5, 1.5, 21, 21), 4, 4);
    if (name == "undo" || name == "redo") {  // a hooked arrow, turning back or forward
        const bool undo = name == "undo";
        QPainterPath arc;
        arc.moveTo(undo ? 17 : 7, 17);
        arc.cubicTo(undo ? 19 : 5, 9, undo ? 12 : 12, 6, undo ? 6 : 18, 9);
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(QColor(40, 60, 110), 2.0));
        p.drawPath(arc);
        QPolygonF head;
        const double x = undo ? 6 : 18, s = undo ? 1 : -1;
        head << QPointF(x - s * 1, 9) << QPointF(x + s * 5, 4.5) << QPointF(x + s * 5, 12.5);
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(40, 60, 110));
        p.drawPolygon(head);
        return QIcon(pm);
    }
    QFont f = p.font();
    f.setBold(true);
    f.setPixelSize(name.size() > 2 ? 9 : 14);
    p.setFont(f);
    std::string text = name == "zoomin" ? "+" : name == "zoomout" ? "-" : name == "hand" ? "H" : name == "arrow" ? "A"
                                                                                                          : name;
    p.drawText(QRectF(0, 0, 24, 24), Qt::AlignCenter, Q(text));
    return QIcon(pm);
}

}  // namespace

void WMenuDefine(int id, const std::vector<MENU_ENTRY>& entries) { L().menu_templates[id] = entries; }

void WMenu(int id) {
    LAYER& l = L();
    auto it = l.menu_templates.find(id);
    if (it == l.menu_templates.end() || !l.root) return;
    QMenuBar* bar = l.root->menuBar();
    bar->clear();
    l.actions.clear();
    std::vector<QMenu*> stack;
    for (const MENU_ENTRY& e : it->second) {
        switch (e.kind) {
        case MenuPopup:
            stack.push_back(stack.empty() ? bar->addMenu(Q(e.label)) : stack.back()->addMenu(Q(e.label)));
            break;
        case MenuEnd:
            if (!stack.empty()) stack.pop_back();
            break;
        case MenuSeparator:
            if (!stack.empty()) stack.back()->addSeparator();
            break;
        default:
            if (stack.empty()) bar->addAction(make_action(e, bar));
            else stack.back()->addAction(make_action(e, stack.back()));
        }
    }
}

void WMenuSetState(int item, int kind, int value) {
    LAYER& l = L();
    if (kind == 1) l.menu_enabled[item] = value != 0;
    if (kind == 2) l.menu_checked[item] = value != 0;
    if (auto it = l.actions.find(item); it != l.actions.end()) {
        if (kind == 1) it->second->setEnabled(value != 0);
        if (kind == 2) it->second->setChecked(value != 0);
    }
    if (auto it = l.tool_actions.find(item); it != l.tool_actions.end() && kind == 1) it->second->setEnabled(value != 0);
}

int WMenuGetState(int item, int kind) {
    LAYER& l = L();
    if (kind == 1) return l.menu_enabled.count(item) ? (l.menu_enabled[item] ? 1 : 0) : 1;
    if (kind == 2) return l.menu_checked.count(item) && l.menu_checked[item] ? 1 : 0;
    return 0;
}

void WMenuSetString(int item, const std::string& text) {
    LAYER& l = L();
    l.menu_labels[item] = text;
    if (auto it = l.actions.find(item); it != l.actions.end()) it->second->setText(Q(text));
}

void WMenuSetShortcut(int item, const std::string& keys) {
    LAYER& l = L();
    l.menu_shortcuts[item] = keys;
    if (auto it = l.actions.find(item); it != l.actions.end())
        it->second->setShortcuts(QKeySequence::listFromString(Q(keys)));
    else if (auto t = l.tool_actions.find(item); t != l.tool_actions.end())  // a toolbar button alone
        t->second->setShortcuts(QKeySequence::listFromString(Q(keys)));
}

std::string WMenuGetShortcut(int item) {
    auto it = L().menu_shortcuts.find(item);
    return it == L().menu_shortcuts.end() ? std::string() : it->second;
}

void WMenuSetHint(int item, const std::string& text) {
    LAYER& l = L();
    l.menu_hints[item] = text;
    if (auto it = l.actions.find(item); it != l.actions.end()) it->second->setStatusTip(Q(text));
    if (auto t = l.tool_actions.find(item); t != l.tool_actions.end()) t->second->setStatusTip(Q(text));
}

std::string WMenuGetHint(int item) {
    auto it = L().menu_hints.find(item);
    return it == L().menu_hints.end() ? std::string() : it->second;
}

std::string WMenuGetString(int item) {
    auto it = L().menu_labels.find(item);
    return it == L().menu_labels.end() ? std::string() : it->second;
}

bool WMenuHasItem(int item) { return L().actions.count(item) > 0; }

void WMenuToolbar(int /*id*/, const std::vector<TOOL_ENTRY>& entries) {
    LAYER& l = L();
    if (!l.root) return;
    if (!l.toolbar) {
        l.toolbar = l.root->addToolBar("Tools");
        l.toolbar->setMovable(false);
        l.toolbar->setIconSize(QSize(22, 22));
    }
    l.toolbar->clear();
    l.tool_actions.clear();
    for (const TOOL_ENTRY& t : entries) {
        if (t.item == 0) {
            l.toolbar->addSeparator();
            continue;
        }
        QAction* a = l.toolbar->addAction(tool_icon(t.icon), Q(t.tip));
        a->setToolTip(Q(t.tip));
        const int item = t.item;
        if (auto e = l.menu_enabled.find(item); e != l.menu_enabled.end()) a->setEnabled(e->second);
        auto hint = l.menu_hints.find(item);
        a->setStatusTip(Q(hint != l.menu_hints.end() ? hint->second : t.tip));
        // the keys of an item that is on the toolbar alone belong to its button
        if (auto k = l.menu_shortcuts.find(item); k != l.menu_shortcuts.end() && !l.actions.count(item))
            a->setShortcuts(QKeySequence::listFromString(Q(k->second)));
        l.tool_actions[item] = a;
        QObject::connect(a, &QAction::triggered, [item](bool) {
            WIN_MESSAGE m;
            m.type = MenuSelect;
            m.win = kRootWindow;
            m.value1 = item;
            WMessagePost(m);
        });
    }
}

void WChildMenu(int handle, const std::vector<MENU_ENTRY>& entries) {
    WINDOW_STATE* w = Window(handle);
    if (!w || !w->top || handle == kRootWindow) return;
    auto* bar = new QMenuBar(w->top);
    std::vector<QMenu*> open;
    for (const MENU_ENTRY& e : entries) {
        if (e.kind == MenuPopup) {
            QMenu* m = open.empty() ? bar->addMenu(Q(e.label)) : open.back()->addMenu(Q(e.label));
            open.push_back(m);
        } else if (e.kind == MenuEnd) {
            if (!open.empty()) open.pop_back();
        } else if (e.kind == MenuSeparator) {
            if (!open.empty()) open.back()->addSeparator();
        } else if (!open.empty()) {
            post_item_of(open.back()->addAction(Q(e.label)), handle, e.item);
        }
    }
    if (auto* lay = qobject_cast<QBoxLayout*>(w->top->layout())) lay->setMenuBar(bar);
}

void WChildToolbar(int handle, const std::vector<TOOL_ENTRY>& entries) {
    LAYER& l = L();
    WINDOW_STATE* w = Window(handle);
    if (!w || !w->top || handle == kRootWindow) return;
    if (!w->toolbar) {
        w->toolbar = new QToolBar(w->top);
        w->toolbar->setIconSize(QSize(22, 22));
        w->toolbar->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        if (auto* lay = qobject_cast<QBoxLayout*>(w->top->layout())) lay->insertWidget(0, w->toolbar);
    }
    for (int item : w->tool_items) l.actions.erase(item);
    w->tool_items.clear();
    w->toolbar->clear();
    for (const TOOL_ENTRY& t : entries) {
        if (t.item == 0) {
            w->toolbar->addSeparator();
            continue;
        }
        QAction* a = w->toolbar->addAction(tool_icon(t.icon), Q(t.tip));
        a->setToolTip(Q(t.tip));
        const int item = t.item;
        if (!l.menu_enabled.count(item)) l.menu_enabled[item] = true;
        a->setEnabled(l.menu_enabled[item]);
        l.actions[item] = a;
        l.menu_labels[item] = t.tip;
        w->tool_items.push_back(item);
        post_item_of(a, handle, item);
    }
}

}  // namespace zendrite
