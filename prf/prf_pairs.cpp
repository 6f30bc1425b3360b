// Pair distribution output ("# R "): a curve of distances with companion
// files that list the atom pairs of each phase.
#include <filesystem>
#include <vector>

#include "prf/prf_labels.h"
#include "prf/prf_read_state.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {
namespace {

// A companion named relative to the profile file's folder when not found as given.
bool open_companion(const PRF_READ_STATE& s, const std::string& name, Text_Unit& unit) {
    std::error_code ec;
    if (std::filesystem::is_regular_file(name, ec)) return unit.Open(name);
    const std::filesystem::path beside = std::filesystem::path(s.filename).parent_path() / name;
    return std::filesystem::is_regular_file(beside, ec) && unit.Open(beside.string());  // never a device
}

// The integer behind the first ":" of a line.
bool count_after_colon(const std::string& line, int& n) {
    const auto at = line.find(':');
    return at != std::string::npos && List_Read(std::string_view(line).substr(at + 1), &n, 1) == List_Result::Ok;
}

}  // namespace

bool Read_Prf_Pairs(PRF_READ_STATE& s, PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& pat, std::string& message) {
    std::vector<std::string> companions;
    std::string line;
    int npts = 0;
    while (true) {
        if (!Prf_Line(s.unit, line)) return false;  // not of this kind: no message
        if (line.find("Pairs") != std::string::npos) {
            if (line.find(':') == std::string::npos) return false;
            if (!count_after_colon(line, npts) || npts < 1 || Prf_Implausible(s.unit, npts)) {
                message = "ERROR Format Special: npts <= 0";
                return false;
            }
            break;
        }
        if (auto at = line.find(':'); at != std::string::npos) {
            const std::string name = Trim(line.substr(at + 1));
            if (!name.empty()) companions.push_back(name);
        }
    }
    pat.x.resize(npts);
    pat.y.resize(npts);
    pat.sigma.resize(npts);
    pat.ycalc.resize(npts);
    pat.al_x = pat.al_y = pat.al_sigma = pat.al_ycalc = true;
    pat.gy = pat.gycalc = pat.gsigma = true;
    Prf_Line(s.unit, line);
    Prf_Line(s.unit, line);
    int got = 0;
    for (int i = 1; i <= npts; ++i) {
        float v[4];
        if (List_Read(s.unit, v, 4) != List_Result::Ok) break;  // the curve ends early: keep what was read
        pat.x(i) = v[0];
        pat.y(i) = v[1];
        pat.sigma(i) = v[2];
        pat.ycalc(i) = v[3];
        got = i;
    }
    if (got < 1) {
        message = "ERROR Format Special: npts <= 0";
        return false;
    }
    pat.npts = got;
    for (auto* a : {&pat.x, &pat.y, &pat.sigma, &pat.ycalc}) a->vec().resize(static_cast<std::size_t>(got));

    // First pass: phases and their counts; second pass: the pairs themselves.
    std::vector<int> counts;
    std::vector<Text_Unit> units(companions.size());
    std::vector<std::size_t> starts(companions.size());
    for (std::size_t c = 0; c < companions.size(); ++c) {
        Text_Unit& u = units[c];
        if (!open_companion(s, companions[c], u)) {
            message = "Error open file: " + companions[c];
            return false;
        }
        int nph = 0;
        bool ok = Prf_Line(u, line) && Prf_Line(u, line) && count_after_colon(line, nph) && nph >= 0 &&
                  !Prf_Implausible(u, nph) && Prf_Line(u, line);
        for (int p = 0; ok && p < nph; ++p) {
            Edit_Reader r(Prf_Format("(i8)"), u);
            int n = 0;
            ok = r.Int(n) && n >= 0 && !Prf_Implausible(u, n);
            counts.push_back(n);
        }
        if (!ok) {
            message = "Error reading file: " + companions[c];
            return false;
        }
        starts[c] = counts.size() - static_cast<std::size_t>(nph);
    }
    const int nphases = static_cast<int>(counts.size());
    long long nrefl = 0;
    for (int n : counts) nrefl += n;
    info.nphases = nphases;
    info.refl_count.resize(nphases);
    info.kvec.assign(static_cast<std::size_t>(nphases), Array1<float>());
    for (int p = 1; p <= nphases; ++p) info.refl_count(p) = counts[static_cast<std::size_t>(p - 1)];
    info.nrefl = static_cast<int>(nrefl);
    Prf_Allocate_Reflections(info, info.nrefl);

    int j = 0;
    for (std::size_t c = 0; c < companions.size(); ++c) {
        Text_Unit& u = units[c];
        const std::size_t first = starts[c];
        const std::size_t last = c + 1 < companions.size() ? starts[c + 1] : counts.size();
        for (std::size_t p = first; p < last; ++p) {
            for (int r = 0; r < counts[p]; ++r) {
                std::string names;
                float d = 0;
                float mult = 0;
                bool ok = Prf_Line(u, names);
                std::string values;
                ok = ok && Prf_Line(u, values);
                float v[2];
                ok = ok && List_Read(values, v, 2) == List_Result::Ok;
                if (!ok) {
                    message = "Error reading file: " + companions[c];
                    return false;
                }
                d = v[0];
                mult = v[1] > -1.0e9f && v[1] < 1.0e9f ? v[1] : 0.0f;
                ++j;
                info.refl_pos(j) = d;
                info.refl_phase(j) = static_cast<int>(p) + 1;
                info.refl_code(j) = static_cast<int>(p) + 1;
                info.refl_label(j) = Cut(Trim(names) + " d=" + Prf_F(d, 8, 4) + " mult=" +
                                             Prf_I(static_cast<long long>(mult), 4), 180);
            }
        }
    }
    info.prf_type = "PRF";
    pat.scat_var = "Distance";
    Prf_Ranges(info, pat);
    return true;
}

}  // namespace hxl
