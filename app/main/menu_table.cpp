// Item -> routine for the root menu. A new command adds its routine in the
// file of its menu group and one line here.
#include "app/main/menu_table.h"

#include <algorithm>

#include "app/main/hkl_gen.h"
#include "app/main/chart_window.h"
#include "app/main/menu_groups.h"
#include "app/main/root_menu.h"

namespace zendrite {

const std::vector<MENU_COMMAND_TYPE>& Menu_Table() {
    static const std::vector<MENU_COMMAND_TYPE> table = [] {
        std::vector<MENU_COMMAND_TYPE> t = {
            // File
            {40014, File_Open_Data},
            {kOpenFolderItem, File_Open_Folder},
            {kOpenStructureItem, File_Open_Structure},
            {40016, File_Open_Prf},
            {40015, File_Open_Buffer},
            {40157, File_Result_Command},
            {40212, File_Result_Command},
            {40211, Numors_Extraction},
            {40210, File_Result_Command},
            {40208, File_Result_Command},
            {40209, File_Result_Command},
            {40009, File_Result_Command},
            {40044, File_Save_Graphic},
            {40122, File_Print},
            {40019, File_Reset},
            {40038, File_Recent},
            {40067, File_Recent},
            {40068, File_Recent},
            {40069, File_Recent},
            {40070, File_Recent},
            {40005, File_Exit},
            // Edit
            {kUndoItem, Edit_Undo},
            {kRedoItem, Edit_Redo},
            {kHistoryItem, Edit_History},
            // Options, Help
            {40033, Options_Preferences},
            {kPlotStyleItem, Options_Plot_Style},
            {kErrorBarsItem, Options_Plot_Style},
            {40018, Help_About},
            {40084, Help_Docs},
            {40085, Help_Docs},
            {40086, Help_Docs},
            {40121, Help_Docs},
            {40156, Help_Docs},
            {40130, Help_Web},
            {40079, Help_Web},
            // Window limits, focus, target, zoom, multi-plots
            {40021, View_Focus},
            {40111, View_Target},
            {kSecondAxisD, View_Second_Axis},
            {kSecondAxisQ, View_Second_Axis},
            {40106, View_Window_Limits},
            {40109, View_Window_Limits},
            {40116, View_Window_Limits},
            {40133, View_Window_Limits},
            {40118, View_Window_Limits},
            {40119, View_Window_Limits},
            {40136, View_Window_Limits},
            {40137, View_Window_Limits},
            {40105, View_Zoom_Mode},
            {40113, View_Zoom_Mode},
            {40027, View_Multi},
            {40226, View_Multi},
            {40028, Plot_Multi_View},
            {40022, Plot_Gl_Model},
            {40031, Plot_Multi_View},
            {40227, Plot_Multi_View},
            {40125, Plot_Multi_View},
            {kMultiSettingsItem, Multi_View_Settings},
            // Profiles
            {40102, Profile_Copy},
            {40030, Profile_Quick_View},
            {40036, Profile_Focus},
            {40023, Profile_Graph_Show},
            {40025, Profile_Sorting},
            {40037, Profile_Delete},
            {40158, Profile_Playing},
            // Pattern arithmetic and smoothing
            {40100, Arith_Sum},
            {40123, Arith_Sum},
            {40101, Arith_Difference},
            {40162, Arith_Multiply_Efficiency},
            {40163, Arith_Multiply_Efficiency},
            {40026, Arith_Normalize_Monitor},
            {40141, Arith_Shift},
            {40140, Cryst_Calc},
            {40169, Frames_Mode},
            {40149, Arith_Offset_Scale},
            {40124, Arith_Offset_Scale},
            {40115, Arith_Offset_Scale},
            {40020, Arith_Smoothing},
            {40090, Arith_Smoothing},
            // Calculation modes
            {40024, Fit_Command},
            {40095, Fit_Command},
            {40099, Fit_Command},
            {40194, Fit_Command},
            {40146, Fit_Command},
            {40150, Fit_Command},
            {40224, Fit_Command},
            {40096, Profile_Calculation_Mode},
            {40097, Profile_Calculation_Mode},
            {40147, Profile_Calculation_Mode},
            {40093, Profile_Calculation_Mode},
            {40094, Profile_Calculation_Mode},
            {40138, Profile_Calculation_Mode},
            {40139, Profile_Calculation_Mode},
            {40148, Profile_Calculation_Mode},
            {40144, Profile_Calculation_Mode},
            {40145, Profile_Calculation_Mode},
            {40110, Profile_Calculation_Mode},
            // X space, excluded regions
            {40042, XSpace_Convert},
            {40228, XSpace_Convert},
            {40043, XSpace_Convert},
            {40229, XSpace_Convert},
            {40017, XSpace_Convert},
            {40089, XSpace_Convert},
            {40081, XSpace_Convert},
            {40087, XSpace_Constants},
            {40088, XSpace_Constants},
            {40151, Excluded_Insert},
            {40034, Excluded_Admin},
            // Peak and background search
            {40092, Peak_Auto_Search},
            {40180, Peak_Auto_Search},
            {40159, Peak_Auto_Search},
            {kZoneSearchItem, Peak_Zone_Search},
            {40010, Peak_Save},
            {40098, Peak_Save},
            {40160, Peak_Save},
            {40177, Peak_Save},
            {40191, Peak_Save},
            {40002, Peak_Save},
            {kSaveAllIndexingItem, Peak_Save},
            // Ext. Applications, Tools
            {40128, Ext_Run},
            {40132, Ext_Run},
            {40188, Ext_Run},
            {40192, Ext_Run},
            {40178, Ext_Run},
            {40193, Ext_Run},
            {40197, Ext_Run},
            {40135, Ext_Run_Refinement},
            {40179, Generic_Graphs},
            {40155, Generic_Graphs},
            {kSequentialRunItem, Ext_Sequential_Run},
            {40207, Ext_Run_Refinement},
            {40213, Ext_Prepare_Qvl},
            {40117, Ext_Run_Suite_Window},
            {40129, Ext_Run_Suite_Window},
            {40142, Ext_Run_Suite_Window},
            {40134, Ext_Run_Suite_Window},
            {40108, Ext_Run_Suite_Window},
            {40107, Editor_Open},
            {40104, Editor_Open},
            {40225, Editor_Open},
            // HKL generator and spectral lines
            {40154, Tools_Hkl_Gen},
            {40215, Spectral_Lines_Command},
            {40216, Spectral_Lines_Command},
            {40217, Spectral_Lines_Command},
            {40218, Spectral_Lines_Command},
            {40219, Spectral_Lines_Command},
            {40220, Spectral_Lines_Command},
            {40221, Spectral_Lines_Command},
            {40222, Spectral_Lines_Command},
        };
        std::sort(t.begin(), t.end(), [](const auto& a, const auto& b) { return a.item < b.item; });
        return t;
    }();
    return table;
}

MENU_ROUTINE Menu_Routine(int item) {
    const auto& t = Menu_Table();
    auto it = std::lower_bound(t.begin(), t.end(), item, [](const MENU_COMMAND_TYPE& c, int i) { return c.item < i; });
    return it != t.end() && it->item == item ? it->routine : nullptr;
}

}  // namespace zendrite
