#include "prf/read_prf.h"

#include <cmath>
#include <filesystem>
#include <limits>
#include <map>

#include "patterns/read_pattern.h"
#include "prf/prf_read_state.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {

float Prf_Shift(float x, float zero, float c1, float c2, bool zero_only) {
    if (zero_only) return zero;
    constexpr double kHalfDegree = 3.14159265358979323846 / 360.0;  // x/2 in radians
    return static_cast<float>(zero + c1 * std::cos(x * kHalfDegree) + c2 * std::sin(x * kHalfDegree));
}

bool Prf_Line(Text_Unit& unit, std::string& line, std::size_t width) {
    std::string_view v;
    if (!unit.Read_Line(v)) return false;
    line.assign(v.substr(0, width));
    return true;
}

const EDIT_FORMAT_TYPE& Prf_Format(const std::string& text) {
    static std::map<std::string, EDIT_FORMAT_TYPE> cache;
    auto it = cache.find(text);
    if (it == cache.end()) {
        EDIT_FORMAT_TYPE f;
        std::string why;
        Parse_Edit_Format(text, f, why);  // the layouts are the reader's own and always parse
        it = cache.emplace(text, std::move(f)).first;
    }
    return it->second;
}

bool Prf_Zero_Only(const DIFFRACTION_PATTERN_TYPE& pattern) {
    return Same(pattern.scat_var, "TOF") || Same(pattern.scat_var, "Energy");
}

bool Prf_Implausible(const Text_Unit& unit, long long n) {
    return n > static_cast<long long>(unit.Text().size()) + 10;
}

void Prf_Allocate_Reflections(PRF_INFO_ADD_TYPE& info, int n) {
    info.refl_code.resize(n);
    info.refl_kind.resize(n);
    info.refl_phase.resize(n);
    info.refl_pos.resize(n);
    info.refl_label.resize(n);
}

void Prf_Cut_Reflections(PRF_INFO_ADD_TYPE& info, int n) {
    info.refl_code.vec().resize(static_cast<std::size_t>(n));
    info.refl_kind.vec().resize(static_cast<std::size_t>(n));
    info.refl_phase.vec().resize(static_cast<std::size_t>(n));
    info.refl_pos.vec().resize(static_cast<std::size_t>(n));
    info.refl_label.vec().resize(static_cast<std::size_t>(n));
    info.nrefl = n;
}

void Prf_Excluded_Room(PRF_INFO_ADD_TYPE& info, int n) {
    if (n > info.excl_low.size()) {
        info.excl_low.vec().resize(static_cast<std::size_t>(n), 0.0f);
        info.excl_high.vec().resize(static_cast<std::size_t>(n), 0.0f);
    }
}

void Prf_Ranges(const PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& p) {
    const int n = p.npts;
    if (n < 1 || p.x.size() < n) return;
    p.xmin = p.x(1);
    p.xmax = p.x(n);
    p.step = n > 1 ? (p.xmax - p.xmin) / static_cast<float>(n - 1) : 0.0f;
    const bool calc = p.ycalc.size() >= n;
    float lo = std::numeric_limits<float>::max();
    float hi = -lo, hi_all = -lo;
    for (int i = 1; i <= n; ++i) {
        float a = p.y(i), b = calc ? p.ycalc(i) : a;
        lo = std::fmin(lo, std::fmin(a, b));
        const float top = std::fmax(a, b);
        hi_all = std::fmax(hi_all, top);
        bool excluded = false;
        for (int j = 1; j <= info.nexcl && j <= info.excl_low.size(); ++j)
            if (info.excl_low(j) <= p.x(i) && p.x(i) <= info.excl_high(j)) {
                excluded = true;
                break;
            }
        if (!excluded) hi = std::fmax(hi, top);
    }
    p.ymin = lo;
    p.ymax = hi > -std::numeric_limits<float>::max() ? hi : hi_all;  // all points excluded: the plain maximum
}

