// Any text as a chart file and as a sequence file: a chart or a message, never a crash;
// a chart that comes back holds as many values as it says.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "graphics/chart_files.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 100000) return 0;
    const std::string text(reinterpret_cast<const char*>(data), size);
    hxl::CHART_TYPE chart;
    std::string message;
    if (hxl::Read_Gdf_Text(text, chart, message)) {
        if (chart.curves.empty()) std::abort();
        for (const hxl::CHART_CURVE_TYPE& c : chart.curves)
            if (c.x.size() != c.y.size() || (c.errbar && c.sigma.size() != c.y.size())) std::abort();
    } else if (message.empty() || !chart.curves.empty()) {
        std::abort();
    }
    std::vector<hxl::SEQ_BLOCK_TYPE> blocks;
    if (hxl::Read_Seq_Text(text, blocks, message)) {
        const std::vector<std::string> cols = hxl::Seq_Columns(blocks);
        double v = 0, s = 0;
        for (std::size_t k = 0; k < blocks.size(); ++k)
            for (const std::string& c : cols) hxl::Seq_Value(blocks[k], static_cast<int>(k) + 1, c, v, s);
    } else if (message.empty() || !blocks.empty()) {
        std::abort();
    }
    return 0;
}
