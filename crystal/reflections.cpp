#include "crystal/reflections.h"

#include <algorithm>
#include <cmath>

namespace hxl {

bool Hkl_Absent(const SPACE_GROUP_TYPE& sg, int h, int k, int l) {
    const int v[3] = {h, k, l};
    for (const SEITZ_TYPE& s : sg.seitz) {
        bool fixed = true;
        for (int j = 0; j < 3 && fixed; ++j)
            if (v[0] * s.r[0][j] + v[1] * s.r[1][j] + v[2] * s.r[2][j] != v[j]) fixed = false;
        if (!fixed) continue;
        if (Mod_Den(v[0] * s.t[0] + v[1] * s.t[1] + v[2] * s.t[2]) != 0) return true;
    }
    return false;
}

int Hkl_Mult(const SPACE_GROUP_TYPE& sg, int h, int k, int l) {
    int seen[192][3];
    int n = 0;
    const int v[3] = {h, k, l};
    for (const SEITZ_TYPE& s : sg.seitz) {
        int w[3];
        for (int j = 0; j < 3; ++j) w[j] = v[0] * s.r[0][j] + v[1] * s.r[1][j] + v[2] * s.r[2][j];
        for (int sign = 1; sign >= -1; sign -= 2) {
            bool dup = false;
            for (int i = 0; i < n && !dup; ++i)
                dup = seen[i][0] == sign * w[0] && seen[i][1] == sign * w[1] && seen[i][2] == sign * w[2];
            if (!dup && n < 192) {
                for (int j = 0; j < 3; ++j) seen[n][j] = sign * w[j];
                ++n;
            }
        }
    }
    return n;
}

float Hkl_S(const Cell_Record& c, int h, int k, int l) {
    const double v[3] = {static_cast<double>(h), static_cast<double>(k), static_cast<double>(l)};
    double q = 0;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) q += v[i] * c.metric_recip[i][j] * v[j];
    return static_cast<float>(0.5 * std::sqrt(std::fmax(q, 0.0)));
}

}  // namespace hxl
