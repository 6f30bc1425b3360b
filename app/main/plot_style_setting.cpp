// The plot style of the Options menu, Classic or Publication, kept in a small file beside the
// preference file (the preference file's layout has no field for it).
#include <fstream>

#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "graphics/plot.h"
#include "graphics/plot_settings.h"

namespace zendrite {

namespace {
std::string setting_file() { return Beside_Preference_File("zendrite.plotstyle"); }
}  // namespace

void Read_Plot_Style_Setting() {
    std::ifstream in(setting_file());
    std::string word;
    // Anything but "Publication", or no file, is the Classic style.
    Set_Plot_Style(in >> word && word == "Publication" ? "Publication" : "Classic");
    WMenuSetState(kPlotStyleItem, 2, Plot_Style() == "Publication" ? 1 : 0);
}

void Options_Plot_Style(int) {
    Set_Plot_Style(Plot_Style() == "Publication" ? "Classic" : "Publication");
    WMenuSetState(kPlotStyleItem, 2, Plot_Style() == "Publication" ? 1 : 0);
    if (!Write_File_Replace(setting_file(), Plot_Style() + "\n"))
        WMessageBox(OkOnly, ExclamationIcon, 1, "Unable to write setting file", "Plot style");
    Plot_Again();
}

}  // namespace zendrite
