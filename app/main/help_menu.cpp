// The routines of the Options and Help items.
#include "app/main/configuration.h"
#include "app/main/launch.h"
#include "app/main/menu_groups.h"
#include "app/main/preferences.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

enum class SHOWN_BY { Browser, Pdf_Viewer, Editor };
struct DOC_ITEM {
    int item;
    const char* file;  // in the folder "Docs" of the suite
    SHOWN_BY by;
};
const DOC_ITEM kDocs[] = {
    {40084, "corvane_manual.html", SHOWN_BY::Browser},   {40085, "corvane_manual.pdf", SHOWN_BY::Pdf_Viewer},
    {40086, "cv_atelier_guide.pdf", SHOWN_BY::Pdf_Viewer}, {40121, "cvnews.txt", SHOWN_BY::Editor},
    {40156, "cvnews.html", SHOWN_BY::Browser},
};

// The program of the preferences, else the system's.
std::string helper(const std::string& own, const std::string& system) {
    return hxl::Trim(own).empty() ? system : own;
}

void browse(const std::string& what) {
    Launch_Helper(helper(Preferences().web_browser, Configuration().web_browser), "web browser", what);
}

}  // namespace

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

void Help_Docs(int item) {
    const CONFIGURATION_TYPE& c = Configuration();
    for (const DOC_ITEM& d : kDocs) {
        if (d.item != item) continue;
        const std::string dir = Program_Dir();
        const std::string part = "Docs" + c.dir_sep + d.file;
        if (dir.empty()) {
            Show_Message("The file " + part + " of the suite cannot be found: the folder of the suite is not known " +
                         "(the variable CORVANE, or Path Corvane in Options, Preferences, Environment)");
            return;
        }
        const std::string path = dir + c.dir_sep + part;
        if (!IOsExists(path)) {
            Show_Message("The file " + path + " was not found");
            return;
        }
        switch (d.by) {
        case SHOWN_BY::Editor: Edit_Text_File(path); break;
        case SHOWN_BY::Browser: browse(path); break;
        case SHOWN_BY::Pdf_Viewer:
            Launch_Helper(helper(Preferences().pdf_viewer, c.pdf_viewer), "PDF viewer", path);
            break;
        }
    }
}

void Help_Web(int item) { browse(item == 40130 ? Configuration().web_site : Configuration().download_site); }

}  // namespace zendrite
