#include "instrument/nrf_blocks.h"
#include "instrument/powder_numor.h"
#include "support/fixed_text.h"

namespace hxl {

void Read_Powder_Numor(const std::string& path, const std::string& instrument, POWDER_NUMOR_TYPE& numor,
                       bool header_only) {
    numor = POWDER_NUMOR_TYPE{};
    Clear_Nrf_Error();
    nrf_header_only = false;
    if (Is_Blank(path) || Is_Blank(instrument)) return;
    std::string name = Cut(Upper(Trim(instrument)), 4);
    std::size_t cut = path.find_last_of('/');
    std::string directory = cut == std::string::npos ? "" : Cut(path.substr(0, cut + 1), 512);
    std::string file = Cut(cut == std::string::npos ? path : path.substr(cut + 1), 80);
    if (file.find(".Z") != std::string::npos) {
        Set_Nrf_Error(" Numor file is compressed. Please uncompress the numor before to use this routine");
        return;
    }
    nrf_header_only = header_only;
    const std::string full = directory + Trim_Right(file);
    if (name.find("KV7") != std::string::npos) Read_Numor_KV7(full, numor);
    else if (name.find("KV8") != std::string::npos) Read_Numor_KV8(full, numor);
    else if (name.find("KV9") != std::string::npos) Read_Numor_KV9(full, numor);
    else if (name.find("KW1") != std::string::npos) Read_Numor_KW1(full, numor);
    else if (name.find("KW2") != std::string::npos) Read_Numor_KW2(full, numor);
    else Set_Nrf_Error(" Not Implemented for the Powder Instrument name: " + name);
    nrf_header_only = false;
}

}  // namespace hxl
