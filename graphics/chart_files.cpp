#include "graphics/chart_files.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <sstream>

#include "support/fixed_text.h"

namespace hxl {

namespace {

constexpr std::size_t kLineLen = 132, kLegendLen = 40;

// Lines of at most 132 characters (the rest of a longer line is dropped).
std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> out;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        out.push_back(line.substr(0, kLineLen));
    }
    return out;
}

// What stands behind `word` on the first line of [from, to) that holds it; false when none does.
bool keyword(const std::vector<std::string>& lines, std::size_t from, std::size_t to, const std::string& word,
             std::string& behind) {
    for (std::size_t i = from; i < to && i < lines.size(); ++i) {
        const std::size_t at = lines[i].find(word);
        if (at != std::string::npos) {
            behind = Trim(lines[i].substr(at + word.size()));
            return true;
        }
    }
    return false;
}

// The first word of `text` as a whole integer or a finite number.
bool first_int(const std::string& text, int& v) {
    std::istringstream w(text);
    std::string word;
    if (!(w >> word)) return false;
    char* end = nullptr;
    const long l = std::strtol(word.c_str(), &end, 10);
    if (end == word.c_str() || *end != '\0' || l < -1000000000L || l > 1000000000L) return false;
    v = static_cast<int>(l);
    return true;
}
bool number(const std::string& word, double& v) {
    char* end = nullptr;
    v = std::strtod(word.c_str(), &end);
    return end != word.c_str() && *end == '\0' && std::isfinite(v);
}

// Every word of a line as a number; false on a word that is not one.
bool numbers(const std::string& line, std::vector<double>& v) {
    v.clear();
    std::istringstream w(line);
    double x = 0;
    for (std::string word; w >> word;) {
        if (!number(word, x)) return false;
        v.push_back(x);
    }
    return true;
}

bool fail(std::string& message, const char* text, CHART_TYPE& chart) {
    message = text;
    chart = CHART_TYPE{};
    return false;
}

}  // namespace

bool Read_Gdf_Text(const std::string& text, CHART_TYPE& chart, std::string& message) {
    chart = CHART_TYPE{};
    const std::vector<std::string> lines = lines_of(text);
    if (lines.empty()) return fail(message, "No lines could be read", chart);
    std::string v;
    if (keyword(lines, 0, lines.size(), "TITLE", v)) chart.title = v;
    int nplots = 0;
    if (!keyword(lines, 0, lines.size(), "N_PLOTS", v) || !first_int(v, nplots))
        return fail(message, "Error reading the number of Plots!", chart);
    if (nplots <= 0) return fail(message, "Number of plots to draw is zero!", chart);
    if (keyword(lines, 0, lines.size(), "LEGEND_X", v)) chart.legend_x = v;
    if (keyword(lines, 0, lines.size(), "LEGEND_Y", v)) chart.legend_y = v;
    if (keyword(lines, 0, lines.size(), "PLOT_TYPE", v)) chart.kind = Lower(v.substr(0, 7)).substr(0, 5);
    // First pass: the blocks and their counts.
    std::vector<std::size_t> starts;
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (lines[i].rfind("{/", 0) == 0) starts.push_back(i);
    for (std::size_t b = 0; b < starts.size(); ++b) {
        const std::size_t end = b + 1 < starts.size() ? starts[b + 1] : lines.size();
        int n = 0;
        if (!keyword(lines, starts[b], end, "N_POINTS", v) || !first_int(v, n) || n < 0)
            return fail(message, "Error reading the maximum points for curves!", chart);
    }
    if (static_cast<int>(starts.size()) != nplots)
        return fail(message, "Plot information incompatible with the number of curves!", chart);
    if (nplots > kChartMaxCurves) return fail(message, "Maximum number of curves attained!", chart);
    // Second pass: each block's values.
    const bool pie = chart.kind == "piech";
    for (std::size_t b = 0; b < starts.size(); ++b) {
        const std::size_t end = b + 1 < starts.size() ? starts[b + 1] : lines.size();
        CHART_CURVE_TYPE c;
        c.legend = Trim(lines[starts[b]].substr(2)).substr(0, kLegendLen);
        int n = 0;
        std::size_t i = starts[b] + 1;
        while (i < end && lines[i].find("N_POINTS") == std::string::npos) ++i;
        if (i >= end || !keyword(lines, i, i + 1, "N_POINTS", v) || !first_int(v, n) || n < 0)
            return fail(message, "Error in the number of points for this data set", chart);
        ++i;
        // a style word may follow
        if (i < end) {
            std::istringstream w(lines[i]);
            std::string word;
            w >> word;
            const std::string style = Lower(word.substr(0, 7));
            if (style == "marker" || style == "scatter" || style == "errbar" || style == "legend") {
                c.marker = style == "marker", c.scatter = style == "scatter", c.errbar = style == "errbar";
                c.legend_on = style == "legend";
                c.errbar = c.errbar && !pie;  // slices have no error bars
                ++i;
            }
        }
        // the values: X Y (and sigma) as many a line as it holds; a pie: a value and a label a line
        std::vector<double> vals;
        std::vector<double> row;
        for (; i < end && static_cast<int>(pie ? c.y.size() : vals.size() / (c.errbar ? 3 : 2)) < n; ++i) {
            if (Trim(lines[i]).empty()) continue;
            if (pie) {
                std::istringstream w(lines[i]);
                std::string word;
                double x = 0;
                if (!(w >> word) || !number(word, x)) return fail(message, "Error reading data!", chart);
                std::string label;
                std::getline(w, label);
                c.y.push_back(static_cast<float>(x));
                c.x.push_back(static_cast<float>(c.y.size()));
                c.labels.push_back(Trim(label).substr(0, kLegendLen));
                continue;
            }
            if (!numbers(lines[i], row)) return fail(message, "Error reading data!", chart);
            vals.insert(vals.end(), row.begin(), row.end());
        }
        if (!pie) {
            const std::size_t per = c.errbar ? 3 : 2;
            if (static_cast<int>(vals.size() / per) < n || vals.size() % per != 0)
                return fail(message, "Error reading data!", chart);
            for (std::size_t k = 0; k + per <= vals.size(); k += per) {
                c.x.push_back(static_cast<float>(vals[k]));
                c.y.push_back(static_cast<float>(vals[k + 1]));
                if (c.errbar) c.sigma.push_back(static_cast<float>(vals[k + 2]));
            }
        } else if (static_cast<int>(c.y.size()) < n) {
            return fail(message, "Error reading data!", chart);
        }
        chart.curves.push_back(std::move(c));
    }
    return true;
}

