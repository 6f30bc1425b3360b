// Files in the GSAS raw layout, one bank: the first, or the one named.
#include <string>

#include "patterns/gsas_bank.h"
#include "patterns/pattern_readers.h"
#include "support/fixed_text.h"

namespace hxl {

void Read_Pattern_GSAS(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p, const std::string& bank) {
    Clear_Pattern_Error();
    p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
    const bool tof = Starts_With(bank, "TOF");
    const char digit = bank.size() > 3 && bank[3] != ' ' ? bank[3] : '\0';
    const int wanted = (digit >= '0' && digit <= '9') ? digit - '0' : -1;
    std::string line;
    bool first = true;
    GSAS_BANK_TYPE head;
    while (true) {
        if (!unit.Read_Line(line)) {
            if (digit) return Set_Pattern_Error(std::string(" Error in Intensity file, BANK number:") + digit + " not found!");
            return Set_Pattern_Error(" => Error in the input GSAS-file: BANK not found!");
        }
        if (first) {
            p.title = Cut(Trim(line), kTitleLen);
            first = false;
            continue;
        }
        const std::string adj = Adjustl(line);
        if (!Starts_With(Upper(adj), "BANK")) continue;
        if (!Parse_Bank_Line(adj, head)) return Set_Pattern_Error(" Error in Intensity file, check your instr parameter!");
        if (wanted < 0 || head.number == wanted) break;
    }
    Read_Bank_Data(unit, head, tof, p);
}

}  // namespace hxl
