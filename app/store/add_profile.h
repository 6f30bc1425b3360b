#pragma once
// Adding profiles read from files to the store, in the order every loader keeps.
#include <string>
#include <vector>

#include "patterns/diffraction_pattern.h"

namespace zendrite {

// The result of loading one file: messages to show (in order) and the slots it filled.
struct LOAD_RESULT {
    std::vector<std::string> messages;
    std::vector<int> slots;
    bool limit_reached = false;  // the profile limit stopped the loop
    int left_out = 0;            // blocks of the file that were not read (told in the status bar)
};

// What reading one file gave, before anything enters the store.
struct READ_FILE_RESULT {
    std::string name;  // trimmed file name
    int row = 0;
    std::vector<hxl::DIFFRACTION_PATTERN_TYPE> patterns;
    std::string error;  // the reader's message when nothing was read
    int left_out = 0;
};

// Reads every pattern of one file (at most `max_patterns`) without touching
// the store: safe on a worker thread.
READ_FILE_RESULT Read_Data_File(const std::string& fullname, int row, int max_patterns);

// Enters what Read_Data_File gave into the next slots, with the checks and
// messages of Load_Data_File. Main thread only.
LOAD_RESULT Store_Data_File(READ_FILE_RESULT&& read);

// A run of equal messages becomes one, with the count of profiles it stood for.
void Merge_Repeated_Messages(std::vector<std::string>& messages);

// Loads one data file with the format row `row` (1..15) into the next slot(s),
// as Open_Data_File does for each selected file.
LOAD_RESULT Load_Data_File(const std::string& fullname, int row);

// Enters a pattern just read into `slot` (the store's newest slot): its
// information record, the profile type ("RIETV" only in slots 1 to 20 with a
// calculated column), empty reflection arrays and the X space check. False
// when the X space check refused it; the message is added to `result`.
bool Enter_Read_Profile(int slot, int row, LOAD_RESULT& result);

// X space identification of a newly added slot; false with a message refuses it.
bool Identify_X_Space(int slot, std::string& message);

// The recent-file list: a listed name moves to the top, a new one pushes the fifth out.
void Add_Recent_File(const std::string& name);

}  // namespace zendrite
