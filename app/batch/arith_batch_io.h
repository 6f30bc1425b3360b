#pragma once
// Reading the input patterns and writing OUT for the verbs that combine,
// rescale or smooth patterns, as the File menu reads and writes them.
#include <ostream>
#include <string>
#include <vector>

#include "patterns/diffraction_pattern.h"

namespace zendrite {

// The first pattern of FILE, its format from the extension. False after
// printing the reader's text on `err`.
bool Batch_Read_Pattern(const std::string& file, hxl::DIFFRACTION_PATTERN_TYPE& pattern, std::ostream& err);

// OUT as a free-format ".dat" or an XY ".xys" file; `name` is the profile name
// the ".xys" file carries. False after printing the writer's text.
bool Batch_Write_Pattern(const std::string& out_file, const hxl::DIFFRACTION_PATTERN_TYPE& pattern,
                         const std::string& name, std::ostream& out, std::ostream& err);

// True when OUT ends in .dat or .xys; otherwise prints the usage error of `verb`.
bool Batch_Output_Name_Ok(const std::string& verb, const std::string& out_file, std::ostream& err);

// The value after an option such as --out; false (and a message) when it is missing.
bool Batch_Option_Value(const std::string& verb, const std::vector<std::string>& args, std::size_t& i,
                        std::string& value, std::ostream& err);

// Splits `args` into the options named in `options` ("--name VALUE", or a
// flag "--name" when `flag` is given) and the other words; false, after the
// usage message of `verb`, for an option without its value or one not named.
struct BATCH_OPTION {
    const char* name;
    std::string* value;
    bool* flag = nullptr;
};
bool Batch_Parse_Options(const std::string& verb, const std::vector<std::string>& args,
                         const std::vector<BATCH_OPTION>& options, std::vector<std::string>& words, std::ostream& err);

// The verbs sum (average false) and average: they differ only in the division.
int Run_Sum_Verb(bool average, const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace zendrite
