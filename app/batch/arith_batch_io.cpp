#include "app/batch/arith_batch_io.h"

#include <algorithm>

#include "app/store/add_profile.h"
#include "patterns/format_table.h"
#include "patterns/pattern_writers.h"
#include "support/fixed_text.h"

namespace zendrite {

bool Batch_Read_Pattern(const std::string& file, hxl::DIFFRACTION_PATTERN_TYPE& pattern, std::ostream& err) {
    const int row = hxl::Format_Row_From_Extension(hxl::Upper_Extension(file));
    if (row == 0) {
        err << "ERROR in file: " << file << " the format of this extension is not known\n";
        return false;
    }
    READ_FILE_RESULT r = Read_Data_File(file, row, 1);
    if (r.patterns.empty()) {
        err << (r.error.empty() ? "ERROR in file: " + file : r.error) << "\n";
        return false;
    }
    pattern = std::move(r.patterns.front());
    if (pattern.npts < 1 || pattern.x.size() < pattern.npts || pattern.y.size() < pattern.npts) {
        err << "ERROR Opening file: " << file << "npts<1\n";
        return false;
    }
    return true;
}

bool Batch_Write_Pattern(const std::string& out_file, const hxl::DIFFRACTION_PATTERN_TYPE& pattern,
                         const std::string& name, std::ostream& out, std::ostream& err) {
    std::string message;
    const bool dat = hxl::Upper_Extension(out_file) == ".DAT";
    const bool ok = dat ? hxl::Save_Free_Format(out_file, pattern, message)
                        : hxl::Save_XY(out_file, pattern, name, hxl::XY_Export_Defaults(pattern), message);
    if (!ok) {
        err << message << " " << out_file << "\n";
        return false;
    }
    out << out_file << ": " << pattern.npts << " points, " << hxl::Trim(pattern.scat_var) << " " << pattern.xmin
        << " to " << pattern.xmax << "\n";
    return true;
}

bool Batch_Output_Name_Ok(const std::string& verb, const std::string& out_file, std::ostream& err) {
    const std::string ext = hxl::Upper_Extension(out_file);
    if (ext == ".DAT" || ext == ".XYS") return true;
    err << "zendrite-batch " << verb << ": give --out OUT ending in .dat or .xys\n";
    return false;
}

bool Batch_Option_Value(const std::string& verb, const std::vector<std::string>& args, std::size_t& i,
                        std::string& value, std::ostream& err) {
    if (i + 1 >= args.size()) {
        err << "zendrite-batch " << verb << ": " << args[i] << " needs a value\n";
        return false;
    }
    value = args[++i];
    return true;
}

bool Batch_Parse_Options(const std::string& verb, const std::vector<std::string>& args,
                         const std::vector<BATCH_OPTION>& options, std::vector<std::string>& words, std::ostream& err) {
    for (std::size_t i = 0; i < args.size(); ++i) {
        const BATCH_OPTION* named = nullptr;
        for (const BATCH_OPTION& o : options)
            if (args[i] == o.name) named = &o;
        if (named && named->flag) {
            *named->flag = true;
        } else if (named) {
            if (!Batch_Option_Value(verb, args, i, *named->value, err)) return false;
        } else if (hxl::Starts_With(args[i], "--")) {
            err << "zendrite-batch " << verb << ": unknown option " << args[i] << "\n";
            return false;
        } else {
            words.push_back(args[i]);
        }
    }
    return true;
}

}  // namespace zendrite
