#include "patterns/format_table.h"

#include "support/fixed_text.h"

namespace hxl {

const std::array<FORMAT_ROW_TYPE, kFormatRows>& Format_Rows() {
    static const std::array<FORMAT_ROW_TYPE, kFormatRows> rows{{
        {"FreeFormat", "Free Format (Inst. 0)", "  0  - Free format"},
        {"KV8", "KV8, KW2 (Inst. 3)", "  3  - "},
        {"NLS", "NLS (Inst. 4)", "  4  - "},
        {"KG1", "KG1, NewKV8, KW2 (Inst. 5)", "  5  - "},
        {"KV7", "KV9, KG3, KG4 (Inst. 6)", "  6  - "},
        {"KV7OLD", "Old: KV7 (Inst. 1)", "  1  - "},
        {"DMC", "DMC, HRPT PSI (Inst.8)", "  8  - "},
        {"SOCABIM", "SOCABIM (Inst. 9)", "  9  - "},
        {"XYSIGMA", "XYSIGMA (Inst. 10)", " 10  - "},
        {"GSAS", "GSAS (CW)", " 12  - "},
        {"GSASTOF", "GSAS (TOF)  (Inst. 12)", " 12  - "},
        {"PANALYTICAL", "PANALYTICAL (Inst. 13)", " 13  - "},
        {"TIMEVARIABLE", "Variable Time (Inst. 11)", " 11  - "},
        {"ISIS", "ISIS (Inst. 14)", " 14  - "},
        {"CIF", "CIF - File", "  XY  - "},
        {"LIBRARY", "Other formats (library)", " 15  - "},
    }};
    return rows;
}

const FORMAT_ROW_TYPE& Format_Row(int row) { return Format_Rows()[static_cast<std::size_t>(row - 1)]; }

std::string Upper_Extension(std::string_view filename) {
    std::size_t dot = filename.rfind('.');
    if (dot == std::string_view::npos) return {};
    return Cut(Upper(filename.substr(dot)), 10);
}

bool Is_Jcamp_Extension(std::string_view extension) {
    const std::string e = Trim_Right(Upper(extension));
    return e == ".JCP" || e == ".JDX" || e == ".DX";
}

bool Is_Library_Extension(std::string_view extension) {
    static constexpr std::string_view kExt[] = {".RAW", ".RD", ".SD", ".CPI", ".VMS", ".CHI",
                                                ".XDD", ".DBW", ".RIT", ".MCA", ".CNF", ".RAS"};
    const std::string e = Trim_Right(Upper(extension));
    for (std::string_view k : kExt)
        if (e == k) return true;
    return false;
}

int Format_Row_From_Extension(std::string_view extension) {
    const std::string e = Trim_Right(Upper(extension));
    if (e == ".CSV" || e == ".UDF" || Is_Jcamp_Extension(e) || e == ".XRDML") return 12;
    if (e == ".XY" || e == ".XYS" || e == ".XYE") return 9;
    if (e == ".UXD") return 8;
    if (e == ".SIM" || e == ".MDI") return 1;
    if (e == ".GSS") return 14;  // the multi-pattern reader, not the GSAS rows: deliberate
    if (e == ".CIF") return 15;
    if (Is_Library_Extension(e)) return kRowLibrary;
    return 0;
}

int Format_Row_From_Mode(std::string_view mode) {
    const std::string m = Trim(Upper(mode));
    for (int r = 1; r <= kFormatRows; ++r)
        if (Upper(Format_Row(r).mode) == m) return r;
    return 0;
}

}  // namespace hxl
