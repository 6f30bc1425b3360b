#include <cmath>

#include "support/fixed_text.h"
#include "support/list_read.h"
#include "support/text_utils.h"

namespace hxl {

bool err_string = false;
std::string err_string_mess;

void Clear_String_Error() {
    err_string = false;
    err_string_mess.clear();
}

void Set_String_Error(const std::string& message) {
    err_string = true;
    err_string_mess = Cut(message, 150);
}

void Getnum(std::string_view line, Array1<float>& vet, Array1<int>& ivet, int& iv) {
    Clear_String_Error();
    vet.fill(0.0f);
    ivet.fill(0);
    iv = 0;
    static constexpr std::string_view digits = "0123456789.-";
    std::size_t p = 0;
    const std::size_t n = line.size();
    auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (true) {
        while (p < n && blank(line[p])) ++p;
        if (p >= n) return;
        std::size_t q = p;
        while (q < n && !blank(line[q])) ++q;
        std::string_view word = line.substr(p, q - p);
        p = q;
        float v = 0.0f;
        if (digits.find(word.front()) == std::string_view::npos || !Parse_Real(word, v)) {
            Set_String_Error("The variable cannot be computed as a number in GETNUM ");
            return;
        }
        if (iv >= vet.size() || iv >= ivet.size()) {
            Set_String_Error("Limits of digit variable exceeded in GETNUM");
            return;
        }
        ++iv;
        vet(iv) = v;
        ivet(iv) = std::isfinite(v) && std::fabs(v) < 2.1e9f ? static_cast<int>(v) : 0;
    }
}

}  // namespace hxl
