// Qt widgets built from a dialog's fields, and the copy of values both ways.
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

#include "app/qt/present_state.h"

namespace zendrite {
using namespace qt;

namespace {

QString name_of(int id) { return QString("f%1").arg(id); }

// Escape in a modeless dialog would hide it behind the logic's back; with a
// Cancel button it reports that button instead, and the dialog stays until
// the logic closes it.
class ESCAPE_AS_CANCEL : public QObject {
public:
    ESCAPE_AS_CANCEL(QObject* parent, int win) : QObject(parent), win_(win) {}
    bool eventFilter(QObject* o, QEvent* e) override {
        if (e->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(e)->key() != Qt::Key_Escape)
            return QObject::eventFilter(o, e);
        WIN_MESSAGE m;
        m.type = PushButton;
        m.win = win_;
        m.value1 = kIdCancel;
        WMessagePost(m);
        return true;
    }

private:
    int win_;
};

template <class W>
W* find(DIALOG_STATE& d, int id) {
    return d.widget ? d.widget->findChild<W*>(name_of(id)) : nullptr;
}

QWidget* make_grid(const FIELD_STATE& f) {
    auto* t = new QTableWidget(static_cast<int>(f.cells.size()), static_cast<int>(f.def.columns.size()));
    QStringList heads;
    for (const auto& c : f.def.columns) heads << Q(c.label);
    t->setHorizontalHeaderLabels(heads);
    t->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    t->setMinimumHeight(std::min(420, 30 + 26 * static_cast<int>(f.cells.size())));
    return t;
}

QWidget* make_field(DIALOG_STATE& d, FIELD_STATE& f, std::map<int, QButtonGroup*>& groups, QDialog* dlg,
                    bool modal) {
    const DIALOG_FIELD& def = f.def;
    QWidget* w = nullptr;
    switch (def.kind) {
    case FIELD_KIND::Label: {
        auto* l = new QLabel;
        if (def.wrap) {
            l->setWordWrap(true);
            l->setMinimumWidth(360);  // a long note grows in height, not in width
        }
        w = l;
        break;
    }
    case FIELD_KIND::Text:
    case FIELD_KIND::Real:
    case FIELD_KIND::Integer: w = new QLineEdit; break;
    case FIELD_KIND::MultiText: w = new QPlainTextEdit; break;
    case FIELD_KIND::CheckBox: w = new QCheckBox(Q(def.label)); break;
    case FIELD_KIND::Radio: {
        auto* r = new QRadioButton(Q(def.label));
        const int g = def.group ? def.group : def.id;
        if (!groups.count(g)) groups[g] = new QButtonGroup(dlg);
        groups[g]->addButton(r);
        w = r;
        break;
    }
    case FIELD_KIND::Combo: w = new QComboBox; break;
    case FIELD_KIND::Slider: w = new QSlider(Qt::Horizontal); break;
    case FIELD_KIND::Spin: w = new QSpinBox; break;
    case FIELD_KIND::Progress: w = new QProgressBar; break;
    case FIELD_KIND::Picture: w = new QLabel; break;
    case FIELD_KIND::Grid: w = make_grid(f); break;
    case FIELD_KIND::Tree: {
        auto* t = new QTreeWidget;
        t->setHeaderHidden(true);
        // a tree that notifies, in a modal dialog: a double-click on a line is that line and OK
        if (def.notify && modal)
            QObject::connect(t, &QTreeWidget::itemDoubleClicked, dlg, [dlg](QTreeWidgetItem*, int) { dlg->done(kIdOk); });
        w = t;
        break;
    }
    case FIELD_KIND::PushButton: {
        auto* b = new QPushButton(Q(def.label));
        const int id = def.id;
        const int win = d.tpl.id;
        QObject::connect(b, &QPushButton::clicked, dlg, [dlg, id, win, modal] {
            if (modal) {
                dlg->done(id);
                return;
            }
            WIN_MESSAGE m;
            m.type = PushButton;
            m.win = win;
            m.value1 = id;
            WMessagePost(m);
        });
        w = b;
        break;
    }
    }
    w->setObjectName(name_of(def.id));
    if (def.notify && !modal) {
        const int id = def.id, win = d.tpl.id;
        auto post = [id, win] {
            WIN_MESSAGE m;
            m.type = PushButton;
            m.win = win;
            m.value1 = id;
            WMessagePost(m);
        };
        if (auto* s = qobject_cast<QSlider*>(w)) QObject::connect(s, &QSlider::valueChanged, dlg, post);
        else if (auto* c = qobject_cast<QCheckBox*>(w)) QObject::connect(c, &QCheckBox::clicked, dlg, post);
        else if (auto* e = qobject_cast<QLineEdit*>(w)) QObject::connect(e, &QLineEdit::returnPressed, dlg, post);
    }
    return w;
}

bool labelled_in_form(FIELD_KIND k) {
    return k != FIELD_KIND::CheckBox && k != FIELD_KIND::Radio && k != FIELD_KIND::PushButton &&
           k != FIELD_KIND::Grid && k != FIELD_KIND::Tree;
}

}  // namespace

namespace qt {

void Sync_To_Widgets(DIALOG_STATE& d) {
    for (auto& [id, f] : d.fields) {
        QWidget* w = find<QWidget>(d, id);
        if (!w) continue;
        w->setEnabled(f.enabled);
        if (f.fg >= 0 || f.bg >= 0) {
            QPalette p = w->palette();
            if (f.fg >= 0) p.setColor(QPalette::Text, Colour(f.fg));
            if (f.bg >= 0) p.setColor(QPalette::Base, Colour(f.bg)), p.setColor(QPalette::Window, Colour(f.bg));
            w->setPalette(p);
            w->setAutoFillBackground(true);
        }
        switch (f.def.kind) {
        case FIELD_KIND::Label:
            static_cast<QLabel*>(w)->setText(Q(f.text.empty() ? f.def.label : f.text));
            break;
        case FIELD_KIND::Text:
        case FIELD_KIND::Real:
        case FIELD_KIND::Integer: static_cast<QLineEdit*>(w)->setText(Q(f.text)); break;
        case FIELD_KIND::MultiText: static_cast<QPlainTextEdit*>(w)->setPlainText(Q(f.text)); break;
        case FIELD_KIND::CheckBox: static_cast<QCheckBox*>(w)->setChecked(f.ivalue != 0); break;
        case FIELD_KIND::Radio: static_cast<QRadioButton*>(w)->setChecked(f.ivalue != 0); break;
        case FIELD_KIND::Combo: {
            auto* c = static_cast<QComboBox*>(w);
            c->clear();
            for (const auto& o : f.options) c->addItem(Q(o));
            c->setCurrentIndex(f.ivalue - 1);
            break;
        }
        case FIELD_KIND::Slider: {
            auto* s = static_cast<QSlider*>(w);
            const QSignalBlocker quiet(s);  // a value set by the program is not a move of the user
            s->setRange(f.low, f.high);
            s->setValue(f.ivalue);
            break;
        }
        case FIELD_KIND::Spin: {
            auto* s = static_cast<QSpinBox*>(w);
            s->setRange(f.low, f.high);
            s->setValue(f.ivalue);
            break;
        }
        case FIELD_KIND::Progress: {
            auto* s = static_cast<QProgressBar*>(w);
            s->setRange(f.low, f.high);
            s->setValue(f.ivalue);
            break;
        }
        case FIELD_KIND::Picture: {
            QPixmap pm(Q(f.text));
            auto* l = static_cast<QLabel*>(w);
            if (!pm.isNull()) l->setPixmap(pm.scaledToWidth(std::min(pm.width(), 400)));
            break;
        }
        case FIELD_KIND::Grid: {
            auto* t = static_cast<QTableWidget*>(w);
            t->setRowCount(static_cast<int>(f.cells.size()));
            QStringList rows;
            for (const auto& r : f.row_labels) rows << Q(r);
            t->setVerticalHeaderLabels(rows);
            for (std::size_t r = 0; r < f.cells.size(); ++r)
                for (std::size_t c = 0; c < f.cells[r].size(); ++c) {
                    auto* item = new QTableWidgetItem;
                    const bool check = f.def.columns[c].kind == CELL_KIND::CheckBox;
                    if (check) item->setCheckState(f.cells[r][c] == "1" ? Qt::Checked : Qt::Unchecked);
                    else item->setText(Q(f.cells[r][c]));
                    Qt::ItemFlags fl = Qt::ItemIsSelectable | (check ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
                    if (f.col_enabled[c] && f.cell_enabled[r][c]) fl |= Qt::ItemIsEnabled;
                    item->setFlags(fl);
                    t->setItem(static_cast<int>(r), static_cast<int>(c), item);
                }
            break;
        }
        case FIELD_KIND::Tree: {
            auto* t = static_cast<QTreeWidget*>(w);
            t->clear();
            std::vector<QTreeWidgetItem*> parents;
            for (const auto& line : f.options) {
                const std::size_t depth = line.find_first_not_of(' ') / 2;
                parents.resize(std::min(parents.size(), depth));
                auto* item = parents.empty() ? new QTreeWidgetItem(t) : new QTreeWidgetItem(parents.back());
                item->setText(0, Q(line.substr(depth * 2)));
                parents.push_back(item);
                if (static_cast<int>(&line - f.options.data()) + 1 == f.ivalue) t->setCurrentItem(item);
            }
            t->expandAll();
            break;
        }
        case FIELD_KIND::PushButton: break;
        }
    }
    if (auto* tabs = d.widget ? d.widget->findChild<QTabWidget*>("tabs") : nullptr)
        tabs->setCurrentIndex(d.current_tab - 1);
}

void Sync_From_Widgets(DIALOG_STATE& d) {
    for (auto& [id, f] : d.fields) {
        QWidget* w = find<QWidget>(d, id);
        if (!w) continue;
        switch (f.def.kind) {
        case FIELD_KIND::Text:
        case FIELD_KIND::Real:
        case FIELD_KIND::Integer: f.text = S(static_cast<QLineEdit*>(w)->text()); break;
        case FIELD_KIND::MultiText: f.text = S(static_cast<QPlainTextEdit*>(w)->toPlainText()); break;
        case FIELD_KIND::CheckBox: f.ivalue = static_cast<QCheckBox*>(w)->isChecked() ? 1 : 0; break;
        case FIELD_KIND::Radio: f.ivalue = static_cast<QRadioButton*>(w)->isChecked() ? 1 : 0; break;
        case FIELD_KIND::Combo: f.ivalue = static_cast<QComboBox*>(w)->currentIndex() + 1; break;
        case FIELD_KIND::Slider: f.ivalue = static_cast<QSlider*>(w)->value(); break;
        case FIELD_KIND::Spin: f.ivalue = static_cast<QSpinBox*>(w)->value(); break;
        case FIELD_KIND::Grid: {
            auto* t = static_cast<QTableWidget*>(w);
            for (std::size_t r = 0; r < f.cells.size(); ++r)
                for (std::size_t c = 0; c < f.cells[r].size(); ++c) {
                    QTableWidgetItem* item = t->item(static_cast<int>(r), static_cast<int>(c));
                    if (!item) continue;
                    f.cells[r][c] = f.def.columns[c].kind == CELL_KIND::CheckBox
                                        ? (item->checkState() == Qt::Checked ? "1" : "0")
                                        : S(item->text());
                }
            f.cur_row = t->currentRow() + 1;
            f.cur_col = t->currentColumn() + 1;
            break;
        }
        case FIELD_KIND::Tree: {  // the selected line, counted from 1 over all lines
            auto* t = static_cast<QTreeWidget*>(w);
            int n = 0;
            f.ivalue = 0;
            for (QTreeWidgetItemIterator it(t); *it; ++it) {
                ++n;
                if (*it == t->currentItem()) f.ivalue = n;
            }
            break;
        }
        default: break;
        }
    }
    if (auto* tabs = d.widget ? d.widget->findChild<QTabWidget*>("tabs") : nullptr)
        d.current_tab = tabs->currentIndex() + 1;
}

int Run_Dialog_Widgets(DIALOG_STATE& d, bool modal) {
    if (d.widget) {
        Sync_To_Widgets(d);
        d.widget->show();
        d.widget->raise();
        if (!modal) return 0;
        const int r = d.widget->exec();
        Sync_From_Widgets(d);
        return r > 0 ? r : kIdCancel;
    }
    auto* dlg = new QDialog(L().root);
    dlg->setWindowTitle(Q(d.tpl.title));
    d.widget = dlg;
    auto* top = new QVBoxLayout(dlg);
    std::vector<QFormLayout*> pages(d.tpl.tabs.size() + 1);
    auto* common = new QFormLayout;
    pages[0] = common;
    top->addLayout(common);
    if (!d.tpl.tabs.empty()) {
        auto* tabs = new QTabWidget;
        tabs->setObjectName("tabs");
        for (std::size_t i = 0; i < d.tpl.tabs.size(); ++i) {
            auto* page = new QWidget;
            pages[i + 1] = new QFormLayout(page);
            tabs->addTab(page, Q(d.tpl.tabs[i]));
        }
        top->addWidget(tabs);
    }
    std::map<int, QButtonGroup*> groups;
    std::map<int, QGroupBox*> radio_boxes;
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (const auto& def : d.tpl.fields) {
        FIELD_STATE& f = d.fields[def.id];
        QWidget* w = make_field(d, f, groups, dlg, modal);
        if (def.kind == FIELD_KIND::PushButton && (def.id == kIdOk || def.id == kIdCancel)) {
            buttons->addWidget(w);
            if (def.id == kIdOk) static_cast<QPushButton*>(w)->setDefault(true);
            continue;
        }
        QFormLayout* form = pages[static_cast<std::size_t>(std::clamp<int>(def.tab, 0, static_cast<int>(d.tpl.tabs.size())))];
        if (def.kind == FIELD_KIND::Radio) {
            const int g = def.group ? def.group : def.id;
            if (!radio_boxes.count(g)) {
                radio_boxes[g] = new QGroupBox;
                radio_boxes[g]->setLayout(new QVBoxLayout);
                form->addRow(radio_boxes[g]);
            }
            radio_boxes[g]->layout()->addWidget(w);
        } else if (labelled_in_form(def.kind) && !def.label.empty() && def.kind != FIELD_KIND::Label) {
            form->addRow(Q(def.label), w);
        } else {
            form->addRow(w);
        }
    }
    top->addLayout(buttons);
    Sync_To_Widgets(d);
    if (!modal) {
        dlg->setModal(false);
        for (const auto& def : d.tpl.fields)
            if (def.kind == FIELD_KIND::PushButton && def.id == kIdCancel)
                dlg->installEventFilter(new ESCAPE_AS_CANCEL(dlg, d.tpl.id));
        dlg->show();
        return 0;
    }
    const int r = dlg->exec();
    Sync_From_Widgets(d);
    dlg->hide();
    return r > 0 ? r : kIdCancel;
}

}  // namespace qt
}  // namespace zendrite
