#include "app/main/render_check.h"

#include <filesystem>
#include <iostream>

#include "app/main/zendrite_app.h"
#include "app/store/zendrite_param_global.h"
#include "patterns/format_table.h"
#include "support/fixed_text.h"

namespace zendrite {

bool Render_File_Loaded(const std::string& file) {
    if (zendrite_param_global().nperfiles > 0) return true;
    const std::string ext = hxl::Upper_Extension(file);
    std::error_code ec;
    std::cerr << "zendrite --render: nothing of " << file << " was drawn: ";
    if (!std::filesystem::exists(file, ec))
        std::cerr << "the file doesn't exist\n";
    else if (ext == ".PRF" || ext == ".XRF")
        std::cerr << "the profile file could not be read (see the messages above)\n";
    else if (!std::filesystem::is_directory(file, ec) && !ext.empty() &&
             !Command_Line_Data_Extension(hxl::Lower(hxl::Trim(ext.substr(1)))))
        std::cerr << "the command line opens only .dat .xys .xy .xye .uxd .xrdml .csv .udf .gss .sub .sim, "
                     ".prf and .xrf files\n";
    else if (hxl::Format_Row_From_Extension(ext) == 0 && !std::filesystem::is_directory(file, ec))
        std::cerr << "its extension does not tell its format; open it in the window, where the dialog "
                     "\"Format of the data file\" asks for it\n";
    else
        std::cerr << "it could not be read (see the messages above)\n";
    return false;
}

}  // namespace zendrite
