#include "crystal/magnetic_group.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstdio>

#include <spglib.h>

#include "support/fixed_text.h"

namespace hxl {

namespace {

constexpr int kUniCount = 1651;

bool all_digits(const std::string& s) {
    if (s.empty() || s.size() > 6) return false;
    for (char c : s)
        if (c < '0' || c > '9') return false;
    return true;
}

}  // namespace

bool Get_Magnetic_Group(const std::string& number_in, MAGNETIC_GROUP_TYPE& mg, std::string& message) {
    const std::string number = Trim(number_in);
    int uni = 0;
    if (all_digits(number)) {
        uni = std::atoi(number.c_str());
        if (uni < 1 || uni > kUniCount) {
            message = "The UNI number of a magnetic space group is from 1 to 1651: " + number;
            return false;
        }
    } else {
        const bool og = std::count(number.begin(), number.end(), '.') == 2;
        for (int u = 1; u <= kUniCount && !uni; ++u) {
            const SpglibMagneticSpacegroupType t = spg_get_magnetic_spacegroup_type(u);
            if (number == (og ? t.og_number : t.bns_number)) uni = u;
        }
        if (!uni) {
            message = "No magnetic space group has the " + std::string(og ? "OG" : "BNS") + " number " + number;
            return false;
        }
    }
    const SpglibMagneticSpacegroupType t = spg_get_magnetic_spacegroup_type(uni);
    if (t.uni_number != uni) {
        message = "The magnetic group database has no entry " + std::to_string(uni);
        return false;
    }
    mg = MAGNETIC_GROUP_TYPE{};
    mg.uni = uni;
    mg.litvin = t.litvin_number;
    mg.bns_number = t.bns_number;
    mg.og_number = t.og_number;
    mg.sg_number = t.number;
    mg.type = t.type;
    static int rot[384][3][3];
    static double trans[384][3];
    static int tr[384];
    const int n = spg_get_magnetic_symmetry_from_database(rot, trans, tr, uni, 0);
    if (n <= 0) {
        message = "The magnetic group database gives no operators for " + std::to_string(uni);
        return false;
    }
    for (int i = 0; i < n; ++i) {
        SYM_OPER_TYPE op;
        for (int r = 0; r < 3; ++r) {
            for (int c = 0; c < 3; ++c) op.rotation[r][c] = rot[i][r][c];
            double f = trans[i][r] - std::floor(trans[i][r]);
            if (f > 1 - 1e-9) f = 0;
            op.translation[r] = static_cast<float>(f);
        }
        mg.operators.push_back(op);
        mg.time_reversal.push_back(tr[i] ? -1 : 1);
    }
    return true;
}

void List_Magnetic_Group(const MAGNETIC_GROUP_TYPE& mg, std::ostream& unit) {
    static const char* kType[5] = {"", "I (colourless)", "II (grey)", "III (black-white, translationengleiche)",
                                   "IV (black-white, klassengleiche, anti-translations)"};
    unit << " Information on Magnetic Space Group:\n";
    unit << " ------------------------------------\n";
    unit << "=>            UNI number: " << mg.uni << "\n";
    unit << "=>            BNS number: " << mg.bns_number << "\n";
    unit << "=>             OG number: " << mg.og_number << "\n";
    unit << "=>         Litvin number: " << mg.litvin << "\n";
    unit << "=>                  Type: " << (mg.type >= 1 && mg.type <= 4 ? kType[mg.type] : "?") << "\n";
    unit << "=>   Family space group: " << mg.sg_number << "\n";
    int primed = 0;
    for (int t : mg.time_reversal) primed += t < 0;
    unit << "=>   Number of operators: " << mg.operators.size() << " (" << primed << " with time reversal)\n";
    unit << "\n => List of all symmetry operators:\n";
    char buf[96];
    for (std::size_t i = 0; i < mg.operators.size(); ++i) {
        std::snprintf(buf, sizeof buf, " => SYMM(%3zu): ", i + 1);
        unit << buf << Format_Operator(mg.operators[i]) << (mg.time_reversal[i] < 0 ? ",-1" : ",+1") << "\n";
    }
}

}  // namespace hxl
