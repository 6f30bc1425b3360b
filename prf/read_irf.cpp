#include "prf/read_irf.h"

#include <cctype>

#include "support/fixed_text.h"
#include "support/fortran_number.h"
#include "support/list_read.h"
#include "support/text_unit.h"

namespace hxl {
namespace {

// Up to `max` reals behind the keyword; at least one must be there.
bool values(std::string_view rest, float* out, int max, int* count = nullptr) {
    int n = 0;
    std::size_t i = 0;
    while (n < max) {
        while (i < rest.size() && (rest[i] == ' ' || rest[i] == '\t' || rest[i] == ',')) ++i;
        if (i >= rest.size() || rest[i] == '!') break;  // a comment may follow the values
        const std::size_t b = i;
        while (i < rest.size() && rest[i] != ' ' && rest[i] != '\t' && rest[i] != ',') ++i;
        if (!Fortran_Real(rest.substr(b, i - b), 0, out[n])) return false;
        ++n;
    }
    if (count) *count = n;
    return n > 0;
}

// The integer behind "ireso", past "=", ":" or blanks.
bool ireso_value(const std::string& lower, int& ireso) {
    std::size_t i = lower.find("ireso") + 5;
    while (i < lower.size() && !std::isdigit(static_cast<unsigned char>(lower[i])) && lower[i] != '-') ++i;
    std::size_t e = i;
    if (e < lower.size() && lower[e] == '-') ++e;
    while (e < lower.size() && std::isdigit(static_cast<unsigned char>(lower[e]))) ++e;
    return Fortran_Integer(std::string_view(lower).substr(i, e - i), ireso);
}

int geometry_code(std::string_view word) {
    const std::string w = Upper(word.substr(0, 4));
    if (w == "BRAG") return 1;
    if (w == "DEBY") return 2;
    if (w == "SYNC") return 3;
    if (w == "TRMB") return 5;
    if (w == "TRMF") return 6;
    return 0;
}

// One keyword line; false when its values cannot be read.
bool keyword_line(const std::string& line, IRF_TYPE& irf) {
    const std::string t = Adjustl(line);
    std::size_t e = 0;
    while (e < t.size() && t[e] != ' ' && t[e] != '\t') ++e;
    const std::string key = Upper(t.substr(0, e < 5 ? e : 5));
    const std::string_view rest = std::string_view(t).substr(e);
    if (key == "JOBT") {
        irf.jobt = Trim(rest);
        irf.has_jobt = true;
        return true;
    }
    if (key == "GEOM") {
        irf.geom = geometry_code(Adjustl(rest));
        irf.has_geom = true;
        return true;
    }
    if (key == "PROF") {
        float v[4] = {0, 0, 0, 0};
        if (!values(rest, v, 4) || !(v[0] > -1.0e6f && v[0] < 1.0e6f)) return false;
        irf.prof = static_cast<int>(v[0]);
        for (int i = 0; i < 3; ++i) irf.prof_par[i] = v[i + 1];
        return irf.has_prof = true;
    }
    struct ENTRY {
        const char* key;
        float* out;
        int n;
        bool* flag;
        int* count;
    };
    const ENTRY table[] = {
        {"THRG", irf.thrg, 3, &irf.has_thrg, nullptr},     {"WAVE", irf.wave, 3, &irf.has_wave, &irf.n_wave},
        {"CTHM", &irf.cthm, 1, &irf.has_cthm, nullptr},    {"RKK", &irf.rkk, 1, &irf.has_rkk, nullptr},
        {"ASYM", irf.asym, 4, &irf.has_asym, &irf.n_asym}, {"D2TOF", irf.d2tof, 3, &irf.has_d2tof, &irf.n_d2tof},
        {"TWOTH", &irf.twoth, 1, &irf.has_twoth, nullptr}, {"TOFRG", irf.tofrg, 3, &irf.has_tofrg, nullptr},
        {"D2TOT", irf.d2tot, 5, &irf.has_d2tot, nullptr},  {"SIGMA", irf.sigma, 3, &irf.has_sigma, &irf.n_sigma},
        {"GAMMA", irf.gamma, 3, &irf.has_gamma, nullptr},  {"ALFBE", irf.alfbe, 4, &irf.has_alfbe, &irf.n_alfbe},
        {"ALFBT", irf.alfbt, 4, &irf.has_alfbt, nullptr},
    };
    for (const ENTRY& en : table) {
        if (key != en.key) continue;
        float v[5] = {0, 0, 0, 0, 0};
        if (!values(rest, v, en.n, en.count)) return false;
        for (int i = 0; i < en.n; ++i) en.out[i] = v[i];
        *en.flag = true;
        return true;
    }
    return true;  // unknown words are passed over
}

bool has_extension(const std::string& name) {
    const auto dot = name.rfind('.');
    const auto sep = name.find_last_of("/\\");
    return dot != std::string::npos && (sep == std::string::npos || dot > sep);
}

// The name the messages give: the file's name without ".irf", then ".irf".
std::string shown_name(const std::string& name) {
    if (!has_extension(name)) return name + ".irf";
    return name;
}

}  // namespace

void Read_Irf_Text(const std::string& name, const std::string& contents, IRF_TYPE& irf, bool& status,
                   std::string& text) {
    irf = IRF_TYPE{};
    status = false;
    text.clear();
    Text_Unit unit;
    unit.Set_Text(contents);
    const std::string bad = "Error reading IRF File: " + shown_name(name);
    std::string_view v;
    bool want_record = false;  // ireso 1: the next data line is the one record
    bool seen_ireso = false;
    while (unit.Read_Line(v)) {
        const std::string line(v.substr(0, 150));
        if (!seen_ireso && Lower(line).find("ireso") != std::string::npos) {
            seen_ireso = true;
            if (!ireso_value(Lower(line), irf.ireso)) {
                text = bad;
                return;
            }
            want_record = irf.ireso == 1;
            continue;
        }
        if (Starts_With(line, "!") || Is_Blank(line)) continue;
        if (want_record) {
            if (!values(line, irf.uvwxy, 5, &irf.n_uvwxy)) {
                text = bad;
                return;
            }
            irf.has_uvwxy = true;
            want_record = false;
            continue;
        }
        if (irf.ireso != 1 && !keyword_line(line, irf)) {
            text = bad;
            return;
        }
    }
    if (want_record) {
        text = bad;
        return;
    }
    status = true;
}

void Read_Irf(const std::string& name, IRF_TYPE& irf, bool& status, std::string& text) {
    const std::string file = has_extension(name) ? name : name + ".irf";
    Text_Unit unit;
    if (!unit.Open(file)) {
        irf = IRF_TYPE{};
        status = false;
        text = "Error when openning the IRF File: " + shown_name(name);
        return;
    }
    Read_Irf_Text(name, unit.Text(), irf, status, text);
}

}  // namespace hxl
