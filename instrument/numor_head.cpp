#include "instrument/numor_head.h"

#include "support/fixed_text.h"

namespace hxl {

namespace {
std::string chars(const std::string& s, std::size_t from, std::size_t to) {  // 1-based, inclusive, blank padded
    std::string out;
    for (std::size_t i = from; i <= to; ++i) out += (i <= s.size() && s[i - 1] != '\n') ? s[i - 1] : ' ';
    return out;
}
}  // namespace

bool Read_Numor_Head(const std::string& path, const std::string& name, const std::string& problem_text,
                     const std::string& refusal, NUMOR_HEAD& head, std::size_t a_width) {
    head = NUMOR_HEAD{};
    Read_Numor_Lines(path, head.lines, head.n);
    if (head.n == 0) {
        Set_Nrf_Error(problem_text + path);
        return false;
    }
    Count_Block_Types(head.lines, head.n);
    Index_Blocks(head.lines, head.n);
    int third = 0;
    Read_R_Block(head.lines, Block_Start(kBlockR, 1), Block_End(kBlockR, 1), head.numor, third);
    int n_chars = 0;
    std::string a1;
    Read_A_Block(head.lines, Block_Start(kBlockA, 1), Block_End(kBlockA, 1), n_chars, a1, a_width);
    if (Upper(chars(a1, 1, 4)).find(name) == std::string::npos) {
        Set_Nrf_Error(refusal);
        return false;
    }
    head.instrument = Cut(chars(a1, 1, 4), 12);
    head.header = Cut(chars(a1, 5, 14) + "   " + chars(a1, 15, 32), 32);
    Read_A_Block(head.lines, Block_Start(kBlockA, 2), Block_End(kBlockA, 2), n_chars, head.text_a2, a_width);
    return true;
}

bool Blocks_Match(const std::array<int, 7>& pattern) { return nrf.block_count == pattern; }

int Read_F_Occurrence(const NUMOR_HEAD& head, int k) {
    nrf.n_real = 0;
    nrf.real_values.clear();
    if (Block_Start(kBlockF, k) == 0) return 0;
    Read_F_Block(head.lines, Block_Start(kBlockF, k), Block_End(kBlockF, k));
    return nrf.n_real;
}

int Read_I_Occurrence(const NUMOR_HEAD& head, int k) {
    nrf.n_int = 0;
    nrf.int_values.clear();
    if (Block_Start(kBlockI, k) == 0) return 0;
    Read_I_Block(head.lines, Block_Start(kBlockI, k), Block_End(kBlockI, k));
    return nrf.n_int;
}

float F_Value(int i) { return (i >= 1 && i <= nrf.n_real) ? nrf.real_values(i) : 0.0f; }
int I_Value(int i) { return (i >= 1 && i <= nrf.n_int) ? nrf.int_values(i) : 0; }

}  // namespace hxl
