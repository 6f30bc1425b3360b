#pragma once
// The files of the generic charts: ".gdf" (a chart described whole) and ".seq" (the
// results of a sequence of refinements, from which columns are chosen). No Qt.
#include <string>
#include <vector>

namespace hxl {

inline constexpr int kChartMaxCurves = 50;  // the columns the grid shows

struct CHART_CURVE_TYPE {
    std::string legend;                 // 40 characters
    std::vector<float> x, y, sigma;     // sigma with error bars only
    std::vector<std::string> labels;    // the slices of a pie
    bool marker = false, scatter = false, errbar = false, legend_on = false;
    bool right = false;                 // on the second Y axis, at the right, for a second unit
    std::vector<int> block;             // of a sequence: the block (from 0) of each point
};

struct CHART_TYPE {
    std::string title, legend_x, legend_y;  // 132 characters each
    std::string kind = "polyl";             // "polyl", "scatt", "histo", "polar", "piech"
    std::vector<CHART_CURVE_TYPE> curves;
};

// A ".gdf" text: its keywords, then one block a curve opened by a line that begins
// with "{/". False with the reader's text, `chart` then empty.
bool Read_Gdf_Text(const std::string& text, CHART_TYPE& chart, std::string& message);

// One refinement of a sequence: the data file, the temperature when the block gives
// one, the global chi2 and every parameter with its standard deviation.
struct SEQ_PARAMETER_TYPE {
    std::string name;  // "Phase 1: a" for the phases' own
    double value = 0, sigma = 0;
    std::string sigma_text;
};
struct SEQ_BLOCK_TYPE {
    std::string file;
    bool has_temperature = false;
    double temperature = 0;
    int numpar = 0, n_patt = 0, nphase = 0;
    double chi2 = 0;
    std::vector<SEQ_PARAMETER_TYPE> parameters;
};

// A ".seq" text: blocks opened by "NEW_REFINEMENT" (the rest of the line names the data
// file), with the head keywords NUMPAR, N_PATT, NPHASE, GLOBAL_CHI_2 and TEMPERATURE
// (optional), then NUMPAR lines "name value sigma" of the plot parameters, then for each
// phase a line "PHASE k name n" and its n lines "name value sigma". False with the
// reader's text.
bool Read_Seq_Text(const std::string& text, std::vector<SEQ_BLOCK_TYPE>& blocks, std::string& message);

// The columns a sequence offers: "Temperature/File Order", "Global Chi**2", then each
// parameter of the first block whose standard deviation is not written "0.0000" (a
// parameter not refined holds nothing to plot).
std::vector<std::string> Seq_Columns(const std::vector<SEQ_BLOCK_TYPE>& blocks);
// The value of a column in a block (and its sigma, 0 for the first two); false when the
// block lacks it.
bool Seq_Value(const SEQ_BLOCK_TYPE& block, int block_number, const std::string& column, double& value, double& sigma);

// The chart of chosen columns (indices into Seq_Columns, from 0): X the first, one curve a
// Y column with its standard deviations as error bars where it has any. False with a message
// when a column is not there.
bool Seq_Chart(const std::vector<SEQ_BLOCK_TYPE>& blocks, int x_column, const std::vector<int>& y_columns,
               const std::string& title, CHART_TYPE& chart, std::string& message);

// The ".xyy" text of the chosen columns: a heading of the names (12 characters each),
// then a line a block of the values, 14 characters with 6 decimals each (21 at most).
std::string Seq_Xyy_Text(const std::vector<SEQ_BLOCK_TYPE>& blocks, const std::vector<int>& columns);

}  // namespace hxl
