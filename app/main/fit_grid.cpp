#include "app/main/fit_grid.h"

#include <cmath>
#include <cstdio>

#include "app/main/zendrite_app.h"
#include "support/fixed_text.h"

namespace zendrite {

GRID_COLUMN Fit_Real_Column(const char* label) { return {label, CELL_KIND::Real, {}}; }
GRID_COLUMN Fit_Flag_Column(const char* label) { return {label, CELL_KIND::CheckBox, {}}; }

DIALOG_FIELD Fit_Grid(int id, const char* label, std::vector<GRID_COLUMN> columns, int rows) {
    DIALOG_FIELD f = Fld(id, FIELD_KIND::Grid, label);
    f.columns = std::move(columns);
    f.rows = rows;
    return f;
}

void Fit_Fill_Column(int field, int col, const std::string& text) {
    for (int r = 1; r <= WGridRowCount(field); ++r) WGridPutCellString(field, col, r, text);
}

bool Fit_Cell(int field, int col, int row, float& v) {
    std::string text;
    WGridGetCellString(field, col, row, text);
    int err = 0;
    const double d = IStringToReal(hxl::Trim(text), err);
    if (err != 0 || hxl::Is_Blank(text) || !std::isfinite(d) || std::fabs(d) > 3.4e38) return false;
    v = static_cast<float>(d);
    return true;
}

int Fit_Check(int field, int col, int row) {
    int v = 0;
    WGridGetCellCheckBox(field, col, row, v);
    return v;
}

std::string Fit_On_Line(const char* text, int line) {
    char b[16];
    std::snprintf(b, sizeof b, "%4d", line);
    return std::string(text) + b;
}

bool Fit_Load_Irf(hxl::IRF_TYPE& irf) {
    std::string name;
    WSelectFile("Instrumental Resolution Files|*.irf|", LoadDialog, name, "Select IRF file to open");
    if (WInfoDialog(4) != kIdOk || hxl::Is_Blank(name)) return false;
    bool status = false;
    std::string text;
    hxl::Read_Irf(hxl::Trim(name), irf, status, text);
    if (!status) Show_Message(text);
    return status;
}

void Fit_Irf_Taken(const std::string& taken) {
    Show_Message(taken.empty() ? "The IRF file gives none of the starting parameters of this fit"
                               : "Taken from the IRF file:" + taken);
}

bool Fit_Dialog_Loop(FIT_CHOICES& choices, const std::function<bool(int button)>& action,
                     const std::function<std::string(FIT_CHOICES& c)>& read_back) {
    bool ok = false;
    for (;;) {
        WDialogShow(-1, -1, 0, Modal);
        const int button = WInfoDialog(4);
        if (action(button)) continue;
        if (button != kIdOk) break;
        FIT_CHOICES c = choices;
        const std::string refusal = read_back(c);
        if (refusal.empty()) {
            choices = c;
            ok = true;
            break;
        }
        Show_Message(refusal);
    }
    WDialogUnload();
    return ok;
}

}  // namespace zendrite
