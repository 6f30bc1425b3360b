// Graph 3D, Graph 2D Contour (linear and log) and Graph 3D Surface, and the menu items that
// those views cannot serve: the commands that end with the limits of the 2D graph.
#include <cmath>
#include <map>

#include "app/main/menu_groups.h"
#include "app/main/root_menu.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/x_space.h"
#include "app/store/zendrite_param_global.h"
#if ZD_WITH_PLOT
#include "graphics/multi_views.h"
#endif

namespace zendrite {

void Plot_Multi_View(int item) {
#if ZD_WITH_PLOT
    const MULTI_VIEW view = item == 40028   ? MULTI_VIEW::Stack
                            : item == 40031 ? MULTI_VIEW::Contour
                            : item == 40227 ? MULTI_VIEW::Contour_Log
                                            : MULTI_VIEW::Surface;
    std::string message;
    if (!Enter_Multi_View(view, message)) Show_Message("ERROR: " + message);
#else
    (void)item;
    Show_Message("This command is not available yet");
#endif
}

void Multi_View_Menus() {
    // Loading, arithmetic, X space, window limits and the 2D mouse modes redraw through the
    // limits of the 2D graph, which these views do not have.
    static const int items[] = {40014, kOpenFolderItem, 40016, 40015, 40157, 40212, 40211, 40038, 40067, 40068, 40069,
                                40070, 40179, 40155, 40106, 40109, 40116, 40133, 40118, 40119, 40136, 40137, 40105,
                                40113, 40021, 40141, 40149, 40124, 40115, 40026, 40102, 40037, 40110, 40151, 40034,
                                40042, 40228, 40043, 40229, 40017, 40089, 40081, 40100, 40123, 40101};
    static std::map<int, int> kept;  // the states before a view greyed them
    const std::string& m = zendrite_param_global().graph_mode;
    const bool multi = m == "graph3d" || m == "graph3dsurf" || m == "graph2dcontour" || m == "graph2dcontour_log";
    if (multi && kept.empty()) {
        for (int i : items) {
            kept[i] = WMenuGetState(i, 1);
            WMenuSetState(i, 1, 0);
        }
    } else if (!multi && !kept.empty()) {
        for (const auto& [i, state] : kept) WMenuSetState(i, 1, state);
        kept.clear();
    }
}

}  // namespace zendrite

namespace zendrite {

#if ZD_WITH_PLOT
bool Read_View_Setting(const std::vector<std::string>& words, MULTI_VIEW_STATE& st) {
    if (words.size() == 3 && words[1] == "scale" && (words[2] == "viridis" || words[2] == "grey")) {
        st.colour_scale = words[2] == "grey" ? 2 : 1;
    } else if (words.size() >= 2 && words[1] == "levels") {
        std::vector<double> levels;
        for (std::size_t i = 2; i < words.size(); ++i) {
            int err = 0;
            const double v = IStringToReal(words[i], err);
            if (err || !std::isfinite(v)) return false;
            levels.push_back(v);
        }
        st.levels = levels;
    } else if (words.size() == 3 && words[1] == "offset") {
        int err = 0;
        const double v = IStringToReal(words[2], err);
        if (err || !(v >= 0 && v <= 5)) return false;
        st.offset = v;
    } else {
        return false;
    }
    return true;
}

void Redraw_Multi_View() {
    // the settings change the picture, not the profiles: the kept map serves
    const std::string& mode = zendrite_param_global().graph_mode;
    MULTI_VIEW view = MULTI_VIEW::Contour;
    if (WindowExists(kRootWindow) && Multi_View_Of_Mode(mode, view)) Multi_View_Again(mode);
}
#endif

bool Multi_View_Setting(const std::vector<std::string>& words) {
#if ZD_WITH_PLOT
    if (!Read_View_Setting(words, Multi_View_State())) return false;
    Redraw_Multi_View();
    return true;
#else
    (void)words;
    return false;
#endif
}

}  // namespace zendrite
