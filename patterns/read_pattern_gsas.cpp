// Files in the GSAS raw layout: one bank, the first, the one named, or the
// n-th of a multi-bank file.
#include <string>

#include "patterns/gsas_bank.h"
#include "patterns/pattern_readers.h"
#include "support/fixed_text.h"

namespace hxl {
namespace {

bool bank_line(std::string_view line) { return Starts_With(Upper(Adjustl(std::string(line.substr(0, 8)))), "BANK"); }

int count_banks(Text_Unit& unit) {
    std::string_view line;
    int n = 0;
    unit.Rewind();
    unit.Read_Line(line);  // the title line is never a bank
    while (unit.Read_Line(line))
        if (bank_line(line)) ++n;
    unit.Rewind();
    return n;
}

}  // namespace

void Read_Pattern_GSAS(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p, const std::string& bank) {
    int nblocks = 0;
    Read_Pattern_GSAS(unit, p, bank, 1, nblocks);
}

void Read_Pattern_GSAS(Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& p, const std::string& bank, int block, int& nblocks) {
    Clear_Pattern_Error();
    p.tsamp = p.tset = p.scal = p.monitor = 0.0f;
    const bool tof = Starts_With(bank, "TOF");
    const char digit = bank.size() > 3 && bank[3] != ' ' ? bank[3] : '\0';
    const int wanted = (digit >= '0' && digit <= '9') ? digit - '0' : -1;
    nblocks = wanted >= 0 ? 1 : count_banks(unit);
    std::string line;
    bool first = true;
    int k = 0;
    GSAS_BANK_TYPE head;
    GSAS_HEAD_TYPE comments;
    while (true) {
        if (!unit.Read_Line(line)) {
            if (digit) return Set_Pattern_Error(std::string(" Error in Intensity file, BANK number:") + digit + " not found!");
            return Set_Pattern_Error(" => Error in the input GSAS-file: BANK not found!");
        }
        if (first) {
            p.title = Cut(Trim(line), kTitleLen);
            Read_Gsas_Head_Line(line, comments);
            first = false;
            continue;
        }
        const std::string adj = Adjustl(line);
        if (!Starts_With(Upper(adj), "BANK")) {
            Read_Gsas_Head_Line(line, comments);
            continue;
        }
        if (!Parse_Bank_Line(adj, head)) return Set_Pattern_Error(" Error in Intensity file, check your instr parameter!");
        ++k;
        if (wanted >= 0 ? head.number == wanted : k == block) break;
    }
    // Time-of-flight bins read as centidegrees would give numbers a hundred times too small.
    if (!tof && !Gsas_Const_Bins(head) && ((head.type == "ALT" && head.bintyp == "RALF") || head.type == "FXYE"))
        return Set_Pattern_Error(" BANK " + std::to_string(head.number) + " has time-of-flight bins (" + head.bintyp +
                                 "): read it as GSAS (TOF)");
    if (!Read_Bank_Data(unit, head, tof, p)) return;
    Apply_Gsas_Head(comments, tof, p);
    if (nblocks > 1) p.title = Cut(Trim(p.title) + " BANK " + std::to_string(head.number), kTitleLen);
}

}  // namespace hxl
