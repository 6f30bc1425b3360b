#include "crystal/sym_oper.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "support/fixed_text.h"

namespace hxl {

int Mod_Den(int t) {
    t %= SEITZ_DEN;
    return t < 0 ? t + SEITZ_DEN : t;
}

SEITZ_TYPE Seitz_Product(const SEITZ_TYPE& a, const SEITZ_TYPE& b) {
    SEITZ_TYPE c;
    for (int i = 0; i < 3; ++i) {
        int t = a.t[i];
        for (int j = 0; j < 3; ++j) {
            int s = 0;
            for (int k = 0; k < 3; ++k) s += a.r[i][k] * b.r[k][j];
            c.r[i][j] = s;
            t += a.r[i][j] * b.t[j];
        }
        c.t[i] = Mod_Den(t);
    }
    return c;
}

SEITZ_TYPE Seitz_Normal(SEITZ_TYPE s) {
    for (int& t : s.t) t = Mod_Den(t);
    return s;
}

int Seitz_Det(const SEITZ_TYPE& s) {
    const auto& a = s.r;
    return a[0][0] * (a[1][1] * a[2][2] - a[1][2] * a[2][1]) - a[0][1] * (a[1][0] * a[2][2] - a[1][2] * a[2][0]) +
           a[0][2] * (a[1][0] * a[2][1] - a[1][1] * a[2][0]);
}

bool Seitz_Less(const SEITZ_TYPE& a, const SEITZ_TYPE& b) {
    // Proper rotations first, then by matrix (identity-like entries first), then by translation.
    const int da = Seitz_Det(a), db = Seitz_Det(b);
    if (da != db) return da > db;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            if (a.r[i][j] != b.r[i][j]) {
                const int ia = a.r[i][j] == (i == j ? 1 : 0) ? 0 : 1;
                const int ib = b.r[i][j] == (i == j ? 1 : 0) ? 0 : 1;
                if (ia != ib) return ia < ib;
                return a.r[i][j] > b.r[i][j];
            }
    for (int i = 0; i < 3; ++i)
        if (a.t[i] != b.t[i]) return a.t[i] < b.t[i];
    return false;
}

SYM_OPER_TYPE Seitz_To_Oper(const SEITZ_TYPE& s) {
    SYM_OPER_TYPE op;
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) op.rotation[i][j] = s.r[i][j];
        op.translation[i] = static_cast<float>(s.t[i]) / SEITZ_DEN;
    }
    return op;
}

bool Oper_To_Seitz(const SYM_OPER_TYPE& op, SEITZ_TYPE& s) {
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) s.r[i][j] = op.rotation[i][j];
        const double x = static_cast<double>(op.translation[i]) * SEITZ_DEN;
        if (!std::isfinite(x) || std::fabs(x) > 1e6) return false;
        const double n = std::round(x);
        if (std::fabs(x - n) > 1e-3) return false;
        s.t[i] = Mod_Den(static_cast<int>(n));
    }
    return true;
}

