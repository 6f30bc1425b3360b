#include "patterns/format_guess.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

#include "patterns/format_guess_library.h"
#include "patterns/format_table.h"
#include "patterns/gsas_bank.h"
#include "patterns/reader_tools.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {
namespace {

using Lines = std::vector<std::string_view>;

FORMAT_GUESS_TYPE guess(int row, std::string reason, bool weak = false) {
    FORMAT_GUESS_TYPE g;
    g.row = row;
    g.reason = weak ? reason + " (weak guess: other layouts fit these lines too)" : std::move(reason);
    g.weak = weak;
    return g;
}

std::string num(double v) {
    char b[32];
    std::snprintf(b, sizeof b, "%g", v);
    return b;
}

// More than one byte in a hundred that is NUL or another control character
// no text file holds makes the head binary; a stray NUL in a title does not.
bool is_binary(std::string_view s) {
    std::size_t control = 0;
    for (unsigned char c : s) {
        if (c < 0x20 && c != '\t' && c != '\n' && c != '\r' && c != '\f' && c != '\v' && c != 0x1a) ++control;
        if (c == 0x7f) ++control;
    }
    return control * 100 > s.size();
}

// Lines end in LF, CRLF or a lone CR; a last line the head cut is left out.
Lines split_lines(std::string_view s, bool complete) {
    Lines out;
    std::size_t a = 0;
    for (std::size_t i = 0; i < s.size(); ++i) {
        if (s[i] != '\n' && s[i] != '\r') continue;
        out.push_back(s.substr(a, i - a));
        if (s[i] == '\r' && i + 1 < s.size() && s[i + 1] == '\n') ++i;
        a = i + 1;
    }
    if (a < s.size() && complete) out.push_back(s.substr(a));
    return out;
}

std::vector<std::string_view> words(std::string_view line) {
    std::vector<std::string_view> w;
    std::size_t p = 0;
    auto sep = [](char c) { return c == ' ' || c == '\t' || c == ','; };
    while (p < line.size()) {
        while (p < line.size() && sep(line[p])) ++p;
        if (p >= line.size()) break;
        std::size_t q = p;
        while (q < line.size() && !sep(line[q])) ++q;
        w.push_back(line.substr(p, q - p));
        p = q;
    }
    return w;
}

// How many words from the start of the line are numbers (at most `max`), values into `out`.
int leading_numbers(std::string_view line, double* out, int max) {
    int n = 0;
    for (std::string_view w : words(line)) {
        if (n >= max || !Parse_Real(w, out[n])) break;
        ++n;
    }
    return n;
}

// Fields of a data row as the readers take them (commas too); -1 when a field is no number or the row is blank.
int row_fields(std::string_view line, float* out = nullptr) {
    float buf[64];
    int count = 0;
    if (Is_Blank(line) || !Read_Row_Fields(line, buf, 64, count) || count == 0) return -1;
    if (out)
        for (int k = 0; k < count && k < 64; ++k) out[k] = buf[k];
    return count;
}

// The first value of a data row in double: X of adjacent rows may differ
// below the resolution of a float. A comma is the decimal sign when every
// blank-separated word of the row is one number (the readers' rule).
double first_value(std::string_view line) {
    std::vector<std::string_view> plain;  // blank-separated words
    for (std::size_t p = 0, q = 0; p < line.size(); p = q) {
        p = line.find_first_not_of(" \t", p);
        if (p == std::string_view::npos) break;
        q = std::min(line.find_first_of(" \t", p), line.size());
        plain.push_back(line.substr(p, q - p));
    }
    if (plain.empty()) return 0;
    std::string t(plain[0]);
    if (const std::size_t c = t.find(','); c != std::string::npos) {
        if (t.find('.') == std::string::npos && row_fields(line) == static_cast<int>(plain.size())) t[c] = '.';
        else t.erase(c);
    }
    double x = 0;
    return Parse_Real(t, x) ? x : 0.0;
}

bool comment(std::string_view line) {
    const std::string a = Adjustl(line);
    return !a.empty() && (a[0] == '!' || a[0] == '#');
}

// "start step end" that a fixed-step reader accepts; `n` the point count.
bool limits(const double* v, double& n) {
    if (!(v[1] > 1e-6) || !(v[2] > v[0]) || !std::isfinite(v[0]) || !std::isfinite(v[2])) return false;
    n = std::nearbyint((v[2] - v[0]) / v[1] + 1.0);
    return n >= 1 && n < 16e6;
}

std::string range_text(const double* v, double n) {
    return num(v[0]) + " to " + num(v[2]) + " step " + num(v[1]) + ", " + num(n) + " points";
}

// A row of (cell count, count) pairs in fixed columns, `iw` + `rw` wide:
// the cell counts are integers, and most of them are not blank.
bool pair_row(std::string_view line, std::size_t iw, std::size_t rw) {
    const std::string l = Trim_Right(line);
    const std::size_t w = iw + rw;
    if (l.empty() || l.size() > 10 * w || l.size() < w) return false;
    int cells = 0, pairs = 0;
    for (std::size_t c = 0; c + iw < l.size(); c += w, ++pairs) {
        float n = 0, y = 0;
        if (!Fixed_Real(l, c, iw, n) || n != std::floor(n) || n < 0 || !Fixed_Real(l, c + iw, rw, y)) return false;
        if (!Is_Blank(l.substr(c, iw)) && n >= 1) ++cells;
    }
    return pairs >= 1 && cells * 2 > pairs;
}

// Vendor exports of the PANALYTICAL row: its reader picks the sub-reader by
// the extension, so content of one kind under another name reads nothing.
FORMAT_GUESS_TYPE panalytical(const std::string& seen, const char* kind, const std::string& ext, bool ext_ok,
                              const char* named) {
    if (ext_ok) return guess(kRowPanalytical, seen + ": " + kind);
    return guess(0, seen + ": " + kind + ", but the PANALYTICAL row reads it only from a file named " + named +
                        (ext.empty() ? std::string() : " (this one ends in " + Lower(ext) + ")") +
                        ": rename the file and open it again");
}

std::string quoted(std::string_view line) {
    std::string t = Trim(line);
    if (t.size() > 40) t = t.substr(0, 37) + "...";
    return "\"" + t + "\"";
}

std::string ordinal(std::size_t i) { return "line " + std::to_string(i + 1); }

}  // namespace

