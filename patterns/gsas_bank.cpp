#include "patterns/gsas_bank.h"

#include <cmath>
#include <vector>

#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {
namespace {

const char* const kInstr = " Error in Intensity file, check your instr parameter!";

bool is_const(const std::string& b) { return b == "CONST" || b == "CONS"; }

// The first number behind `key` (any case) in `line`, skipping blanks, ":" and "=".
bool number_after(std::string_view line, std::string_view key, float& v) {
    const std::string up = Upper(line);
    const std::size_t at = up.find(Upper(key));
    if (at == std::string::npos) return false;
    std::size_t p = at + key.size();
    while (p < line.size() && (line[p] == ' ' || line[p] == ':' || line[p] == '=' || line[p] == '\t')) ++p;
    std::size_t q = p;
    while (q < line.size() && line[q] != ' ' && line[q] != ',' && line[q] != '\t' && line[q] != ';') ++q;
    double d = 0.0;
    if (q == p || !Parse_Real(line.substr(p, q - p), d) || !std::isfinite(d) || d <= 0.0 || d > 3.0e38) return false;
    v = static_cast<float>(d);
    return true;
}

// The records hold `per` items of the given field widths each line.
template <class Take>
bool fixed_items(Text_Unit& unit, int n, int per, const int* widths, const int* decimals, int nfields, Take take) {
    std::string_view line;
    int k = 0;
    float v[3];
    while (k < n) {
        if (!unit.Read_Line(line)) return false;
        std::size_t col = 0;
        for (int j = 0; j < per && k < n; ++j, ++k) {
            for (int f = 0; f < nfields; ++f) {
                if (!Fixed_Real(line, col, static_cast<std::size_t>(widths[f]), v[f], decimals[f])) return false;
                col += static_cast<std::size_t>(widths[f]);
            }
            take(k + 1, v);
        }
    }
    return true;
}

}  // namespace

void Read_Gsas_Head_Line(std::string_view line, GSAS_HEAD_TYPE& h) {
    number_after(line, "Monitor", h.monitor);
    if (!number_after(line, "Calibrated wavelength", h.wavelength)) number_after(line, "Wavelength", h.wavelength);
    number_after(line, "DIFC", h.difc);
    if (!number_after(line, "Temp (K)", h.temperature)) number_after(line, "Sample Temperature", h.temperature);
}

void Apply_Gsas_Head(const GSAS_HEAD_TYPE& h, bool tof, DIFFRACTION_PATTERN_TYPE& p) {
    if (h.monitor > 0.0f) p.monitor = h.monitor;
    if (h.temperature > 0.0f) p.tsamp = h.temperature;
    // In a time-of-flight pattern lambda1 holds Dtt1; a centre wavelength is no Dtt1.
    if (tof) {
        if (h.difc > 0.0f) p.lambda1 = h.difc;
    } else if (h.wavelength > 0.0f) {
        p.lambda1 = h.wavelength;
    }
}

bool Gsas_Const_Bins(const GSAS_BANK_TYPE& bank) { return is_const(bank.bintyp); }

bool Parse_Bank_Line(std::string_view line, GSAS_BANK_TYPE& b) {
    b = GSAS_BANK_TYPE{};
    std::vector<std::string> w;
    std::string s = Trim(line);
    for (std::size_t p = 0; p < s.size();) {
        while (p < s.size() && (s[p] == ' ' || s[p] == '\t')) ++p;
        if (p >= s.size()) break;
        std::size_t q = p;
        while (q < s.size() && s[q] != ' ' && s[q] != '\t') ++q;
        w.push_back(s.substr(p, q - p));
        p = q;
    }
    if (w.size() < 6 || Upper(w[0]) != "BANK") return false;
    if (!Parse_Integer(w[1], b.number) || !Parse_Integer(w[2], b.nchan) || !Parse_Integer(w[3], b.nrec)) return false;
    b.bintyp = Upper(w[4]);
    std::size_t k = 5;
    for (int c = 0; c < 4 && k < w.size(); ++c, ++k) {
        if (!Parse_Real(w[k], b.bcoef[c])) break;
    }
    b.type = k < w.size() ? Upper(w[k]) : std::string("STD");
    return true;
}

bool Read_Bank_Data(Text_Unit& unit, const GSAS_BANK_TYPE& b, bool tof, DIFFRACTION_PATTERN_TYPE& p) {
    if (b.type == "STD" || b.type == "ESD") {
        if (!is_const(b.bintyp)) {
            Set_Pattern_Error(" => Only BINTYP=CONST is allowed for ESD data");
            return false;
        }
    } else if (b.type == "ALT") {
        if (!is_const(b.bintyp) && b.bintyp != "RALF") {
            Set_Pattern_Error(" =>  Only BINTYP=RALF or CONST is allowed for ALT data");
            return false;
        }
    } else if (b.type != "FXYE") {
        Set_Pattern_Error(kInstr);
        return false;
    }
    if (b.nchan <= 0 || Implausible_Count(unit, b.nchan)) {
        Set_Pattern_Error(" Error in Intensity file, Number of points negative or zero!");
        return false;
    }
    Allocate_Pattern(p, b.nchan);
    if (ERR_Pattern) return false;
    const float xscale = tof ? 1.0f : 0.01f;  // CW positions are in centidegrees
    bool ok = true;
    bool explicit_x = true;
    if (b.type == "STD") {
        const int wd[2] = {2, 6}, dc[2] = {0, 0};
        ok = fixed_items(unit, b.nchan, 10, wd, dc, 2, [&](int i, const float* v) {
            p.y(i) = v[1];
            p.sigma(i) = std::fabs(v[1]) / std::max(v[0], 1.0f);
        });
        explicit_x = false;
    } else if (b.type == "ESD") {
        const int wd[2] = {8, 8}, dc[2] = {0, 0};
        ok = fixed_items(unit, b.nchan, 5, wd, dc, 2, [&](int i, const float* v) {
            p.y(i) = v[0];
            p.sigma(i) = v[1] * v[1];
        });
        explicit_x = false;
    } else if (b.type == "ALT") {
        const int wd[3] = {8, 7, 5}, dc[3] = {0, 4, 4};
        const float xs = b.bintyp == "RALF" ? 1.0f / 32.0f : xscale;  // RALF positions are 1/32 microsecond
        ok = fixed_items(unit, b.nchan, 4, wd, dc, 3, [&](int i, const float* v) {
            p.x(i) = v[0] * xs;
            p.y(i) = v[1];
            p.sigma(i) = v[2] * v[2];
        });
    } else {  // FXYE: free rows of x, y, esd
        std::string_view line;
        float v[3];
        for (int i = 1; i <= b.nchan && ok; ++i) {
            int got = 0;
            if (!unit.Read_Line(line) || !Read_Row_Fields(line, v, 3, got) || got < 2) ok = false;
            else {
                p.x(i) = v[0] * xscale;
                p.y(i) = v[1];
                p.sigma(i) = v[2] * v[2];
            }
        }
    }
    if (!ok) {
        Set_Pattern_Error(kInstr);
        return false;
    }
    if (explicit_x) {
        p.xmin = p.x(1);
        p.xmax = p.x(p.npts);
        p.step = Mean_Step(p);
    } else {
        p.xmin = static_cast<float>(b.bcoef[0]) * xscale;
        p.step = static_cast<float>(b.bcoef[1]) * xscale;
        Fill_Constant_Step(p);
        p.xmax = p.x(p.npts);
    }
    Pattern_Y_Limits(p);
    return true;
}

}  // namespace hxl
