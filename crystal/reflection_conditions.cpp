// Reflection conditions read from the operators: integral (centring), zonal
// (glide planes) and serial (screw axes), each matched to a catalogue of rules.
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <vector>

#include "crystal/reflections.h"

namespace hxl {

namespace {

const char* const region_texts[14] = {
    "hkl: h >=0, k >=0, l >=0 with h >=k  and k >=l",
    "hkl: h > l, k > l, l >=0  and   hkk: k >=0, h >=k",
    "hkl: h >=0, k >=0, l >=0 with h >=k",
    "hkl: h > 0, k > 0, l >=0   and  0kl: k >=0, l >=0 ",
    "hkl: h >=0  h >=k  and   hhl: h >=0, l >=0 ",
    "hkl: h >=0, h >=k >0   and  h0l: h >=0, l >=0",
    "hkl: h+k>0, l>0    hk0: h>0, k>=0",
    "hkl: h >=0, k >=0, l >=0 and h >=k",
    "hkl: h >=0, l >=0 with k >=0 if h =0 and k >0 if h >0",
    "hkl: h >=0, k >=0, l >=0",
    "hkl: k >=0, l >=0   h0l: h >=0",
    "hkl: h >=0, l >=0   0kl: l >=0",
    "hkl: k >=0, l >=0   hk0: h >=0",
    "hkl: l >=0    hk0: h >=0    0k0: k >=0"};

// True when hkl is extinguished by a centring translation alone.
bool integral_absent(const SPACE_GROUP_TYPE& sg, const int v[3]) {
    for (const SEITZ_TYPE& c : sg.centring.translations)
        if (Mod_Den(v[0] * c.t[0] + v[1] * c.t[1] + v[2] * c.t[2]) != 0) return true;
    return false;
}

struct RULE {
    int a, b, mod;  // a m + b n = 0 modulo mod
};

// The first rule of the catalogue whose absences (those a centring does not
// already explain) are exactly the observed ones; false when none are observed.
bool match_rule(const SPACE_GROUP_TYPE& sg, const int u[3], const int w[3], bool serial, RULE& found, bool& unmatched) {
    static const RULE zonal[] = {{1, 0, 2}, {0, 1, 2}, {1, 1, 2}, {1, 1, 4}, {1, 0, 4}, {0, 1, 4}, {2, 1, 4}, {1, 2, 4}};
    static const RULE axial[] = {{1, 0, 2}, {1, 0, 3}, {1, 0, 4}, {1, 0, 6}};
    const RULE* rules = serial ? axial : zonal;
    const int nrules = serial ? 4 : 8;
    const int span = 12;
    bool any = false;
    unmatched = false;
    bool ok[8];
    for (int i = 0; i < nrules; ++i) ok[i] = true;
    for (int m = -span; m <= span; ++m)
        for (int n = serial ? 0 : -span; n <= (serial ? 0 : span); ++n) {
            const int v[3] = {m * u[0] + n * w[0], m * u[1] + n * w[1], m * u[2] + n * w[2]};
            // The rows of a zone belong to the serial conditions.
            if (!serial && (m == 0 || n == 0)) continue;
            if ((v[0] == 0 && v[1] == 0 && v[2] == 0) || integral_absent(sg, v)) continue;
            const bool absent = Hkl_Absent(sg, v[0], v[1], v[2]);
            any = any || absent;
            for (int i = 0; i < nrules; ++i) {
                const bool rule_absent = (((rules[i].a * m + rules[i].b * n) % rules[i].mod) + rules[i].mod) % rules[i].mod != 0;
                if (rule_absent != absent) ok[i] = false;
            }
        }
    if (!any) return false;
    for (int i = 0; i < nrules; ++i)
        if (ok[i]) {
            found = rules[i];
            return true;
        }
    unmatched = true;
    return true;
}

std::string term(int c, const char* name, bool first) {
    if (c == 0) return "";
    std::string s = c < 0 ? "-" : (first ? "" : "+");
    if (std::abs(c) != 1) s += std::to_string(std::abs(c));
    return s + name;
}

struct ZONE {
    const char* label;
    int u[3], w[3];
    const char *mname, *nname;
};

void section(const SPACE_GROUP_TYPE& sg, std::ostream& o, const ZONE* zones, int nz, bool serial, const char* none) {
    int count = 0;
    for (int z = 0; z < nz; ++z) {
        RULE r{};
        bool unmatched = false;
        if (!match_rule(sg, zones[z].u, zones[z].w, serial, r, unmatched)) continue;
        ++count;
        std::string cond;
        if (unmatched) cond = "absences that fit no simple rule";
        else cond = term(r.a, zones[z].mname, true) + term(r.b, zones[z].nname, r.a == 0) + "=" + std::to_string(r.mod) + "n";
        char buf[160];
        std::snprintf(buf, sizeof buf, "     #%3d :  %-10s  %s", count, zones[z].label, cond.c_str());
        o << buf << "\n";
    }
    if (count == 0) o << none << "\n";
}

}  // namespace

std::string Laue_Region_Text(const SPACE_GROUP_TYPE& sg) {
    const std::string& l = sg.laue_class;
    if (l == "m-3m") return region_texts[0];
    if (l == "m-3") return region_texts[1];
    if (l == "6/mmm") return region_texts[2];
    if (l == "6/m") return region_texts[3];
    if (l == "-3m1" || l == "-3m R") return region_texts[4];
    if (l == "-31m") return region_texts[5];
    if (l == "-3" || l == "-3 R") return region_texts[6];
    if (l == "4/mmm") return region_texts[7];
    if (l == "4/m") return region_texts[8];
    if (l == "mmm") return region_texts[9];
    if (l == "2/m") {
        for (const SEITZ_TYPE& s : sg.seitz) {
            const int tr = s.r[0][0] + s.r[1][1] + s.r[2][2];
            if (tr == -1 && s.r[0][0] == 1) return region_texts[11];
            if (tr == -1 && s.r[2][2] == 1) return region_texts[12];
        }
        return region_texts[10];
    }
    return region_texts[13];
}

void Write_Reflection_Conditions(const SPACE_GROUP_TYPE& sg, std::ostream& o) {
    o << "\n >>> Integral reflections conditions for centred lattices:\n";
    o << " ----------------------------------------------------------\n\n";
    if (sg.centring.translations.empty()) {
        o << "     =====>>> no general reflection condition\n";
    } else {
        int i = 0;
        std::vector<std::string> done;
        for (const SEITZ_TYPE& c : sg.centring.translations) {
            // h t1 + k t2 + l t3 integral, written with the smallest common denominator.
            const int g = std::gcd(std::gcd(std::gcd(c.t[0], c.t[1]), c.t[2]), SEITZ_DEN);
            const int d = SEITZ_DEN / g;
            int co[3];
            for (int j = 0; j < 3; ++j) {
                co[j] = c.t[j] / g;
                if (2 * co[j] > d) co[j] -= d;
            }
            int neg = 0, pos = 0;
            for (int x : co) (x < 0 ? neg : (x > 0 ? pos : neg)) += x != 0 ? 1 : 0;
            if (neg > pos)
                for (int& x : co) x = -x;
            const std::string cond = term(co[0], "h", true) + term(co[1], "k", co[0] == 0) +
                                     term(co[2], "l", co[0] == 0 && co[1] == 0) + "=" + std::to_string(d) + "n";
            bool seen = false;
            for (const auto& x : done) seen = seen || x == cond;
            if (seen) continue;
            done.push_back(cond);
            char buf[160];
            std::snprintf(buf, sizeof buf, "     #%3d :  (h k l)     %s", ++i, cond.c_str());
            o << buf << "\n";
        }
    }
    // The zones and rows where each crystal system has glide planes and screw axes.
    static const ZONE k0kl = {"(0 k l)", {0, 1, 0}, {0, 0, 1}, "k", "l"}, kh0l = {"(h 0 l)", {1, 0, 0}, {0, 0, 1}, "h", "l"},
                      khk0 = {"(h k 0)", {1, 0, 0}, {0, 1, 0}, "h", "k"}, khhl = {"(h h l)", {1, 1, 0}, {0, 0, 1}, "h", "l"},
                      khml = {"(h -h l)", {1, -1, 0}, {0, 0, 1}, "h", "l"};
    static const ZONE rh00 = {"(h 0 0)", {1, 0, 0}, {0, 0, 0}, "h", ""}, r0k0 = {"(0 k 0)", {0, 1, 0}, {0, 0, 0}, "k", ""},
                      r00l = {"(0 0 l)", {0, 0, 1}, {0, 0, 0}, "l", ""}, rhh0 = {"(h h 0)", {1, 1, 0}, {0, 0, 0}, "h", ""},
                      rhhh = {"(h h h)", {1, 1, 1}, {0, 0, 0}, "h", ""};
    std::vector<ZONE> zones, axes;
    const std::string& cs = sg.crystal_system;
    const bool rhomb_axes = sg.lattice_symbol == "R" && sg.centring.translations.empty();
    if (cs == "Monoclinic" || cs == "Orthorhombic") {
        zones = {k0kl, kh0l, khk0};
        axes = {rh00, r0k0, r00l};
    } else if (cs == "Tetragonal") {
        zones = {khk0, k0kl, khhl};
        axes = {r00l, r0k0, rhh0};
    } else if ((cs == "Trigonal" || cs == "Hexagonal") && !rhomb_axes) {
        zones = {khml, khhl};
        axes = {r00l, rh00};
    } else if (cs == "Trigonal") {
        zones = {khhl};
        axes = {rhhh};
    } else if (cs == "Cubic") {
        zones = {k0kl, khhl};
        axes = {rh00};
    }
    o << "\n >>> Zonal reflections conditions for glide planes:\n";
    o << " ---------------------------------------------------\n\n";
    section(sg, o, zones.data(), static_cast<int>(zones.size()), false, "     =====>>> no zonal reflection condition");
    o << "\n >>> Serial reflections conditions for screw axes:\n";
    o << " ---------------------------------------------------\n\n";
    section(sg, o, axes.data(), static_cast<int>(axes.size()), true, "     =====>>> no serial reflection condition");
}

}  // namespace hxl
