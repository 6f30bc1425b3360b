#include "app/main/root_menu.h"

#include <utility>

#include "app/main/menu_groups.h"
#include "app/present.h"

namespace zendrite {

namespace {

MENU_ENTRY pop(const char* label) { return {MenuPopup, 0, label}; }
MENU_ENTRY end() { return {MenuEnd, 0, ""}; }
MENU_ENTRY sep() { return {MenuSeparator, 0, ""}; }
MENU_ENTRY it(int item, const char* label) { return {MenuItem, item, label}; }
MENU_ENTRY ck(int item, const char* label) { return {MenuItem, item, label, true}; }


const std::vector<MENU_ENTRY>& entries() {
    static const std::vector<MENU_ENTRY> e = {
        pop("File"),
        it(40014, "Open Pattern file (*.dat)"), it(kOpenFolderItem, "Open folder of patterns..."),
        it(kOpenStructureItem, "Open structure (CIF, SHELX, QVL, PCR)..."),
        it(40016, "Open Rietveld/Profile file (*.prf)"),
        it(40015, "Open Buffer file (*.buf)"), it(40157, "Open Raw Data file (SLR: KG3, KG2)"),
        pop("Numors"), it(40212, "Open Numor File (NRF)"), it(40211, "NRF Instruments + Numors (Pellan)"),
        it(40210, "View Header Numor..."), end(),
        sep(),
        pop("Save Profile as"), it(40208, "Free Format File (.dat)"), it(40209, "XY / XYS Data File (.xys)"), end(),
        it(40009, "Save Buffer file..."), it(40044, "Save Graphic into file..."),
        sep(),
        ck(40030, "Quick View PRF"), it(40169, "Zendrite 2D"), it(40179, "Zendrite Generic Graphs"),
        sep(),
        it(40122, "Print..."), it(40019, "Reset"),
        sep(),
        it(40038, "1. <Empty>"), it(40067, "2. <Empty>"), it(40068, "3. <Empty>"), it(40069, "4. <Empty>"),
        it(40070, "5. <Empty>"),
        sep(),
        it(40005, "Exit"),
        end(),
        pop("Edit"), it(kUndoItem, "Undo"), it(kRedoItem, "Redo"), sep(), it(kHistoryItem, "History..."), end(),
        pop("Profiles"),
        it(40021, "Focus"), it(40036, "Focus Profile"), ck(40111, "View target at centre"), sep(),
        it(40141, "Shift"), it(40149, "Offset/Align"), it(40124, "Scaling X"), it(40115, "Scaling Y"),
        it(40026, "Normalize(Monitor)"), sep(), it(40102, "Copy profile"), it(40023, "Show"),
        it(40025, "Sorting"), it(40037, "Delete"), it(40158, "Playing"),
        end(),
        pop("Plot"),
        it(40027, "Graph 2D"), it(40226, "Graph 2D (Log-Scale)"), it(40028, "Graph 3D"),
        it(40031, "Graph 2D Contour"), it(40227, "Graph 2D Contour (Log-Scale)"), it(40125, "Graph 3D Surface"),
        it(40022, "OpenGL 3D model"), it(kMultiSettingsItem, "Settings of the many-pattern views..."), sep(),
        ck(kSecondAxisD, "Second axis in d"), ck(kSecondAxisQ, "Second axis in Q"),
        end(),
        pop("X space"),
        ck(40042, "2theta"), ck(40228, "Omega"), ck(40043, "Time (TOF)"), ck(40229, "Energy"), sep(),
        it(40017, "d-space"), it(40089, "Q-space"), it(40081, "s-space"), sep(),
        it(40087, "Change wavelength"), it(40088, "Change ddt1/dtt2"),
        end(),
        pop("Calculations"),
        it(40100, "Summation"), it(40123, "Average"), it(40101, "Difference"),
        it(40162, "Multiply Y / Shift X / Normalize"), it(40163, "Apply Eff. Corr."),
        end(),
        pop("Smoothing"), it(40020, "Fourier filtering"), it(40090, "Polynomial filtering"), end(),
        pop("Excluded regions"),
        ck(40110, "Select excluded regions"), it(40151, "Insert excluded regions"),
        it(40034, "Admin excluded regions"),
        end(),
        pop("Peak detection"),
        ck(40091, "Peak detection mode"), it(40096, "Enable"), it(40097, "Disabled"), sep(),
        it(40092, "Auto detection"), it(40180, "Satellites detection"), it(kZoneSearchItem, "Search peaks in zone"), it(40147, "Clear all"),
        it(40093, "Insert peak"), it(40094, "Delete peak"), sep(),
        pop("Save peaks"), it(40010, "Free Format"), it(40098, "Dicvol Format"), it(40160, "Ito Format"),
        it(40177, "Ombra Format"), it(40191, "Treor Format"), sep(),
        it(kSaveAllIndexingItem, "Save for all indexing programs"), end(),
        it(40008, "Peak list"),
        end(),
        pop("Background"),
        ck(40120, "Background mode"), it(40138, "Enable"), it(40139, "Disabled"), sep(),
        it(40159, "Auto detection"), it(40148, "Clear all"), it(40144, "Insert point"),
        it(40145, "Delete point"), sep(), it(40002, "Save background"),
        end(),
        pop("Profile fitting"),
        ck(40024, "Profile fitting mode"), it(40095, "Enable"), it(40099, "Disabled"), sep(),
        ck(40194, "Auto detection"), it(40146, "Clear all"), it(40150, "Start/Repeat Refinement"), sep(),
        it(40225, "Edit PIK-file"), it(40224, "Load PIK/NEW file"),
        end(),
        pop("Tools"),
        it(40128, "Open Cmd window"), it(40132, "Explorer"), it(40107, "Text editor"), sep(),
        it(40140, "Crystalographic Calc"), it(40154, "HKL Gen"), sep(),
        pop("Spectral Lines"), ck(40215, "Spectral lines"), it(40220, "Enable"), it(40221, "Disabled"),
        ck(40216, "K-alpha1"), ck(40217, "K-alpha2"), ck(40218, "K-beta"), ck(40219, "L-alpha1 (W)"),
        it(40222, "Settings"), end(),
        end(),
        pop("Ext. Applications"),
        it(40135, "Run Corvane"), it(kSequentialRunItem, "Sequential Corvane run..."), it(40117, "Run Tessara"), it(40129, "Run gLattiq"), it(40142, "Run Quavor"),
        it(40134, "Run Tindra"), it(40108, "Run Corvane Atelier"), sep(),
        it(40188, "Run Dicvol"), it(40192, "Run Ito"), it(40178, "Run Ombra"), it(40193, "Run Treor"),
        it(40197, "Run Pellan"), sep(), it(40213, "Prepare a QVL file for Virelle"), it(40207, "Run Virelle"),
        end(),
        pop("Options"), it(40033, "Preferences..."), ck(kPlotStyleItem, "Publication plot style"),
        ck(kErrorBarsItem, "Error bars from sigma"), end(),
        pop("Help"),
        it(40084, "HTML format"), it(40085, "PDF file"), it(40086, "Corvane Atelier user's guide"), sep(),
        it(40121, "cvnews Text Editor"), it(40156, "cvnews HTML"), sep(), it(40130, "Web Site"),
        it(40079, "Download"), sep(), it(40018, "About"),
        end(),
    };
    return e;
}

}  // namespace

void Define_Root_Menu() {
    WMenuDefine(kRootMenu, entries());
    Set_Menu_Hints_And_Keys();
}

void Show_Root_Toolbar() {
    WMenuToolbar(kRootMenu, {
                                {40014, "open", "Open Pattern file"},
                                {40104, "edit", "Edit the last control file"},
                                {40155, "GG", "Generic graphs"},
                                {0, "", ""},
                                {kUndoItem, "undo", "Undo the last change (Ctrl+Z)"},
                                {kRedoItem, "redo", "Redo the change undone (Ctrl+Shift+Z)"},
                                {0, "", ""},
                                {40133, "start", "To the start"},
                                {40106, "left", "Move left"},
                                {40109, "right", "Move right"},
                                {40116, "end", "To the end"},
                                {40118, "down", "Move down"},
                                {40119, "up", "Move up"},
                                {40137, "zoomin", "Zoom in X"},
                                {40136, "zoomout", "Zoom out X"},
                                {0, "", ""},
                                {40105, "hand", "Drag the plot"},
                                {40113, "arrow", "Point information and zoom"},
                            });
}

std::vector<int> Root_Menu_Items() {
    std::vector<int> out;
    for (const MENU_ENTRY& e : entries())
        if (e.kind == MenuItem) out.push_back(e.item);
    return out;
}

const std::vector<int>& Data_Menu_Items() {
    // The commands that act on loaded profiles: everything of the Profiles, Plot, X space,
    // Calculations, Smoothing, Excluded regions, Peak detection, Background and Profile fitting
    // menus, the savers and the print and export commands.
    static const std::vector<int> items = [] {
        std::vector<int> v = {40208, 40209, 40009, 40044, 40122};
        bool in = false;
        int depth = 0;
        for (const MENU_ENTRY& e : entries()) {
            if (e.kind == MenuPopup) {
                if (depth == 0)
                    in = e.label == "Profiles" || e.label == "Plot" || e.label == "X space" ||
                         e.label == "Calculations" || e.label == "Smoothing" || e.label == "Excluded regions" ||
                         e.label == "Peak detection" || e.label == "Background" || e.label == "Profile fitting";
                ++depth;
            } else if (e.kind == MenuEnd) {
                --depth;
            } else if (e.kind == MenuItem && in) {
                v.push_back(e.item);
            }
        }
        return v;
    }();
    return items;
}

void Grey_Data_Menus(bool enabled) {
    for (int item : Data_Menu_Items()) WMenuSetState(item, 1, enabled ? 1 : 0);
}

void Calculation_Mode_Menus(int mode) {
    static const int group[] = {40024, 40091, 40120, 40095, 40099, 40194, 40146, 40150, 40225, 40224,
                                40096, 40097, 40092, 40180, kZoneSearchItem, 40147, 40093, 40094, 40008, 40138, 40139,
                                40159, 40148, 40144, 40145, 40002, 40154, 40215};
    for (int i : group) {
        WMenuSetState(i, 1, 0);
        WMenuSetState(i, 2, 0);
    }
    auto on = [](std::initializer_list<int> v) {
        for (int i : v) WMenuSetState(i, 1, 1);
    };
    switch (mode) {
    case 0: on({40105, 40091, 40096, 40120, 40138, 40154, 40215, 40095}); break;
    case 1: WMenuSetState(40024, 2, 1), on({40099, 40194, 40146, 40150, 40225, 40224}); break;
    case 2: WMenuSetState(40091, 2, 1), on({40097, 40092, kZoneSearchItem, 40147, 40093, 40094, 40008}); break;
    case 3: WMenuSetState(40120, 2, 1), on({40139, 40159, 40148, 40144, 40145, 40002}); break;
    default: break;
    }
    static const int files[] = {40014, kOpenFolderItem, 40016, 40015, 40157, 40009, 40122, 40044, 40021, 40141, 40149, 40124, 40115,
                                40113, 40026, 40102, 40027, 40226, 40028, 40031, 40227, 40022, 40023, 40025, 40037,
                                40110, 40151, 40034, 40158, 40006, 40100, 40101, 40162, 40123, 40163, 40035, 40020};
    for (int i : files) WMenuSetState(i, 1, mode == 0 ? 1 : 0);
}

}  // namespace zendrite
