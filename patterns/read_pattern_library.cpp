// Vendor files through xylib. Everything the library does runs inside one
// try block, in the "C" numeric locale of this thread only, so that neither
// its exceptions nor the user's decimal comma reach the profiles.
#include "patterns/read_pattern_library.h"

#include "patterns/library_check.h"
#include "patterns/library_heads.h"

#include <xylib/xylib.h>

#include <clocale>
#include <mutex>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <locale.h>
#include <memory>
#include <sstream>
#include <string_view>

#include "patterns/format_table.h"
#include "patterns/read_pattern.h"
#include "support/fixed_text.h"

#if defined(__SANITIZE_ADDRESS__)
#define ZD_LEAK_CHECK 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZD_LEAK_CHECK 1
#endif
#endif
#ifdef ZD_LEAK_CHECK
// xylib 1.6 loses the block it is filling when a file ends early or breaks
// its layout (Bruker RAW load_version1_01, VAMAS read_block, ...): a few
// kilobytes per refused file, allocated inside the library and out of reach
// of any wrapper. The data set itself is ours and freed (see read_dataset).
extern "C" const char* __lsan_default_suppressions() { return "leak:libxy.so\n"; }
#endif

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

bool starts(const std::string& bytes, std::string_view head) { return std::string_view(bytes).starts_with(head); }

// xylib's name of the format: the magic numbers of the file first, then the
// extension, then the checks of the formats that have a signature.
std::string library_format(const std::string& bytes, const std::string& filename) {
    if (starts(bytes, "RAW")) return "bruker_raw";  // "RAW ", "RAW2", "RAW1.01", "RAW4.00"
    if (starts(bytes, "V3RD") || starts(bytes, "V5RD")) return "philips_rd";
    if (starts(bytes, "VAMAS Surface Chemical Analysis Standard")) return "vamas";
    if (starts(bytes, "SIETRONICS XRD SCAN")) return "cpi";
    static constexpr std::pair<std::string_view, const char*> kByExtension[] = {
        {".RAW", "bruker_raw"}, {".RD", "philips_rd"},  {".SD", "philips_rd"},    {".CPI", "cpi"},
        {".VMS", "vamas"},      {".CHI", "chiplot"},    {".XDD", "xfit_xdd"},     {".DBW", "dbws"},
        {".RIT", "riet7"},      {".MCA", "canberra_mca"}, {".CNF", "canberra_cnf"},
    };
    const std::string ext = Trim_Right(Upper_Extension(filename));
    for (const auto& [e, name] : kByExtension)
        if (ext == e) return name;
    // Else the formats whose check looks at a signature (the library's checks
    // of plain column layouts accept nearly any text, and its own text reader
    // can loop for seconds on a damaged file, so neither is used).
    static constexpr const char* kSigned[] = {"bruker_raw", "philips_rd", "canberra_cnf", "canberra_mca",
                                              "cpi",        "rigaku_dat"};
    for (const char* name : kSigned) {
        std::istringstream in(bytes);
        if (Library_Check(static_cast<const xylib::FormatInfo*>(xylib_get_format_by_name(name)), in, nullptr))
            return name;
    }
    return "";
}

const std::string* meta_value(const xylib::Block& block, const xylib::DataSet& set, std::string_view key) {
    const std::string k(key);
    if (block.meta.has_key(k)) return &block.meta.get(k);
    if (set.meta.has_key(k)) return &set.meta.get(k);
    return nullptr;
}

