#include "extprog/extraction_input.h"

#include <cstdio>
#include <sstream>

#include "support/fixed_text.h"
#include "support/list_read.h"

namespace hxl {

namespace {
constexpr int kMaxNumors = 5000;

bool numor_number(const std::string& w, int& n) { return Parse_Integer(w, n) && n >= 1 && n <= 999999; }

std::string six(int n) {
    char b[16];
    std::snprintf(b, sizeof b, "%06d", n);
    return b;
}
}  // namespace

bool Parse_Numor_List(const std::string& text, std::vector<int>& numors, std::string& message) {
    numors.clear();
    std::string t = text;
    for (char& c : t)
        if (c == ',') c = ' ';
    std::istringstream in(t);
    for (std::string w; in >> w;) {
        std::size_t dash = w.find('-', 1);
        int a = 0, b = 0;
        if (dash == std::string::npos ? !numor_number(w, a) : !numor_number(w.substr(0, dash), a) || !numor_number(w.substr(dash + 1), b)) {
            message = "'" + w + "' is not a numor (1 to 999999) or a range of numors (first-last)";
            return false;
        }
        if (dash == std::string::npos) b = a;
        if (b < a || static_cast<long>(numors.size()) + (b - a + 1) > kMaxNumors) {
            message = b < a ? "The range " + w + " runs backwards" : "More than 5000 numors are asked for";
            return false;
        }
        for (int n = a; n <= b; ++n) numors.push_back(n);
    }
    if (numors.empty()) {
        message = "No numor is given";
        return false;
    }
    return true;
}

bool Check_Extraction_Input(const EXTRACTION_INPUT_TYPE& in, std::vector<int>& numors, std::string& message) {
    if (Is_Blank(in.instrument) || Trim(in.instrument).find_first_of(" \t") != std::string::npos) {
        message = "An instrument name (one word) is needed";
        return false;
    }
    if (!((in.year == 0 && in.cycle == 0) || (in.year >= 1973 && in.year <= 2099 && in.cycle >= 1 && in.cycle <= 7))) {
        message = "The year (1973 to 2099) and the cycle (1 to 7) go together, or both stay 0";
        return false;
    }
    std::string out = Trim(in.output);
    if (out.empty() || out.find_first_of("/\\ \t") != std::string::npos) {
        message = "The output name must be one word without a folder";
        return false;
    }
    if (in.monitor < 0) {
        message = "The monitor must be 0 (none) or positive";
        return false;
    }
    return Parse_Numor_List(in.numors, numors, message);
}

std::string Extraction_Input_Text(const EXTRACTION_INPUT_TYPE& in, const std::vector<int>& numors) {
    std::ostringstream s;
    s << "! Pattern extraction from numors\n";
    s << "INSTRUMENT " << Trim(in.instrument) << "\n";
    if (in.year > 0) s << "CYCLE " << in.year << " " << in.cycle << "\n";
    s << "OUTPUT " << Trim(in.output) << "\n";
    if (in.add) s << "ADD\n";
    if (in.monitor > 0) s << "MONITOR " << in.monitor << "\n";
    s << "NUMORS " << numors.size() << "\n";
    for (std::size_t i = 0; i < numors.size(); ++i) s << six(numors[i]) << ((i % 10 == 9 || i + 1 == numors.size()) ? "\n" : " ");
    s << "END\n";
    return s.str();
}

std::vector<std::string> Extraction_Outputs(const EXTRACTION_INPUT_TYPE& in, const std::vector<int>& numors) {
    std::string out = Trim(in.output);
    if (in.add) return {out + ".xys"};
    std::vector<std::string> files;
    for (int n : numors) files.push_back(out + "_" + six(n) + ".xys");
    return files;
}

}  // namespace hxl
