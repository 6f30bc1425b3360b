// Set_SpaceGroup and the routines that change or derive a group.
#include <algorithm>
#include <cstdlib>

#include "crystal/hall_symbol.h"
#include "crystal/sg_setting_table.h"
#include "crystal/space_group.h"
#include "support/fixed_text.h"

namespace hxl {

bool ERR_Symm = false;
std::string ERR_Symm_Mess;
std::string ERR_Symm_Info;

void Clear_Symm_Error() {
    ERR_Symm = false;
    ERR_Symm_Mess.clear();
    ERR_Symm_Info.clear();
}

namespace {

void fail(const std::string& mess, const std::string& info = "") {
    ERR_Symm = true;
    ERR_Symm_Mess = Cut(mess, 150);
    ERR_Symm_Info = Cut(info, 150);
}

void fill_operators(SPACE_GROUP_TYPE& sg, const std::vector<SEITZ_TYPE>& ops) {
    const int n = static_cast<int>(ops.size());
    sg.seitz.resize(n);
    sg.operators.resize(n);
    sg.operator_texts.resize(n);
    for (int i = 1; i <= n; ++i) {
        sg.seitz(i) = ops[static_cast<std::size_t>(i - 1)];
        sg.operators(i) = Seitz_To_Oper(sg.seitz(i));
        sg.operator_texts(i) = Format_Operator(sg.operators(i));
    }
}

void from_row(int row, SPACE_GROUP_TYPE& sg, const std::string& setting_type) {
    const SG_SETTING_ROW& r = sg_setting_rows[row];
    sg = SPACE_GROUP_TYPE{};
    sg.number = r.number;
    sg.hm_symbol = r.hm;
    sg.hall_symbol = r.hall;
    sg.setting_choice = std::string(r.code) + (*r.choice ? (*r.code ? ":" : "") + std::string(r.choice) : "");
    sg.setting_type = setting_type;
    sg.lattice_symbol = std::string(1, r.hm[0]);
    fill_operators(sg, Tabulated_Operators(row));
    Fill_Group_Descriptors(sg);
    Fill_Wyckoff_Positions(row, sg);
}

bool is_number(const std::string& s, int& n) {
    const std::string t = Trim(s);
    if (t.empty() || t.size() > 9) return false;
    for (char c : t)
        if (!std::isdigit(static_cast<unsigned char>(c))) return false;
    n = std::atoi(t.c_str());
    return true;
}

bool parse_generators(const std::vector<std::string>& gens, std::vector<SEITZ_TYPE>& out) {
    out.clear();
    for (const std::string& g : gens) {
        SYM_OPER_TYPE op;
        std::string msg;
        if (!Parse_Operator(g, op, msg)) {
            fail(msg);
            return false;
        }
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j)
                if (std::abs(op.rotation[i][j]) > 1) {
                    fail(" Error in generators", "The matrix corresponding to a generator has non-integer values!");
                    return false;
                }
        SEITZ_TYPE s;
        if (!Oper_To_Seitz(op, s)) {
            fail(" Error in generators", g);
            return false;
        }
        out.push_back(s);
    }
    return true;
}

// A group known only by its operators: descriptors, and the table's names when it is tabulated.
void from_operators(const std::vector<SEITZ_TYPE>& ops, SPACE_GROUP_TYPE& sg, const std::string& setting_type) {
    const int row = Find_Setting_By_Operators(ops);
    if (row >= 0) {
        from_row(row, sg, setting_type);
        return;
    }
    sg = SPACE_GROUP_TYPE{};
    sg.setting_type = setting_type;
    fill_operators(sg, ops);
    Fill_Group_Descriptors(sg);
    if (sg.centring.letter == 'Z') sg.lattice_symbol = "Z";
}

}  // namespace

