// The handler of the root window: one dispatch on the event and the menu item.
#include <iostream>

#include "app/main/calc_mode_commands.h"
#include "app/main/commands.h"
#include "app/main/configuration.h"
#include "app/main/plot_link.h"
#include "app/main/profile_commands.h"
#include "app/main/quick_view.h"
#include "app/main/root_menu.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"

namespace zendrite {

namespace {

[[noreturn]] void fault(const std::string& text) {
    std::cerr << text << std::endl;
    std::exit(1);
}

bool plotting_mode() {
    const std::string& m = zendrite_param_global().graph_mode;
    return m == "single" || m == "multi" || m == "multi_log" || m == "calculation";
}

void window_limits(int item) {
    ZENDRITE_STORE& g = zendrite_param_global();
    if (!plotting_mode()) {
        const bool first = item == 40106 || item == 40109 || item == 40116 || item == 40133;
        fault(first ? "/Fault: /zendrite_win_root/ihand_winroot/035 Op. not permitted"
                    : "/Fault: /zendrite_win_root/ihand_winroot/035 Op. not permited");
    }
    const float dx = 0.1f * (g.win_xmax - g.win_xmin), dy = 0.05f * (g.win_ymax - g.win_ymin),
                dz = 0.05f * (g.win_xmax - g.win_xmin);
    switch (item) {
    case 40106: g.win_xmin -= dx, g.win_xmax -= dx; break;
    case 40109: g.win_xmin += dx, g.win_xmax += dx; break;
    case 40116: { const float s = g.data_xmax - g.win_xmax; g.win_xmax = g.data_xmax, g.win_xmin += s; break; }
    case 40133: { const float s = g.data_xmin - g.win_xmin; g.win_xmin = g.data_xmin, g.win_xmax += s; break; }
    case 40118: g.win_ymin -= dy, g.win_ymax -= dy; break;
    case 40119: g.win_ymin += dy, g.win_ymax += dy; break;
    case 40136: g.win_xmax += dz, g.win_xmin -= dz; break;
    case 40137: g.win_xmax -= dz, g.win_xmin += dz; break;
    default: break;
    }
    Plot_Again();
}

void about() {
    const CONFIGURATION_TYPE& c = Configuration();
    if (!WDialogDefined(103))
        WDialogDefine({103, "About", {},
                       {Fld(1230, FIELD_KIND::Label, ""), Fld(1231, FIELD_KIND::Label, ""), Fld(1288, FIELD_KIND::Picture, ""),
                        Fld(1232, FIELD_KIND::Label, c.subtitle), Fld(1233, FIELD_KIND::Label, c.rights_line)}});
    WDialogLoad(103);
    WDialogPutString(1230, c.product_name);
    WDialogPutString(1231, c.version_text + "  " + c.release_date);
    WDialogShow(-1, -1, 0, Modal);
    WDialogUnload();
}

void menu(int item) {
    ZENDRITE_STORE& g = zendrite_param_global();
    bool error = false;
    std::string message;
    switch (item) {
    case 40014:
        Open_Data_File("", error, message);
        if (error && message != "Cancelled") Show_Message(message);
        Plot_ReMake();
        return;
    case kOpenFolderItem:
        Open_Folder_Command("");
        Plot_ReMake();
        return;
    case 40016:
        Open_Prf_Command("");
        Plot_ReMake();
        return;
    case 40015:
        Open_Buffer_Command("");
        Plot_ReMake();
        return;
    case 40157:
        Open_Raw_Command(error, message);
        Show_Command_Result(error, message);
        Plot_ReMake();
        return;
    case 40212:
        Open_Numors_Command(error, message);
        Show_Command_Result(error, message);
        Plot_ReMake();
        return;
    case 40210:
        View_Header_Numor_Command(error, message);
        Show_Command_Result(error, message);
        return;
    case 40208:
        Save_Free_Format_Command(error, message);
        Show_Command_Result(error, message);
        return;
    case 40209:
        Save_XY_Command(error, message);
        Show_Command_Result(error, message);
        return;
    case 40009:
        Save_Buffer_Command(error, message);
        Show_Command_Result(error, message);
        return;
    case 40019:
        Reset_Store();
        Enter_None_Mode();
        Draw_Title_Screen();
        Update_Status_Bar();
        return;
    case 40038: case 40067: case 40068: case 40069: case 40070:
        for (int i = 0; i < 5; ++i)
            if (kRecentItems[i] == item) Open_Recent(g.recent[static_cast<std::size_t>(i + 1)]);
        return;
    case 40005: Shutdown();
    case 40033: Preferences_Command(); return;
    case 40018: about(); return;
    case 40021:
        if (!Root_Focus()) break;
        if (!plotting_mode()) fault("Fault: zendrite_win_root/ihand_win_root/017 focus no permited");
        Plot_Again();
        return;
    case 40111:
        g.target_at_centre = !g.target_at_centre;
        WMenuSetState(40111, 2, g.target_at_centre ? 1 : 0);
        Plot_Again();
        return;
    case 40106: case 40109: case 40116: case 40133: case 40118: case 40119: case 40136: case 40137:
        window_limits(item);
        return;
    case 40105:
        WCursorShape(6);
        WMenuSetState(40113, 1, 0);
        WMenuSetState(40105, 2, 1);
        g.MoveMode = 1;
        return;
    case 40113:
        WCursorShape(0);
        WMenuSetState(40113, 1, 1);
        WMenuSetState(40105, 1, 1);
        WMenuSetState(40105, 2, 0);
        g.MoveMode = 0;
        return;
    case 40102:
        if (!Copy_Profile(message)) Show_Message(message);
        Plot_ReMake();
        return;
    case 40030: Open_Quick_View(); return;
    case 40036: Focus_Profile_Command(); return;
    case 40023: Graph_Show_Command(); return;
    case 40025: Sorting_Command(); return;
    case 40037: Delete_Profiles_Command(); return;
    case 40158: Playing_Command(); return;
    case 40095: case 40099: case 40096: case 40097: case 40147: case 40093: case 40094:
    case 40138: case 40139: case 40148: case 40144: case 40145: case 40110:
        Calculation_Mode_Command(item);
        return;
    case 40027:
        Enter_Multi_Mode(false);
        g.log_scale = false;
        Plot_Again();
        return;
    case 40226:
        Enter_Multi_Mode(true);
        g.log_scale = true;
        Plot_Again();
        return;
    default: break;
    }
    if (item < 40002 || item > 40229) return;
    const std::vector<int> items = Root_Menu_Items();
    if (std::find(items.begin(), items.end(), item) == items.end() && item != 40104 && item != 40155) return;
    Show_Message("This command is not available yet");
}

}  // namespace

void ihand_winroot(int type, const WIN_MESSAGE& message) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    switch (type) {
    case MenuSelect: menu(message.value1); break;
    case MouseButDown:
    case MouseButUp:
    case MouseMove:
        if (g.graph_mode == "none") break;
        if (g.MoveMode > 5) fault("Fault: /zendrite_win_root/Ihand_WinRoot/17 Unknown MoveMode ");
        Root_Mouse(message);
        break;
    case MouseWheel:
        if (g.graph_mode != "none") Root_Wheel(message);
        break;
    case KeyDown:
        if (g.graph_mode != "none") Root_Key(message);
        break;
    case Expose: Root_Repaint(); break;
    case Resize: Plot_Again(); break;
    case FilesDropped:
        // Loading is refused in the calculation modes, as the File menu greys its items there.
        if (WMenuGetState(40014, 1) == 0) break;
        Open_Dropped(message.paths);
        Plot_ReMake();
        break;
    case CloseRequest: Shutdown();
    default: break;
    }
}

}  // namespace zendrite
