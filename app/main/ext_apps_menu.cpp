// The Ext. Applications and Tools items that start other programs, and the
// question after a save of an indexing input. Every launch hands the names
// over as single arguments; a program that is not found is named with the
// places looked in, and nothing runs.
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "app/main/commands.h"
#include "app/main/configuration.h"
#include "app/main/launch.h"
#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "extprog/os_commands.h"
#include "extprog/run_command.h"
#include "patterns/replace_file.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

struct INDEXING_RUN {
    int run_item, save_item;
    hxl::SIBLING program;
    const char* filter;
    const char* title;
    const char* question;
    const char* box_title;
};

const INDEXING_RUN kIndexing[] = {
    {40188, 40098, hxl::SIBLING::Dicvol, "Select DICVOL file (*.dic)|*.dic;*.dic04;*.dic06|", "Run DICVOL program",
     "Do you want to run DICVOL?", "Running DICVOL"},
    {40192, 40160, hxl::SIBLING::Ito, "Select ITO15 file (*.ito)|*.ito|", "Run ITO15 program",
     "Do you want to run ITO15?", "Running ITO15"},
    {40178, 40177, hxl::SIBLING::Ombra, "Select Ombra file (*.sat)|*.sat;*.qvl|", "Run Ombra program",
     "Do you want to run Ombra?", "Running Ombra"},
    {40193, 40191, hxl::SIBLING::Treor, "Select TREOR90 file (*.inp)|*.inp|", "Run TREOR90 program",
     "Do you want to run TREOR90?", "Running TREOR90"},
    {40197, 0, hxl::SIBLING::Pellan, "Select Pellan file (*.inp,*.qvl)|*.inp;*.qvl|", "Run Pellan program", "", ""},
};

// ITO15 reads its input under a fixed name in the folder of the file.
bool ito_copy(const std::string& file, std::string& copy) {
    const std::size_t slash = file.find_last_of('/');
    copy = (slash == std::string::npos ? std::string() : file.substr(0, slash + 1)) + "ito_inp.dat";
    std::ifstream in(file, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    if (in && hxl::Replace_File(copy, s.str())) return true;
    Show_Message("Unable to write " + copy);
    return false;
}

bool run_on(const INDEXING_RUN& r, const std::string& file) {
    std::vector<std::string> argv = hxl::Sibling_Command(r.program, Configuration().os_tag, file);
    if (r.program == hxl::SIBLING::Ito) {
        // no copy is left behind for a program that isn't there
        const char* path = std::getenv("PATH");
        std::string looked, copy;
        if (hxl::Find_Program(argv[0], Program_Dir(), path ? path : "", looked).empty()) {
            Show_Message(hxl::Not_Found_Message(argv[0], looked));
            return false;
        }
        if (!ito_copy(file, copy)) return false;
        argv.back() = hxl::File_Argument(copy);
    }
    return Launch(argv);
}

// A file selector, then the program on the chosen file; false when nothing ran.
bool Run_Sibling(hxl::SIBLING program, const std::string& filter, const std::string& title) {
    std::string name;
    WSelectFile(filter, LoadDialog, name, title);
    if (WInfoDialog(4) != kIdOk || hxl::Is_Blank(name)) return false;
    for (const INDEXING_RUN& r : kIndexing)
        if (r.program == program) return run_on(r, hxl::Trim(name));
    return Launch(hxl::Sibling_Command(program, Configuration().os_tag, hxl::Trim(name)));
}

}  // namespace

void Ext_Run(int item) {
    const CONFIGURATION_TYPE& c = Configuration();
    std::string here;
    IOsDirName(here);
    switch (item) {
    case 40128: Launch(hxl::Helper_Command(c.cmd_window, {})); return;
    case 40132: Launch(hxl::Helper_Command(c.file_browser, {here})); return;
    default: break;
    }
    for (const INDEXING_RUN& r : kIndexing)
        if (r.run_item == item) Run_Sibling(r.program, r.filter, r.title);
}

void After_Peak_Save(int save_item, const std::string& file) {
    for (const INDEXING_RUN& r : kIndexing) {
        if (r.save_item != save_item || r.save_item == 0) continue;
        WMessageBox(YesNo, QuestionIcon, 1, r.question, r.box_title);
        if (WInfoDialog(4) == kIdOk) run_on(r, file);
    }
}

}  // namespace zendrite
