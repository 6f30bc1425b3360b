// The second X axis of the Plot menu: d, Q or none, kept in a small file beside the
// preference file (the preference file's layout has no field for it).
#include <fstream>

#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "graphics/plot.h"
#include "graphics/plot_settings.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
std::string setting_file() { return Beside_Preference_File("zendrite.axis"); }

void show_checks() {
    const std::string& a = Plot_Settings().second_axis;
    WMenuSetState(kSecondAxisD, 2, a == "d-space" ? 1 : 0);
    WMenuSetState(kSecondAxisQ, 2, a == "q-space" ? 1 : 0);
}
}  // namespace

void Read_Second_Axis_Setting() {
    std::ifstream in(setting_file());
    std::string word;
    // Anything but the two names, or no file, is no second axis.
    Plot_Settings().second_axis = in >> word && (word == "d-space" || word == "q-space") ? word : "";
    show_checks();
}

void View_Second_Axis(int item) {
    std::string& a = Plot_Settings().second_axis;
    const std::string unit = item == kSecondAxisD ? "d-space" : "q-space";
    a = a == unit ? "" : unit;
    show_checks();
    if (!Write_File_Replace(setting_file(), (a.empty() ? std::string("none") : a) + "\n"))
        WMessageBox(OkOnly, ExclamationIcon, 1, "Unable to write setting file", "Second axis");
    Plot_Again();
}

}  // namespace zendrite
