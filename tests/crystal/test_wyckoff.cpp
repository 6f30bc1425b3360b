// Asymmetric units and special Wyckoff positions of every tabulated setting,
// checked against the group's own operators rather than against their source.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <set>
#include <sstream>

#include "crystal/sg_setting_table.h"
#include "crystal/sg_wyckoff_table.h"
#include "crystal/space_group.h"

namespace {

using namespace hxl;

struct Point {
    double x[3];
};

Point apply(const SEITZ_TYPE& s, const Point& p) {
    Point q;
    for (int i = 0; i < 3; ++i) {
        double v = static_cast<double>(s.t[i]) / SEITZ_DEN;
        for (int j = 0; j < 3; ++j) v += s.r[i][j] * p.x[j];
        q.x[i] = v - std::floor(v);
    }
    return q;
}

// Equal modulo lattice translations.
bool same_site(const Point& a, const Point& b) {
    for (int i = 0; i < 3; ++i) {
        const double d = a.x[i] - b.x[i];
        if (std::fabs(d - std::round(d)) > 1e-7) return false;
    }
    return true;
}

int distinct_images(const std::vector<SEITZ_TYPE>& ops, const Point& p) {
    std::vector<Point> seen;
    for (const SEITZ_TYPE& g : ops) {
        const Point q = apply(g, p);
        bool known = false;
        for (const Point& s : seen)
            if (same_site(s, q)) known = true;
        if (!known) seen.push_back(q);
    }
    return static_cast<int>(seen.size());
}

int fixing_ops(const std::vector<SEITZ_TYPE>& ops, const Point& p, bool improper_only = false) {
    int n = 0;
    for (const SEITZ_TYPE& g : ops)
        if (same_site(apply(g, p), p) && (!improper_only || Seitz_Det(g) < 0)) ++n;
    return n;
}

// The order of a point group named by an oriented site-symmetry symbol.
int site_order(const std::string& oriented) {
    static const std::map<std::string, int> order = {
        {"1", 1},     {"-1", 2},    {"2", 2},     {"m", 2},      {"2/m", 4},   {"222", 4},   {"mm2", 4},
        {"m2m", 4},   {"2mm", 4},   {"mmm", 8},   {"4", 4},      {"-4", 4},    {"4/m", 8},   {"422", 8},
        {"4mm", 8},   {"-42m", 8},  {"-4m2", 8},  {"4/mmm", 16}, {"3", 3},     {"-3", 6},    {"32", 6},
        {"3m", 6},    {"-3m", 12},  {"6", 6},     {"-6", 6},     {"6/m", 12},  {"622", 12},  {"6mm", 12},
        {"-6m2", 12}, {"-62m", 12}, {"6/mmm", 24}, {"23", 12},   {"m-3", 24},  {"432", 24},  {"-43m", 24},
        {"m-3m", 48}};
    std::string s;
    for (char c : oriented)
        if (c != '.') s += c;
    const auto it = order.find(s);
    return it == order.end() ? -1 : it->second;
}

Point on_position(const SG_WYCKOFF_ROW& w, std::mt19937& rng) {
    std::uniform_real_distribution<double> u(0.05, 0.95);
    const double par[3] = {u(rng), u(rng), u(rng)};
    Point p;
    for (int i = 0; i < 3; ++i) {
        p.x[i] = static_cast<double>(w.t[i]) / SEITZ_DEN;
        for (int j = 0; j < 3; ++j) p.x[i] += w.r[3 * i + j] * par[j];
    }
    return p;
}

TEST(Wyckoff, TablesLineUpWithTheSettings) {
    int last = -1;
    for (int i = 0; i < sg_setting_count; ++i) EXPECT_STREQ(sg_asu_rows[i].hm, sg_setting_rows[i].hm) << i;
    std::map<int, std::string> letters;
    for (int i = 0; i < sg_wyckoff_count; ++i) {
        const SG_WYCKOFF_ROW& w = sg_wyckoff_rows[i];
        ASSERT_GE(w.setting, last);
        ASSERT_LT(w.setting, sg_setting_count);
        last = w.setting;
        letters[w.setting] += w.letter;
    }
    // Letters run from a without gaps.
    for (const auto& [row, text] : letters)
        for (std::size_t k = 0; k < text.size(); ++k)
            EXPECT_EQ(text[k], static_cast<char>('a' + k)) << sg_setting_rows[row].hm;
    EXPECT_EQ(letters.count(Find_Setting_By_Symbol("P 1")), 0u);
    EXPECT_EQ(letters[Find_Setting_By_Symbol("P -1")], "abcdefgh");
    EXPECT_EQ(letters[Find_Setting_By_Symbol("P m m m")], "abcdefghijklmnopqrstuvwxyz");
}

TEST(Wyckoff, EveryPositionHasItsMultiplicityAndSiteSymmetry) {
    std::mt19937 rng(20251122);
    int checked = 0;
    int previous_setting = -1, previous_mult = 0;
    for (int i = 0; i < sg_wyckoff_count; ++i) {
        const SG_WYCKOFF_ROW& w = sg_wyckoff_rows[i];
        const std::vector<SEITZ_TYPE>& ops = Tabulated_Operators(w.setting);
        const int order = static_cast<int>(ops.size());
        const std::string name = std::string(sg_setting_rows[w.setting].hm) + " " + sg_setting_rows[w.setting].choice +
                                 " " + std::to_string(w.multiplicity) + w.letter;
        ASSERT_GT(order, 0) << name;
        ASSERT_EQ(order % w.multiplicity, 0) << name;
        ASSERT_LT(w.multiplicity, order) << name;
        // Letters go with rising multiplicity.
        if (w.setting == previous_setting) {
            EXPECT_GE(w.multiplicity, previous_mult) << name;
        }
        previous_setting = w.setting;
        previous_mult = w.multiplicity;
        for (int trial = 0; trial < 2; ++trial) {
            const Point p = on_position(w, rng);
            EXPECT_EQ(distinct_images(ops, p), w.multiplicity) << name;
            EXPECT_EQ(fixing_ops(ops, p), order / w.multiplicity) << name;
            // Half the site's operators are improper when its symbol names a mirror or a rotoinversion.
            const bool improper = std::string(w.site_symmetry).find_first_of("m-") != std::string::npos;
            EXPECT_EQ(fixing_ops(ops, p, true), improper ? order / w.multiplicity / 2 : 0) << name << " " << w.site_symmetry;
        }
        EXPECT_EQ(site_order(w.site_symmetry), order / w.multiplicity) << name << " " << w.site_symmetry;
        ++checked;
    }
    EXPECT_GT(checked, 3000);
}

TEST(Wyckoff, AGeneralPointIsOnNoSpecialPosition) {
    std::mt19937 rng(7);
    std::uniform_real_distribution<double> u(0.0, 1.0);
    for (int row = 0; row < sg_setting_count; ++row) {
        const std::vector<SEITZ_TYPE>& ops = Tabulated_Operators(row);
        const Point p{{u(rng), u(rng), u(rng)}};
        EXPECT_EQ(fixing_ops(ops, p), 1) << sg_setting_rows[row].hm;
        EXPECT_EQ(distinct_images(ops, p), static_cast<int>(ops.size())) << sg_setting_rows[row].hm;
    }
}

// The box of the listing: "0 <= x <= 1/8;  0 <= y <= 1/8;  0 <= z <= 1".
bool read_box(const std::string& text, double upper[3]) {
    std::istringstream in(text);
    for (int i = 0; i < 3; ++i) {
        std::string zero, le1, axis, le2, frac;
        if (!(in >> zero >> le1 >> axis >> le2 >> frac)) return false;
        if (zero != "0" || le1 != "<=" || le2 != "<=" || axis != std::string(1, static_cast<char>('x' + i))) return false;
        if (!frac.empty() && frac.back() == ';') frac.pop_back();
        const auto slash = frac.find('/');
        upper[i] = slash == std::string::npos ? std::stod(frac)
                                              : std::stod(frac.substr(0, slash)) / std::stod(frac.substr(slash + 1));
    }
    return true;
}

TEST(Wyckoff, TheAsymmetricUnitHoldsAnImageOfEveryPoint) {
    std::mt19937 rng(11);
    std::uniform_real_distribution<double> u(0.0, 1.0);
    for (int row = 0; row < sg_setting_count; ++row) {
        SPACE_GROUP_TYPE sg;
        Set_SpaceGroup(sg_setting_rows[row].hall, sg, {}, "HAL");
        ASSERT_FALSE(ERR_Symm) << sg_setting_rows[row].hall << ERR_Symm_Mess;
        double upper[3];
        ASSERT_TRUE(read_box(sg.asym_unit, upper)) << sg.hm_symbol << ": " << sg.asym_unit;
        const double volume = upper[0] * upper[1] * upper[2] * sg.multiplicity;
        EXPECT_GE(volume, 1.0 - 1e-9) << sg.hm_symbol;
        EXPECT_LE(volume, 6.0 + 1e-9) << sg.hm_symbol;
        const std::vector<SEITZ_TYPE> ops(sg.seitz.begin(), sg.seitz.end());
        for (int k = 0; k < 200; ++k) {
            const Point p{{u(rng), u(rng), u(rng)}};
            bool inside = false;
            for (const SEITZ_TYPE& g : ops) {
                const Point q = apply(g, p);
                bool in = true;
                for (int i = 0; i < 3; ++i)
                    if (q.x[i] > upper[i] + 1e-12) in = false;
                if (in) inside = true;
            }
            ASSERT_TRUE(inside) << sg.hm_symbol << " " << sg.asym_unit;
        }
        // The record's orbits: one triplet per coset of the centring, all different.
        const int cosets = static_cast<int>(sg.centring.translations.size()) + 1;
        for (const WYCKOFF_POS_TYPE& w : sg.wyckoff) {
            EXPECT_EQ(w.coordinates.size() * cosets, w.multiplicity) << sg.hm_symbol << " " << w.letter;
            std::set<std::string> texts(w.coordinates.begin(), w.coordinates.end());
            EXPECT_EQ(static_cast<int>(texts.size()), w.coordinates.size()) << sg.hm_symbol << " " << w.letter;
        }
    }
}

std::string listing(const std::string& symbol) {
    SPACE_GROUP_TYPE sg;
    Set_SpaceGroup(symbol, sg);
    EXPECT_FALSE(ERR_Symm) << symbol << ERR_Symm_Mess;
    std::ostringstream out;
    List_Space_Group(sg, out);
    return out.str();
}

void expect_lines(const std::string& text, const std::vector<std::string>& wanted) {
    for (const std::string& w : wanted) EXPECT_NE(text.find(w), std::string::npos) << "missing: " << w << "\n" << text;
}

TEST(Wyckoff, ListingsOfWellKnownGroups) {
    expect_lines(listing("P 21/c"), {" =>         Asymmetric unit: 0 <= x <= ", " => Special Wyckoff Positions for P 1 21/c 1",
                                     "      2a  -1             (0,0,0)  (0,1/2,1/2)\n",
                                     "      2d  -1             (1/2,0,1/2)  (1/2,1/2,0)\n"});
    expect_lines(listing("F d -3 m"),
                 {" =>         Asymmetric unit: 0 <= x <= 1/8;  0 <= y <= 1/8;  0 <= z <= 1",
                  "(0,0,0)+  (0,1/2,1/2)+  (1/2,0,1/2)+  (1/2,1/2,0)+", "      8a  -43m           (1/8,1/8,1/8)  ",
                  "     16c  .-3m           (0,0,0)  ", "     32e  .3m            (x,x,x)  ",
                  "     48f  2.mm           (x,1/8,1/8)  ", "     96g  ..m            (x,x,z)  ",
                  "     96h  ..2            (0,y,-y)  "});
    const std::string fd3m1 = listing("F d -3 m:1");
    expect_lines(fd3m1, {"      8a  -43m           (0,0,0)  ", "      8b  -43m           (1/2,1/2,1/2)  ",
                         "     16c  .-3m           (1/8,1/8,1/8)  ", "     16d  .-3m           (5/8,5/8,5/8)  ",
                         "     48f  2.mm           (x,0,0)  "});
    expect_lines(listing("R -3 m"), {"      3a  -3m            (0,0,0)\n", "      3b  -3m            (0,0,1/2)\n",
                                     "      6c  3m             (0,0,z)  (0,0,-z)\n", "      9e  .2/m           (1/2,0,0)  ",
                                     "     18f  .2             (x,0,0)  ", "     18h  .m             (x,-x,z)  ",
                                     "(0,0,0)+  (1/3,2/3,2/3)+  (2/3,1/3,1/3)+"});
    expect_lines(listing("R -3 m:R"), {"      1a  -3m            (0,0,0)\n", "      1b  -3m            (1/2,1/2,1/2)\n",
                                       "      2c  3m             (x,x,x)  (-x,-x,-x)\n", "      6h  .m             (x,x,z)  "});
    expect_lines(listing("I 41/a m d"), {"      4a  -4m2           (0,3/4,1/8)  ", "      8c  .2/m.          (0,0,0)  ",
                                         "      8e  2mm.           (0,1/4,z)  ", "     16f  .2.            (x,0,0)  ",
                                         "     16h  .m.            (0,y,z)  "});
    expect_lines(listing("I 41/a m d:1"), {"      4a  -4m2           (0,0,0)  "});
    // A group with no special position lists none.
    EXPECT_EQ(listing("P 21 21 21").find("Special Wyckoff"), std::string::npos);
    EXPECT_NE(listing("P 21 21 21").find("Asymmetric unit:"), std::string::npos);
}

TEST(Wyckoff, SettingsOfOneGroupAgree) {
    // Hexagonal axes triple the cell of rhombohedral axes: same letters, three times the multiplicity.
    SPACE_GROUP_TYPE h, r;
    Set_SpaceGroup("R -3 m:H", h);
    Set_SpaceGroup("R -3 m:R", r);
    ASSERT_EQ(h.wyckoff.size(), r.wyckoff.size());
    for (int i = 1; i <= h.wyckoff.size(); ++i) {
        EXPECT_EQ(h.wyckoff(i).letter, r.wyckoff(i).letter);
        EXPECT_EQ(h.wyckoff(i).multiplicity, 3 * r.wyckoff(i).multiplicity);
        EXPECT_EQ(h.wyckoff(i).site_symmetry, r.wyckoff(i).site_symmetry);
    }
    // Another unique axis permutes the site symbols' directions, not the letters.
    SPACE_GROUP_TYPE b, c;
    Set_SpaceGroup("C 1 2/m 1", b);
    Set_SpaceGroup("A 1 1 2/m", c);
    ASSERT_EQ(b.wyckoff.size(), c.wyckoff.size());
    for (int i = 1; i <= b.wyckoff.size(); ++i) EXPECT_EQ(b.wyckoff(i).multiplicity, c.wyckoff(i).multiplicity);
    // Setting_Change carries the tables along.
    SPACE_GROUP_TYPE o1;
    Setting_Change(h, "R", o1);
    ASSERT_FALSE(ERR_Symm) << ERR_Symm_Mess;
    EXPECT_EQ(o1.asym_unit, r.asym_unit);
    EXPECT_EQ(o1.wyckoff.size(), r.wyckoff.size());
}

TEST(Wyckoff, UntabulatedAndFixedGroupsHaveNone) {
    // A P 2 whose axis is along [1 1 0]: a group no table holds.
    SPACE_GROUP_TYPE sg;
    Set_SpaceGroup("", sg, {"y,x,-z"}, "GEN");
    ASSERT_FALSE(ERR_Symm) << ERR_Symm_Mess;
    EXPECT_EQ(sg.setting_choice, "Non-standard Setting");
    EXPECT_TRUE(sg.asym_unit.empty());
    EXPECT_EQ(sg.wyckoff.size(), 0);
    std::ostringstream out;
    List_Space_Group(sg, out);
    EXPECT_EQ(out.str().find("Special Wyckoff"), std::string::npos);
    EXPECT_EQ(out.str().find("Asymmetric unit"), std::string::npos);
    // Generators that close to a tabulated group get its tables.
    Set_SpaceGroup("", sg, {"-x,y+1/2,-z+1/2", "-x,-y,-z"}, "GEN");
    ASSERT_FALSE(ERR_Symm) << ERR_Symm_Mess;
    EXPECT_EQ(sg.number, 14);
    EXPECT_EQ(sg.wyckoff.size(), 4);
    Set_SpaceGroup("mine", sg, {"x,y,z", "-x,-y,-z"}, "FIX");
    ASSERT_FALSE(ERR_Symm) << ERR_Symm_Mess;
    EXPECT_EQ(sg.wyckoff.size(), 0);
    EXPECT_TRUE(sg.asym_unit.empty());
}

}  // namespace
