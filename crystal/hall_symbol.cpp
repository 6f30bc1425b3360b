#include "crystal/hall_symbol.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace hxl {

namespace {

using M3 = int[3][3];

// Rotations along the cell axes, orders 1, 2, 3, 4, 6.
const int rot_x[5][3][3] = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                            {{1, 0, 0}, {0, -1, 0}, {0, 0, -1}},
                            {{1, 0, 0}, {0, 0, -1}, {0, 1, -1}},
                            {{1, 0, 0}, {0, 0, -1}, {0, 1, 0}},
                            {{1, 0, 0}, {0, 1, -1}, {0, 1, 0}}};
const int rot_y[5][3][3] = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                            {{-1, 0, 0}, {0, 1, 0}, {0, 0, -1}},
                            {{-1, 0, 1}, {0, 1, 0}, {-1, 0, 0}},
                            {{0, 0, 1}, {0, 1, 0}, {-1, 0, 0}},
                            {{0, 0, 1}, {0, 1, 0}, {-1, 0, 1}}};
const int rot_z[5][3][3] = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                            {{-1, 0, 0}, {0, -1, 0}, {0, 0, 1}},
                            {{0, -1, 0}, {1, -1, 0}, {0, 0, 1}},
                            {{0, -1, 0}, {1, 0, 0}, {0, 0, 1}},
                            {{1, -1, 0}, {1, 0, 0}, {0, 0, 1}}};
// Twofold axes along face diagonals: ' and " relative to x, y, z.
const int diag1[3][3][3] = {{{-1, 0, 0}, {0, 0, -1}, {0, -1, 0}},
                            {{0, 0, -1}, {0, -1, 0}, {-1, 0, 0}},
                            {{0, -1, 0}, {-1, 0, 0}, {0, 0, -1}}};
const int diag2[3][3][3] = {{{-1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
                            {{0, 0, 1}, {0, -1, 0}, {1, 0, 0}},
                            {{0, 1, 0}, {1, 0, 0}, {0, 0, -1}}};
const int body3[3][3] = {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}};

int order_index(int n) { return n == 1 ? 0 : n == 2 ? 1 : n == 3 ? 2 : n == 4 ? 3 : n == 6 ? 4 : -1; }

bool lattice_vectors(char c, std::vector<SEITZ_TYPE>& out) {
    auto add = [&out](int a, int b, int d) {
        SEITZ_TYPE s;
        s.t[0] = a;
        s.t[1] = b;
        s.t[2] = d;
        out.push_back(s);
    };
    switch (c) {
        case 'P': break;
        case 'A': add(0, 12, 12); break;
        case 'B': add(12, 0, 12); break;
        case 'C': add(12, 12, 0); break;
        case 'I': add(12, 12, 12); break;
        case 'R': add(16, 8, 8); add(8, 16, 16); break;
        case 'S': add(8, 8, 16); add(16, 16, 8); break;
        case 'T': add(8, 16, 8); add(16, 8, 16); break;
        case 'F': add(0, 12, 12); add(12, 0, 12); add(12, 12, 0); break;
        default: return false;
    }
    return true;
}

}  // namespace

