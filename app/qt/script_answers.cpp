// Queued answers of unattended runs, applied to a dialog when it is shown.
#include <iostream>

#include "app/qt/present_state.h"

namespace zendrite {
using namespace qt;

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

}  // namespace qt
}  // namespace zendrite
