// Crystal system, Laue class, point group, lattice and centre, read from the operators.
#include <algorithm>
#include <cstdlib>
#include <numeric>

#include "crystal/space_group.h"

namespace hxl {

namespace {

struct Rot {
    int r[3][3];
};

bool same_rot(const int a[3][3], const int b[3][3]) {
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            if (a[i][j] != b[i][j]) return false;
    return true;
}

// The direction of a twofold axis (sign +1) or of a mirror normal (sign -1):
// a non-null column of I + sign R, reduced and made positive.
void direction(const int r[3][3], int sign, int v[3]) {
    for (int c = 0; c < 3; ++c) {
        int col[3];
        for (int i = 0; i < 3; ++i) col[i] = (i == c ? 1 : 0) + sign * r[i][c];
        if (col[0] == 0 && col[1] == 0 && col[2] == 0) continue;
        const int g = std::gcd(std::gcd(std::abs(col[0]), std::abs(col[1])), std::abs(col[2]));
        int s = 1;
        for (int i = 0; i < 3; ++i)
            if (col[i] != 0) {
                s = col[i] < 0 ? -1 : 1;
                break;
            }
        for (int i = 0; i < 3; ++i) v[i] = s * col[i] / g;
        return;
    }
    v[0] = v[1] = v[2] = 0;
}

// [100], [010] and [110]: the first set of side directions of a hexagonal cell.
bool primary_hex(const int v[3]) {
    return v[2] == 0 && ((v[0] == 1 && v[1] == 0) || (v[0] == 0 && v[1] == 1) || (v[0] == 1 && v[1] == 1));
}

bool along_cell_axis(const int v[3], int axis) {
    for (int i = 0; i < 3; ++i)
        if ((i == axis) != (v[i] != 0)) return false;
    return true;
}

}  // namespace

void Fill_Group_Descriptors(SPACE_GROUP_TYPE& sg) {
    std::vector<Rot> pg;
    sg.centring.translations.clear();
    bool centric = false, at_origin = false;
    SEITZ_TYPE inv_op;
    for (const SEITZ_TYPE& s : sg.seitz) {
        bool is_id = true, is_inv = true;
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j) {
                if (s.r[i][j] != (i == j ? 1 : 0)) is_id = false;
                if (s.r[i][j] != (i == j ? -1 : 0)) is_inv = false;
            }
        if (is_id && (s.t[0] || s.t[1] || s.t[2])) sg.centring.translations.push_back(s);
        if (is_inv) {
            if (!centric) inv_op = s;
            centric = true;
            if (s.t[0] == 0 && s.t[1] == 0 && s.t[2] == 0) at_origin = true;
        }
        bool known = false;
        for (const Rot& r : pg)
            if (same_rot(r.r, s.r)) known = true;
        if (!known) {
            Rot r;
            std::copy(&s.r[0][0], &s.r[0][0] + 9, &r.r[0][0]);
            pg.push_back(r);
        }
    }
    sg.multiplicity = sg.seitz.size();

