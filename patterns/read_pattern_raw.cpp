#include "patterns/read_pattern_raw.h"

#include <cmath>

#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"
#include "support/text_unit.h"

namespace hxl {
namespace {

// The value behind the first ":" of a head line (or the whole line without one).
std::string behind_colon(const std::string& line) {
    const std::size_t c = line.find(':');
    return Trim(c == std::string::npos ? line : line.substr(c + 1));
}

bool number_behind(const std::string& line, float& v) {
    return List_Read(behind_colon(line), &v, 1) == List_Result::Ok;
}

}  // namespace

bool Read_Pattern_Raw(const std::string& filename, RAW_DATA_TYPE& raw, std::string& message) {
    raw = RAW_DATA_TYPE{};
    Text_Unit unit;
    if (!unit.Open(Trim(filename))) {
        message = " Error opening the file: " + Trim(filename);
        return false;
    }
    return Read_Raw_Text(unit.Text(), raw, message);
}

bool Read_Raw_Text(std::string text, RAW_DATA_TYPE& raw, std::string& message) {
    raw = RAW_DATA_TYPE{};
    message.clear();
    Text_Unit unit;
    unit.Set_Text(std::move(text));
    std::string line;
    auto next = [&](const char* fail) {
        if (unit.Read_Line(line)) return true;
        message = fail;
        return false;
    };
    if (!next("ERROR: Reading line #1")) return false;
    raw.title = Cut(Trim(line), kTitleLen);
    if (!next("ERROR: Reading line #2: wavelength")) return false;
    const std::size_t at = Lower(line).find("lambda :");
    if (at == std::string::npos ||
        List_Read(std::string_view(line).substr(at + 8), &raw.lambda, 1) != List_Result::Ok) {
        message = "ERROR: Reading line #2: wavelength";
        return false;
    }
    if (!next("ERROR: Reading line #4:") || !next("ERROR: Reading line #4:")) return false;  // lines 3 and 4
    struct { float* v; const char* fail; } numbers[] = {
        {&raw.detectors_shift, "ERROR: Reading line #5: detectors shift"},
        {&raw.alpha1_divergency, "ERROR: Reading line #6: alpha1 divergency"},
        {&raw.monitor, "ERROR: Reading line #7: monitor value"},
        {&raw.omega, "ERROR: Reading line #8: omega"},
        {&raw.tsamp, "ERROR: Reading line #9: sample temperature"},
    };
    for (auto& n : numbers) {
        if (!next(n.fail)) return false;
        if (!number_behind(line, *n.v)) {
            message = n.fail;
            return false;
        }
    }
    if (!next("ERROR: Reading line #10: sample owner")) return false;
    raw.owner = behind_colon(line);
    if (!next("ERROR: Reading line #12: descriptors") || !next("ERROR: Reading line #12: descriptors")) return false;
    raw.descriptors = Trim(line);

    RAW_DETECTOR_TYPE* det = nullptr;
    int row = 12;
    while (unit.Read_Line(line)) {
        ++row;
        const std::string t = Trim(line);
        if (t.empty()) continue;
        if (Starts_With(t, "Detector No.")) {
            raw.detectors.emplace_back();
            det = &raw.detectors.back();
            int n = 0;
            List_Read(std::string_view(t).substr(12), &n, 1);
            det->number = n;
            continue;
        }
        float v[2];
        int got = 0;
        if (!det || !Read_Row_Fields(t, v, 2, got) || got < 2) {
            message = "ERROR: Reading line #" + std::to_string(row) + ": detector data";
            return false;
        }
        det->angle.push_back(v[0]);
        det->counts.push_back(v[1]);
    }
    if (raw.detectors.empty()) {
        message = "ERROR: Reading line #13: no \"Detector No.\" block";
        return false;
    }
    return true;
}

bool Check_Raw_Selection(const std::vector<std::string>& names, std::string& message) {
    message.clear();
    if (names.size() > 1) {
        message = "Trying to select more than one file!";
        return false;
    }
    return true;
}

bool Raw_Detector_Pattern(const RAW_DATA_TYPE& raw, int detector, DIFFRACTION_PATTERN_TYPE& p, std::string& message) {
    message.clear();
    if (detector < 1 || detector > static_cast<int>(raw.detectors.size())) {
        message = "ERROR: no detector block number " + std::to_string(detector);
        return false;
    }
    const auto& d = raw.detectors[static_cast<std::size_t>(detector - 1)];
    const int n = static_cast<int>(d.counts.size());
    Clear_Pattern_Error();
    Allocate_Pattern(p, n);
    if (ERR_Pattern) {
        message = ERR_Pattern_Mess;
        return false;
    }
    for (int i = 1; i <= n; ++i) {
        p.x(i) = d.angle[static_cast<std::size_t>(i - 1)];
        p.y(i) = d.counts[static_cast<std::size_t>(i - 1)];
        p.sigma(i) = std::max(std::fabs(p.y(i)), 1.0f);
    }
    p.title = Cut(raw.title + " Detector No. " + std::to_string(d.number), kTitleLen);
    p.lambda1 = raw.lambda;
    p.monitor = raw.monitor;
    p.tsamp = raw.tsamp;
    p.xmin = p.x(1);
    p.xmax = p.x(n);
    p.step = Mean_Step(p);
    p.scat_var = "2theta";
    p.xax_text = "2theta(degrees)";
    p.yax_text = "Intensity (arb. units)";
    p.diff_kind = "neutrons_cw";
    Pattern_Y_Limits(p);
    return true;
}

}  // namespace hxl