// The first of `keys` that holds a positive number below `limit`, else 0.
float meta_number(const xylib::Block& block, const xylib::DataSet& set, std::initializer_list<std::string_view> keys,
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

std::string meta_text(const xylib::Block& block, const xylib::DataSet& set, std::initializer_list<std::string_view> keys) {
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

bool sigma_column(const std::string& name) {
    const std::string l = Lower(Trim(name));
    return has_word(l, {"sigma", "err", "esd", "uncert"}) || l == "s.u." || l == "su";
}

// One block as a profile; false with the message when a value is no finite float.
bool block_pattern(const xylib::DataSet& set, int b, const std::string& format, const std::string& file,
                   DIFFRACTION_PATTERN_TYPE& p, std::string& message) {
    const xylib::Block& block = *set.get_block(b);
    const int n = block.get_point_count();
    const int ncol = block.get_column_count();
    const xylib::Column& xc = block.get_column(ncol >= 2 ? 1 : 0);
    const xylib::Column& yc = block.get_column(ncol >= 2 ? 2 : 1);
    const xylib::Column* sc = ncol >= 3 && sigma_column(block.get_column(3).get_name()) ? &block.get_column(3) : nullptr;
    Allocate_Pattern(p, n);
    if (ERR_Pattern) return false;
    for (int i = 0; i < n; ++i) {
        double x = xc.get_value(i), y = yc.get_value(i);
        const double s = sc ? sc->get_value(i) : 0.0;
        if ((format == "canberra_mca" && !pdp_count(y)) || !Finite_Float(x) || !Finite_Float(y) ||
            (sc && !Finite_Float(s * s))) {
            message = " Not a finite number at point " + std::to_string(i + 1) + " of block " + std::to_string(b + 1) +
                      " of the file";
            return false;
        }
        p.x(i + 1) = static_cast<float>(x);
        p.y(i + 1) = static_cast<float>(y);
        const float var = sc ? static_cast<float>(s * s) : std::fabs(p.y(i + 1));
        p.sigma(i + 1) = var < 1e-6f ? 1.0f : var;
    }
    p.ct_step = xc.get_step() != 0.0;
    p.sig_var = true;

    std::string unit;
    if (const std::string* u = meta_value(block, set, "abscissa units")) unit = Trim(*u);
    set_x_space(p, xc.get_name(), unit, format);
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
    if (set.get_block_count() > 1) title += " block " + std::to_string(b + 1);
    if (std::string name = Trim(block.get_name()); !name.empty()) title += " " + name;
    if (std::string sample = meta_text(block, set, {"SAMPLE_ID", "description", "sample identifier", "SampleIdent"});
        !sample.empty())
        title += ": " + sample;
    p.title = Cut(title, kTitleLen);
    Finish_Library_Scan(p);
    return true;
}

void read_dataset(const std::string& bytes, const std::string& filename, std::vector<DIFFRACTION_PATTERN_TYPE>& patterns,
                  int max_patterns, int& left_out) {
    const std::string format = library_format(bytes, filename);
    // The C table holds the library's FormatInfo records under their C base.
    const xylibFormat* found = format.empty() ? nullptr : xylib_get_format_by_name(format.c_str());
    const auto* fi = static_cast<const xylib::FormatInfo*>(found);
    if (!fi) {
        Set_Pattern_Error(" The format library knows no format for this file");
        return;
    }
    {
        std::istringstream in(bytes);
        if (!Library_Check(fi, in, nullptr)) {
            Set_Pattern_Error(std::string(" The file is not a valid ") + fi->desc + " file");
            return;
        }
    }
    std::string why;
    // The library's VAMAS reader overflows the stack on damaged heads (found
    // by fuzzing): such files are refused rather than allowed to end the program.
    if (format == "vamas")
        return Set_Pattern_Error(" VAMAS (surface analysis) files are not read: the format library's reader of them "
                                 "is not safe on damaged files");
    if (format == "chiplot" && !Chiplot_Head_Plausible(bytes, why))
        return Set_Pattern_Error(" The ChiPlot file is damaged: " + why);
    // The data set is made here rather than by xylib::load_string, which
    // loses it when the reading throws.
    std::unique_ptr<xylib::DataSet> set(fi->ctor());
    {
        std::istringstream in(bytes);
        set->load_data(in, filename.c_str());
    }
    if (set->get_block_count() < 1) {
        Set_Pattern_Error(" The format library found no data in the file");
        return;
    }
    std::string path, file;
    Split_File_Name(filename, path, file);
    for (int b = 0; b < set->get_block_count(); ++b) {
        const int n = set->get_block(b)->get_point_count();
        if (n < 2 || static_cast<int>(patterns.size()) >= max_patterns) {
            ++left_out;  // a single point, a generator column, or past the limit
            continue;
        }
        DIFFRACTION_PATTERN_TYPE p;
        std::string message;
        if (!block_pattern(*set, b, format, file, p, message)) {
            if (!ERR_Pattern) Set_Pattern_Error(message);
            patterns.clear();
            return;
        }
        p.filename = file;
        p.filepath = path;
        patterns.push_back(std::move(p));
    }
    if (patterns.empty()) Set_Pattern_Error(" No block of the file holds two points or more");
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
    if (starts(bytes, "\xEF\xBB\xBF")) at = 3;
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
    const C_Numeric_Locale c_locale;
    // Folders are read on worker threads; the library was not written for
    // that, so one file at a time goes through it. The lock is taken outside
    // the try, so that no exception of the library unwinds through it.
    static std::mutex library_lock;
    const std::lock_guard<std::mutex> hold(library_lock);
    try {
        read_dataset(bytes, filename, patterns, max_patterns, left_out);
    } catch (const std::exception& e) {
        patterns.clear();
        Set_Pattern_Error(std::string(kLibraryError) + e.what());
    } catch (...) {
        patterns.clear();
        Set_Pattern_Error(std::string(kLibraryError) + "unknown failure");
    }
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
