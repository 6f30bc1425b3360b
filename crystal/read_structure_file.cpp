#include <filesystem>

#include "crystal/structure.h"
#include "support/fixed_text.h"
#include "support/text_file.h"

namespace hxl {

bool Read_Structure_File(const std::string& file, std::vector<STRUCTURE_TYPE>& out, std::string& message) {
    const std::string ext = Lower(std::filesystem::path(file).extension().string());
    if (ext == ".cif") return Read_Cif_Structures(file, out, message);
    TEXT_FILE_TYPE t;
    if (!Read_Text_File(file, kTextFileLimit, t, message)) return false;
    if (ext == ".pcr") return Read_Pcr_Structures_Text(t.text, out, message);
    STRUCTURE_TYPE st;
    bool ok = false;
    if (ext == ".res" || ext == ".ins" || ext == ".shx") ok = Read_Shelx_Structure_Text(t.text, st, message);
    else if (ext == ".qvl") ok = Read_Qvl_Structure_Text(t.text, st, message);
    else {
        message = "Structure files end in .cif, .res, .ins, .shx, .qvl or .pcr: " + file;
        return false;
    }
    if (!ok) return false;
    st.block = std::filesystem::path(file).stem().string();
    out = {st};
    return true;
}

}  // namespace hxl