FORMAT_GUESS_TYPE Guess_Pattern_Format_Text(std::string_view head, std::string_view filename, bool complete) {
    if (head.size() >= 3 && head.substr(0, 3) == "\xEF\xBB\xBF") head.remove_prefix(3);
    if (head.empty()) return guess(0, "the file is empty");
    const std::string ext = Trim(Upper_Extension(filename));

    std::string lib, what;
    if (is_binary(head)) {
        if (Library_Format_Of_Head(head, true, lib, what)) {
            FORMAT_GUESS_TYPE g = guess(kRowLibrary, "binary file with the signature of " + what + ": read through the library");
            g.library = lib;
            return g;
        }
        return guess(0, "binary content (NUL or control bytes) of no known signature: not a text pattern file");
    }
    const Lines all = split_lines(head, complete);
    Lines lines;  // from the first line that is not blank
    for (std::string_view l : all)
        if (!lines.empty() || !Is_Blank(l)) lines.push_back(l);
    if (lines.empty()) return guess(0, "only blank lines");
    const std::string first = Adjustl(lines[0]);

    // Text formats with a signature of their own, strongest first.
    if (Starts_With(first, "VAMAS Surface Chemical Analysis Standard")) {
        FORMAT_GUESS_TYPE g = guess(kRowLibrary, "first line names the VAMAS text format");
        g.library = "vamas";
        return g;
    }
    if (Starts_With(first, "*RAS_DATA_START")) {
        FORMAT_GUESS_TYPE g = guess(kRowLibrary, "\"*RAS_DATA_START\" line: Rigaku SmartLab RAS text");
        g.library = "ras";
        return g;
    }
    if (Library_Format_Of_Head(head, false, lib, what)) {
        FORMAT_GUESS_TYPE g = guess(kRowLibrary, "first line " + quoted(lines[0]) + ": " + what + ", read through the library");
        g.library = lib;
        return g;
    }
    if (head.find("<xrdMeasurement") != std::string_view::npos)
        return panalytical("XML with <xrdMeasurement>", "PANalytical XRDML", ext, ext == ".XRDML", ".xrdml");
    bool csv = false, udf = false, jcamp = false, uxd_data = false, uxd_key = false, cif_data = false, cif_pd = false;
    for (std::string_view l : lines) {
        const std::string a = Adjustl(l);
        const std::string up = Trim(Upper(a));
        csv = csv || Starts_With(a, "[Scan points]") || Starts_With(a, "[Measurement conditions]");
        udf = udf || Starts_With(a, "SampleIdent,") || Starts_With(a, "DataAngleRange,") || Starts_With(a, "RawScan");
        jcamp = jcamp || Starts_With(up, "##JCAMP-DX=") || Starts_With(up, "##TITLE=") || Starts_With(up, "## XYDATA=");
        uxd_data = uxd_data || up == "_2THETACOUNTS" || up == "_2THETACPS" || up == "_COUNTS" || up == "_CPS";
        uxd_key = uxd_key || Starts_With(up, "_FILEVERSION") || Starts_With(up, "_STEPSIZE") || Starts_With(up, "_2THETA=");
        cif_data = cif_data || Starts_With(a, "data_");
        cif_pd = cif_pd || Starts_With(a, "_pd_");
    }
    if (jcamp)
        return panalytical("\"##\" keyword lines", "JCAMP-DX text", ext, Is_Jcamp_Extension(ext), ".jcp, .jdx or .dx");
    if (csv)
        return panalytical("\"[Measurement conditions]\"/\"[Scan points]\" sections", "PANalytical CSV export", ext,
                           ext == ".CSV", ".csv");
    if (udf) return panalytical("\"Key, value\" lines up to \"RawScan\"", "Philips UDF", ext, ext == ".UDF", ".udf");
    if (uxd_data) return guess(kRowSocabim, "\"_2THETACOUNTS\"-style data marker: Bruker/Socabim UXD");
    if (uxd_key) return guess(kRowSocabim, "\"_KEY=value\" lines such as _STEPSIZE: Bruker/Socabim UXD", true);
    if (cif_data && cif_pd) return guess(kRowCif, "CIF \"data_\" block with \"_pd_\" items: powder CIF");
    if (cif_data) return guess(0, "CIF \"data_\" block without \"_pd_\" items in its first lines: no powder pattern seen");

    // GSAS raw files: the bins of the banks decide between the rows.
    int banks = 0, const_banks = 0;
    GSAS_BANK_TYPE bank, first_bank;
    for (std::string_view l : lines) {
        const std::string a = Adjustl(l);
        if (!Starts_With(Upper(a), "BANK") || !Parse_Bank_Line(a, bank)) continue;
        if (banks++ == 0) first_bank = bank;
        if (bank.bintyp == "CONST" || bank.bintyp == "CONS") ++const_banks;
    }
    if (banks > 0) {
        const std::string seen = "BANK line with " + first_bank.bintyp + " bins (" + first_bank.type + " records)";
        if (const_banks == banks)
            return guess(10, seen + ": GSAS constant wavelength" +
                                 (banks > 1 ? "; " + std::to_string(banks) + " banks seen, the GSAS row reads the first"
                                            : std::string()));
        return guess(kRowIsis, seen + ": GSAS time of flight, every bank read");
    }
    if (Starts_With(Upper(first), "XYDATA")) return guess(kRowXYSigma, "\"XYDATA\" first line: XY columns");

    const std::size_t n = lines.size();
    double v[8];
    double npts = 0;
    auto numbers_on = [&](std::size_t i, int want) { return i < n && leading_numbers(lines[i], v, 8) >= want; };

    // KV8: monitor, start and step in fixed columns, a count line, pairs of 2 + 8 columns.
    if (n >= 7 && lines[4].size() >= 85) {
        float mon = 0, start = 0, step = 0, t = 0, count = 0;
        const std::string_view l5 = lines[4];
        if (Fixed_Real(l5, 0, 13, mon) && Fixed_Real(l5, 23, 8, start, 3) && Fixed_Real(l5, 76, 9, step, 3) &&
            Fixed_Real(l5, 85, 9, t, 3) && step > 0 && Fixed_Real(lines[5], 0, 4, count) && count >= 1 &&
            count == std::floor(count) && pair_row(lines[6], 2, 8))
            return guess(2, "monitor, start and step in fixed columns, a count line of " + num(count) +
                                " and cell/count pairs of 10 columns: KV8/KW2 layout");
    }
    // KG1: a line of count, temperatures, variance flag, monitor and norm, then limits agreeing with the count.
    for (std::size_t i = 2, text = 0; i < n && text < 3; ++i) {
        const std::string a = Adjustl(lines[i]);
        if (Starts_With(a, "!")) continue;
        double h[6];
        if (leading_numbers(a, h, 6) < 6 || words(a).size() != 6) {
            ++text;
            continue;
        }
        if (numbers_on(i + 1, 3) && words(lines[i + 1]).size() == 3 && h[0] >= 2 && h[0] == std::floor(h[0]) &&
            h[3] == std::floor(h[3]) &&
            limits(v, npts) && std::fabs((v[2] - v[0]) / v[1] + 1.0 - h[0]) <= 1.5)
            return guess(4, "a head line of " + num(h[0]) + " points, temperatures, variance flag, monitor, then " +
                                range_text(v, npts) + ": KG1 layout");
        break;
    }
    // KV7: step in columns 17-24, start, normalisation and monitor, pairs of 2 + 6 columns.
    if (n >= 5) {
        float step = 0, start = 0, a = 0, b = 0;
        double one[2];
        if (lines[1].size() >= 17 && Fixed_Real(lines[1], 16, 8, step, 3) && step > 0 &&
            leading_numbers(lines[2], one, 2) == 1 && words(lines[2]).size() == 1 && Fixed_Real(lines[2], 0, 8, start, 3) &&
            Fixed_Real(lines[3], 0, 8, a) && Fixed_Real(lines[3], 8, 8, b) && pair_row(lines[4], 2, 6))
            return guess(5, "step " + num(step) + " in columns 17-24, start " + num(start) +
                                ", monitor line, then cell/count pairs of 8 columns: KV7/KV9/KG3/KG4 layout");
    }
    // TimeVariable: three head lines, limits, then (time, count) pairs of 6 + 10 columns.
    if (n >= 5 && numbers_on(3, 3) && words(lines[3]).size() == 3 && limits(v, npts) && row_fields(lines[4]) >= 2) {
        const std::string row = Trim_Right(lines[4]);
        float tmin = 1e30f, tmax = 0;
        bool ok = row.size() > 6;
        for (std::size_t c = 0; ok && c + 6 < row.size(); c += 16) {
            float t = 0, y = 0;
            ok = Fixed_Real(row, c, 6, t) && Fixed_Real(row, c + 6, 10, y) && t > 0;
            tmin = std::min(tmin, t), tmax = std::max(tmax, t);
        }
        if (ok && tmax <= 20 * tmin)
            return guess(13, "three head lines, " + range_text(v, npts) +
                                 ", then pairs of counting time and count in 16 columns: variable counting time layout");
    }
    // NLS: title, "!" comments, limits, then a row of counts and a row of their sigma in turn.
    for (std::size_t i = 1; i + 2 < n; ++i) {
        if (Starts_With(Adjustl(lines[i]), "!")) continue;
        float y[64], s[64];
        const int ky = row_fields(lines[i + 1], y), ks = row_fields(lines[i + 2], s);
        if (!numbers_on(i, 3) || !limits(v, npts) || ky < 1 || ky > 10 || ks != ky) break;
        int big = 0, fits = 0;
        for (int k = 0; k < ky; ++k) {
            if (y[k] <= 4) continue;
            ++big;
            const float r = s[k] / std::sqrt(y[k]);
            fits += r > 0.3f && r < 3.0f;
        }
        if (big >= 3 && fits == big)
            return guess(3, "title, " + range_text(v, npts) +
                                ", then rows of counts each followed by a row of their sigma: NLS layout");
        break;
    }
    // DMC/HRPT: two head lines, limits on line 3, then up to ten counts a line.
    if (n >= 4 && row_fields(lines[0]) < 0 && row_fields(lines[1]) < 0 && numbers_on(2, 3) && limits(v, npts) &&
        npts >= 20) {
        const int k = row_fields(lines[3]);
        if (k >= 1 && k <= 10) {
            const bool psi = Upper(lines[1]).find("LAMBDA=") != std::string::npos;
            return guess(7, std::string(psi ? "a \"lambda=\" second line, " : "two head lines, ") + range_text(v, npts) +
                                " on line 3, then ten counts a line: PSI DMC/HRPT layout",
                         !psi);
        }
    }
    // Old KV7: an optional title, "step start end", then pairs of 2 + 6 columns.
    for (std::size_t i = 0; i < 2 && i + 1 < n; ++i) {
        if (!numbers_on(i, 3)) continue;
        const double lim[3] = {v[1], v[0], v[2]};
        if (limits(lim, npts) && pair_row(lines[i + 1], 2, 6))
            return guess(6, std::string(i ? "title, " : "") + "\"step start end\" (" + range_text(lim, npts) +
                                "), then cell/count pairs of 8 columns: old KV7 layout");
        break;
    }

    // Free format: up to seven head lines, "start step end", then counts;
    // XY columns: rows of the same number of values with X rising or falling.
    std::size_t head_lines = 0;
    for (std::size_t i = 0; i < n; ++i) {
        if (comment(lines[i])) continue;
        if (numbers_on(i, 3) && limits(v, npts) && npts >= 11 && v[1] <= v[2]) {
            const int k0 = row_fields(lines[i]);
            int same = 0, rising = 0;
            float a[64], b[64];
            for (std::size_t j = i + 1; j < n && j <= i + 3; ++j)
                if (row_fields(lines[j], b) == k0 && row_fields(lines[j - 1], a) == k0) {
                    ++same;
                    rising += b[0] > a[0];
                }
            if (i + 1 < n && row_fields(lines[i + 1]) >= 1 && !(k0 >= 2 && same >= 2 && rising == same))
                return guess(kRowFree,
                             (head_lines ? std::to_string(head_lines) + " head line(s), then " : std::string()) +
                                 "a \"start step end\" line (" + range_text(v, npts) + ") then counts: free format",
                             head_lines > 0);
        }
        if (row_fields(lines[i]) >= 1 || ++head_lines > 7) break;
    }
    std::size_t first_row = n;
    for (std::size_t i = 0; i < n && i < 200; ++i)
        if (!comment(lines[i]) && row_fields(lines[i]) >= 2) {
            first_row = i;
            break;
        }
    if (first_row < n) {
        const int k = row_fields(lines[first_row]);
        double x = first_value(lines[first_row]);
        int rows = 1, up = 0, down = 0;
        for (std::size_t j = first_row + 1; j < n && rows < 20; ++j) {
            if (comment(lines[j]) || Is_Blank(lines[j])) continue;
            if (row_fields(lines[j]) != k) break;
            const double xj = first_value(lines[j]);
            ++rows;
            up += xj > x;
            down += xj < x;
            x = xj;
        }
        const bool mono = (up == rows - 1) || (down == rows - 1);
        if (rows >= 2 && mono && k <= 6)
            return guess(kRowXYSigma, "columns of numbers (" + std::to_string(k) + " a row" +
                                          (first_row ? ", after " + std::to_string(first_row) + " head line(s)" : "") +
                                          ") with X " + (up ? "rising" : "falling") + ": XY columns");
    }
    if (n == 1) return guess(0, "one line only: too little to tell a layout");
    return guess(0, "no layout of the format table fits the first lines (" + ordinal(0) + ": " + quoted(lines[0]) + ")");
}

FORMAT_GUESS_TYPE Guess_Pattern_Format(const std::string& path) {
    std::error_code ec;
    if (std::filesystem::is_directory(path, ec)) return guess(0, "a folder, not a file");
    if (!std::filesystem::is_regular_file(path, ec)) return guess(0, "not a regular file, or it does not exist");
    std::ifstream in(path, std::ios::binary);
    if (!in) return guess(0, "the file cannot be opened for reading");
    std::string head(kGuessHeadBytes, '\0');
    in.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(in.gcount()));
    const bool complete = head.size() < kGuessHeadBytes || in.peek() == std::char_traits<char>::eof();
    std::string name = path;
    if (const std::size_t sep = name.find_last_of('/'); sep != std::string::npos) name.erase(0, sep + 1);
    return Guess_Pattern_Format_Text(head, name, complete);
}

}  // namespace hxl
