#pragma once
// Numor files: fixed 80-character lines cut into blocks by ten-letter markers.
// One scratch state serves the whole module and is rewritten by every block read.
#include <array>
#include <string>
#include <vector>

#include "support/array1.h"

namespace hxl {

inline constexpr int kNumorLineLen = 80;

// Block letters in the order the scanner tries them.
enum Nrf_Letter { kBlockR = 1, kBlockA, kBlockS, kBlockF, kBlockI, kBlockJ, kBlockV };
inline constexpr int kNumLetters = 7;

using NUMOR_LINES = Array1<std::string>;

// The module's error pair; every public operation clears it first.
extern bool ERR_Nrf;
extern std::string ERR_Nrf_Mess;  // 150
void Clear_Nrf_Error();
void Set_Nrf_Error(const std::string& message);

// When set by the caller, the readers leave out the counts of a numor.
extern bool nrf_header_only;

struct NRF_SCRATCH {
    std::array<int, kNumLetters> block_count{};  // markers of R, A, S, F, I, J, V
    int max_count = 0;
    std::vector<int> block_index;  // (letter, occurrence, start|end); see Block_Start/Block_End
    Array1<std::string> text_lines;
    int n_text = 0;
    Array1<float> real_values;
    int n_real = 0;
    Array1<int> int_values;
    int n_int = 0;
};
extern NRF_SCRATCH nrf;

// First line of occurrence k of a letter, 0 when absent; Block_End likewise.
int Block_Start(int letter, int k);
int Block_End(int letter, int k);

// The whole file as a line table cut at 80 characters; n = 0 when unreadable or empty.
void Read_Numor_Lines(const std::string& file, NUMOR_LINES& lines, int& n);
void Read_Numor_Text(const std::string& text, NUMOR_LINES& lines, int& n);

// The letter of the first marker found in the line (R, A, S, F, I, J, V order), 0 if none.
int Marker_Letter(const std::string& line);

void Count_Block_Types(const NUMOR_LINES& lines, int n);
void Index_Blocks(const NUMOR_LINES& lines, int n);

void Read_R_Block(const NUMOR_LINES& lines, int start, int end, int& numor, int& third_value);
// `width` is the caller's string width: 80 in most readers, 1024 for KW2.
void Read_A_Block(const NUMOR_LINES& lines, int start, int end, int& n_chars, std::string& text,
                  std::size_t width = kNumorLineLen);
// Header values 1, 2, 3, 4 and 6 of the S block (value 5 is the text count).
void Read_S_Block(const NUMOR_LINES& lines, int start, int end, std::array<int, 5>& values);
void Read_F_Block(const NUMOR_LINES& lines, int start, int end);
void Read_I_Block(const NUMOR_LINES& lines, int start, int end);
void Read_J_Block(const NUMOR_LINES& lines, int start, int end);
void Read_V_Block(const NUMOR_LINES& lines, int start, int end);

}  // namespace hxl
