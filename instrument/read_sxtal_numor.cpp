#include "instrument/nrf_blocks.h"
#include "instrument/numor_head.h"
#include "instrument/sxtal_numor.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

void read_sxtal_head(const std::string& path, const std::string& name, const std::string& refusal,
                     SXTAL_NUMOR_TYPE& numor) {
    NUMOR_HEAD head;
    if (!Read_Numor_Head(path, name, " Problems trying to read the Numor for " + name + " Instrument in file ", refusal,
                         head))
        return;
    numor.numor = head.numor;
    numor.instrument = head.instrument;
    numor.header = head.header;
    std::string padded = head.text_a2;
    for (char& c : padded)
        if (c == '\n') c = ' ';
    padded.resize(68, ' ');
    numor.title = Cut(padded, 60);
    numor.scan_type = padded.substr(60, 8);
    if (Is_Blank(numor.scan_type)) numor.scan_type = "q-scan  ";

    Read_I_Occurrence(head, 1);
    numor.principal_angle = I_Value(4);
    numor.n_angles = I_Value(5);
    numor.n_frames = I_Value(7);
    numor.calc_angle_type = I_Value(9);
    numor.n_pixels = I_Value(24);
    for (int i = 0; i < 7; ++i) numor.int_desc[static_cast<std::size_t>(i)] = I_Value(25 + i);

    Read_F_Occurrence(head, 1);
    for (int i = 0; i < 3; ++i) {
        numor.hmin[static_cast<std::size_t>(i)] = F_Value(1 + i);
        numor.hmax[static_cast<std::size_t>(i)] = F_Value(22 + i);
        numor.dh[static_cast<std::size_t>(i)] = F_Value(25 + i);
        numor.scan_values[static_cast<std::size_t>(i)] = F_Value(36 + i);
    }
    for (int i = 0; i < 5; ++i) numor.angles[static_cast<std::size_t>(i)] = F_Value(4 + i);
    for (int i = 0; i < 9; ++i) numor.ub[static_cast<std::size_t>(i)] = F_Value(9 + i);
    numor.wavelength = F_Value(18);
    numor.preset = F_Value(39);
    numor.further_reals = {F_Value(30), F_Value(43)};
    for (int i = 0; i < 5; ++i) numor.sample_env[static_cast<std::size_t>(i)] = F_Value(46 + i);
}

}  // namespace

void Read_Sxtal_Numor(const std::string& path, const std::string& instrument, SXTAL_NUMOR_TYPE& numor,
                      bool header_only) {
    numor = SXTAL_NUMOR_TYPE{};
    Clear_Nrf_Error();
    nrf_header_only = false;
    if (Is_Blank(path) || Is_Blank(instrument)) return;
    std::string name = Upper(Trim(instrument));
    if (path.find(".Z") != std::string::npos) {
        Set_Nrf_Error(" Numor file is compressed. Please uncompress the numor before to use this routine");
        return;
    }
    nrf_header_only = header_only;
    if (name.find("KS1") != std::string::npos)
        read_sxtal_head(path, "KS1", "This numor does not correspond with KS1 Format", numor);
    else if (name.find("KS2") != std::string::npos)
        read_sxtal_head(path, "KS2", "This numor does not correspond with KS2 Format", numor);
    else if (name.find("KS4") != std::string::npos)
        read_sxtal_head(path, "KS4", "This numor does not correspond with KS4 Format", numor);
    else if (name.find("KS5") != std::string::npos)
        read_sxtal_head(path, "KS5", "This numor does not match with KS5 Format", numor);
    else
        Set_Nrf_Error(" Not Implemented for the SXTAL Instrument name: " + name);
    nrf_header_only = false;
}

}  // namespace hxl
