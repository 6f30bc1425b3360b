#pragma once
// Adding profiles read from files to the store, in the order every loader keeps.
#include <string>
#include <vector>

namespace zendrite {

// The result of loading one file: messages to show (in order) and the slots it filled.
struct LOAD_RESULT {
    std::vector<std::string> messages;
    std::vector<int> slots;
    bool limit_reached = false;  // the profile limit stopped the loop
};

// Loads one data file with the format row `row` (1..15) into the next slot(s),
// as Open_Data_File does for each selected file.
LOAD_RESULT Load_Data_File(const std::string& fullname, int row);

// X space identification of a newly added slot; false with a message refuses it.
bool Identify_X_Space(int slot, std::string& message);

// The recent-file list: a listed name moves to the top, a new one pushes the fifth out.
void Add_Recent_File(const std::string& name);

}  // namespace zendrite
