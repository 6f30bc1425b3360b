#include "prf/prf_labels.h"

#include <cmath>
#include <cstdio>

namespace hxl {

std::string Prf_I(long long value, int width) {
    std::string s = std::to_string(value);
    if (static_cast<int>(s.size()) > width) return std::string(static_cast<std::size_t>(width), '*');
    return std::string(static_cast<std::size_t>(width) - s.size(), ' ') + s;
}

std::string Prf_F(double value, int width, int decimals) {
    if (!std::isfinite(value)) return std::string(static_cast<std::size_t>(width), '*');
    char buf[64];
    const int n = std::snprintf(buf, sizeof buf, "%*.*f", width, decimals, value);
    if (n < 0 || n > width) return std::string(static_cast<std::size_t>(width), '*');
    return buf;
}

std::string Prf_Kind_Name(int kind) {
    switch (kind) {
        case 1: return "Nuc.     ";
        case 2: return "Mag.     ";
        case 3: return "Nuc.+Mag.";
        default: return "         ";
    }
}

namespace {
std::string indices(const int* hkl, int n) {
    std::string s = " (";
    for (int i = 0; i < n; ++i) s += Prf_I(hkl[i], 3);
    return s + ") ph:";
}
std::string right_trimmed(std::string s) {
    while (!s.empty() && s.back() == ' ') s.pop_back();
    return s;
}
}  // namespace

std::string Prf_Label_Lambda(const int* hkl, int phase, int lambda) {
    return indices(hkl, 3) + Prf_I(phase, 2) + "  Lambda: " + Prf_I(lambda, 2);
}

std::string Prf_Label_Kind(const int* hkl, int phase, int kind) {
    return right_trimmed(indices(hkl, 3) + Prf_I(phase, 2) + " -> " + Prf_Kind_Name(kind));
}

std::string Prf_Label_Kvec(const int* hkl, int phase, const float* k, int lambda) {
    return indices(hkl, 3) + Prf_I(phase, 2) + ", nvk[" + Prf_F(k[0], 7, 4) + Prf_F(k[1], 7, 4) + Prf_F(k[2], 7, 4) +
           "]  Lambda: " + Prf_I(lambda, 2);
}

std::string Prf_Label_Super(const int* hkl, int extra, int phase, int lambda, int kind) {
    return right_trimmed(indices(hkl, 3 + extra) + Prf_I(phase, 2) + ",  Lambda: " + Prf_I(lambda, 2) + " -> " +
                         Prf_Kind_Name(kind));
}

int Prf_Phase_From_Code(int code, const Array1<int>& nvk, int& vector) {
    vector = 0;
    const int n = nvk.size();
    if (n < 1) return 1;
    long long below = 0;  // codes of the phases before phase p
    for (int p = 1; p <= n; ++p) {
        const int lines = nvk(p) > 1 ? nvk(p) : 1;
        if (code <= below + lines || p == n) {
            // codes before the first phase or past the last one stay in the table's ends
            long long v = code - below;
            if (v < 1) v = 1;
            if (v > lines) v = lines;
            vector = nvk(p) > 0 ? static_cast<int>(v) : 0;
            return p;
        }
        below += lines;
    }
    return 1;
}

int Prf_Phase_From_3111_Code(int code) {
    const int phase = code / 134217728;  // truncates towards zero
    return phase < 0 ? 8 - phase : phase;
}

}  // namespace hxl
