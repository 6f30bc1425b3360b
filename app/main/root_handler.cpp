// The handler of the root window: one dispatch on the event and the menu item.
#include <iostream>

#include <algorithm>

#include "app/main/menu_table.h"
#include "app/main/plot_link.h"
#include "app/main/root_menu.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/main/menu_groups.h"
#include "app/store/history.h"
#include "app/store/zendrite_param_global.h"

namespace zendrite {

namespace {

[[noreturn]] void fault(const std::string& text) {
    std::cerr << text << std::endl;
    std::exit(1);
}

void menu(int item) {
    if (MENU_ROUTINE routine = Menu_Routine(item)) {
        Command_Begin(item);
        routine(item);
        Command_End();
        return;
    }
    if (item < 40002 || item > 40229) return;
    const std::vector<int> items = Root_Menu_Items();
    if (std::find(items.begin(), items.end(), item) == items.end() && item != 40155) return;
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
        // a press to its release is one step, so that a drag is undone whole
        if (type == MouseButDown) Mouse_Edit_Begin();
        Root_Mouse(message);
        if (type == MouseButUp) Mouse_Edit_End();
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
        History_Begin("Open dropped files", kHistoryArrays);
        Open_Dropped(message.paths);
        Plot_ReMake();
        Command_End();
        break;
    case CloseRequest: Shutdown(); break;
    default: break;
    }
}

}  // namespace zendrite