bool Hall_Generators(const std::string& hall, std::vector<SEITZ_TYPE>& gens, std::string& message) {
    gens.clear();
    message.clear();
    std::string body = hall, shift;
    const auto par = hall.find('(');
    if (par != std::string::npos) {
        const auto close = hall.find(')', par);
        if (close == std::string::npos) {
            message = "Unbalanced brackets in Hall symbol: " + hall;
            return false;
        }
        body = hall.substr(0, par);
        shift = hall.substr(par + 1, close - par - 1);
    }
    std::istringstream in(body);
    std::vector<std::string> tok;
    for (std::string w; in >> w;) tok.push_back(w);
    if (tok.empty()) {
        message = "Blank Hall symbol";
        return false;
    }
    std::string lat = tok[0];
    bool centric = false;
    if (!lat.empty() && lat[0] == '-') {
        centric = true;
        lat.erase(0, 1);
    }
    if (lat.size() != 1 || !lattice_vectors(static_cast<char>(std::toupper(static_cast<unsigned char>(lat[0]))), gens)) {
        message = "Wrong lattice symbol in Hall symbol: " + hall;
        return false;
    }
    if (centric) {
        SEITZ_TYPE inv;
        for (int i = 0; i < 3; ++i) inv.r[i][i] = -1;
        gens.push_back(inv);
    }
    if (tok.size() < 2 || tok.size() > 5) {
        message = "Wrong number of operators in Hall symbol: " + hall;
        return false;
    }
    int prev_n = 0, prev_axis = 2;
    std::vector<SEITZ_TYPE> ops;
    for (std::size_t i = 1; i < tok.size(); ++i) {
        const std::string& w = tok[i];
        std::size_t p = 0;
        bool improper = false;
        if (p < w.size() && w[p] == '-') {
            improper = true;
            ++p;
        }
        if (p >= w.size() || order_index(w[p] - '0') < 0) {
            message = "Wrong rotation order in Hall symbol: " + hall;
            return false;
        }
        const int n = w[p++] - '0';
        int screw = 0;
        if (p < w.size() && std::isdigit(static_cast<unsigned char>(w[p]))) {
            screw = w[p++] - '0';
            if (screw >= n) {
                message = "Wrong screw component in Hall symbol: " + hall;
                return false;
            }
        }
        int axis = -1;   // 0, 1, 2 = x, y, z
        char diag = 0;   // '\'', '"' or '*'
        int tr[3] = {0, 0, 0};
        for (; p < w.size(); ++p) {
            const char c = static_cast<char>(std::tolower(static_cast<unsigned char>(w[p])));
            switch (c) {
                case 'x': axis = 0; break;
                case 'y': axis = 1; break;
                case 'z': axis = 2; break;
                case '\'': case '"': case '*': diag = c; break;
                case 'a': tr[0] += 12; break;
                case 'b': tr[1] += 12; break;
                case 'c': tr[2] += 12; break;
                case 'n': tr[0] += 12; tr[1] += 12; tr[2] += 12; break;
                case 'u': tr[0] += 6; break;
                case 'v': tr[1] += 6; break;
                case 'w': tr[2] += 6; break;
                case 'd': tr[0] += 6; tr[1] += 6; tr[2] += 6; break;
                default:
                    message = "Wrong character in Hall symbol: " + hall;
                    return false;
            }
        }
        const std::size_t k = i - 1;  // position of the operator in the symbol
        if (axis < 0 && diag == 0) {
            if (k == 0) axis = 2;
            else if (k == 1 && n == 2) {
                if (prev_n == 2 || prev_n == 4) axis = 0;
                else if (prev_n == 3 || prev_n == 6) {
                    axis = prev_axis;
                    diag = '\'';
                }
            } else if (k == 2 && n == 3) diag = '*';
            if (axis < 0 && diag == 0 && n != 1) {
                message = "Undetermined axis in Hall symbol: " + hall;
                return false;
            }
        }
        if (diag == '\'' || diag == '"') {
            if (axis < 0) axis = k == 0 ? 2 : prev_axis;
            if (n != 2) {
                message = "Only twofold axes lie along face diagonals: " + hall;
                return false;
            }
        }
        if (diag == '*' && n != 3) {
            message = "Only threefold axes lie along body diagonals: " + hall;
            return false;
        }
        SEITZ_TYPE s;
        const int oi = order_index(n);
        for (int r = 0; r < 3; ++r)
            for (int c = 0; c < 3; ++c) {
                int v;
                if (diag == '*') v = body3[r][c];
                else if (diag == '\'') v = diag1[axis][r][c];
                else if (diag == '"') v = diag2[axis][r][c];
                else if (n == 1) v = r == c ? 1 : 0;
                else v = axis == 0 ? rot_x[oi][r][c] : axis == 1 ? rot_y[oi][r][c] : rot_z[oi][r][c];
                s.r[r][c] = improper ? -v : v;
            }
        if (screw) {
            if (diag != 0 || axis < 0) {
                message = "Screw components need a cell axis: " + hall;
                return false;
            }
            tr[axis] += SEITZ_DEN * screw / n;
        }
        for (int r = 0; r < 3; ++r) s.t[r] = Mod_Den(tr[r]);
        ops.push_back(s);
        prev_n = n;
        if (axis >= 0) prev_axis = axis;
    }
    if (!shift.empty()) {
        // The origin shift, in twelfths: (R, t) becomes (R, t + V - R V).
        std::istringstream sh(shift);
        int v[3];
        for (int& x : v) {
            if (!(sh >> x)) {
                message = "Wrong origin shift in Hall symbol: " + hall;
                return false;
            }
            x *= 2;
        }
        for (SEITZ_TYPE& s : ops)
            for (int r = 0; r < 3; ++r) {
                int rv = 0;
                for (int c = 0; c < 3; ++c) rv += s.r[r][c] * v[c];
                s.t[r] = Mod_Den(s.t[r] + v[r] - rv);
            }
        if (centric) {
            SEITZ_TYPE& inv = gens.back();
            for (int r = 0; r < 3; ++r) inv.t[r] = Mod_Den(2 * v[r]);
        }
    }
    gens.insert(gens.end(), ops.begin(), ops.end());
    return true;
}

bool Close_Group(const std::vector<SEITZ_TYPE>& gens, std::vector<SEITZ_TYPE>& group) {
    group.clear();
    group.push_back(SEITZ_TYPE{});
    for (const SEITZ_TYPE& g0 : gens) {
        for (int r = 0; r < 3; ++r)
            for (int c = 0; c < 3; ++c)
                if (g0.r[r][c] > 16 || g0.r[r][c] < -16) return false;
        const int det = Seitz_Det(g0);
        if (det != 1 && det != -1) return false;
        const SEITZ_TYPE g = Seitz_Normal(g0);
        if (std::find(group.begin(), group.end(), g) == group.end()) group.push_back(g);
    }
    // Every word in the generators: a finite group needs no inverses.
    std::vector<SEITZ_TYPE> g(group.begin() + 1, group.end());
    for (std::size_t i = 0; i < group.size(); ++i) {
        for (const SEITZ_TYPE& x : g) {
            const SEITZ_TYPE p = Seitz_Product(x, group[i]);
            // Rotations of a finite group stay small; growth means an infinite group.
            for (int r = 0; r < 3; ++r)
                for (int c = 0; c < 3; ++c)
                    if (p.r[r][c] > 16 || p.r[r][c] < -16) return false;
            if (std::find(group.begin(), group.end(), p) == group.end()) {
                group.push_back(p);
                if (group.size() > 192) return false;
            }
        }
    }
    std::sort(group.begin() + 1, group.end(), Seitz_Less);
    return true;
}

}  // namespace hxl
