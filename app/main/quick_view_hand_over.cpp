// Item 40126 of the Quick View: the file on view becomes the profile file of the main window.
#include <cstdlib>
#include <iostream>

#include "app/main/configuration.h"
#include "app/main/quick_view.h"
#include "app/main/zendrite_app.h"
#include "app/store/open_prf.h"
#include "app/store/zendrite_param_global.h"
#include "support/fixed_text.h"

namespace zendrite {

void Quick_View_Hand_Over() {
    QUICK_VIEW_TYPE& qv = Quick_View();
    const ZENDRITE_STORE& g = zendrite_param_global();
    if (qv.qv_count < 1 || qv.qv_current < 1 || qv.qv_current > qv.qv_count) return;
    if (g.graph_mode != "none" && g.graph_mode != "single" && g.graph_mode != "multi") {
        WMessageBox(OkOnly, ExclamationIcon, 1,
                    "Unable to add profile to main\rwindow in mode 2D contour, 3D, 3D Surf\ror fitting", "Warning");
        return;
    }
    if (g.prf_loaded) {
        if (g.ProfilePRFactive < 1 || g.ProfilePRFactive > g.nperfiles) {
            std::cerr << "Fault /zendrite_win_qvprf/ihand_winqvprf/20" << std::endl;
            std::exit(1);
        }
        const std::string name = hxl::Trim(g.info[static_cast<std::size_t>(g.ProfilePRFactive)].prf_name);
        WMessageBox(YesNo, QuestionIcon, 1,
                    "The main window contain a PRF profile:\r" + name + "\rDo you want overwrite this profile?",
                    "Warning");
        if (WInfoDialog(4) != 1) return;
    }
    // Read through the store's own door, so that the slot, the X space, the recent
    // list and the reload check are those of a file opened from the menu.
    const PRF_OPEN_RESULT r = Open_Prf_File(Quick_View_Path(qv.qv_current));
    WindowSelect(kRootWindow);
    IGrSelect(1, kRootWindow);
    if (!r.ok) {
        Show_Message(r.message);
    } else {
        Configuration().prf_path = r.prf_path;
        Configuration().prf_stamp = r.prf_stamp;
        Show_Recent_Files();
        Plot_ReMake();
    }
    WindowSelect(qv.qv_window);
}

}  // namespace zendrite
