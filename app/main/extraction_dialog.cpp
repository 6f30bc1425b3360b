// NRF Instruments + Numors: the input of the pattern extraction program, its
// run, and the patterns it wrote loaded into the store.
#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "app/main/configuration.h"
#include "app/main/launch.h"
#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "extprog/extraction_input.h"
#include "extprog/os_commands.h"
#include "extprog/run_command.h"
#include "patterns/replace_file.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kDialog = 211, kInstrument = 2111, kYear = 2112, kCycle = 2113, kNumors = 2114, kOutput = 2115,
              kAdd = 2116, kMonitor = 2117;

void define_dialog() {
    static bool done = false;
    if (done) return;
    done = true;
    DIALOG_FIELD instrument = Fld(kInstrument, FIELD_KIND::Text, "Instrument");
    DIALOG_FIELD year = Fld(kYear, FIELD_KIND::Integer, "Year (0: any)");
    DIALOG_FIELD cycle = Fld(kCycle, FIELD_KIND::Integer, "Cycle (0: any)");
    DIALOG_FIELD numors = Fld(kNumors, FIELD_KIND::Text, "Numors (list or ranges: 121459-121470, 121480)");
    DIALOG_FIELD output = Fld(kOutput, FIELD_KIND::Text, "Output name");
    DIALOG_FIELD monitor = Fld(kMonitor, FIELD_KIND::Real, "Normalise to monitor (0: none)");
    year.value = cycle.value = monitor.value = "0";
    output.value = "numors";
    WDialogDefine({kDialog, "NRF Instruments + Numors", {},
                   {instrument, year, cycle, numors, output, Fld(kAdd, FIELD_KIND::CheckBox, "Add all numors into one pattern"),
                    monitor}});
}

}  // namespace

void Numors_Extraction(int) {
    define_dialog();
    WDialogLoad(kDialog);
    WDialogShow(-1, -1, 0, Modal);
    const bool ok = WInfoDialog(4) == kIdOk;
    hxl::EXTRACTION_INPUT_TYPE in;
    int add = 0;
    WDialogGetString(kInstrument, in.instrument);
    WDialogGetInteger(kYear, in.year);
    WDialogGetInteger(kCycle, in.cycle);
    WDialogGetString(kNumors, in.numors);
    WDialogGetString(kOutput, in.output);
    WDialogGetCheckBox(kAdd, add);
    WDialogGetReal(kMonitor, in.monitor);
    WDialogUnload();
    if (!ok) return;
    in.add = add != 0;
    std::vector<int> numors;
    std::string message;
    if (!std::isfinite(in.monitor) || !hxl::Check_Extraction_Input(in, numors, message)) {
        Show_Message(message.empty() ? "The monitor must be a number" : message);
        return;
    }
    // A program that is not there writes no file: say so before anything is written.
    std::vector<std::string> argv = hxl::Sibling_Command(hxl::SIBLING::Pellan, Configuration().os_tag, "");
    const char* path = std::getenv("PATH");
    std::string looked;
    if (hxl::Find_Program(argv[0], Program_Dir(), path ? path : "", looked).empty()) {
        Show_Message(hxl::Not_Found_Message(argv[0], looked));
        return;
    }
    std::string dir;
    IOsDirName(dir);
    if (!dir.empty() && dir.back() != '/') dir += '/';
    const std::string input = dir + hxl::Trim(in.output) + ".inp";
    if (!hxl::Replace_File(input, hxl::Extraction_Input_Text(in, numors))) {
        Show_Message("Unable to write " + input);
        return;
    }
    int status = 0;
    argv = hxl::Sibling_Command(hxl::SIBLING::Pellan, Configuration().os_tag, input);
    if (Run_And_Wait(argv, dir, status) != RUN_END::Ended) return;
    if (status != 0) {
        Show_Message("The extraction program ended with status " + std::to_string(status) + ": no pattern is loaded");
        return;
    }
    int loaded = 0;
    for (const std::string& f : hxl::Extraction_Outputs(in, numors)) {
        if (!std::filesystem::exists(dir + f)) continue;
        bool error = false;
        Open_Data_File(dir + f, error, message);
        if (error) Show_Message(message);
        else ++loaded;
    }
    if (loaded == 0) Show_Message("The extraction program wrote no pattern (" + hxl::Extraction_Outputs(in, numors).front() + ", ...)");
    Plot_ReMake();
}

}  // namespace zendrite
