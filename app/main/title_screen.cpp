// The title screen and the picture shown while no plot is drawn.
#include "app/main/configuration.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"

namespace zendrite {

void Draw_Title_Screen() {
    const CONFIGURATION_TYPE& c = Configuration();
    WindowSelect(kRootWindow);
    const int w = WInfoWindow(1), h = WInfoWindow(2);
    static int bitmap = 0;
    if (bitmap) WBitmapDestroy(bitmap);
    IGrPaletteBackground(c.title_bg);
    WBitmapCreate(bitmap, w, h);
    IGrSelect(2, bitmap);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, 1, 1);
    IGrAreaClear();
    IGrColourN(c.title_fg);
    WGrTextFont(1, 1, 0.03f, 0.09f);
    WGrTextCentre(0.5f, 0.6f, c.product_name);
    WGrTextFont(1, 2, 0.015f, 0.05f);
    WGrTextCentre(0.5f, 0.5f, c.subtitle);
    WGrTextFont(1, 0, 0.012f, 0.04f);
    WGrTextCentre(0.5f, 0.45f, c.platform_line);
    WGrTextFont(1, 0, 0.01f, 0.035f);
    WGrTextCentre(0.5f, 0.2f, c.version_text + "  " + c.release_date);
    WGrTextFont(1, 0, 0.008f, 0.028f);
    WGrTextCentre(0.5f, 0.1f, c.rights_line);
    WBitmapPut(bitmap, 0);
    IGrSelect(1, kRootWindow);
    // The page of the root window stays the plot's virtual page.
    IGrUnits(0, 0, 1200, 800);
}

}  // namespace zendrite
