#include "patterns/library_load.h"

#include <xylib/xylib.h>

#include <memory>
#include <sstream>
#include <string_view>

#include "patterns/format_table.h"
#include "patterns/library_check.h"
#include "patterns/library_heads.h"
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
// of any wrapper. The data set itself is ours and freed (see below).
extern "C" const char* __lsan_default_suppressions() { return "leak:libxy.so\n"; }
#endif

namespace hxl {
namespace {

// xylib's name of the format: the magic numbers of the file first, then the
// extension, then the checks of the formats that have a signature.
std::string library_format(const std::string& bytes, const std::string& filename) {
    if (Starts_With(bytes, "RAW")) return "bruker_raw";  // "RAW ", "RAW2", "RAW1.01", "RAW4.00"
    if (Starts_With(bytes, "V3RD") || Starts_With(bytes, "V5RD")) return "philips_rd";
    if (Starts_With(bytes, "VAMAS Surface Chemical Analysis Standard")) return "vamas";
    if (Starts_With(bytes, "SIETRONICS XRD SCAN")) return "cpi";
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

Library_Meta meta_of(const xylib::MetaData& m) {
    Library_Meta out;
    for (std::size_t i = 0; i < m.size(); ++i) {
        const std::string& key = m.get_key(i);
        out.emplace_back(key, m.get(key));
    }
    return out;
}

bool sigma_column(const std::string& name) {
    const std::string l = Lower(Trim(name));
    for (std::string_view w : {"sigma", "err", "esd", "uncert"})
        if (l.find(w) != std::string::npos) return true;
    return l == "s.u." || l == "su";
}

std::vector<double> values(const xylib::Column& c, int n) {
    std::vector<double> v(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) v[static_cast<std::size_t>(i)] = c.get_value(i);
    return v;
}

Library_Block block_data(const xylib::Block& block, int index) {
    Library_Block out;
    const int n = block.get_point_count();
    const int ncol = block.get_column_count();
    // Column 0 is the library's point index; a single column is Y over it.
    const xylib::Column& xc = block.get_column(ncol >= 2 ? 1 : 0);
    const xylib::Column& yc = block.get_column(ncol >= 2 ? 2 : 1);
    out.index = index;
    out.name = block.get_name();
    out.x_name = xc.get_name();
    out.x_step = xc.get_step();
    out.x = values(xc, n);
    out.y = values(yc, n);
    if (ncol >= 3 && sigma_column(block.get_column(3).get_name())) {
        out.sigma_name = block.get_column(3).get_name();
        out.sigma = values(block.get_column(3), n);
    }
    out.meta = meta_of(block.meta);
    return out;
}

}  // namespace

std::string Load_Library_Data(const std::string& bytes, const std::string& filename, int max_patterns,
                              Library_Data& data) {
    data = Library_Data{};
    data.format = library_format(bytes, filename);
    // The C table holds the library's FormatInfo records under their C base.
    const xylibFormat* found = data.format.empty() ? nullptr : xylib_get_format_by_name(data.format.c_str());
    const auto* fi = static_cast<const xylib::FormatInfo*>(found);
    if (!fi) return " The format library knows no format for this file";
    {
        std::istringstream in(bytes);
        if (!Library_Check(fi, in, nullptr)) return std::string(" The file is not a valid ") + fi->desc + " file";
    }
    std::string why;
    if (data.format == "chiplot" && !Chiplot_Head_Plausible(bytes, why)) return " The ChiPlot file is damaged: " + why;
    // The data set is made here rather than by xylib::load_string, which
    // loses it when the reading throws.
    std::unique_ptr<xylib::DataSet> set(fi->ctor());
    {
        std::istringstream in(bytes);
        set->load_data(in, filename.c_str());
    }
    data.block_count = set->get_block_count();
    if (data.block_count < 1) return " The format library found no data in the file";
    data.meta = meta_of(set->meta);
    for (int b = 0; b < data.block_count; ++b) {
        const xylib::Block& block = *set->get_block(b);
        if (block.get_point_count() < 2 || static_cast<int>(data.blocks.size()) >= max_patterns) {
            ++data.left_out;  // a single point, a generator column, or past the limit
            continue;
        }
        data.blocks.push_back(block_data(block, b));
    }
    if (data.blocks.empty()) return " No block of the file holds two points or more";
    return "";
}

}  // namespace hxl
