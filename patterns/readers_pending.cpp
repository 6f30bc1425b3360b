// Readers whose formats are not supported yet: each answers with a clear
// message so that the frame and the store stay consistent.
#include "patterns/pattern_readers.h"

namespace hxl {
namespace {
void pending(const char* mode) { Set_Pattern_Error(std::string(" Reader not available yet for mode: ") + mode); }
}  // namespace

void Read_Pattern_XYSigma(Text_Unit&, DIFFRACTION_PATTERN_TYPE&, bool, std::string*) { pending("XYSIGMA"); }
void Read_Pattern_Cif(Text_Unit&, DIFFRACTION_PATTERN_TYPE&) { pending("CIF"); }
void Read_Pattern_Csv(Text_Unit&, DIFFRACTION_PATTERN_TYPE&) { pending("PANALYTICAL"); }
void Read_Pattern_Udf(Text_Unit&, DIFFRACTION_PATTERN_TYPE&) { pending("PANALYTICAL"); }
void Read_Pattern_Jcamp(Text_Unit&, DIFFRACTION_PATTERN_TYPE&) { pending("PANALYTICAL"); }
void Read_Pattern_Xrdml(Text_Unit&, DIFFRACTION_PATTERN_TYPE&) { pending("PANALYTICAL"); }
void Read_Pattern_Socabim(Text_Unit&, DIFFRACTION_PATTERN_TYPE&) { pending("SOCABIM"); }
void Read_Pattern_TimeVariable(Text_Unit&, DIFFRACTION_PATTERN_TYPE&) { pending("TIMEVARIABLE"); }
void Read_Pattern_KV8(Text_Unit&, DIFFRACTION_PATTERN_TYPE&) { pending("KV8"); }
void Read_Pattern_KG1(Text_Unit&, DIFFRACTION_PATTERN_TYPE&) { pending("KG1"); }
void Read_Pattern_KV7(Text_Unit&, DIFFRACTION_PATTERN_TYPE&) { pending("KV7"); }
void Read_Pattern_KV7_Old(Text_Unit&, DIFFRACTION_PATTERN_TYPE&) { pending("KV7OLD"); }
void Read_Pattern_DMC(Text_Unit&, DIFFRACTION_PATTERN_TYPE&) { pending("DMC"); }
void Read_Pattern_NLS(Text_Unit&, DIFFRACTION_PATTERN_TYPE&) { pending("NLS"); }
void Read_Pattern_GSAS(Text_Unit&, DIFFRACTION_PATTERN_TYPE&, const std::string&) { pending("GSAS"); }
void Read_Pattern_Isis(Text_Unit&, std::vector<DIFFRACTION_PATTERN_TYPE>&, int& count, const std::string&) {
    count = 0;
    pending("ISIS");
}

}  // namespace hxl
