// Finding a tabulated setting from a symbol, a number or a list of operators.
#include <algorithm>
#include <cctype>
#include <map>
#include <sstream>

#include "crystal/hall_symbol.h"
#include "crystal/sg_setting_table.h"
#include "crystal/space_group.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

std::string key_of(const std::string& s) {
    std::string k;
    for (char c : s)
        if (c != ' ' && c != '\t' && c != '_') k += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return k;
}

struct Index {
    std::map<std::string, std::vector<int>> by_key;  // blank-free symbol -> rows
};

const Index& index() {
    static const Index idx = [] {
        Index ix;
        for (int i = 0; i < sg_setting_count; ++i) ix.by_key[key_of(sg_setting_rows[i].hm)].push_back(i);
        // Short monoclinic symbols ("P 21/c") name the first tabulated setting.
        for (int i = 0; i < sg_setting_count; ++i) {
            const SG_SETTING_ROW& r = sg_setting_rows[i];
            if (r.number < 3 || r.number > 15) continue;
            std::istringstream in(r.hm);
            std::vector<std::string> t;
            for (std::string w; in >> w;) t.push_back(w);
            if (t.size() != 4) continue;
            std::string core;
            int ones = 0;
            for (std::size_t j = 1; j < 4; ++j) {
                if (t[j] == "1") ++ones;
                else core = t[j];
            }
            if (ones != 2) continue;
            const std::string k = key_of(t[0] + core);
            if (!ix.by_key.count(k)) ix.by_key[k].push_back(i);
        }
        return ix;
    }();
    return idx;
}

int preferred(const std::vector<int>& rows) {
    // Without a code: origin choice 2 and hexagonal axes, else the first.
    for (int r : rows)
        if (Same(sg_setting_rows[r].choice, "2") || Same(sg_setting_rows[r].choice, "H")) return r;
    return rows.front();
}

}  // namespace

int Find_Setting_By_Symbol(const std::string& symbol) {
    std::string s = Trim(symbol), code;
    const auto colon = s.find(':');
    if (colon != std::string::npos) {
        code = Upper(Trim(s.substr(colon + 1)));
        s = s.substr(0, colon);
    }
    const auto& m = index().by_key;
    const auto it = m.find(key_of(s));
    if (it == m.end()) return -1;
    if (code.empty()) return preferred(it->second);
    for (int r : it->second)
        if (Upper(sg_setting_rows[r].choice) == code || Upper(sg_setting_rows[r].code) == code) return r;
    return -1;
}

int Find_Setting_By_Number(int number) {
    std::vector<int> rows;
    for (int i = 0; i < sg_setting_count; ++i)
        if (sg_setting_rows[i].number == number) {
            // The first listed setting is the standard one; only the origin
            // choice and the axes have a second form of that standard.
            if (!rows.empty() && !Same(sg_setting_rows[i].hm, sg_setting_rows[rows.front()].hm)) break;
            rows.push_back(i);
        }
    return rows.empty() ? -1 : preferred(rows);
}

const std::vector<SEITZ_TYPE>& Tabulated_Operators(int row) {
    static std::vector<std::vector<SEITZ_TYPE>> cache(static_cast<std::size_t>(sg_setting_count));
    static std::vector<bool> done(static_cast<std::size_t>(sg_setting_count), false);
    static const std::vector<SEITZ_TYPE> none;
    if (row < 0 || row >= sg_setting_count) return none;
    const auto r = static_cast<std::size_t>(row);
    if (!done[r]) {
        std::vector<SEITZ_TYPE> gens;
        std::string msg;
        if (Hall_Generators(sg_setting_rows[row].hall, gens, msg)) Close_Group(gens, cache[r]);
        done[r] = true;
    }
    return cache[r];
}

int Find_Setting_By_Operators(const std::vector<SEITZ_TYPE>& ops) {
    for (int i = 0; i < sg_setting_count; ++i)
        if (Tabulated_Operators(i) == ops) return i;
    return -1;
}

namespace {

std::string check_direction(const std::string& tok) {
    std::string rot, plane;
    bool slash = false;
    for (std::size_t i = 0; i < tok.size(); ++i) {
        const char c = tok[i];
        if (c == '/') {
            slash = true;
            continue;
        }
        if (std::isdigit(static_cast<unsigned char>(c)) || c == '-') {
            if (!plane.empty()) return " A mirror plane cannot be immediately followed by a rotation axis";
            rot += c;
        } else {
            if (!rot.empty() && !slash) return " A rotation axis cannot be immediately followed by a plane";
            plane += c;
        }
    }
    if (plane.size() > 1) {
        if (plane[0] == plane[1]) return " The symbol: " + plane.substr(0, 1) + " has been repeated within the same symmetry direction";
        return " There is more than one plane within the same symmetry direction";
    }
    std::string digits = rot;
    digits.erase(std::remove(digits.begin(), digits.end(), '-'), digits.end());
    if (digits.size() > 1) {
        if (digits[0] == digits[1]) return " The symbol: " + digits.substr(0, 1) + " has been repeated within the same symmetry direction";
        if (digits.size() > 2 || digits[1] >= digits[0] || digits[0] == '1' || rot[0] == '-')
            return " Screw axis: " + rot + " not allowed";
    }
    return "";
}

}  // namespace

std::string HM_Symbol_Refusal(const std::string& symbol) {
    std::string s = Upper(Trim(symbol));
    const auto colon = s.find(':');
    if (colon != std::string::npos) s = Trim(s.substr(0, colon));
    if (s.empty()) return " => the HM symbol or the number is incorrect";
    if (std::string("PABCFIR").find(s[0]) == std::string::npos) return " Wrong Lattice Symbol ";
    const std::string rest = s.substr(1);
    if (rest.find('5') != std::string::npos) return " The fivefold axis is not allowed";
    static const std::string allowed = "123456ABCDMNP/- ";
    for (char c : rest)
        if (allowed.find(c) == std::string::npos) return " Wrong space-group symbol: " + Trim(symbol) + " is not allowed";
    std::vector<std::string> dirs;
    if (Trim(rest).find(' ') != std::string::npos) {
        std::istringstream in(rest);
        for (std::string w; in >> w;) dirs.push_back(w);
    } else {
        // Without blanks: a rotation with its screw digit and "/plane", or a plane.
        const std::string r = Trim(rest);
        std::size_t p = 0;
        while (p < r.size()) {
            std::string t;
            if (r[p] == '-') t += r[p++];
            if (p < r.size() && std::isdigit(static_cast<unsigned char>(r[p]))) {
                t += r[p++];
                if (p < r.size() && std::isdigit(static_cast<unsigned char>(r[p])) && r[p] < t.back()) t += r[p++];
                if (p + 1 < r.size() && r[p] == '/') {
                    t += r.substr(p, 2);
                    p += 2;
                }
            } else if (p < r.size()) {
                t += r[p++];
            }
            dirs.push_back(t);
        }
    }
    for (const std::string& d : dirs) {
        const std::string why = check_direction(d);
        if (!why.empty()) return why;
    }
    return " Wrong space-group symbol: " + Trim(symbol) + " is not allowed";
}

}  // namespace hxl
