// The asymmetric unit and the special Wyckoff positions of a tabulated setting.
#include <numeric>
#include <vector>

#include "crystal/sg_setting_table.h"
#include "crystal/sg_wyckoff_table.h"
#include "crystal/space_group.h"

namespace hxl {

namespace {

std::string fraction24(int n) {
    if (n == 0) return "0";
    const int g = std::gcd(n, SEITZ_DEN);
    if (g == SEITZ_DEN) return std::to_string(n / SEITZ_DEN);
    return std::to_string(n / g) + "/" + std::to_string(SEITZ_DEN / g);
}

std::string asu_text(const SG_ASU_ROW& a) {
    static const char* const axis[3] = {"x", "y", "z"};
    std::string s;
    for (int i = 0; i < 3; ++i)
        s += std::string(i ? ";  " : "") + "0 <= " + axis[i] + " <= " + fraction24(a.upper[i]);
    return s;
}

int translation_sum(const SEITZ_TYPE& s) { return s.t[0] + s.t[1] + s.t[2]; }

// The orbit of a representative triplet: one image per coset of the centring,
// each written with the smallest translations the centring allows.
Array1<std::string> orbit(const SEITZ_TYPE& rep, const SPACE_GROUP_TYPE& sg) {
    std::vector<SEITZ_TYPE> shifts(1);  // the null translation, then the centring ones
    for (const SEITZ_TYPE& c : sg.centring.translations) shifts.push_back(c);
    std::vector<SEITZ_TYPE> kept;
    auto seen = [&](const SEITZ_TYPE& img) {
        for (const SEITZ_TYPE& c : shifts) {
            SEITZ_TYPE moved = img;
            for (int i = 0; i < 3; ++i) moved.t[i] = Mod_Den(img.t[i] + c.t[i]);
            for (const SEITZ_TYPE& k : kept)
                if (k == moved) return true;
        }
        return false;
    };
    kept.push_back(Seitz_Normal(rep));
    for (const SEITZ_TYPE& g : sg.seitz) {
        const SEITZ_TYPE img = Seitz_Normal(Seitz_Product(g, rep));
        if (seen(img)) continue;
        SEITZ_TYPE best = img;
        for (const SEITZ_TYPE& c : shifts) {
            SEITZ_TYPE moved = img;
            for (int i = 0; i < 3; ++i) moved.t[i] = Mod_Den(img.t[i] + c.t[i]);
            if (translation_sum(moved) < translation_sum(best)) best = moved;
        }
        kept.push_back(best);
    }
    Array1<std::string> out(static_cast<int>(kept.size()));
    for (int i = 1; i <= out.size(); ++i) out(i) = Format_Operator(Seitz_To_Oper(kept[static_cast<std::size_t>(i - 1)]));
    return out;
}

}  // namespace

void Fill_Wyckoff_Positions(int row, SPACE_GROUP_TYPE& sg) {
    sg.asym_unit.clear();
    sg.wyckoff.resize(0);
    if (row < 0 || row >= sg_setting_count) return;
    sg.asym_unit = asu_text(sg_asu_rows[row]);
    std::vector<const SG_WYCKOFF_ROW*> mine;
    for (int i = 0; i < sg_wyckoff_count; ++i)
        if (sg_wyckoff_rows[i].setting == row) mine.push_back(&sg_wyckoff_rows[i]);
    sg.wyckoff.resize(static_cast<int>(mine.size()));
    for (int i = 1; i <= sg.wyckoff.size(); ++i) {
        const SG_WYCKOFF_ROW& w = *mine[static_cast<std::size_t>(i - 1)];
        WYCKOFF_POS_TYPE& p = sg.wyckoff(i);
        p.multiplicity = w.multiplicity;
        p.letter = w.letter;
        p.site_symmetry = w.site_symmetry;
        for (int a = 0; a < 3; ++a) {
            for (int b = 0; b < 3; ++b) p.triplet.r[a][b] = w.r[3 * a + b];
            p.triplet.t[a] = Mod_Den(w.t[a]);
        }
        p.coordinates = orbit(p.triplet, sg);
    }
}

}  // namespace hxl
