// Start-up in its fixed order, the main loop and the shutdown.
#include <iostream>

#include "app/main/chart_window.h"
#include "app/main/configuration.h"
#include "app/main/frames_window.h"
#include "app/main/hkl_gen.h"
#include "app/main/menu_groups.h"
#include "app/main/plot_link.h"
#include "app/main/preferences.h"
#include "app/main/quick_view.h"
#include "app/main/root_menu.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "support/fixed_text.h"
#include "support/folder_files.h"

namespace zendrite {

namespace {

bool first_prf = true;

void after_none_mode() {
    Multi_View_Menus();
    WCursorShape(0);
    Grey_Data_Menus(false);
    Calculation_Mode_Menus(0);
    Grey_Data_Menus(false);
    Update_Status_Bar();
}

void after_mode_change() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    Multi_View_Menus();
    if (g.graph_mode == "calculation") {
        Calculation_Mode_Menus(g.calc_mode);
        if (g.calc_mode == 2 && g.prf_loaded) WMenuSetState(40180, 1, 1);
        WCursorShape(0);
        WMessageMouseMove(true);
    }
    Update_Status_Bar();
}

void after_reset() {
    WindowOutStatusBar(1, "");
    WindowOutStatusBar(2, "");
    WMenuSetState(40111, 2, 0);
}

bool read_int(const std::string& s, int& v) {
    int err = 0;
    const int x = IStringToInteger(s, err);
    if (err) return false;
    v = x;
    return true;
}

}  // namespace

void Show_Message(const std::string& message, const std::string& title) {
    if (message.empty() || message == "Cancelled") return;
    WMessageBox(OkOnly, InformationIcon, 1, message, title);
}

void Install_Mode_Hooks() {
    Store_Hooks().after_none_mode = after_none_mode;
    Store_Hooks().after_mode_change = after_mode_change;
    Store_Hooks().after_reset = after_reset;
}

void Zendrite_Start(const std::vector<std::string>& args) {
    CONFIGURATION_TYPE& c = Configuration();
    if (!args.empty()) {
        std::string f = args[0];
        if (!f.empty() && f.front() == '"') f.erase(0, 1);
        if (!f.empty() && f.back() == '"') f.pop_back();
        c.cmd_file = hxl::Adjustl(f);
    }
    init_configure();
    IOsDirName(c.start_dir);
    Init_Directories();
    Set_Default_Preferences();
    const std::string pref = Preference_File_Name();
    const bool pref_exists = IOsExists(pref);
    bool pref_error = false;
    std::string pref_message;
    if (pref_exists) {
        Read_Preferences(pref, Preferences(), pref_error, pref_message);
        if (pref_error) Set_Default_Preferences();
    }
    const PREFERENCES_TYPE& p = Preferences();
    c.win_width = p.win_width > 0 ? p.win_width : c.win_width;
    c.win_height = p.win_height > 0 ? p.win_height : c.win_height;
    c.title_bg = p.title_bg, c.title_fg = p.title_fg;
    c.internal_editor = p.internal_editor != 0;
    if (args.size() >= 3) {
        read_int(args[1], c.win_width);
        read_int(args[2], c.win_height);
    }
    Install_Mode_Hooks();
    Connect_Plot();
    Define_Root_Menu();
    WStatusBarParts(5, {4500, 1500, 1500, 1500, -1});
    WindowOpen(0, kRootMenu, c.win_width, c.win_height, c.product_name + " " + c.version_text + "-2012");
    Show_Root_Toolbar();
    Read_Recent_Files();
    Show_Recent_Files();
    Read_History_Limits();
    History_Menus();
    Read_Plot_Style_Setting();
    Read_Second_Axis_Setting();
    Spectral_Lines_Command(40221);  // the lines start switched off, their items greyed
    if (!pref_exists) {
        WMessageBox(OkOnly, InformationIcon, 1,
                    "WARNING: No preferences file.\rDefault preferences will be used\r"
                    "Go to <Options> menu, click on <Preferences>\rand then on <Save global preferences>",
                    "Loading preferences file");
    } else if (pref_error) {
        WMessageBox(OkOnly, ExclamationIcon, 1,
                    "ERROR: loading preferences file.\r" + pref + "\rDefault preferences will be used",
                    "Loading preferences file");
    }
    Draw_Title_Screen();
    Reset_Store();
    Enter_None_Mode();
    Draw_Title_Screen();
    WindowSelect(kRootWindow);
    if (!hxl::Is_Blank(c.cmd_file)) {
        IOsDirChange(c.start_dir);
        const std::size_t dot = c.cmd_file.find_last_of('.');
        if (hxl::Is_Folder(c.cmd_file)) {
            Open_Folder_Command(c.cmd_file);
            Plot_ReMake();
        } else if (dot == std::string::npos) {
            WMessageBox(OkOnly, ExclamationIcon, 1, "ERROR: Unkown Data File format", "Zendrite-2006");
        } else {
            const std::string ext = hxl::Lower(hxl::Trim(c.cmd_file.substr(dot + 1, 6)));
            bool error = false;
            std::string message;
            if ((ext == "prf" || ext == "xrf") && first_prf) {
                first_prf = false;
                Open_Prf_Command(c.cmd_file);
                Plot_ReMake();
            } else if (Command_Line_Data_Extension(ext)) {
                Open_Data_File(c.cmd_file, error, message);
                if (error) Show_Message(message);
                Plot_ReMake();
            }
        }
    }
}

bool Command_Line_Data_Extension(const std::string& ext) {
    return ext == "dat" || ext == "xys" || ext == "xy" || ext == "uxd" || ext == "xrdml" || ext == "csv" || ext == "xye" ||
           ext == "udf" || ext == "gss" || ext == "sub" || ext == "sim";
}

void Main_Loop() {
    for (;;) {
        int type = 0;
        WIN_MESSAGE m;
        WMessage(type, m);
        if (m.win == kRootWindow) {
            ihand_winroot(type, m);
            // A refinement that rewrote the profile file: only the time of day is compared, deliberately.
            if (Check_Prf_Reload()) Plot_ReMake();
            // peaks found or put by the mouse while the panel is open
            Hkl_Gen_Refresh_Merit();
        } else if (m.win == Quick_View().qv_window && m.win != 0) {
            ihand_winqvprf(type, m);
        } else if (m.win == Frames_View().window && m.win != 0) {
            Frames_Event(type, m);
        } else if (m.win == Chart_Window() && m.win != 0) {
            Chart_Event(type, m);
        } else if (m.win == WEditWindow() && m.win != 0) {
            WindowSelect(m.win);
            if ((type == PushButton && m.value1 == kIdCancel) || type == CloseRequest) WEditClose();
        } else if (m.win == kHklPanel && WDialogOpen(kHklPanel)) {
            Hkl_Gen_Panel_Event(type, m);
        } else if (m.win == 128 && WDialogOpen(128)) {
            WDialogSelect(128);
            if ((type == PushButton && m.value1 == 1267) || type == CloseRequest) WDialogUnload();
            else if (type == PushButton && m.value1 == 1266) WDialogPutString(1265, "");
        }
    }
}

void Shutdown() {
    if (!WEditClose()) return;
    CONFIGURATION_TYPE& c = Configuration();
    IOsDirName(c.last_dir);
    Write_File_Replace(c.settings_dir + c.dir_sep + "zendrite.dir", c.last_dir + "\n");
    Write_Recent_Files();
    WindowClose();
    WStop(0);
    std::exit(0);
}

}  // namespace zendrite