    // Counts of the kinds of rotation, from determinant and trace.
    int n2 = 0, nm = 0, n3 = 0, n4 = 0, nb4 = 0, n6 = 0, nb6 = 0;
    bool rhomb_axes = false;
    int dirs2[48][3], dirsm[48][3];
    int k2 = 0, km = 0;
    for (const Rot& r : pg) {
        const int det = r.r[0][0] * (r.r[1][1] * r.r[2][2] - r.r[1][2] * r.r[2][1]) -
                        r.r[0][1] * (r.r[1][0] * r.r[2][2] - r.r[1][2] * r.r[2][0]) +
                        r.r[0][2] * (r.r[1][0] * r.r[2][1] - r.r[1][1] * r.r[2][0]);
        const int tr = r.r[0][0] + r.r[1][1] + r.r[2][2];
        const int t = det * tr;  // trace of the proper part
        if (t == -1) {
            if (det > 0) {
                ++n2;
                if (k2 < 48) direction(r.r, 1, dirs2[k2++]);
            } else {
                ++nm;
                if (km < 48) direction(r.r, -1, dirsm[km++]);
            }
        } else if (t == 0) {
            if (det > 0) ++n3;
            bool perm = true;  // a threefold permuting the axes: rhombohedral axes
            for (int i = 0; i < 3; ++i)
                for (int j = 0; j < 3; ++j)
                    if (r.r[i][j] * det < 0) perm = false;
            if (perm) rhomb_axes = true;
        } else if (t == 1) {
            (det > 0 ? n4 : nb4) += 1;
        } else if (t == 2) {
            (det > 0 ? n6 : nb6) += 1;
        }
    }
    const int order = static_cast<int>(pg.size());
    const int laue_order = centric ? order : 2 * order;
    auto any_primary = [](int (*d)[3], int n) {
        for (int i = 0; i < n; ++i)
            if (primary_hex(d[i])) return true;
        return false;
    };
    auto any_axis = [](int (*d)[3], int n, int axis) {
        for (int i = 0; i < n; ++i)
            if (along_cell_axis(d[i], axis)) return true;
        return false;
    };
    std::string sys, laue, pgn;
    const bool rhomb = rhomb_axes || sg.lattice_symbol == "R";
    if (n3 == 8) {
        sys = "Cubic";
        laue = laue_order == 24 ? "m-3" : "m-3m";
        if (order == 12) pgn = "23";
        else if (order == 24) pgn = centric ? "m-3" : (n4 ? "432" : "-43m");
        else pgn = "m-3m";
    } else if (n6 || nb6) {
        sys = "Hexagonal";
        laue = laue_order == 12 ? "6/m" : "6/mmm";
        if (order == 6) pgn = n6 ? "6" : "-6";
        else if (order == 12) {
            if (centric) pgn = "6/m";
            else if (n2 == 7) pgn = "622";
            else if (nm == 6) pgn = "6mm";
            else pgn = any_primary(dirs2, k2) ? "-62m" : "-6m2";
        } else pgn = "6/mmm";
    } else if (n3 == 2) {
        sys = "Trigonal";
        const bool prim = any_primary(dirs2, k2) || any_primary(dirsm, km);
        if (laue_order == 6) laue = rhomb ? "-3 R" : "-3";
        else laue = rhomb ? "-3m R" : (prim ? "-3m1" : "-31m");
        if (order == 3) pgn = "3";
        else if (order == 6) {
            if (centric) pgn = "-3";
            else if (n2 == 3) pgn = (rhomb || prim) ? "32" : "312";
            else pgn = (rhomb || prim) ? "3m" : "31m";
        } else pgn = (rhomb || prim) ? "-3m" : "-31m";
    } else if (n4 || nb4) {
        sys = "Tetragonal";
        laue = laue_order == 8 ? "4/m" : "4/mmm";
        if (order == 4) pgn = n4 ? "4" : "-4";
        else if (order == 8) {
            if (centric) pgn = "4/m";
            else if (n2 == 5) pgn = "422";
            else if (nm == 4) pgn = "4mm";
            else pgn = (any_axis(dirs2, k2, 0) || any_axis(dirs2, k2, 1)) ? "-42m" : "-4m2";
        } else pgn = "4/mmm";
    } else if (n2 + nm >= 3) {
        sys = "Orthorhombic";
        laue = "mmm";
        if (order == 8) pgn = "mmm";
        else if (n2 == 3) pgn = "222";
        else pgn = any_axis(dirs2, k2, 2) ? "mm2" : (any_axis(dirs2, k2, 1) ? "m2m" : "2mm");
    } else if (n2 + nm >= 1) {
        sys = "Monoclinic";
        laue = "2/m";
        pgn = order == 4 ? "2/m" : (n2 ? "2" : "m");
    } else {
        sys = "Triclinic";
        laue = "-1";
        pgn = centric ? "-1" : "1";
    }
    sg.crystal_system = sys;
    sg.laue_class = laue;
    sg.point_group = pgn;

    if (!centric) {
        sg.centrosymmetry = "Acentric";
        for (float& c : sg.centre_at) c = 0;
    } else {
        // -1 counts as at the origin when it sits there up to a lattice translation.
        for (const SEITZ_TYPE& t : sg.centring.translations) {
            SEITZ_TYPE p = inv_op;
            bool z = true;
            for (int i = 0; i < 3; ++i)
                if (Mod_Den(p.t[i] - t.t[i]) != 0) z = false;
            if (z) at_origin = true;
        }
        sg.centrosymmetry = at_origin ? "Centric (-1 at origin)" : "Centric (-1 not at origin)";
        for (int i = 0; i < 3; ++i)
            sg.centre_at[i] = at_origin ? 0.0f : static_cast<float>(inv_op.t[i]) / (2.0f * SEITZ_DEN);
    }

    // Lattice letter from the centring translations.
    struct L {
        char c;
        int n;
        int v[3][3];
    };
    static const L lat[] = {{'P', 0, {}},
                            {'A', 1, {{0, 12, 12}}},
                            {'B', 1, {{12, 0, 12}}},
                            {'C', 1, {{12, 12, 0}}},
                            {'I', 1, {{12, 12, 12}}},
                            {'R', 2, {{16, 8, 8}, {8, 16, 16}}},
                            {'R', 2, {{8, 16, 8}, {16, 8, 16}}},
                            {'F', 3, {{0, 12, 12}, {12, 0, 12}, {12, 12, 0}}}};
    char letter = 'Z';
    for (const L& l : lat) {
        if (static_cast<int>(sg.centring.translations.size()) != l.n) continue;
        bool all = true;
        for (int i = 0; i < l.n; ++i) {
            bool found = false;
            for (const SEITZ_TYPE& t : sg.centring.translations)
                if (t.t[0] == l.v[i][0] && t.t[1] == l.v[i][1] && t.t[2] == l.v[i][2]) found = true;
            if (!found) all = false;
        }
        if (all) {
            letter = l.c;
            break;
        }
    }
    sg.centring.letter = letter;
    if (sg.lattice_symbol.empty()) sg.lattice_symbol = std::string(1, letter == 'P' && rhomb_axes ? 'R' : letter);
    const char fam = sys == "Triclinic" ? 'a' : sys == "Monoclinic" ? 'm' : sys == "Orthorhombic" ? 'o'
                   : sys == "Tetragonal" ? 't' : sys == "Cubic" ? 'c' : 'h';
    char bl = sg.lattice_symbol.empty() ? letter : sg.lattice_symbol[0];
    if (fam == 'o' && (bl == 'A' || bl == 'B')) bl = 'C';  // one Bravais type for the base-centred cells
    if (fam == 'm' && (bl == 'A' || bl == 'B' || bl == 'I')) bl = 'C';
    if (fam == 'a') bl = 'P';
    sg.bravais_lattice = std::string(1, fam) + bl;
}

}  // namespace hxl
