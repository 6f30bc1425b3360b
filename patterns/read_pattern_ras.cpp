// Rigaku SmartLab RAS text files: "*RAS_DATA_START", then per scan a head
// "*RAS_HEADER_START" .. "*RAS_HEADER_END" of `*KEY "value"` lines and the
// rows "*RAS_INT_START" .. "*RAS_INT_END" of angle, intensity and the
// attenuator factor the counted intensity is multiplied by (the file leaves
// the column unnamed; SmartLab writes 1 unless the automatic attenuator was in).
// Head values may hold Shift-JIS bytes: they are only compared and, in titles,
// cut down to ASCII.
#include <charconv>
#include <cmath>
#include <map>
#include <string_view>
#include <vector>

#include "patterns/format_table.h"
#include "patterns/read_pattern_library.h"
#include "support/fixed_text.h"
#include "support/time_stamp.h"

namespace hxl {
namespace {

using Head = std::map<std::string, std::string, std::less<>>;

std::string_view trim(std::string_view s) {
    const std::size_t a = s.find_first_not_of(" \t");
    if (a == std::string_view::npos) return {};
    return s.substr(a, s.find_last_not_of(" \t") - a + 1);
}

// `*KEY "value"` into the head; lines of another shape are passed over.
void head_line(std::string_view line, Head& head) {
    line = trim(line);
    if (!line.starts_with('*')) return;
    const std::size_t blank = line.find_first_of(" \t");
    if (blank == std::string_view::npos) return;
    std::string_view value = trim(line.substr(blank));
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"') value = value.substr(1, value.size() - 2);
    head[std::string(line.substr(1, blank - 1))] = std::string(value);
}

std::string head_text(const Head& head, std::string_view key) {
    const auto it = head.find(key);
    return it == head.end() ? std::string() : Trim(it->second);
}

float head_number(const Head& head, std::string_view key) {
    const std::string t = head_text(head, key);
    double v = 0.0;
    const auto r = std::from_chars(t.data(), t.data() + t.size(), v);
    return r.ec == std::errc() && Finite_Float(v) && v > 0.0 ? static_cast<float>(v) : 0.0f;
}

// Printable ASCII only; a Shift-JIS double-byte character goes whole, since
// its second byte may look like ASCII.
std::string ascii_only(std::string_view s) {
    std::string out;
    for (std::size_t i = 0; i < s.size(); ++i) {
        const auto c = static_cast<unsigned char>(s[i]);
        if ((c >= 0x81 && c <= 0x9F) || (c >= 0xE0 && c <= 0xFC)) ++i;
        else if (c >= 0x20 && c < 0x7F) out += s[i];
    }
    return Trim(out);
}

// Up to three numbers of a data row; false at anything that is not a finite float.
bool data_row(std::string_view line, double* v, int& count) {
    count = 0;
    std::size_t i = 0;
    while (true) {
        while (i < line.size() && (line[i] == ' ' || line[i] == '\t' || line[i] == ',')) ++i;
        if (i >= line.size()) return count >= 2;
        if (count == 3) return false;
        const char* b = line.data() + i;
        const char* e = line.data() + line.size();
        if (*b == '+') ++b;
        const auto r = std::from_chars(b, e, v[count]);
        if (r.ec != std::errc() || !Finite_Float(v[count])) return false;
        if (r.ptr < e && *r.ptr != ' ' && *r.ptr != '\t' && *r.ptr != ',') return false;
        ++count;
        i = static_cast<std::size_t>(r.ptr - line.data());
    }
}

bool two_theta_axis(const std::string& axis) {
    std::string key = Lower(axis);
    std::erase_if(key, [](char c) { return c == ' ' || c == '-' || c == '_' || c == '/'; });
    return key.find("2theta") != std::string::npos || key.find("twotheta") != std::string::npos;
}

void set_head_fields(const Head& head, int scan, DIFFRACTION_PATTERN_TYPE& p) {
    const std::string axis = ascii_only(head_text(head, "MEAS_SCAN_AXIS_X"));
    const std::string unit = ascii_only(head_text(head, "MEAS_SCAN_UNIT_X"));
    if (two_theta_axis(axis)) {
        p.scat_var = "2theta";
        p.xax_text = "2theta(degrees)";
    } else {
        const std::string name = axis.empty() ? std::string("X") : axis;
        p.scat_var = axis.empty() ? "unknown" : Cut(axis, kScatLen);
        p.xax_text = Cut(unit.empty() ? name : name + " (" + unit + ")", kAxisLen);
    }
    p.yax_text = "Intensity (arb. units)";
    p.diff_kind = "xrays_cw";  // the head describes an X-ray generator (HW_XG_*)
    p.instr = Cut(std::string(Format_Row(kRowLibrary).code) + "LIBRARY", kInstrLen);

    const float a1 = head_number(head, "HW_XG_WAVE_LENGTH_ALPHA1");
    const float a2 = head_number(head, "HW_XG_WAVE_LENGTH_ALPHA2");
    const float kb = head_number(head, "HW_XG_WAVE_LENGTH_BETA");
    const std::string wave = Lower(head_text(head, "MEAS_COND_XG_WAVE_TYPE"));
    if (wave == "ka1") {  // monochromated: no alpha2 line
        p.lambda1 = a1;
    } else if (wave == "kb") {
        p.lambda1 = kb;
    } else {
        p.lambda1 = a1;
        p.lambda2 = a2;
    }
    std::string title = "scan " + std::to_string(scan);
    for (const char* key : {"FILE_SAMPLE", "FILE_COMMENT", "FILE_MEMO"})
        if (std::string t = ascii_only(head_text(head, key)); !t.empty()) title += ": " + t;
    p.title = Cut(title, kTitleLen);
    if (double seconds = 0; Slash_Time_Seconds(head_text(head, "MEAS_SCAN_START_TIME"), seconds)) p.acq_time = seconds;
}

}  // namespace

void Read_Pattern_Ras(Text_Unit& unit, std::vector<DIFFRACTION_PATTERN_TYPE>& patterns, int max_patterns,
                      int& left_out) {
    std::string_view line;
    int lno = 0;
    auto next = [&]() {
        if (!unit.Read_Line(line)) return false;
        ++lno;
        if (lno == 1 && line.starts_with("\xEF\xBB\xBF")) line.remove_prefix(3);
        line = trim(line);
        return true;
    };
    bool started = false;
    while (next())
        if (!line.empty()) {
            started = line == "*RAS_DATA_START";
            break;
        }
    if (!started) {
        Set_Pattern_Error(" Not a Rigaku RAS file: it does not begin with *RAS_DATA_START");
        return;
    }
    int scan = 0;
    while (next()) {
        if (line == "*RAS_DATA_END") break;
        if (line != "*RAS_HEADER_START") continue;
        ++scan;
        const std::string where = " RAS scan " + std::to_string(scan);
        Head head;
        bool ended = false;
        while (next() && !(ended = line == "*RAS_HEADER_END")) head_line(line, head);
        if (!ended) {
            Set_Pattern_Error(where + ": the head has no *RAS_HEADER_END");
            return;
        }
        while (next() && line.empty()) {
        }
        if (line != "*RAS_INT_START") {
            Set_Pattern_Error(where + ": no *RAS_INT_START after the head, line " + std::to_string(lno));
            return;
        }
        std::vector<float> x, y, var;
        ended = false;
        while (next()) {
            if ((ended = line == "*RAS_INT_END")) break;
            if (line.empty()) continue;
            double v[3];
            int count = 0;
            if (!data_row(line, v, count)) {
                Set_Pattern_Error(where + ": not a row of finite numbers at line " + std::to_string(lno));
                return;
            }
            const double factor = count == 3 ? v[2] : 1.0;
            if (!(factor > 0.0) || !Finite_Float(v[1] * factor) || !Finite_Float(std::fabs(v[1]) * factor * factor)) {
                Set_Pattern_Error(where + ": an attenuator factor that is not a positive number at line " +
                                  std::to_string(lno));
                return;
            }
            x.push_back(static_cast<float>(v[0]));
            y.push_back(static_cast<float>(v[1] * factor));
            // Poisson variance of the counts, scaled with them.
            const float s = static_cast<float>(std::fabs(v[1]) * factor * factor);
            var.push_back(s < 1e-6f ? 1.0f : s);
        }
        if (!ended) {
            Set_Pattern_Error(where + " is cut: its rows end without *RAS_INT_END");
            return;
        }
        const int n = static_cast<int>(x.size());
        if (n < 2 || static_cast<int>(patterns.size()) >= max_patterns) {
            ++left_out;
            continue;
        }
        DIFFRACTION_PATTERN_TYPE p;
        Allocate_Pattern(p, n);
        for (int i = 1; i <= n; ++i) {
            p.x(i) = x[static_cast<std::size_t>(i - 1)];
            p.y(i) = y[static_cast<std::size_t>(i - 1)];
            p.sigma(i) = var[static_cast<std::size_t>(i - 1)];
        }
        p.sig_var = true;
        set_head_fields(head, scan, p);
        p.ct_step = head_number(head, "MEAS_SCAN_STEP") > 0.0f;
        Finish_Library_Scan(p);
        patterns.push_back(std::move(p));
    }
    if (scan == 0) Set_Pattern_Error(" The RAS file holds no scan");
    else if (patterns.empty()) Set_Pattern_Error(" No scan of the RAS file holds two points or more");
}

}  // namespace hxl