namespace {

bool seq_fail(std::string& message, const char* text, std::vector<SEQ_BLOCK_TYPE>& blocks) {
    message = text;
    blocks.clear();
    return false;
}

// A line "name value sigma" (the name one word).
bool parameter(const std::string& line, const std::string& prefix, SEQ_PARAMETER_TYPE& p) {
    std::istringstream w(line);
    std::string name, value, sigma, extra;
    if (!(w >> name >> value >> sigma) || (w >> extra)) return false;
    p.name = prefix + name;
    p.sigma_text = sigma;
    return number(value, p.value) && number(sigma, p.sigma);
}

}  // namespace

bool Read_Seq_Text(const std::string& text, std::vector<SEQ_BLOCK_TYPE>& blocks, std::string& message) {
    blocks.clear();
    const std::vector<std::string> lines = lines_of(text);
    std::vector<std::size_t> starts;
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (lines[i].find("NEW_REFINEMENT") != std::string::npos) starts.push_back(i);
    if (starts.empty()) return seq_fail(message, "No Sequential Blocks were found!", blocks);
    for (std::size_t b = 0; b < starts.size(); ++b) {
        const std::size_t begin = starts[b], end = b + 1 < starts.size() ? starts[b + 1] : lines.size();
        SEQ_BLOCK_TYPE k;
        k.file = Trim(lines[begin].substr(lines[begin].find("NEW_REFINEMENT") + 14));
        std::string v;
        if (!keyword(lines, begin, end, "NUMPAR", v) || !first_int(v, k.numpar) || k.numpar < 0)
            return seq_fail(message, "Error reading the number of Parameters!", blocks);
        if (!keyword(lines, begin, end, "N_PATT", v) || !first_int(v, k.n_patt) || k.n_patt < 0)
            return seq_fail(message, "Error reading the number of Patterns!", blocks);
        if (!keyword(lines, begin, end, "NPHASE", v) || !first_int(v, k.nphase) || k.nphase < 0)
            return seq_fail(message, "Error reading the number of Phases!", blocks);
        std::istringstream cw(keyword(lines, begin, end, "GLOBAL_CHI_2", v) ? v : "");
        std::string word;
        if (cw >> word) number(word, k.chi2);
        if (keyword(lines, begin, end, "TEMPERATURE", v)) {
            std::istringstream tw(v);
            k.has_temperature = tw >> word && number(word, k.temperature);
        }
        // The parameters start after the last head line.
        std::size_t i = begin + 1;
        for (std::size_t j = begin + 1; j < end; ++j)
            for (const char* key : {"NUMPAR", "N_PATT", "NPHASE", "GLOBAL_CHI_2", "TEMPERATURE"})
                if (lines[j].find(key) != std::string::npos) i = std::max(i, j + 1);
        auto next = [&]() {
            while (i < end && Trim(lines[i]).empty()) ++i;
            return i < end;
        };
        for (int p = 0; p < k.numpar; ++p) {
            SEQ_PARAMETER_TYPE par;
            if (!next() || !parameter(lines[i], "", par))
                return seq_fail(message, "Error reading the Plot Parameters!", blocks);
            k.parameters.push_back(par);
            ++i;
        }
        for (int ph = 1; ph <= k.nphase; ++ph) {
            std::istringstream w(next() ? lines[i] : "");
            std::string key, name;
            int number_of = -1, count = -1;
            if (!(w >> key >> number_of >> name >> count) || key != "PHASE" || number_of != ph || count < 0 || count > 100000)
                return seq_fail(message, "Error reading the Phase Parameters!", blocks);
            ++i;
            for (int p = 0; p < count; ++p) {
                SEQ_PARAMETER_TYPE par;
                if (!next() || !parameter(lines[i], "Phase " + std::to_string(ph) + ": ", par))
                    return seq_fail(message, "Error reading the Phase Parameters!", blocks);
                k.parameters.push_back(par);
                ++i;
            }
        }
        blocks.push_back(std::move(k));
    }
    return true;
}

