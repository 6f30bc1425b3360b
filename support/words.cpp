#include "support/fixed_text.h"
#include "support/text_utils.h"

namespace hxl {
namespace {
bool blank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
}  // namespace

void Cutst(std::string& line, int* nlong1, std::string* word, int* nlong2) {
    Clear_String_Error();
    std::size_t p = 0;
    while (p < line.size() && blank(line[p])) ++p;
    std::size_t q = p;
    while (q < line.size() && !blank(line[q])) ++q;
    std::string w = line.substr(p, q - p);
    std::string rest = Trim(std::string_view(line).substr(q));
    line = rest;
    if (nlong1) *nlong1 = static_cast<int>(line.size());
    if (nlong2) *nlong2 = static_cast<int>(w.size());
    if (word) *word = std::move(w);
}

void Get_Words(std::string_view line, std::vector<std::string>& words, int& count) {
    Clear_String_Error();
    words.clear();
    count = 0;
    std::size_t p = 0;
    const std::size_t n = line.size();
    while (true) {
        while (p < n && blank(line[p])) ++p;
        if (p >= n) break;
        const char c = line[p];
        if (c == '"' || c == '\'') {
            const std::size_t close = line.find(c, p + 1);
            if (close == std::string_view::npos) {
                Set_String_Error("Non balanced quotes!");
                return;
            }
            words.emplace_back(line.substr(p + 1, close - p - 1));
            p = close + 1;
        } else {
            std::size_t q = p;
            while (q < n && !blank(line[q])) ++q;
            words.emplace_back(line.substr(p, q - p));
            p = q;
        }
        ++count;
    }
}

}  // namespace hxl
