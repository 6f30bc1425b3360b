// The Ext. Applications items that run the suite's refinement programs and
// load their result (Run Corvane, Run Virelle), and those that start the
// suite's own windows on the last control file.
#include <filesystem>
#include <system_error>

#include "app/main/configuration.h"
#include "app/main/launch.h"
#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/open_prf.h"
#include "app/store/zendrite_param_global.h"
#include "extprog/os_commands.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

namespace fs = std::filesystem;

struct REFINEMENT_RUN {
    int item;
    hxl::SIBLING program;
    const char* filter;
    const char* title;
};

const REFINEMENT_RUN kRefinements[] = {
    {40135, hxl::SIBLING::Corvane, "Input PCR File|*.pcr;*.new|", "Corvane Program"},
    {40207, hxl::SIBLING::Virelle, "Select a QVL file (*.qvl)|*.qvl|", "Run Virelle program"},
};

// The profile file a run writes beside its input: the same name, ".prf".
std::string profile_of(const std::string& input) { return fs::path(input).replace_extension(".prf").string(); }

bool written_since(const std::string& file, fs::file_time_type start) {
    std::error_code ec;
    const fs::file_time_type t = fs::last_write_time(file, ec);
    // One second of slack for file systems that keep whole seconds.
    return !ec && t + std::chrono::seconds(1) >= start;
}

void run_on(const REFINEMENT_RUN& r, std::string input) {
    input = hxl::Trim(input);
    CONFIGURATION_TYPE& c = Configuration();
    if (r.program == hxl::SIBLING::Corvane) c.pcr_file = input;
    Enter_None_Mode();
    c.prf_path.clear();
    const fs::file_time_type start = fs::file_time_type::clock::now();
    int status = 0;
    const fs::path folder = fs::path(input).parent_path();
    const RUN_END end = Run_And_Wait(hxl::Sibling_Command(r.program, c.os_tag, input), folder.string(), status);
    if (end != RUN_END::Ended) {
        Plot_ReMake();
        return;
    }
    const std::string prf = profile_of(input);
    // A profile file left by an earlier run is not this run's result.
    std::string why;
    if (!fs::exists(prf))
        why = "The run wrote no file " + prf;
    else if (!written_since(prf, start))
        why = prf + " was not written by this run (exit status " + std::to_string(status) + ")";
    if (!why.empty()) {
        Show_Message("Error loading PRF file ...\r" + why);
        Plot_ReMake();
        return;
    }
    const PRF_OPEN_RESULT opened = Open_Prf_File(prf);
    if (!opened.ok) {
        Show_Message("Error loading PRF file ...\r" + opened.message);
        Enter_None_Mode();
        Plot_ReMake();
        return;
    }
    Enter_Single_Mode(0);
    c.prf_path = opened.prf_path;
    c.prf_stamp = opened.prf_stamp;
    Show_Recent_Files();
    Plot_ReMake();
}

void run_refinement(const REFINEMENT_RUN& r) {
    std::string input;
    WSelectFile(r.filter, LoadDialog, input, r.title);
    if (WInfoDialog(4) != kIdOk || hxl::Is_Blank(input)) return;  // nothing launched
    run_on(r, input);
}

// The suite's windows, each on the file of the last refinement that it
// reads: the control file itself for the editor of control files, else the
// file of the same name with the program's ending, when it exists.
struct SUITE_WINDOW {
    int item;
    hxl::SIBLING program;
    const char* ending;  // "" for the control file itself
};

const SUITE_WINDOW kWindows[] = {
    {40117, hxl::SIBLING::Tessara, ""},     {40129, hxl::SIBLING::Glattiq, ".inp"},
    {40142, hxl::SIBLING::Quavor, ".qvl"},  {40134, hxl::SIBLING::Tindra, ".qvl"},
    {40108, hxl::SIBLING::Atelier, "1.fst"},
};

}  // namespace

std::string Suite_Window_File(const std::string& pcr_file, const char* ending) {
    const std::string pcr = hxl::Trim(pcr_file);
    const fs::path p(pcr);
    if (pcr.empty() || !p.has_extension()) return "";
    std::string file = pcr;
    if (*ending) {
        fs::path base = p;
        base.replace_extension();
        file = base.string() + ending;
    }
    std::error_code ec;
    return fs::is_regular_file(file, ec) ? file : "";
}

void Ext_Run_Refinement(int item) {
    for (const REFINEMENT_RUN& r : kRefinements)
        if (r.item == item) run_refinement(r);
}

void Run_Virelle_On(const std::string& qvl_file) {
    for (const REFINEMENT_RUN& r : kRefinements)
        if (r.program == hxl::SIBLING::Virelle) run_on(r, qvl_file);
}

void Ext_Run_Suite_Window(int item) {
    for (const SUITE_WINDOW& w : kWindows) {
        if (w.item != item) continue;
        const std::string file = Suite_Window_File(Configuration().pcr_file, w.ending);
        Launch(hxl::Sibling_Command(w.program, Configuration().os_tag, file));
    }
}

}  // namespace zendrite
