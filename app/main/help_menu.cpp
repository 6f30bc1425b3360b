// The routines of the Options and Help items.
#include "app/main/configuration.h"
#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"

namespace zendrite {

void Options_Preferences(int) { Preferences_Command(); }

void Help_About(int) {
    const CONFIGURATION_TYPE& c = Configuration();
    if (!WDialogDefined(103))
        WDialogDefine({103, "About", {},
                       {Fld(1230, FIELD_KIND::Label, ""), Fld(1231, FIELD_KIND::Label, ""), Fld(1288, FIELD_KIND::Picture, ""),
                        Fld(1232, FIELD_KIND::Label, c.subtitle), Fld(1233, FIELD_KIND::Label, c.rights_line)}});
    WDialogLoad(103);
    WDialogPutString(1230, c.product_name);
    WDialogPutString(1231, c.version_text + "  " + c.release_date);
    WDialogShow(-1, -1, 0, Modal);
    WDialogUnload();
}

}  // namespace zendrite
