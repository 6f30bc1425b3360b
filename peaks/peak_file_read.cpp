#include "peaks/peak_file_read.h"

#include <cmath>
#include <sstream>

#include "support/list_read.h"
#include "support/text_file.h"

namespace hxl {

namespace {

// A free-format peak file of a few hundred peaks is small; this bounds a wrong choice.
constexpr long long kPeakFileLimit = 16LL * 1024 * 1024;

}  // namespace

bool Parse_Free_Peaks(const std::string& text, const std::string& name, std::vector<PEAK_POINT_TYPE>& list,
                      std::string& message) {
    message.clear();
    std::vector<PEAK_POINT_TYPE> out;
    std::istringstream in(text);
    std::string line;
    int number = 0;
    while (std::getline(in, line)) {
        ++number;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const auto first = line.find_first_not_of(" \t");
        if (first == std::string::npos || line[first] == '!' || line[first] == '#') continue;
        // Up to three values; the missing ones stay 0.
        std::string w;
        double v[3] = {0, 0, 0};
        int n = 0;
        std::string cleaned = line;
        for (char& ch : cleaned)
            if (ch == ',' || ch == '\t') ch = ' ';
        std::istringstream ws(cleaned);
        while (ws >> w) {
            if (n == 3) break;
            if (!Parse_Real(w, v[n])) {
                message = name + ", line " + std::to_string(number) + ": \"" + w + "\" is not a number";
                return false;
            }
            ++n;
        }
        bool finite = true;
        for (double x : v) finite = finite && std::isfinite(static_cast<float>(x));
        if (!finite) {
            message = name + ", line " + std::to_string(number) + ": a value out of range";
            return false;
        }
        out.push_back({static_cast<float>(v[0]), static_cast<float>(v[1]), static_cast<float>(v[2])});
    }
    if (out.empty()) {
        message = name + ": no peak in the file";
        return false;
    }
    list.swap(out);
    return true;
}

bool Read_Free_Peaks(const std::string& path, std::vector<PEAK_POINT_TYPE>& list, std::string& message) {
    TEXT_FILE_TYPE t;
    if (!Read_Text_File(path, kPeakFileLimit, t, message)) return false;
    return Parse_Free_Peaks(t.text, path, list, message);
}

}  // namespace hxl
