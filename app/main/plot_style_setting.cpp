// The plot style of the Options menu, Classic or Publication, and the error bars on request,
// kept in a small file beside the preference file (its layout has no field for them).
#include <fstream>

#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "graphics/plot.h"
#include "graphics/plot_settings.h"

namespace zendrite {

namespace {
std::string setting_file() { return Beside_Preference_File("zendrite.plotstyle"); }

void show_checks() {
    WMenuSetState(kPlotStyleItem, 2, Plot_Style() == "Publication" ? 1 : 0);
    WMenuSetState(kErrorBarsItem, 2, Plot_Settings().error_bars ? 1 : 0);
}

void save_and_draw() {
    show_checks();
    const std::string text = Plot_Style() + "\n" + (Plot_Settings().error_bars ? "errorbars" : "noerrorbars") + "\n";
    if (!Write_File_Replace(setting_file(), text))
        WMessageBox(OkOnly, ExclamationIcon, 1, "Unable to write setting file", "Plot style");
    Plot_Again();
}
}  // namespace

void Read_Plot_Style_Setting() {
    std::ifstream in(setting_file());
    std::string style, bars;
    // Anything but "Publication", or no file, is the Classic style; error bars only when asked.
    in >> style >> bars;
    Plot_Settings().error_bars = bars == "errorbars";
    Set_Plot_Style(style == "Publication" ? "Publication" : "Classic");
    show_checks();
}

void Options_Plot_Style(int item) {
    if (item == kErrorBarsItem) Plot_Settings().error_bars = !Plot_Settings().error_bars;
    else Set_Plot_Style(Plot_Style() == "Publication" ? "Classic" : "Publication");
    save_and_draw();
}

}  // namespace zendrite
