// zendrite-batch chart: a generic chart of a ".gdf" file, or of chosen columns of a ".seq"
// file, drawn off screen into a picture file.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "app/batch/batch_verbs.h"
#include "app/batch/batch_window.h"
#include "app/present.h"
#include "graphics/chart_draw.h"
#include "graphics/chart_files.h"
#include "graphics/plot_settings.h"
#include "patterns/format_table.h"
#include "support/fixed_text.h"
#include "support/text_file.h"

namespace zendrite {
namespace {

// A column by its number (from 1) or its name; -1 when neither.
int column_of(const std::string& word, const std::vector<std::string>& cols) {
    char* end = nullptr;
    const long n = std::strtol(word.c_str(), &end, 10);
    if (end != word.c_str() && *end == '\0') return n >= 1 && n <= static_cast<long>(cols.size()) ? static_cast<int>(n - 1) : -1;
    for (std::size_t k = 0; k < cols.size(); ++k)
        if (cols[k] == word) return static_cast<int>(k);
    return -1;
}

int run_chart(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::string file, out_file, xyy, kind;
    std::vector<std::string> ys;
    std::vector<bool> right;  // of each --y: given as --y2, on the second axis
    std::string xcol = "1";
    bool list = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const bool valued = a == "--x" || a == "--y" || a == "--y2" || a == "--out" || a == "--xyy" || a == "--kind";
        if (valued && i + 1 >= args.size()) {
            err << "zendrite-batch chart: " << a << " needs a value\n";
            return 2;
        }
        if (a == "--x") xcol = args[++i];
        else if (a == "--y" || a == "--y2") ys.push_back(args[++i]), right.push_back(a == "--y2");
        else if (a == "--out") out_file = args[++i];
        else if (a == "--xyy") xyy = args[++i];
        else if (a == "--kind") kind = args[++i];
        else if (a == "--columns") list = true;
        else if (file.empty() && !hxl::Starts_With(a, "--")) file = a;
        else {
            err << "zendrite-batch chart: unexpected argument " << a << "\n";
            return 2;
        }
    }
    if (file.empty() || (out_file.empty() && xyy.empty() && !list)) {
        err << "zendrite-batch chart: give FILE and --out OUT (or --xyy, --columns)\n";
        return 2;
    }
    const std::string ext = hxl::Upper_Extension(file);
    if (ext != ".GDF" && ext != ".SEQ") {
        err << "Incompatible format for Graphics representation!\n";
        return 1;
    }
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        err << "Cannot open the file " << file << "\n";
        return 1;
    }
    std::stringstream text;
    text << in.rdbuf();
    hxl::CHART_TYPE chart;
    std::string message;
    if (ext == ".GDF") {
        if (!ys.empty() || !xyy.empty() || list) {
            err << "zendrite-batch chart: --x, --y, --xyy and --columns choose columns of a .seq file\n";
            return 2;
        }
        if (!hxl::Read_Gdf_Text(text.str(), chart, message)) {
            err << message << "\n";
            return 1;
        }
    } else {
        std::vector<hxl::SEQ_BLOCK_TYPE> blocks;
        if (!hxl::Read_Seq_Text(text.str(), blocks, message)) {
            err << message << "\n";
            return 1;
        }
        const std::vector<std::string> cols = hxl::Seq_Columns(blocks);
        if (list)
            for (std::size_t k = 0; k < cols.size(); ++k) out << k + 1 << "  " << cols[k] << "\n";
        if (ys.empty()) ys.push_back("2"), right.push_back(false);  // the global chi2
        std::vector<int> ycols;
        const int x = column_of(xcol, cols);
        for (const std::string& y : ys) ycols.push_back(column_of(y, cols));
        for (std::size_t k = 0; k <= ycols.size(); ++k)
            if ((k == 0 ? x : ycols[k - 1]) < 0) {
                err << "zendrite-batch chart: no column " << (k == 0 ? xcol : ys[k - 1]) << " (--columns lists them)\n";
                return 1;
            }
        if (!hxl::Seq_Chart(blocks, x, ycols, std::filesystem::path(file).filename().string(), chart, message)) {
            err << message << "\n";
            return 1;
        }
        for (std::size_t k = 0; k < chart.curves.size() && k < right.size(); ++k) chart.curves[k].right = right[k];
        if (!xyy.empty()) {
            std::vector<int> all = {x};
            all.insert(all.end(), ycols.begin(), ycols.end());
            if (!hxl::Replace_File_Told(xyy, hxl::Seq_Xyy_Text(blocks, all), message)) {
                err << message << "\n";
                return 1;
            }
        }
    }
    if (!kind.empty()) {
        if (kind != "polyl" && kind != "scatt" && kind != "histo" && kind != "polar" && kind != "piech") {
            err << "zendrite-batch chart: --kind is polyl, scatt, histo, polar or piech\n";
            return 2;
        }
        chart.kind = kind;
    }
    if (out_file.empty()) return 0;
    if (Picture_Format(out_file).empty()) {
        err << "zendrite-batch chart: Unable to write " << out_file << ": its extension names no picture format\n";
        return 1;
    }
    Start_Batch_Window("chart");
    Set_Default_Plot_Settings();
    PICTURE_OPTIONS o;
    o.width = 1200, o.height = 800, o.pixels = true, o.dpi = 96, o.white = true;
    if (!WPictureExport(out_file, o, [&chart] { Draw_Chart(chart); }, message)) {
        err << "zendrite-batch chart: " << message << "\n";
        return 1;
    }
    return 0;
}

const bool registered = Register_Batch_Verb(
    {"chart", "chart FILE.gdf|FILE.seq [--x COL] [--y COL]... [--y2 COL]... [--kind KIND] [--out OUT.png|svg|pdf] [--xyy OUT.xyy] [--columns]",
     "      draws a generic chart: the curves of a .gdf file, or columns of a .seq file\n"
     "      (by number or name; X the temperature or file order and Y the global chi2\n"
     "      unless chosen; --y2 puts a column on a second Y axis at the right;\n"
     "      --columns lists them, --xyy writes the chosen columns)",
     run_chart});

}  // namespace
}  // namespace zendrite
