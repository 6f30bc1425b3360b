#pragma once
// The input of the sibling program that extracts patterns from numors: which
// instrument, which cycle, which numors, and where the patterns go.
#include <string>
#include <vector>

namespace hxl {

struct EXTRACTION_INPUT_TYPE {
    std::string instrument;  // as the data tree names it ("d2b", "KV8", ...)
    int year = 0;            // four digits; 0 with cycle 0 when the files are found without
    int cycle = 0;           // 1 to 7
    std::string numors;      // "121459-121470, 121480"
    std::string output;      // base name of the patterns written
    bool add = false;        // one pattern of all numors, else one a numor
    float monitor = 0;       // normalisation monitor; 0 none
};

// Numbers and ranges separated by blanks or commas, each from 1 to 999999,
// at most 5000 numors. False with a message.
bool Parse_Numor_List(const std::string& text, std::vector<int>& numors, std::string& message);

// Checks the fields and expands the numors. False with a message.
bool Check_Extraction_Input(const EXTRACTION_INPUT_TYPE& in, std::vector<int>& numors, std::string& message);

// The program's input file: keyword lines, the numors ten a line, "END".
std::string Extraction_Input_Text(const EXTRACTION_INPUT_TYPE& in, const std::vector<int>& numors);

// The pattern files the program writes: OUTPUT.xys with "add", else OUTPUT_NNNNNN.xys.
std::vector<std::string> Extraction_Outputs(const EXTRACTION_INPUT_TYPE& in, const std::vector<int>& numors);

}  // namespace hxl
