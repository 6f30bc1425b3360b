// The status bar parts the shell keeps up to date.
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "support/fixed_text.h"

namespace zendrite {

void Update_Status_Bar() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    WindowOutStatusBar(3, g.nperfiles > 0 ? "Profiles: " + std::to_string(g.nperfiles) : std::string());
    WindowOutStatusBar(4, "X space: " + hxl::Trim(g.xspace));
    WindowOutStatusBar(5, "Mode: " + g.graph_mode);
}

}  // namespace zendrite
