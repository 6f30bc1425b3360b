// Grid fields of dialogs: rows and columns from 1.
#include "app/qt/present_state.h"

namespace zendrite {
using namespace qt;

namespace {

FIELD_STATE* grid(int field) {
    DIALOG_STATE* d = Current_Dialog();
    if (d && d->widget) Sync_From_Widgets(*d);
    FIELD_STATE* f = Field(field);
    return f && f->def.kind == FIELD_KIND::Grid ? f : nullptr;
}

std::string* cell(FIELD_STATE* f, int col, int row) {
    if (!f || row < 1 || col < 1 || static_cast<std::size_t>(row) > f->cells.size() ||
        static_cast<std::size_t>(col) > f->cells[static_cast<std::size_t>(row - 1)].size())
        return nullptr;
    return &f->cells[static_cast<std::size_t>(row - 1)][static_cast<std::size_t>(col - 1)];
}

void changed() {
    DIALOG_STATE* d = Current_Dialog();
    if (d && d->widget) Sync_To_Widgets(*d);
}

}  // namespace

void WGridRows(int field, int rows) {
    FIELD_STATE* f = grid(field);
    if (!f) return;
    const std::size_t n = static_cast<std::size_t>(std::max(rows, 0));
    const std::size_t cols = f->def.columns.size();
    f->cells.resize(n, std::vector<std::string>(cols));
    f->cell_enabled.resize(n, std::vector<bool>(cols, true));
    f->row_labels.resize(n);
    changed();
}

int WGridRowCount(int field) {
    FIELD_STATE* f = grid(field);
    return f ? static_cast<int>(f->cells.size()) : 0;
}

void WGridLabelRow(int field, int row, const std::string& label) {
    FIELD_STATE* f = grid(field);
    if (!f || row < 1 || static_cast<std::size_t>(row) > f->row_labels.size()) return;
    f->row_labels[static_cast<std::size_t>(row - 1)] = label;
    changed();
}

void WGridPutCellString(int field, int col, int row, const std::string& text) {
    if (std::string* c = cell(grid(field), col, row)) {
        *c = text;
        changed();
    }
}
void WGridGetCellString(int field, int col, int row, std::string& text) {
    if (std::string* c = cell(grid(field), col, row)) text = *c;
}
void WGridPutCellReal(int field, int col, int row, double value, const std::string& format) {
    WGridPutCellString(field, col, row, IRealToString(value, format));
}
void WGridGetCellReal(int field, int col, int row, float& value) {
    if (std::string* c = cell(grid(field), col, row)) {
        int err = 0;
        const double v = IStringToReal(*c, err);
        if (err == 0) value = static_cast<float>(v);
    }
}
void WGridPutCellInteger(int field, int col, int row, int value) {
    WGridPutCellString(field, col, row, std::to_string(value));
}
void WGridGetCellInteger(int field, int col, int row, int& value) {
    if (std::string* c = cell(grid(field), col, row)) {
        int err = 0;
        const int v = IStringToInteger(*c, err);
        if (err == 0) value = v;
    }
}
void WGridPutCellCheckBox(int field, int col, int row, int value) {
    WGridPutCellString(field, col, row, value ? "1" : "0");
}
void WGridGetCellCheckBox(int field, int col, int row, int& value) {
    if (std::string* c = cell(grid(field), col, row)) value = *c == "1" ? 1 : 0;
}
void WGridPutString(int field, int col, const std::vector<std::string>& texts) {
    for (std::size_t r = 0; r < texts.size(); ++r) WGridPutCellString(field, col, static_cast<int>(r + 1), texts[r]);
}
void WGridPutCheckBox(int field, int col, const std::vector<int>& values) {
    for (std::size_t r = 0; r < values.size(); ++r) WGridPutCellCheckBox(field, col, static_cast<int>(r + 1), values[r]);
}
void WGridGetCheckBox(int field, int col, std::vector<int>& values) {
    values.assign(static_cast<std::size_t>(WGridRowCount(field)), 0);
    for (std::size_t r = 0; r < values.size(); ++r) WGridGetCellCheckBox(field, col, static_cast<int>(r + 1), values[r]);
}
void WGridGetReal(int field, int col, std::vector<float>& values) {
    values.assign(static_cast<std::size_t>(WGridRowCount(field)), 0.0f);
    for (std::size_t r = 0; r < values.size(); ++r) WGridGetCellReal(field, col, static_cast<int>(r + 1), values[r]);
}
void WGridState(int field, int col, int state) {
    FIELD_STATE* f = grid(field);
    if (!f || col < 1 || static_cast<std::size_t>(col) > f->col_enabled.size()) return;
    f->col_enabled[static_cast<std::size_t>(col - 1)] = state != 0;
    changed();
}
void WGridStateCell(int field, int col, int row, int state) {
    FIELD_STATE* f = grid(field);
    if (!cell(f, col, row)) return;
    f->cell_enabled[static_cast<std::size_t>(row - 1)][static_cast<std::size_t>(col - 1)] = state != 0;
    changed();
}
void WInfoGridCell(int field, int& col, int& row) {
    if (FIELD_STATE* f = grid(field)) {
        col = f->cur_col;
        row = f->cur_row;
    }
}

}  // namespace zendrite
