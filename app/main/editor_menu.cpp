// The items that open a file in a text editor: the internal one when the
// preference asks for it, else the text editor program of the configuration.
#include <string>

#include "app/main/configuration.h"
#include "app/main/launch.h"
#include "app/main/menu_groups.h"
#include "app/main/preferences.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

// The selector of the Text editor item; its title is the editor's.
const char* const kAnyFile = "All files (*)|*|";
const char* const kEditorTitle = "Zendrite text editor";

std::string choose(const std::string& filter, const std::string& title) {
    std::string name;
    WSelectFile(filter, LoadDialog, name, title);
    return WInfoDialog(4) == kIdOk ? hxl::Trim(name) : std::string();
}

}  // namespace

void Edit_Text_File(const std::string& file) {
    if (Preferences().internal_editor != 0) {
        WEditFile(file);
        return;
    }
    // The program would open an empty text under a name that is not there: say so instead.
    if (!IOsExists(file)) {
        Show_Message("The file " + file + " does not exist");
        return;
    }
    const std::string own = hxl::Trim(Preferences().text_editor);
    Launch_Helper(own.empty() ? Configuration().text_editor : own, "text editor", file);
}

void Editor_Open(int item) {
    std::string file;
    switch (item) {
    case 40107: file = choose(kAnyFile, kEditorTitle); break;
    case 40225: file = choose("Edit PIK/NEW File (*.pik,*.new)|*.pik;*.new|", "Select PIK/NEW file to open"); break;
    case 40104: {
        file = hxl::Trim(Configuration().pcr_file);
        if (file.empty()) {
            Show_Message("No control file of a refinement is known yet: it is the one named in corvane.dir of " +
                         Configuration().settings_dir);
            return;
        }
        // A name kept without its extension stands for the control file ".pcr".
        const std::size_t slash = file.find_last_of('/');
        const std::size_t dot = file.find_last_of('.');
        if (!IOsExists(file) && (dot == std::string::npos || (slash != std::string::npos && dot < slash)) &&
            IOsExists(file + ".pcr"))
            file += ".pcr";
        break;
    }
    default: return;
    }
    if (!file.empty()) Edit_Text_File(file);
}

}  // namespace zendrite
