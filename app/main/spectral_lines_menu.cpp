// The Spectral Lines submenu: the lines drawn by the rubber band, and the anode they belong to.
#include "app/main/hkl_gen.h"
#include "app/store/zendrite_param_global.h"
#include "crystal/spectral_lines.h"
#include "graphics/mouse.h"

namespace zendrite {

namespace {

constexpr int kShown = 40215, kKa1 = 40216, kKa2 = 40217, kKb = 40218, kLa1 = 40219, kEnable = 40220,
              kDisable = 40221, kSettings = 40222;
constexpr int kElement = 1571, kTable = 1572;

bool& line_flag(int item) {
    MOUSE_STATE& m = Mouse_State();
    switch (item) {
    case kKa2: return m.line_kalpha2;
    case kKb: return m.line_kbeta;
    case kLa1: return m.line_lalpha1;
    default: return m.line_kalpha1;
    }
}

void line_items(bool enabled) {
    for (int i : {kDisable, kKa1, kKa2, kKb, kLa1}) {
        WMenuSetState(i, 1, enabled ? 1 : 0);
        if (i != kDisable) WMenuSetState(i, 2, enabled && line_flag(i) ? 1 : 0);
    }
    WMenuSetState(kShown, 2, enabled ? 1 : 0);
}

void settings() {
    const auto& table = hxl::Spectral_Elements();
    if (!WDialogDefined(kSpectralDialog)) {
        DIALOG_FIELD combo = Fld(kElement, FIELD_KIND::Combo, "Wavelength:");
        for (const auto& e : table) combo.options.push_back(e.symbol);
        DIALOG_FIELD grid = Fld(kTable, FIELD_KIND::Grid, "Wavelengths");
        grid.rows = static_cast<int>(table.size());
        grid.columns = {{"Element", CELL_KIND::Text, {}}, {"K-alpha1", CELL_KIND::Text, {}},
                        {"K-alpha2", CELL_KIND::Text, {}}, {"K-beta", CELL_KIND::Text, {}},
                        {"L-alpha1", CELL_KIND::Text, {}}};
        WDialogDefine({kSpectralDialog, "Wavelengths for Spectral Lines", {}, {combo, grid}});
    }
    WDialogLoad(kSpectralDialog);
    std::vector<std::string> names;
    for (std::size_t r = 0; r < table.size(); ++r) {
        const int row = static_cast<int>(r) + 1;
        names.push_back(table[r].symbol);
        WGridPutCellString(kTable, 1, row, table[r].symbol);
        const double v[4] = {table[r].kalpha1, table[r].kalpha2, table[r].kbeta, table[r].lalpha1};
        for (int c = 0; c < 4; ++c) WGridPutCellReal(kTable, c + 2, row, v[c], "(f10.6)");
        for (int c = 1; c <= 5; ++c) WGridStateCell(kTable, c, row, 0);
    }
    WDialogPutMenu(kElement, names, Mouse_State().spectral_element);
    WDialogShow(-1, -1, 0, Modal);
    int chosen = 0;
    if (WInfoDialog(4) == kIdOk) WDialogGetMenu(kElement, chosen);
    WDialogUnload();
    if (chosen >= 1 && chosen <= static_cast<int>(table.size())) Mouse_State().spectral_element = chosen;
}

}  // namespace

void Spectral_Lines_Command(int item) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    MOUSE_STATE& m = Mouse_State();
    switch (item) {
    case kEnable: {
        m.spectral_lines = true;
        if (!m.line_kalpha1 && !m.line_kalpha2 && !m.line_kbeta && !m.line_lalpha1) m.line_kalpha1 = true;
        const float l1 = g.nperfiles >= 1 ? g.pattern[1].lambda1 : 0.0f;
        // the anode of the first profile, when its wavelength names one
        if (const int e = hxl::Spectral_Element_Of(l1); e > 0) m.spectral_element = e;
        line_items(true);
        if (l1 < 0.1f) settings();
        break;
    }
    case kDisable:
        m.spectral_lines = false;
        line_items(false);
        break;
    case kKa1:
    case kKa2:
    case kKb:
    case kLa1:
        line_flag(item) = !line_flag(item);
        WMenuSetState(item, 2, line_flag(item) ? 1 : 0);
        break;
    case kSettings: settings(); break;
    default: break;
    }
}

}  // namespace zendrite
