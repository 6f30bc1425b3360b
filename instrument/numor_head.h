#pragma once
// The steps every numor reader begins with: lines, blocks, run number, the
// instrument test and the texts of the two A blocks.
#include <array>
#include <string>

#include "instrument/nrf_blocks.h"

namespace hxl {

struct NUMOR_HEAD {
    NUMOR_LINES lines;
    int n = 0;
    int numor = 0;
    std::string instrument;  // 12
    std::string header;      // 32
    std::string text_a2;     // packed text of the second A block
};

// Reads the file and its blocks. False with the module's error set when the
// file has no lines (the message is `problem_text` and the path) or when the
// first A block does not name `name` (the message is `refusal`).
bool Read_Numor_Head(const std::string& path, const std::string& name, const std::string& problem_text,
                     const std::string& refusal, NUMOR_HEAD& head, std::size_t a_width = 80);

bool Blocks_Match(const std::array<int, 7>& pattern);

// The number of values in F or I block k, after reading it; 0 when the block is absent.
int Read_F_Occurrence(const NUMOR_HEAD& head, int k);
int Read_I_Occurrence(const NUMOR_HEAD& head, int k);

// Value i (from 1) of the last F or I block read, 0 beyond its count.
float F_Value(int i);
int I_Value(int i);

}  // namespace hxl
