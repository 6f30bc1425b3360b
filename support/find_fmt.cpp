#include "support/find_fmt.h"

#include <string>

#include "support/edit_format.h"
#include "support/fixed_text.h"

namespace hxl {

int ierr_fmt = 0;
std::string mess_findfmt = "FindFMT: no error";

namespace {

const char* text_of(int status) {
    switch (status) {
        case FindFMT_End_Of_File: return "FindFMT: End of file !";
        case FindFMT_No_Error: return "FindFMT: no error";
        case FindFMT_Empty_Format: return "FindFMT: empty format descriptor (0 field) !";
        case FindFMT_Read_Error: return "FindFMT: data string, read error !";
        case FindFMT_Integer_Found_Real: return "FindFMT: integer field found real !";
        case FindFMT_Begged_Character: return "FindFMT: begged dot, sign or 'e' character !";
        case FindFMT_Invalid_Integer_Char: return "FindFMT: invalid character in an integer field !";
        case FindFMT_Invalid_Field: return "FindFMT: invalid field in format descriptor !";
        case FindFMT_Invalid_Numeric_Char: return "FindFMT: invalid character in a numeric field !";
        case FindFMT_No_Character: return "FindFMT: 0 character in current field !";
        case FindFMT_Length_Exceeded: return "FindFMT: format string length exceeded !";
        case FindFMT_Separator_Missing: return "FindFMT: separator missing !";
        case FindFMT_Incomplete_Exponent: return "FindFMT: incomplete E or D format !";
        default: return "FindFMT: incomplete number !";
    }
}

void set_status(int status) {
    ierr_fmt = status;
    mess_findfmt = text_of(status);
}

bool blank(char c) { return c == ' ' || c == '\t' || c == '\r'; }
bool digit(char c) { return c >= '0' && c <= '9'; }
bool exp_letter(char c) { return c == 'e' || c == 'E' || c == 'd' || c == 'D'; }

int check_integer(std::string_view t) {
    std::size_t i = (t[0] == '+' || t[0] == '-') ? 1 : 0;
    bool any = false;
    for (; i < t.size(); ++i) {
        const char c = t[i];
        if (digit(c)) { any = true; continue; }
        if (c == '.' || exp_letter(c)) return FindFMT_Integer_Found_Real;
        if (c == '+' || c == '-') return any ? FindFMT_Separator_Missing : FindFMT_Begged_Character;
        return FindFMT_Invalid_Integer_Char;
    }
    return any ? FindFMT_No_Error : FindFMT_Incomplete_Number;
}

// `decimals` the digits after the point, `exponent` whether one was written.
int check_real(std::string_view t, int& decimals, bool& exponent) {
    std::size_t i = (t[0] == '+' || t[0] == '-') ? 1 : 0;
    int mant = 0, expd = 0;
    bool dot = false;
    decimals = 0;
    exponent = false;
    for (; i < t.size(); ++i) {
        const char c = t[i];
        if (digit(c)) {
            if (exponent) ++expd;
            else ++mant;
            if (dot && !exponent) ++decimals;
            continue;
        }
        if (c == '.') {
            if (dot || exponent) return FindFMT_Begged_Character;
            dot = true;
            continue;
        }
        if (exp_letter(c)) {
            if (exponent || mant == 0) return FindFMT_Begged_Character;
            exponent = true;
            continue;
        }
        if (c == '+' || c == '-') {
            if (exponent && exp_letter(t[i - 1])) continue;
            if (digit(t[i - 1])) return FindFMT_Separator_Missing;
            return FindFMT_Begged_Character;
        }
        return FindFMT_Invalid_Numeric_Char;
    }
    if (mant == 0) return FindFMT_Incomplete_Number;
    if (exponent && expd == 0) return FindFMT_Incomplete_Exponent;
    return FindFMT_No_Error;
}

}  // namespace

void FindFMT(std::string_view line, std::string_view fields, std::string& format) {
    format.clear();
    set_status(FindFMT_No_Error);
    if (Is_Blank(fields)) return set_status(FindFMT_Empty_Format);
    std::string built = "(";
    std::size_t p = 0;  // end of the previous field
    for (char kind : fields) {
        if (blank(kind) || kind == ',') continue;
        const char k = static_cast<char>(kind >= 'a' && kind <= 'z' ? kind - 'a' + 'A' : kind);
        if (k != 'I' && k != 'F' && k != 'E' && k != 'A') return set_status(FindFMT_Invalid_Field);
        std::size_t b = p;
        while (b < line.size() && blank(line[b])) ++b;
        if (b >= line.size()) return set_status(FindFMT_No_Character);
        std::size_t e = b;
        while (e < line.size() && !blank(line[e])) ++e;
        const std::string_view tok = line.substr(b, e - b);
        std::string item;
        if (k == 'I') {
            const int s = check_integer(tok);
            if (s != FindFMT_No_Error) return set_status(s);
            item = 'I';
            item += std::to_string(e - p);
        } else if (k == 'A') {
            if (b > p) {
                item = std::to_string(b - p);
                item += "X,";
            }
            item += 'A';
            item += std::to_string(e - b);
        } else {
            int decimals = 0;
            bool exponent = false;
            const int s = check_real(tok, decimals, exponent);
            if (s != FindFMT_No_Error) return set_status(s);
            item = exponent && decimals > 0 ? 'E' : 'F';
            item += std::to_string(e - p);
            item += '.';
            item += std::to_string(decimals);
        }
        if (built.size() > 1) built += ',';
        built += item;
        if (built.size() + 1 > kFindFMT_Max_Length) return set_status(FindFMT_Length_Exceeded);
        p = e;
    }
    built += ')';
    // The format must read its own line back.
    EDIT_FORMAT_TYPE f;
    std::string message;
    Edit_Result r = Edit_Result::Bad_Format;
    if (Parse_Edit_Format(built, f, message)) {
        Edit_Reader reader(f, line);
        int iv;
        double rv;
        std::string tv;
        for (const EDIT_ITEM& it : f.items) {
            if (it.kind == Edit_Kind::Skip || it.kind == Edit_Kind::New_Line) continue;
            const bool ok = it.kind == Edit_Kind::Int ? reader.Int(iv) : it.kind == Edit_Kind::Text ? reader.Text(tv) : reader.Real(rv);
            if (!ok) break;
        }
        r = reader.Status();
    }
    if (r != Edit_Result::Ok) {
        set_status(FindFMT_Read_Error);
        mess_findfmt += " Error number: " + std::to_string(static_cast<int>(r));
        return;
    }
    format = built;
}

void FindFMT(Text_Unit& unit, std::string& line, std::string_view fields, std::string& format) {
    format.clear();
    std::string_view l;
    do {
        if (!unit.Read_Line(l)) {
            line.clear();
            return set_status(FindFMT_End_Of_File);
        }
    } while (Is_Blank(l));
    line.assign(l);
    FindFMT(std::string_view(line), fields, format);
}

}  // namespace hxl
