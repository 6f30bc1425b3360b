#include "patterns/read_pattern.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "patterns/format_table.h"
#include "patterns/pattern_checks.h"
#include "patterns/pattern_readers.h"
#include "patterns/read_pattern_library.h"
#include "support/fixed_text.h"
#include "support/text_unit.h"

namespace hxl {
namespace {

// Empty when `name` is a readable kind of file, else the reason it is not.
std::string not_a_file(const std::string& name) {
    std::error_code ec;
    const auto st = std::filesystem::status(name, ec);
    if (ec || !std::filesystem::exists(st)) return " The file " + name + " doesn't exist";
    if (std::filesystem::is_directory(st)) return " " + name + " is a folder, not a file: open it as a folder of patterns";
    if (!std::filesystem::is_regular_file(st)) return " " + name + " is a device or a pipe, not a pattern file";
    return {};
}

// The fixed values a case row writes after its reader returned.
void fixed_kind(DIFFRACTION_PATTERN_TYPE& p, const char* kind, const char* scat, const char* xax) {
    p.diff_kind = kind;
    p.scat_var = scat;
    p.xax_text = xax;
    p.yax_text = "Intensity (arb. units)";
    p.ct_step = true;
}

void set_instr(DIFFRACTION_PATTERN_TYPE& p, int row, const std::string& mode) {
    p.instr = Cut(std::string(Format_Row(row).code) + mode, kInstrLen);
}

}  // namespace

void Split_File_Name(const std::string& fullname, std::string& path, std::string& name) {
    std::size_t sep = fullname.find_last_of('/');
    if (sep == std::string::npos) {
        name = Cut(fullname, kFileLen);
        path = "./";
    } else {
        name = Cut(fullname.substr(sep + 1), kFileLen);
        path = Cut(fullname.substr(0, sep + 1), kFileLen);
    }
}

namespace {

// Loads a pattern file whole; false with the pattern error set.
bool open_pattern_file(const std::string& name, Text_Unit& unit) {
    if (std::string why = not_a_file(name); !why.empty()) {
        Set_Pattern_Error(why);
        return false;
    }
    if (!unit.Open(name)) {
        Set_Pattern_Error(" Error opening the file: " + name);
        return false;
    }
    return true;
}

// One block of a file (1-based); `nblocks` tells how many the file holds for
// the formats that have several, 1 for the others. `loaded`, when given, is
// the file already read (by the first block), so that a file of many blocks
// is read from the disk once.
void read_block(const std::string& filename, DIFFRACTION_PATTERN_TYPE& p, const std::optional<std::string>& mode,
                std::optional<bool> sig, std::string* header, int block, int& nblocks, Text_Unit* loaded = nullptr) {
    Clear_Pattern_Error();
    nblocks = 1;
    const std::string name = Trim(filename);
    Text_Unit own;
    Text_Unit& unit = loaded ? *loaded : own;
    if (loaded) unit.Rewind();
    else if (!open_pattern_file(name, unit)) return;
    Split_File_Name(name, p.filepath, p.filename);
    p.sig_var = true;  // every reader fills sigma with variances, also when the record is reused

    std::string work = mode ? Cut(Trim(Upper(*mode)), 12) : std::string("DEFAULT");
    std::string bank;
    if (Starts_With(work, "GSASTOF")) {
        bank = (work.size() < 8 || work[7] == ' ') ? std::string("TOF ") : std::string("TOF") + work[7];
        work = "GSASTOF";
    }
    const std::string ext = Upper_Extension(p.filename);

    auto row_of = [](const char* m) { return Format_Row_From_Mode(m); };
    if (work == "CIF") {
        Read_Pattern_Cif(unit, p, block, nblocks);
        p.yax_text = "Intensity (arb. units)";
        set_instr(p, kRowCif, work);
        p.ct_step = false;
    } else if (work == "KV8" || work == "KW2") {
        Read_Pattern_KV8(unit, p);
        fixed_kind(p, "neutrons_cw", "2theta", "2theta(degrees)");
        set_instr(p, row_of("KV8"), work);
    } else if (work == "NLS") {
        Read_Pattern_NLS(unit, p);
        fixed_kind(p, "xrays_cw", "2theta", "2theta(degrees)");
        set_instr(p, row_of("NLS"), work);
    } else if (work == "KG1") {
        Read_Pattern_KG1(unit, p);
        fixed_kind(p, "neutrons_cw", "2theta", "2theta(degrees)");
        set_instr(p, row_of("KG1"), work);
    } else if (work == "KV7" || work == "KV9" || work == "KG3" || work == "KG4") {
        Read_Pattern_KV7(unit, p);
        fixed_kind(p, "neutrons_cw", "2theta", "2theta(degrees)");
        set_instr(p, row_of("KV7"), work);
    } else if (work == "KV7OLD" || work == "KV9OLD" || work == "OLDKV7" || work == "OLDKV9") {
        Read_Pattern_KV7_Old(unit, p);
        fixed_kind(p, "neutrons_cw", "2theta", "2theta(degrees)");
        set_instr(p, row_of("KV7OLD"), work);
    } else if (work == "DMC" || work == "HRPT") {
        Read_Pattern_DMC(unit, p);
        fixed_kind(p, "neutrons_cw", "2theta", "2theta(degrees)");
        set_instr(p, row_of("DMC"), work);
    } else if (work == "SOCABIM") {
        Read_Pattern_Socabim(unit, p);
        fixed_kind(p, "xrays_cw", "2theta", "2theta(degrees)");
        set_instr(p, kRowSocabim, work);
    } else if (work == "XYSIGMA") {
        const std::size_t dot = p.filename.rfind('.');
        const bool gr = dot != std::string::npos && p.filename.substr(dot) == ".gr";
        Read_Pattern_XYSigma(unit, p, gr, header);
        if (!gr) {
            p.diff_kind = "unknown";
            set_instr(p, kRowXYSigma, work);
        }
        if (Is_Blank(p.scat_var) && p.npts >= 1 && p.x.size() >= p.npts)
            p.scat_var = p.x(p.npts) > 180.0f ? "TOF" : "2theta";
    } else if (work == "GSAS") {
        Read_Pattern_GSAS(unit, p, "", block, nblocks);
        fixed_kind(p, "constant_wavelength", "2theta", "2theta(degrees)");
        set_instr(p, row_of("GSAS"), work);
    } else if (work == "ISIS") {
        std::vector<DIFFRACTION_PATTERN_TYPE> set(1);
        set[0] = p;
        int count = 0;
        Read_Pattern_Isis(unit, set, count, "");
        if (!set.empty()) p = std::move(set[0]);
        // A bank of constant-wavelength bins is read in 2theta by the reader.
        if (Trim(p.scat_var) == "2theta") fixed_kind(p, "constant_wavelength", "2theta", "2theta(degrees)");
        else fixed_kind(p, "neutrons_tof", "TOF", "TOF(micro-seconds)");
        set_instr(p, kRowIsis, work);
    } else if (work == "GSASTOF") {
        Read_Pattern_GSAS(unit, p, bank, block, nblocks);
        fixed_kind(p, "neutrons_tof", "TOF", "TOF(micro-seconds)");
        set_instr(p, row_of("GSASTOF"), work);
    } else if (work == "PANALYTICAL") {
        if (ext == ".CSV") Read_Pattern_Csv(unit, p);
        else if (ext == ".UDF") Read_Pattern_Udf(unit, p);
        else if (Is_Jcamp_Extension(ext)) Read_Pattern_Jcamp(unit, p);
        else if (ext == ".XRDML") {
            p.scat_var.clear();
            Read_Pattern_Xrdml(unit, p, block, nblocks);
        }
        const std::string axis = p.scat_var, legend = p.xax_text;
        fixed_kind(p, "xrays_cw", "2theta", "2theta(degrees)");
        if (ext == ".XRDML" && !Is_Blank(axis)) {  // a scan of another axis keeps its name
            p.scat_var = axis;
            p.xax_text = legend;
        }
        set_instr(p, kRowPanalytical, work);
    } else if (work == "LIBRARY") {
        std::vector<DIFFRACTION_PATTERN_TYPE> blocks;
        int left_out = 0;
        Read_Pattern_Library(name, blocks, 1, left_out);
        if (!ERR_Pattern) p = std::move(blocks[0]);
    } else if (work == "TIMEVARIABLE") {
        Read_Pattern_TimeVariable(unit, p);
        fixed_kind(p, "xrays_cw", "2theta", "2theta(degrees)");
        set_instr(p, row_of("TIMEVARIABLE"), work);
    } else {
        Read_Pattern_Free(unit, p, ext);
        p.diff_kind = "unknown";
        p.instr = std::string(Format_Row(kRowFree).code);
        p.ct_step = true;
        if (Is_Blank(p.yax_text)) p.yax_text = "Intensity (arb. units)";
        if (!Is_Blank(p.xax_text) && Is_Blank(p.scat_var)) p.scat_var = "2theta";
        if (Is_Blank(p.xax_text)) {
            const bool tof = p.npts >= 1 && p.x.size() >= p.npts && p.x(p.npts) > 180.0f;
            p.scat_var = tof ? "TOF" : "2theta";
            p.xax_text = tof ? "TOF(micro-seconds)" : "2theta(degrees)";
        }
    }
    if (!ERR_Pattern && Check_Finite_Values(p, unit.Text())) Make_X_Ascending(p);
    if (!loaded) unit.Close();

    if (sig && *sig && !ERR_Pattern) {
        const int n = std::min(p.npts, p.sigma.size());
        for (int i = 1; i <= n; ++i) p.sigma(i) = std::sqrt(std::max(p.sigma(i), 0.0f));
        p.sig_var = false;
    }
}

}  // namespace

void Read_Pattern(const std::string& filename, DIFFRACTION_PATTERN_TYPE& p, const std::optional<std::string>& mode,
                  std::optional<bool> sig, std::string* header) {
    int nblocks = 0;
    read_block(filename, p, mode, sig, header, 1, nblocks);
}

void Read_Pattern_Set(const std::string& filename, std::vector<DIFFRACTION_PATTERN_TYPE>& patterns, int& count,
                      const std::string& mode) {
    Clear_Pattern_Error();
    count = 0;
    const std::string name = Trim(filename);
    if (std::string why = not_a_file(name); !why.empty()) {
        Set_Pattern_Error(why);
        return;
    }
    Text_Unit unit;
    if (!unit.Open(name)) {
        Set_Pattern_Error(" Error opening the file " + name);
        return;
    }
    const std::string work = Trim(Upper(mode));
    if (work == "ISIS") {
        Read_Pattern_Isis(unit, patterns, count, "");
    } else if (work == "GSAS") {
        // Listed for this reader but without a routine of its own: nothing is read.
    } else {
        Set_Pattern_Error(" Invalid Mode");
        return;
    }
    if (ERR_Pattern) return;
    for (int i = 0; i < count && i < static_cast<int>(patterns.size()); ++i) {
        if (!Check_Finite_Values(patterns[static_cast<std::size_t>(i)], unit.Text())) return;
        Make_X_Ascending(patterns[static_cast<std::size_t>(i)]);
    }
    std::string path, file;
    Split_File_Name(name, path, file);
    for (int i = 0; i < count && i < static_cast<int>(patterns.size()); ++i) {
        auto& p = patterns[static_cast<std::size_t>(i)];
        p.filename = file;
        p.filepath = path;
        if (Trim(p.scat_var) == "TOF") p.xax_text = "TOF (micro-seconds)";
        p.yax_text = "Intensity (arb. units)";
        p.instr = Cut(" 14  - " + work, kInstrLen);
    }
}

void Read_Pattern_Blocks(const std::string& filename, const std::string& mode,
                         std::vector<DIFFRACTION_PATTERN_TYPE>& patterns, int max_patterns, int& left_out) {
    patterns.clear();
    left_out = 0;
    Clear_Pattern_Error();
    if (max_patterns < 1) return;
    const std::string work = Trim(Upper(mode));
    if (work == "ISIS") {
        patterns.resize(static_cast<std::size_t>(max_patterns));
        int count = 0;
        Read_Pattern_Set(filename, patterns, count, mode);
        patterns.resize(ERR_Pattern ? 0 : static_cast<std::size_t>(std::max(count, 0)));
        return;
    }
    if (work == "LIBRARY") {
        if (std::string why = not_a_file(Trim(filename)); !why.empty()) {
            Set_Pattern_Error(why);
            return;
        }
        Read_Pattern_Library(Trim(filename), patterns, max_patterns, left_out);
        if (ERR_Pattern) patterns.clear();
        return;
    }
    patterns.resize(1);
    int nblocks = 1;
    Text_Unit unit;
    if (!open_pattern_file(Trim(filename), unit)) {
        patterns.clear();
        return;
    }
    read_block(filename, patterns[0], mode, std::nullopt, nullptr, 1, nblocks, &unit);
    if (ERR_Pattern) {
        patterns.clear();
        return;
    }
    const int n = std::min(nblocks, max_patterns);
    for (int b = 2; b <= n; ++b) {
        DIFFRACTION_PATTERN_TYPE next;
        int again = 0;
        read_block(filename, next, mode, std::nullopt, nullptr, b, again, &unit);
        if (ERR_Pattern) {
            // The first block stands; a later bad one is told and left out.
            ++left_out;
            Clear_Pattern_Error();
            continue;
        }
        patterns.push_back(std::move(next));
    }
    left_out += nblocks - n;
}

}  // namespace hxl
