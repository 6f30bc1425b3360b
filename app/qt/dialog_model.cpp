// Dialog templates and the values of their fields. The values live here, so
// that a dialog can be filled before it is shown and read after it is gone.
#include <QDialog>
#include <cstdio>
#include <iostream>

#include "app/qt/present_state.h"
#include "support/fixed_text.h"

namespace zendrite {
using namespace qt;

namespace {

void add_standard_buttons(DIALOG_TEMPLATE& t) {
    bool ok = false, cancel = false;
    for (const auto& f : t.fields) {
        if (f.kind != FIELD_KIND::PushButton) continue;
        ok = ok || f.id == kIdOk;
        cancel = cancel || f.id == kIdCancel;
    }
    if (!ok) t.fields.push_back(Fld(kIdOk, FIELD_KIND::PushButton, "OK"));
    if (!cancel) t.fields.push_back(Fld(kIdCancel, FIELD_KIND::PushButton, "Cancel"));
}

FIELD_STATE initial_state(const DIALOG_FIELD& f) {
    FIELD_STATE s;
    s.def = f;
    s.text = f.value;
    s.options = f.options;
    s.low = f.low;
    s.high = f.high;
    switch (f.kind) {
    case FIELD_KIND::CheckBox:
    case FIELD_KIND::Radio:
    case FIELD_KIND::Combo:
    case FIELD_KIND::Slider:
    case FIELD_KIND::Spin:
    case FIELD_KIND::Progress: {
        int err = 0;
        s.ivalue = f.value.empty() ? (f.kind == FIELD_KIND::Combo ? 1 : 0) : IStringToInteger(f.value, err);
        break;
    }
    default:
        break;
    }
    if (f.kind == FIELD_KIND::Grid) {
        s.cells.assign(static_cast<std::size_t>(std::max(f.rows, 0)), std::vector<std::string>(f.columns.size()));
        s.cell_enabled.assign(s.cells.size(), std::vector<bool>(f.columns.size(), true));
        s.row_labels.assign(s.cells.size(), "");
        s.col_enabled.assign(f.columns.size(), true);
    }
    return s;
}

// Reads live widget values first, so that a modeless dialog answers what the user sees.
FIELD_STATE* live_field(int field) {
    DIALOG_STATE* d = Current_Dialog();
    if (d && d->widget) Sync_From_Widgets(*d);
    return Field(field);
}

void changed() {
    DIALOG_STATE* d = Current_Dialog();
    if (d && d->widget) Sync_To_Widgets(*d);
}

}  // namespace

namespace qt {
DIALOG_STATE* Current_Dialog() {
    auto it = L().dialogs.find(L().selected_dialog);
    return it == L().dialogs.end() ? nullptr : it->second.get();
}
FIELD_STATE* Field(int field) {
    DIALOG_STATE* d = Current_Dialog();
    if (!d) return nullptr;
    auto it = d->fields.find(field);
    return it == d->fields.end() ? nullptr : &it->second;
}
}  // namespace qt

void WDialogDefine(const DIALOG_TEMPLATE& dialog) {
    DIALOG_TEMPLATE t = dialog;
    add_standard_buttons(t);
    L().templates[t.id] = t;
}

bool WDialogDefined(int id) { return L().templates.count(id) > 0; }

int WDialogDefineTitled(const std::string& title, DIALOG_TEMPLATE dialog) {
    for (auto& [id, t] : L().templates)
        if (t.title == title && id >= 9000) {
            dialog.id = id;
            dialog.title = title;
            WDialogDefine(dialog);
            return id;
        }
    dialog.id = L().next_titled++;
    dialog.title = title;
    WDialogDefine(dialog);
    return dialog.id;
}

void WDialogLoad(int id) {
    LAYER& l = L();
    auto it = l.templates.find(id);
    if (it == l.templates.end()) {
        std::cerr << "Fault: dialog template " << id << " is not defined\n";
        std::exit(1);
    }
    if (auto old = l.dialogs.find(id); old != l.dialogs.end() && old->second->widget) old->second->widget->deleteLater();
    auto d = std::make_unique<DIALOG_STATE>();
    d->tpl = it->second;
    for (const auto& f : d->tpl.fields) d->fields[f.id] = initial_state(f);
    l.dialogs[id] = std::move(d);
    l.selected_dialog = id;
}

void WDialogSelect(int id) {
    if (L().dialogs.count(id)) L().selected_dialog = id;
}
int WDialogSelected() { return L().selected_dialog; }
bool WDialogOpen(int id) { return L().dialogs.count(id) > 0; }

void WDialogShow(int /*x*/, int /*y*/, int /*button*/, int type) {
    LAYER& l = L();
    DIALOG_STATE* d = Current_Dialog();
    if (!d) return;
    d->modeless = type != Modal;
    if (l.unattended) {
        if (d->modeless) {  // its fields take the queued answers; its buttons come from the script as events
            Apply_Dialog_Answers(*d);
            return;
        }
        int button = Apply_Dialog_Answers(*d);
        if (button == 0) {
            std::cout << "UNANSWERED " << (d->tpl.id >= 9000 ? d->tpl.title : std::to_string(d->tpl.id)) << "\n";
            button = kIdCancel;
        }
        l.info4 = button;
        return;
    }
    l.info4 = Run_Dialog_Widgets(*d, !d->modeless);
}

void WDialogHide() {
    DIALOG_STATE* d = Current_Dialog();
    if (d && d->widget) {
        Sync_From_Widgets(*d);
        d->widget->hide();
    }
}

void WDialogUnload() {
    LAYER& l = L();
    auto it = l.dialogs.find(l.selected_dialog);
    if (it == l.dialogs.end()) return;
    // Hidden at once: the deferred delete waits for an event loop level the program may not return to.
    if (it->second->widget) it->second->widget->hide(), it->second->widget->deleteLater();
    const int id = it->first;
    l.dialogs.erase(it);
    std::erase_if(l.fifo, [id](const WIN_MESSAGE& m) { return m.win == id; });
    l.selected_dialog = l.dialogs.empty() ? 0 : l.dialogs.rbegin()->first;
}

int WInfoDialog(int code) { return code == 4 ? L().info4 : 0; }

void WDialogFieldState(int field, int state) {
    if (FIELD_STATE* f = live_field(field)) {
        f->enabled = state != 0;
        changed();
    }
}
int WDialogGetFieldState(int field) {
    FIELD_STATE* f = Field(field);
    return f && f->enabled ? 1 : 0;
}

void WDialogPutString(int field, const std::string& text) {
    if (FIELD_STATE* f = live_field(field)) {
        f->text = text;
        changed();
    }
}
void WDialogGetString(int field, std::string& text) {
    if (FIELD_STATE* f = live_field(field)) text = f->text;
}

void WDialogPutReal(int field, double value, const std::string& format) {
    WDialogPutString(field, IRealToString(value, format));
}
void WDialogGetReal(int field, double& value) {
    if (FIELD_STATE* f = live_field(field)) {
        int err = 0;
        const double v = IStringToReal(f->text, err);
        if (err == 0) value = v;  // a field that is not a number leaves the value alone
    }
}
void WDialogGetReal(int field, float& value) {
    double v = value;
    WDialogGetReal(field, v);
    value = static_cast<float>(v);
}

void WDialogPutInteger(int field, int value) {
    if (FIELD_STATE* f = live_field(field)) {
        if (f->def.kind == FIELD_KIND::Spin || f->def.kind == FIELD_KIND::Slider) f->ivalue = value;
        f->text = std::to_string(value);
        changed();
    }
}
void WDialogGetInteger(int field, int& value) {
    if (FIELD_STATE* f = live_field(field)) {
        if (f->def.kind == FIELD_KIND::Spin || f->def.kind == FIELD_KIND::Slider) {
            value = f->ivalue;
            return;
        }
        int err = 0;
        const int v = IStringToInteger(f->text, err);
        if (err == 0) value = v;
    }
}

void WDialogPutCheckBox(int field, int value) {
    if (FIELD_STATE* f = live_field(field)) {
        f->ivalue = value != 0 ? 1 : 0;
        changed();
    }
}
void WDialogGetCheckBox(int field, int& value) {
    if (FIELD_STATE* f = live_field(field)) value = f->ivalue;
}

void WDialogPutRadioButton(int field) {
    DIALOG_STATE* d = Current_Dialog();
    FIELD_STATE* f = live_field(field);
    if (!d || !f) return;
    const int group = f->def.group ? f->def.group : f->def.id;
    for (auto& [id, s] : d->fields)
        if (s.def.kind == FIELD_KIND::Radio && (s.def.group ? s.def.group : s.def.id) == group) s.ivalue = 0;
    f->ivalue = 1;
    changed();
}
void WDialogGetRadioButton(int first, int& index) {
    DIALOG_STATE* d = Current_Dialog();
    if (!d || !live_field(first)) return;
    int n = 0;
    for (const auto& f : d->tpl.fields) {  // template order is the order of the group
        if (f.kind != FIELD_KIND::Radio || (f.group ? f.group : f.id) != first) continue;
        ++n;
        if (d->fields[f.id].ivalue) {
            index = n;
            return;
        }
    }
}

void WDialogPutMenu(int field, const std::vector<std::string>& options, int selected) {
    if (FIELD_STATE* f = live_field(field)) {
        f->options = options;
        f->ivalue = selected;
        changed();
    }
}
void WDialogGetMenu(int field, int& selected, std::string* text) {
    if (FIELD_STATE* f = live_field(field)) {
        selected = f->ivalue;
        if (text)
            *text = selected >= 1 && static_cast<std::size_t>(selected) <= f->options.size()
                        ? f->options[static_cast<std::size_t>(selected - 1)]
                        : std::string();
    }
}
void WDialogPutOption(int field, int option, const std::string& text) {
    if (FIELD_STATE* f = live_field(field)) {
        if (option < 1) return;
        if (f->options.size() < static_cast<std::size_t>(option)) f->options.resize(static_cast<std::size_t>(option));
        f->options[static_cast<std::size_t>(option - 1)] = text;
        changed();
    }
}

void WDialogPutTrackbar(int field, int value) {
    if (FIELD_STATE* f = live_field(field)) {
        f->ivalue = std::clamp(value, f->low, std::max(f->low, f->high));
        changed();
    }
}
void WDialogGetTrackbar(int field, int& value) {
    if (FIELD_STATE* f = live_field(field)) value = f->ivalue;
}
void WDialogPutProgressBar(int field, int value) {
    WDialogPutTrackbar(field, value);
    if (DIALOG_STATE* d = Current_Dialog(); d && L().unattended) Apply_Progress_Answers(*d, value);
}
void WDialogRangeProgressBar(int field, int low, int high) { WDialogRangeInteger(field, low, high); }
void WDialogRangeInteger(int field, int low, int high) {
    if (FIELD_STATE* f = live_field(field)) {
        f->low = low;
        f->high = high;
        f->ivalue = std::clamp(f->ivalue, low, std::max(low, high));
        changed();
    }
}
void WDialogPutImage(int field, const std::string& file) { WDialogPutString(field, file); }

void WDialogClearField(int field) {
    if (FIELD_STATE* f = live_field(field)) {
        f->text.clear();
        f->options.clear();
        f->ivalue = 0;
        for (auto& row : f->cells)
            for (auto& c : row) c.clear();
        changed();
    }
}
void WDialogSetTab(int /*field*/, int tab) {
    if (DIALOG_STATE* d = Current_Dialog()) {
        if (d->widget) Sync_From_Widgets(*d);
        d->current_tab = tab;
        changed();
    }
}
void WDialogColour(int field, int foreground, int background) {
    if (FIELD_STATE* f = live_field(field)) {
        f->fg = foreground;
        f->bg = background;
        changed();
    }
}

}  // namespace zendrite