void Set_SpaceGroup(const std::string& symbol, SPACE_GROUP_TYPE& sg, const std::vector<std::string>& gens,
                    const std::string& mode_in) {
    Clear_Symm_Error();
    const std::string mode = Upper(Trim(mode_in));
    if (!mode.empty() && mode != "HMS" && mode != "ITC" && mode != "HAL" && mode != "GEN" && mode != "FIX") {
        fail(" Problems in SpaceGroup: unknown mode " + mode);
        return;
    }
    if (mode == "FIX" || mode == "GEN") {
        if (gens.empty()) {
            fail(mode == "FIX" ? " Generators should be provided if FIX option is Used"
                               : " Generators should be provided in GEN calling Set_SpaceGroup");
            return;
        }
        std::vector<SEITZ_TYPE> g;
        if (!parse_generators(gens, g)) return;
        if (mode == "FIX") {
            // The caller's list is the whole group: kept as given, no descriptors.
            std::vector<SEITZ_TYPE> ops;
            for (const SEITZ_TYPE& s : g)
                if (std::find(ops.begin(), ops.end(), s) == ops.end()) ops.push_back(s);
            sg = SPACE_GROUP_TYPE{};
            sg.setting_type = "Fixed symmetry operators (no info)";
            sg.hm_symbol = Trim(symbol);
            fill_operators(sg, ops);
            sg.multiplicity = static_cast<int>(ops.size());
            return;
        }
        std::vector<SEITZ_TYPE> ops;
        if (!Close_Group(g, ops)) {
            fail(" Error in generators", "the generators give no finite group of at most 192 operators");
            return;
        }
        from_operators(ops, sg, "Non-Conventional (user-given operators)");
        if (Find_Setting_By_Operators(ops) >= 0) sg.setting_choice = "Tabulated Setting";
        else sg.setting_choice = "Non-standard Setting";
        return;
    }
    if (mode == "HAL") {
        std::vector<SEITZ_TYPE> g, ops;
        std::string msg;
        if (!Hall_Generators(Trim(symbol), g, msg)) {
            fail(" => the HM symbol or the number is incorrect", msg);
            return;
        }
        if (!Close_Group(g, ops)) {
            fail(" Error in generators", Trim(symbol));
            return;
        }
        from_operators(ops, sg, "Generated from Hall symbol");
        if (sg.hall_symbol.empty()) sg.hall_symbol = Trim(symbol);
        return;
    }
    int number = 0;
    int row = -1;
    if (is_number(symbol, number)) {
        if (number < 1 || number > 230) {
            fail(" Number of Space Group out of limits", "The number of the space group should be in the interval [1,230]");
            return;
        }
        row = Find_Setting_By_Number(number);
    } else {
        row = Find_Setting_By_Symbol(symbol);
        if (row < 0 && mode.empty()) {
            // Not a tabulated Hermann-Mauguin symbol: perhaps a Hall symbol.
            std::vector<SEITZ_TYPE> g, ops;
            std::string msg;
            if (Hall_Generators(Trim(symbol), g, msg) && Close_Group(g, ops)) {
                from_operators(ops, sg, "Generated from Hall symbol");
                if (sg.hall_symbol.empty()) sg.hall_symbol = Trim(symbol);
                return;
            }
        }
        if (row < 0) {
            fail(HM_Symbol_Refusal(symbol), "Error in the provided symbol/number of the space group");
            return;
        }
    }
    if (row < 0) {
        fail(" => the HM symbol or the number is incorrect", "Error in the provided symbol/number of the space group");
        return;
    }
    if (Tabulated_Operators(row).empty()) {
        fail(" Problems constructing the multiplication Table of the space group: " + Trim(symbol));
        return;
    }
    from_row(row, sg, mode == "ITC" ? "Generated from explicit IT generators" : "IT (Generated from Hermann-Mauguin symbol)");
}

bool Get_SO_from_HMS(const std::string& symbol, std::vector<SEITZ_TYPE>& ops) {
    Clear_Symm_Error();
    const int row = Find_Setting_By_Symbol(symbol);
    if (row < 0) {
        fail(HM_Symbol_Refusal(symbol));
        ops.clear();
        return false;
    }
    ops = Tabulated_Operators(row);
    return true;
}

void Setting_Change(const SPACE_GROUP_TYPE& sg, const std::string& choice, SPACE_GROUP_TYPE& out) {
    Clear_Symm_Error();
    if (Is_Blank(choice)) {
        fail(" Blank Option");
        return;
    }
    if (sg.number < 1 || sg.number > 230) {
        fail(" Space Group Not Defined...");
        return;
    }
    for (int i = 0; i < sg_setting_count; ++i) {
        const SG_SETTING_ROW& r = sg_setting_rows[i];
        const std::string want = Upper(Trim(choice));
        const std::string both = Upper(std::string(r.code) + ":" + r.choice);
        const bool hit = (Same(Upper(r.choice), want) && !Is_Blank(r.choice)) || (Same(Upper(r.code), want) && !Is_Blank(r.code)) ||
                         both == want || Same(Upper(r.hm), want);
        if (r.number == sg.number && hit) {
            const std::string from = sg.hm_symbol + (Is_Blank(sg.setting_choice) ? "" : ":" + sg.setting_choice);
            from_row(i, out, "");
            out.setting_type = "Changed from " + from + " to " + out.hm_symbol +
                               (Is_Blank(out.setting_choice) ? "" : ":" + out.setting_choice);
            return;
        }
    }
    fail(" Setting not tabulated for this group: " + Trim(choice));
}

}  // namespace hxl