namespace {

// One field of "x,y,z": a sum of signed terms, each a coordinate with an
// optional integer factor, or a number (integer, decimal or fraction).
bool parse_field(const std::string& f, int row[3], double& trans) {
    row[0] = row[1] = row[2] = 0;
    trans = 0;
    std::size_t p = 0;
    const std::size_t n = f.size();
    bool any = false;
    while (p < n) {
        int sign = 1;
        if (f[p] == '+' || f[p] == '-') {
            sign = f[p] == '-' ? -1 : 1;
            ++p;
        } else if (any) {
            return false;
        }
        if (p >= n) return false;
        double num = 1;
        bool has_num = false;
        if (std::isdigit(static_cast<unsigned char>(f[p])) || f[p] == '.') {
            const std::size_t q0 = p;
            while (p < n && (std::isdigit(static_cast<unsigned char>(f[p])) || f[p] == '.')) ++p;
            const std::string s = f.substr(q0, p - q0);
            char* end = nullptr;
            num = std::strtod(s.c_str(), &end);
            if (end == s.c_str() || *end != '\0') return false;
            has_num = true;
            if (p < n && f[p] == '/') {
                ++p;
                const std::size_t q1 = p;
                while (p < n && std::isdigit(static_cast<unsigned char>(f[p]))) ++p;
                if (p == q1) return false;
                const double den = std::strtod(f.substr(q1, p - q1).c_str(), nullptr);
                if (den == 0) return false;
                num /= den;
            }
            if (p < n && f[p] == '*') ++p;
        }
        if (p < n && (f[p] == 'x' || f[p] == 'y' || f[p] == 'z')) {
            const double k = sign * num;
            if (k != std::round(k) || std::fabs(k) > 100) return false;
            int& cell = row[f[p] - 'x'];
            if (std::abs(cell) > 100) return false;
            cell += static_cast<int>(k);
            ++p;
        } else if (has_num) {
            trans += sign * num;
        } else {
            return false;
        }
        any = true;
    }
    return any;
}

std::string fraction(float t) {
    static const int dens[] = {2, 3, 4, 6, 8, 12, 24};
    for (int d : dens) {
        const double n = static_cast<double>(t) * d;
        if (std::fabs(n - std::round(n)) < 1e-4) {
            const int in = static_cast<int>(std::round(n));
            if (in % d == 0) return std::to_string(in / d);
            int a = std::abs(in), b = d;
            while (b) {
                const int r = a % b;
                a = b;
                b = r;
            }
            return std::to_string(in / a) + "/" + std::to_string(d / a);
        }
    }
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.5f", static_cast<double>(t));
    return buf;
}

}  // namespace

bool Parse_Operator(const std::string& text, SYM_OPER_TYPE& op, std::string& message) {
    message.clear();
    const std::string t = Trim(text);
    for (char c : t) {
        const char l = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        if (!(l == 'x' || l == 'y' || l == 'z' || std::isdigit(static_cast<unsigned char>(c)) || c == '+' ||
              c == '-' || c == '/' || c == '.' || c == ',' || c == ' ' || c == '*')) {
            message = Cut(" Invalid character... " + t, 150);
            return false;
        }
    }
    std::string fields[3];
    int nf = 0;
    std::string cur;
    for (char c : t) {
        if (c == ',') {
            if (nf >= 2) {
                message = Cut(" The above operator is wrong: " + t, 150);
                return false;
            }
            fields[nf++] = cur;
            cur.clear();
        } else if (c != ' ') {
            cur += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
    }
    if (nf != 2) {
        message = Cut((Is_Blank(t) ? std::string(" Blank operator field in operator string ")
                                    : std::string(" The above operator is wrong: ")) + t, 150);
        return false;
    }
    fields[2] = cur;
    SYM_OPER_TYPE r;
    for (int i = 0; i < 3; ++i) {
        if (fields[i].empty()) {
            message = Cut(" Blank operator field in operator string " + t, 150);
            return false;
        }
        double tr = 0;
        if (!parse_field(fields[i], r.rotation[i], tr) || !std::isfinite(tr) || std::fabs(tr) > 1e6) {
            message = Cut(" The above operator is wrong: " + t, 150);
            return false;
        }
        r.translation[i] = static_cast<float>(tr);
    }
    SEITZ_TYPE s;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) s.r[i][j] = r.rotation[i][j];
    const int det = Seitz_Det(s);
    if (det != 1 && det != -1) {
        message = Cut(" The above operator is wrong: " + t, 150);
        return false;
    }
    op = r;
    return true;
}

std::string Format_Operator(const SYM_OPER_TYPE& op) {
    std::string out;
    for (int i = 0; i < 3; ++i) {
        std::string f;
        for (int j = 0; j < 3; ++j) {
            const int k = op.rotation[i][j];
            if (k == 0) continue;
            const char xyz = static_cast<char>('x' + j);
            if (k < 0) f += "-";
            else if (!f.empty()) f += "+";
            if (std::abs(k) != 1) f += std::to_string(std::abs(k));
            f += xyz;
        }
        const float t = op.translation[i];
        if (t != 0.0f) {
            std::string s = fraction(t);
            if (s[0] != '-' && !f.empty()) s = "+" + s;
            f += s;
        }
        if (f.empty()) f = "0";
        out += (i ? "," : "") + f;
    }
    return out;
}

}  // namespace hxl
