// Any bytes as a numor: the block scanner, every block reader, the five
// powder readers, the single-crystal head and the adding of what they read.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>

#include "instrument/adding_numors.h"
#include "instrument/nrf_blocks.h"
#include "instrument/powder_numor.h"
#include "instrument/sxtal_numor.h"

using namespace hxl;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    NUMOR_LINES lines;
    int n = 0;
    Read_Numor_Text(text, lines, n);
    Count_Block_Types(lines, n);
    Index_Blocks(lines, n);
    for (int letter = kBlockR; letter <= kBlockV; ++letter) {
        for (int k = 1; k <= nrf.block_count[static_cast<std::size_t>(letter - 1)]; ++k) {
            int s = Block_Start(letter, k), e = Block_End(letter, k);
            int a = 0, b = 0;
            std::string t;
            std::array<int, 5> v{};
            switch (letter) {
                case kBlockR: Read_R_Block(lines, s, e, a, b); break;
                case kBlockA: Read_A_Block(lines, s, e, a, t, 1024); break;
                case kBlockS: Read_S_Block(lines, s, e, v); break;
                case kBlockF: Read_F_Block(lines, s, e); break;
                case kBlockI: Read_I_Block(lines, s, e); break;
                case kBlockJ: Read_J_Block(lines, s, e); break;
                default: Read_V_Block(lines, s, e); break;
            }
        }
    }

    static const std::string path = "/tmp/fuzz_numor_" + std::to_string(::getpid());
    {
        std::ofstream f(path, std::ios::binary | std::ios::trunc);
        f << text;
    }
    for (const char* name : {"KV7", "KV8", "KV9", "KW1", "KW2"}) {
        POWDER_NUMOR_TYPE numor;
        Read_Powder_Numor(path, name, numor);
        if (!ERR_Nrf) {
            DIFFRACTION_PATTERN_TYPE p;
            Adding_Numors({numor}, {true}, p, size % 2 ? std::optional<float>(1000.0f) : std::nullopt);
        }
    }
    SXTAL_NUMOR_TYPE s;
    Read_Sxtal_Numor(path, "KS1", s);
    return 0;
}
