// Vendor files through xylib. The library reads in a child process (a
// damaged file can crash it or make it loop), in the "C" numeric locale, so
// that neither its faults nor the user's decimal comma reach the profiles;
// the profiles are made here from what it returns.
#include "patterns/read_pattern_library.h"

#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <locale.h>
#include <new>
#include <string_view>

#include "patterns/format_table.h"
#include "patterns/library_data.h"
#include "patterns/library_load.h"
#include "patterns/read_pattern.h"
#include "support/fixed_text.h"
#include "support/isolated_call.h"

namespace hxl {
namespace {

constexpr std::string_view kLibraryError = " Error reading the file through the format library: ";
constexpr long long kMaxFileBytes = 1LL << 30;

// The numeric locale of this thread set to "C" while the object lives.
class C_Numeric_Locale {
public:
    C_Numeric_Locale() : c_(newlocale(LC_ALL_MASK, "C", locale_t(0))) {
        if (c_) old_ = uselocale(c_);
    }
    ~C_Numeric_Locale() {
        if (c_) {
            uselocale(old_);
            freelocale(c_);
        }
    }
    C_Numeric_Locale(const C_Numeric_Locale&) = delete;
    C_Numeric_Locale& operator=(const C_Numeric_Locale&) = delete;

private:
    locale_t c_;
    locale_t old_ = locale_t(0);
};

const std::string* meta_value(const Library_Block& block, const Library_Data& set, std::string_view key) {
    for (const Library_Meta* m : {&block.meta, &set.meta})
        for (const auto& [k, v] : *m)
            if (k == key) return &v;
    return nullptr;
}

// The first of `keys` that holds a positive number below `limit`, else 0.
float meta_number(const Library_Block& block, const Library_Data& set, std::initializer_list<std::string_view> keys,
                  double limit) {
    for (std::string_view key : keys) {
        const std::string* v = meta_value(block, set, key);
        if (!v) continue;
        char* end = nullptr;
        const double d = std::strtod(v->c_str(), &end);
        if (end != v->c_str() && std::isfinite(d) && d > 0.0 && d < limit) return static_cast<float>(d);
    }
    return 0.0f;
}

std::string meta_text(const Library_Block& block, const Library_Data& set, std::initializer_list<std::string_view> keys) {
    for (std::string_view key : keys) {
        const std::string* v = meta_value(block, set, key);
        if (!v) continue;
        std::string t = Trim(*v);
        while (!t.empty() && t.back() == '_') t.pop_back();  // fixed fields padded with underscores
        if (!t.empty() && Lower(t) != "not specified") return t;
    }
    return {};
}

bool has_word(const std::string& lower, std::initializer_list<std::string_view> words) {
    for (std::string_view w : words)
        if (lower.find(w) != std::string::npos) return true;
    return false;
}

// Formats whose X column is 2theta by their layout, whatever it is called.
bool two_theta_format(const std::string& format) {
    static constexpr std::string_view kNames[] = {"bruker_raw", "philips_rd", "cpi", "dbws",
                                                  "xfit_xdd",   "riet7",      "rigaku_dat", "uxd"};
    for (std::string_view n : kNames)
        if (format == n) return true;
    return false;
}

// scat_var and the axis legend from the X column's name; a unit only where the file gives one.
void set_x_space(DIFFRACTION_PATTERN_TYPE& p, const std::string& column, const std::string& unit,
                 const std::string& format) {
    const std::string name = Trim(column);
    std::string key = Lower(name);
    std::erase_if(key, [](char c) { return c == ' ' || c == '-' || c == '_'; });
    const std::string legend = unit.empty() ? name : name + " (" + unit + ")";
    if (has_word(key, {"2theta", "twotheta"}) || (name.empty() && two_theta_format(format))) {
        p.scat_var = "2theta";
        p.xax_text = "2theta(degrees)";
    } else if (has_word(key, {"channel"})) {
        p.scat_var = "Channel";
        p.xax_text = Cut(legend, kAxisLen);
    } else if (has_word(key, {"energy"})) {
        p.scat_var = "Energy";
        p.xax_text = Cut(legend, kAxisLen);
    } else if (has_word(key, {"time"})) {
        p.scat_var = "Time";
        p.xax_text = Cut(legend, kAxisLen);
    } else if (!name.empty()) {
        p.scat_var = Cut(name, kScatLen);
        p.xax_text = Cut(legend, kAxisLen);
    } else if (format == "canberra_mca" || format == "canberra_cnf") {
        // The X of these spectra is the calibrated energy, or the channel when
        // the file has no calibration; the calibration's unit is not stated.
        bool channels = true;
        for (int i = 1; i <= p.npts && channels; ++i) channels = p.x(i) == std::floor(p.x(i));
        p.scat_var = channels ? "Channel" : "Energy";
        p.xax_text = channels ? "Channel" : "Energy";
    } else {
        p.scat_var = "unknown";
        p.xax_text = "X";
    }
}

// Canberra MCA files hold their 32-bit counts in PDP-11 word order (high
// word first), as they hold their calibration as VAX floats; xylib 1.6 takes
// the counts as little-endian, every count then reading 65536 times too high.
// The words are put back in order; a value that is no 32-bit count is refused.
bool pdp_count(double& v) {
    if (!(v >= 0.0 && v < 4294967296.0) || v != std::floor(v)) return false;
    const auto u = static_cast<std::uint32_t>(v);
    v = static_cast<double>((u << 16) | (u >> 16));
    return true;
}

// One block as a profile; false with the message when a value is no finite float.
bool block_pattern(const Library_Data& set, const Library_Block& block, const std::string& file,
                   DIFFRACTION_PATTERN_TYPE& p, std::string& message) {
    const std::string& format = set.format;
    const int n = static_cast<int>(block.x.size());
    const bool has_sigma = !block.sigma.empty();
    Allocate_Pattern(p, n);
    if (ERR_Pattern) return false;
    for (int i = 0; i < n; ++i) {
        const auto k = static_cast<std::size_t>(i);
        double x = block.x[k], y = block.y[k];
        const double s = has_sigma ? block.sigma[k] : 0.0;
        if ((format == "canberra_mca" && !pdp_count(y)) || !Finite_Float(x) || !Finite_Float(y) ||
            (has_sigma && !Finite_Float(s * s))) {
            message = " Not a finite number at point " + std::to_string(i + 1) + " of block " +
                      std::to_string(block.index + 1) + " of the file";
            return false;
        }
        p.x(i + 1) = static_cast<float>(x);
        p.y(i + 1) = static_cast<float>(y);
        const float var = has_sigma ? static_cast<float>(s * s) : std::fabs(p.y(i + 1));
        p.sigma(i + 1) = var < 1e-6f ? 1.0f : var;
    }
    p.ct_step = block.x_step != 0.0;
    p.sig_var = true;

    std::string unit;
    if (const std::string* u = meta_value(block, set, "abscissa units")) unit = Trim(*u);
    set_x_space(p, block.x_name, unit, format);
    p.yax_text = "Intensity (arb. units)";
    p.diff_kind = "unknown";
    if (p.scat_var == "2theta" && meta_value(block, set, "ANODE_MATERIAL")) p.diff_kind = "xrays_cw";
    p.instr = Cut(std::string(Format_Row(kRowLibrary).code) + "LIBRARY", kInstrLen);

    // Wavelength keys as xylib names them: Bruker RAW "ALPHA1", "ALPHA2",
    // "ALPHA_RATIO" and the block's "USED_LAMBDA"; Philips RD "K_ALPHA1",
    // "K_ALPHA2"; older RAW versions "WL1", "WL2"; pdCIF "pd_proc_wavelength".
    p.lambda1 = meta_number(block, set, {"ALPHA1", "K_ALPHA1", "WL1", "USED_LAMBDA", "pd_proc_wavelength"}, 100.0);
    p.lambda2 = p.lambda1 > 0 ? meta_number(block, set, {"ALPHA2", "K_ALPHA2", "WL2"}, 100.0) : 0.0f;
    p.ratio = p.lambda2 > 0 ? meta_number(block, set, {"ALPHA_RATIO", "INTENSITY_RATIO", "RATIO"}, 10.0) : 0.0f;

    std::string title = file;
    if (set.block_count > 1) title += " block " + std::to_string(block.index + 1);
    if (std::string name = Trim(block.name); !name.empty()) title += " " + name;
    if (std::string sample = meta_text(block, set, {"SAMPLE_ID", "description", "sample identifier", "SampleIdent"});
        !sample.empty())
        title += ": " + sample;
    p.title = Cut(title, kTitleLen);
    Finish_Library_Scan(p);
    return true;
}

// The library's reading, in the child: its result, or 'E' and the refusal.
std::string load_in_child(const std::string& bytes, const std::string& filename, int max_patterns) {
    const C_Numeric_Locale c_locale;
    Library_Data data;
    std::string refusal;
    try {
        refusal = Load_Library_Data(bytes, filename, max_patterns, data);
    } catch (const std::bad_alloc&) {
        refusal = std::string(kLibraryError) + "out of memory";
    } catch (const std::exception& e) {
        refusal = std::string(kLibraryError) + e.what();
    } catch (...) {
        refusal = std::string(kLibraryError) + "unknown failure";
    }
    return refusal.empty() ? "D" + Encode_Library_Data(data) : "E" + refusal;
}

// Seconds the library may take: generous for a large file, short enough that
// a reader caught in a loop is stopped while the user still waits.
double time_allowed(std::size_t size) { return 8.0 + static_cast<double>(size) / 1e6; }

void read_isolated(const std::string& bytes, const std::string& filename,
                   std::vector<DIFFRACTION_PATTERN_TYPE>& patterns, int max_patterns, int& left_out) {
    std::string out;
    // Doubles for a few columns of every byte, at worst.
    const std::size_t memory = (std::size_t(1) << 32) + 32 * bytes.size();
    const Isolated_End end = Run_Isolated([&] { return load_in_child(bytes, filename, max_patterns); }, out,
                                          time_allowed(bytes.size()), memory);
    switch (end) {
        case Isolated_End::Done:
            break;
        case Isolated_End::Crashed:
        case Isolated_End::Failed:
            return Set_Pattern_Error(std::string(kLibraryError) + "the library failed on damaged data in the file");
        case Isolated_End::Out_Of_Memory:
            return Set_Pattern_Error(std::string(kLibraryError) + "out of memory");
        case Isolated_End::Timed_Out:
            return Set_Pattern_Error(std::string(kLibraryError) + "no result after " +
                                     std::to_string(static_cast<int>(time_allowed(bytes.size()))) + " s");
        case Isolated_End::Not_Started:
            return Set_Pattern_Error(std::string(kLibraryError) + "no process could be started for it");
    }
    if (!out.empty() && out[0] == 'E') return Set_Pattern_Error(out.substr(1));
    Library_Data data;
    if (out.empty() || out[0] != 'D' || !Decode_Library_Data(out.substr(1), data))
        return Set_Pattern_Error(std::string(kLibraryError) + "its result came back incomplete");
    left_out = data.left_out;
    std::string path, file;
    Split_File_Name(filename, path, file);
    for (const Library_Block& block : data.blocks) {
        DIFFRACTION_PATTERN_TYPE p;
        std::string message;
        if (!block_pattern(data, block, file, p, message)) {
            if (!ERR_Pattern) Set_Pattern_Error(message);
            patterns.clear();
            return;
        }
        p.filename = file;
        p.filepath = path;
        patterns.push_back(std::move(p));
    }
}

bool read_bytes(const std::string& name, std::string& bytes) {
    std::ifstream in(name, std::ios::binary | std::ios::ate);
    if (!in) {
        Set_Pattern_Error(" Error opening the file: " + name);
        return false;
    }
    const long long size = static_cast<long long>(in.tellg());
    if (size < 0 || size > kMaxFileBytes) {
        Set_Pattern_Error(" The file is too large to be a pattern file: " + name);
        return false;
    }
    bytes.resize(static_cast<std::size_t>(size));
    in.seekg(0);
    if (!in.read(bytes.data(), size)) {
        Set_Pattern_Error(" Error reading the file: " + name);
        return false;
    }
    return true;
}

// The raw detector files of the raw-data command also end in ".raw": a text
// whose second line holds the "lambda :" field.
bool raw_detector_text(const std::string& bytes) {
    const std::string_view head = std::string_view(bytes).substr(0, 4096);
    if (head.find('\0') != std::string_view::npos) return false;
    const std::size_t eol = head.find_first_of("\r\n");
    if (eol == std::string_view::npos) return false;
    std::size_t second = head.find_first_not_of("\r\n", eol);
    if (second == std::string_view::npos || second > eol + 2) return false;
    const std::string_view line = head.substr(second, head.find_first_of("\r\n", second) - second);
    return Lower(line).find("lambda :") != std::string::npos;
}

bool ras_text(const std::string& bytes, const std::string& filename) {
    std::size_t at = bytes.find_first_not_of(" \t\r\n");
    if (Starts_With(bytes, "\xEF\xBB\xBF")) at = 3;
    return (at != std::string::npos && std::string_view(bytes).substr(at).starts_with("*RAS_DATA_START")) ||
           Trim_Right(Upper_Extension(filename)) == ".RAS";
}

}  // namespace

void Read_Library_Bytes(const std::string& bytes, const std::string& filename,
                        std::vector<DIFFRACTION_PATTERN_TYPE>& patterns, int max_patterns, int& left_out) {
    patterns.clear();
    left_out = 0;
    Clear_Pattern_Error();
    if (max_patterns < 1) return;
    if (bytes.empty()) {
        Set_Pattern_Error(" The file is empty");
        return;
    }
    if (ras_text(bytes, filename)) {
        Text_Unit unit;
        unit.Set_Text(bytes);
        Read_Pattern_Ras(unit, patterns, max_patterns, left_out);
        if (ERR_Pattern) return patterns.clear();
        std::string path, file;
        Split_File_Name(filename, path, file);
        for (auto& p : patterns) {
            p.title = Cut(file + " " + p.title, kTitleLen);
            p.filename = file;
            p.filepath = path;
        }
        return;
    }
    if (Trim_Right(Upper_Extension(filename)) == ".RAW" && raw_detector_text(bytes)) {
        Set_Pattern_Error(" This is a raw detector file: open it with Open Raw Data file (SLR: KG3, KG2)");
        return;
    }
    read_isolated(bytes, filename, patterns, max_patterns, left_out);
    if (ERR_Pattern) patterns.clear();
}

void Read_Pattern_Library(const std::string& filename, std::vector<DIFFRACTION_PATTERN_TYPE>& patterns,
                          int max_patterns, int& left_out) {
    patterns.clear();
    left_out = 0;
    Clear_Pattern_Error();
    std::string bytes;
    if (!read_bytes(filename, bytes)) return;
    Read_Library_Bytes(bytes, filename, patterns, max_patterns, left_out);
}

}  // namespace hxl