std::vector<std::string> Seq_Columns(const std::vector<SEQ_BLOCK_TYPE>& blocks) {
    std::vector<std::string> cols = {"Temperature/File Order", "Global Chi**2"};
    if (blocks.empty()) return cols;
    for (const SEQ_PARAMETER_TYPE& p : blocks.front().parameters)
        if (p.sigma_text != "0.0000" && std::find(cols.begin(), cols.end(), p.name) == cols.end()) cols.push_back(p.name);
    return cols;
}

bool Seq_Value(const SEQ_BLOCK_TYPE& block, int block_number, const std::string& column, double& value, double& sigma) {
    sigma = 0;
    if (column == "Temperature/File Order") {
        value = block.has_temperature ? block.temperature : block_number;
        return true;
    }
    if (column == "Global Chi**2") {
        value = block.chi2;
        return true;
    }
    for (const SEQ_PARAMETER_TYPE& p : block.parameters)
        if (p.name == column) {
            value = p.value, sigma = p.sigma;
            return true;
        }
    return false;
}

bool Seq_Chart(const std::vector<SEQ_BLOCK_TYPE>& blocks, int x_column, const std::vector<int>& y_columns,
               const std::string& title, CHART_TYPE& chart, std::string& message) {
    chart = CHART_TYPE{};
    const std::vector<std::string> cols = Seq_Columns(blocks);
    auto bad = [&](int c) { return c < 0 || c >= static_cast<int>(cols.size()); };
    if (bad(x_column)) {
        message = "No column " + std::to_string(x_column + 1) + " in the sequence";
        return false;
    }
    if (y_columns.empty() || static_cast<int>(y_columns.size()) > kChartMaxCurves) {
        message = "Choose from 1 to " + std::to_string(kChartMaxCurves) + " Y columns";
        return false;
    }
    chart.title = title;
    chart.legend_x = cols[static_cast<std::size_t>(x_column)];
    chart.legend_y = y_columns.size() == 1 ? cols[static_cast<std::size_t>(y_columns[0])] : "";
    for (int y : y_columns) {
        if (bad(y)) {
            message = "No column " + std::to_string(y + 1) + " in the sequence";
            chart = CHART_TYPE{};
            return false;
        }
        CHART_CURVE_TYPE c;
        c.legend = cols[static_cast<std::size_t>(y)].substr(0, kLegendLen);
        c.marker = true;
        bool any_sigma = false;
        for (std::size_t b = 0; b < blocks.size(); ++b) {
            double xv = 0, xs = 0, yv = 0, ys = 0;
            if (!Seq_Value(blocks[b], static_cast<int>(b) + 1, chart.legend_x, xv, xs) ||
                !Seq_Value(blocks[b], static_cast<int>(b) + 1, cols[static_cast<std::size_t>(y)], yv, ys))
                continue;  // a block without the parameter leaves a gap
            c.x.push_back(static_cast<float>(xv));
            c.y.push_back(static_cast<float>(yv));
            c.sigma.push_back(static_cast<float>(ys));
            c.block.push_back(static_cast<int>(b));
            any_sigma = any_sigma || ys != 0;
        }
        c.errbar = any_sigma;
        if (!any_sigma) c.sigma.clear();
        chart.curves.push_back(std::move(c));
    }
    return true;
}

std::string Seq_Xyy_Text(const std::vector<SEQ_BLOCK_TYPE>& blocks, const std::vector<int>& columns) {
    const std::vector<std::string> cols = Seq_Columns(blocks);
    std::string t;
    char buf[32];
    std::size_t used = 0;
    for (int c : columns) {
        if (c < 0 || c >= static_cast<int>(cols.size()) || used == 21) continue;
        std::snprintf(buf, sizeof buf, "%-12.12s", cols[static_cast<std::size_t>(c)].c_str());
        t += buf;
        ++used;
    }
    t += "\n";
    for (std::size_t b = 0; b < blocks.size(); ++b) {
        used = 0;
        for (int c : columns) {
            if (c < 0 || c >= static_cast<int>(cols.size()) || used == 21) continue;
            double v = 0, s = 0;
            if (!Seq_Value(blocks[b], static_cast<int>(b) + 1, cols[static_cast<std::size_t>(c)], v, s)) v = 0;
            std::snprintf(buf, sizeof buf, "%14.6f", v);
            t += buf;
            ++used;
        }
        t += "\n";
    }
    return t;
}

}  // namespace hxl
