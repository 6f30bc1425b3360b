// Where the shell meets the plot engine: its hooks, the mouse, repaint and Focus.
#include "app/main/plot_link.h"

#include "app/main/hkl_gen.h"
#include "app/main/menu_groups.h"
#include "app/main/root_menu.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/x_space.h"
#include "app/store/zendrite_param_global.h"
#if ZD_WITH_PLOT
#include "graphics/mouse.h"
#include "graphics/multi_views.h"
#include "graphics/plot.h"
#include "graphics/plot_state.h"
#endif

namespace zendrite {

void Connect_Plot() {
    Install_X_Space_Hooks();
#if ZD_WITH_PLOT
    Graphics_Hooks().add_excluded_region = [](float low, float high, bool& error, std::string& text) {
        Add_Excluded_Region(low, high, error, text, true);
    };
    Graphics_Hooks().search_zone = Search_Zone_Peaks;
    Graphics_Hooks().title_screen = Draw_Title_Screen;
    // the plot redraws after every command, which may have changed the profiles
    Graphics_Hooks().graph_other = [](const std::string& mode) {
        Multi_Data_Changed();
        Multi_View_Again(mode);
    };
    Graphics_Hooks().enable_data_menus = [] {
        Grey_Data_Menus(true);
        if (X_Space_Hooks().menu_states) X_Space_Hooks().menu_states();
    };
    Graphics_Hooks().message = [](const std::string& text) { Show_Message(text); };
    Connect_Hkl_Gen();
    Connect_Structure_Overlay();
#endif
}

void Root_Mouse(const WIN_MESSAGE& message) {
#if ZD_WITH_PLOT
    Mouse_Event(message);
#else
    (void)message;
#endif
}

void Root_Wheel(const WIN_MESSAGE& message) {
#if ZD_WITH_PLOT
    Zoom_Wheel(message.gx, message.gy, message.value1);
#else
    (void)message;
#endif
}

void Root_Key(const WIN_MESSAGE& message) {
#if ZD_WITH_PLOT
    MULTI_VIEW view = MULTI_VIEW::Contour;
    if (Multi_View_Of_Mode(zendrite_param_global().graph_mode, view)) Multi_View_Key(message.value1);
    else if (message.value1 == kKeyHome) Zoom_Home();
#else
    (void)message;
#endif
}

void Root_Restore_Shown() {
#if ZD_WITH_PLOT
    Restore_Shown_Before();
#endif
}

void Root_Repaint() {
#if ZD_WITH_PLOT
    Plot_Repaint();
#endif
}

bool Root_Focus() {
#if ZD_WITH_PLOT
    Focus_Y();
    return true;
#else
    return false;
#endif
}

}  // namespace zendrite
