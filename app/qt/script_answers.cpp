// Queued answers of unattended runs, applied to a dialog when it is shown.
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPixmap>
#include <iostream>

#include "app/qt/canvas.h"
#include "app/qt/present_state.h"

namespace zendrite {
using namespace qt;

namespace {

// The state a user would see, one line a field: the selected radio buttons,
// check boxes, labels and texts, so that a script can check what was preset.
void show_state(const DIALOG_STATE& d) {
    const std::string who = d.tpl.id >= 9000 ? d.tpl.title : std::to_string(d.tpl.id);
    for (const auto& def : d.tpl.fields) {
        const auto it = d.fields.find(def.id);
        if (it == d.fields.end()) continue;
        const FIELD_STATE& f = it->second;
        std::string line;
        switch (def.kind) {
        case FIELD_KIND::Radio:
            if (f.ivalue) line = "radio " + std::to_string(def.id);
            break;
        case FIELD_KIND::CheckBox: line = "check " + std::to_string(def.id) + " " + std::to_string(f.ivalue); break;
        case FIELD_KIND::Label: line = "label " + std::to_string(def.id) + " " + (f.text.empty() ? def.label : f.text); break;
        case FIELD_KIND::Text:
        case FIELD_KIND::Real:
        case FIELD_KIND::Integer: line = "text " + std::to_string(def.id) + " " + f.text; break;
        default: break;
        }
        if (!line.empty()) std::cout << "DIALOG " << who << " | " << line << "\n";
    }
}

// The dialog's widgets built as for a user, laid out, and saved as a picture.
bool save_picture(DIALOG_STATE& d, const std::string& file) {
    Run_Dialog_Widgets(d, false);
    if (!d.widget) return false;
    d.widget->adjustSize();
    const bool ok = d.widget->grab().save(Q(file), "PNG");
    d.widget->hide();
    d.widget->deleteLater();
    d.widget = nullptr;  // the answers go on in the state, as before
    return ok;
}

}  // namespace

namespace qt {

int Apply_Dialog_Answers(DIALOG_STATE& d) {
    LAYER& l = L();
    std::deque<DIALOG_ANSWER>* q = nullptr;
    for (const std::string& key : {std::to_string(d.tpl.id), d.tpl.title}) {
        auto it = l.dialog_answers.find(key);
        if (it != l.dialog_answers.end() && !it->second.empty()) {
            q = &it->second;
            break;
        }
    }
    if (!q) return 0;
    const int keep = l.selected_dialog;
    l.selected_dialog = d.tpl.id;
    int button = 0;
    bool applied = false;
    while (!q->empty() && button == 0) {
        const DIALOG_ANSWER a = q->front();
        q->pop_front();
        applied = true;
        if (a.op == "show") {
            show_state(d);
            continue;
        }
        if (a.op == "picture") {
            if (!save_picture(d, a.value)) std::cout << "SCRIPT dialog " << d.tpl.id << " has no picture\n";
            continue;
        }
        FIELD_STATE* f = Field(a.field);
        if (!f && a.op != "press") {
            std::cout << "SCRIPT dialog " << d.tpl.id << " has no field " << a.field << "\n";
            continue;
        }
        int err = 0;
        if (a.op == "set") {
            if (f->def.kind == FIELD_KIND::Combo || f->def.kind == FIELD_KIND::Slider ||
                f->def.kind == FIELD_KIND::Spin || f->def.kind == FIELD_KIND::Tree)
                f->ivalue = IStringToInteger(a.value, err);
            f->text = a.value;
        } else if (a.op == "check") {
            WDialogPutCheckBox(a.field, IStringToInteger(a.value, err));
        } else if (a.op == "radio") {
            WDialogPutRadioButton(a.field);
        } else if (a.op == "grid") {
            WGridPutCellString(a.field, a.col, a.row, a.value);
        } else if (a.op == "press") {
            button = a.field;
        }
    }
    l.selected_dialog = keep;
    // Answers without a press are taken as OK.
    return button != 0 ? button : applied ? kIdOk : 0;
}

void Apply_Progress_Answers(const DIALOG_STATE& d, int value) {
    LAYER& l = L();
    for (const std::string& key : {std::to_string(d.tpl.id), d.tpl.title}) {
        auto it = l.progress_answers.find(key);
        if (it == l.progress_answers.end() || it->second.empty() || it->second.front().first > value) continue;
        const int button = it->second.front().second;
        it->second.pop_front();
        if (button == kProgressEscape) {
            // Through Qt's key delivery, as a user's key press would come: to the
            // dialog when it was built, else to the drawing area of the root window.
            QWidget* to = d.widget ? d.widget.data() : nullptr;
            if (!to && l.windows.count(kRootWindow)) to = l.windows[kRootWindow].canvas;
            if (to && to->focusWidget()) to = to->focusWidget();
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
            if (to) QCoreApplication::sendEvent(to, &press);
            return;
        }
        WIN_MESSAGE m;
        m.type = PushButton;
        m.win = d.tpl.id;
        m.value1 = button;
        WMessagePost(m);
        return;
    }
}

}  // namespace qt
}  // namespace zendrite