namespace {

// Line 1: header, Chi2, title and temperature.
void take_line1(const std::string& line1, PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& pat) {
    std::string line = Adjustl(line1);
    info.header = Cut(line, 512);
    if (auto at = line.find("Chi2:"); at != std::string::npos) {
        float chi2 = 0.0f;
        if (List_Read(std::string_view(line).substr(at + 5), &chi2, 1) != List_Result::Ok) chi2 = 0.0f;
        info.chi2 = chi2;
        line.erase(at);
    }
    if (Starts_With(line, "Title:")) line.erase(0, 6);
    pat.title = Cut(line, kTitleLen);
    if (auto at = line1.find("TEMP:"); at != std::string::npos) {
        float t = 0.0f;
        if (List_Read(std::string_view(line1).substr(at + 5), &t, 1) != List_Result::Ok) t = 0.0f;
        pat.tsamp = t;
    }
}

bool read_variant(PRF_READ_STATE& s, PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& pat, std::string& message) {
    bool sin = false;
    std::string line;
    for (int i = 1; i <= 6 && Prf_Line(s.unit, line); ++i) {
        if (line.find("sx_multiphase") != std::string::npos) s.sx = true;
        if (Starts_With(line, " Sin")) {
            sin = true;
            break;
        }
    }
    s.unit.Rewind();

    if (!Prf_Line(s.unit, line)) {
        message = "ERROR: Reading line 1";
        return false;
    }
    if (Starts_With(line, "IGOR")) {
        message = "ERROR: file type IGOR";
        return false;
    }
    take_line1(line, info, pat);
    if (!Prf_Line(s.unit, s.line2)) {
        message = "ERROR: Reading line 2";
        return false;
    }
    std::string work = s.line2;
    const auto dot = s.filename.rfind('.');
    if (dot != std::string::npos && Same(s.filename.substr(dot), ".xrf")) work = "xrft";
    if (sin) work = " Sin";
    const std::string head = work.substr(0, 4);
    if (head == "xrft") return Read_Prf_Xrf(s, info, pat, message);
    if (head == "3111") return Read_Prf_3111(s, info, pat, message);
    if (head == " Sin") return Read_Prf_Sin(s, info, pat, message);
    if (head == "# R ") return Read_Prf_Pairs(s, info, pat, message);
    return Read_Prf_Column(s, info, pat, message);
}

void start(const std::string& filename, PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& pat, bool& error_flag,
           std::string& message) {
    info = PRF_INFO_ADD_TYPE{};
    pat = DIFFRACTION_PATTERN_TYPE{};
    info.prf_type = "PRF";
    error_flag = true;
    message.clear();
    std::string path, name;
    Split_File_Name(filename, path, name);
    pat.filename = Cut(name, kFileLen);
    pat.filepath = Cut(path, kFileLen);
    info.prf_name = pat.filename;
    info.prf_dir = pat.filepath;
    pat.scal = 0.0f;
    pat.monitor = 0.0f;
}

}  // namespace

void Read_Prf_Text(const std::string& filename, const std::string& text, PRF_INFO_ADD_TYPE& info,
                   DIFFRACTION_PATTERN_TYPE& pat, bool& error_flag, std::string& message) {
    start(filename, info, pat, error_flag, message);
    PRF_READ_STATE s;
    s.filename = filename;
    s.unit.Set_Text(text);
    if (read_variant(s, info, pat, message)) error_flag = false;
}

void Read_Prf_File(const std::string& filename, PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& pat,
                   bool& error_flag, std::string& message) {
    start(filename, info, pat, error_flag, message);
    std::error_code ec;
    if (!std::filesystem::exists(filename, ec)) {
        message = "ERROR 00: File not found";
        return;
    }
    PRF_READ_STATE s;
    s.filename = filename;
    if (!std::filesystem::is_regular_file(filename, ec) || !s.unit.Open(filename)) {  // no folders nor devices
        message = "Error open file";
        return;
    }
    if (read_variant(s, info, pat, message)) error_flag = false;
}

}  // namespace hxl
