#pragma once
// The logic of the menu commands Open Numor File and View Header Numor,
// without the window: the menu handler shows the file selector, asks for the
// instrument when Instrument_From_Numor_Path finds none, puts each profile
// into the store and shows the messages.
#include <optional>
#include <string>
#include <vector>

#include "instrument/powder_numor.h"
#include "patterns/diffraction_pattern.h"

namespace hxl {

// The multi-file selector of Open Numor File; it starts in the data root
// (Find_Nrf_Locations().root). Cancel ends the command.
inline constexpr const char* kNumorFileFilter = "Numor Data File |*.*;*.Z|";
inline constexpr const char* kNumorFileTitle = "Select Numors to open";

// The instrument named by a numor's directory: the component after "data",
// "data-1" or a three-digit year and cycle, 4 characters; blank when none.
std::string Instrument_From_Numor_Path(const std::string& path);

struct NUMOR_PROFILE {
    DIFFRACTION_PATTERN_TYPE pattern;
    std::string file;        // the numor as selected
    std::string plot_title;  // the first 60 characters of the file name
    std::string prf_type;    // "DATA"
    std::string instrument;  // from the numor
};

struct OPEN_NUMORS_RESULT {
    std::vector<NUMOR_PROFILE> profiles;
    std::vector<std::string> messages;  // to be shown one by one
    bool limit_reached = false;
};

// Reads one numor; a ".Z" file is unpacked into the temporary directory,
// read and the copy removed. False with `message` set on failure.
bool Read_Numor_File(const std::string& path, const std::string& instrument, POWDER_NUMOR_TYPE& numor,
                     std::string& message, bool header_only = false);

// Reads each numor (unpacking ".Z" files through the temporary directory)
// and makes one pattern of each. `free_slots` is the room left in the store.
OPEN_NUMORS_RESULT Open_Numor_Files(const std::vector<std::string>& paths, const std::string& instrument,
                                    int free_slots, std::optional<float> monitor_norm = std::nullopt);

// The head of a numor, labelled as the header window shows it.
std::vector<std::string> Numor_Header_Lines(const POWDER_NUMOR_TYPE& numor);

// Reads only the head of the numor at `path`; false with `message` set on failure.
bool View_Header_Numor(const std::string& path, const std::string& instrument, std::vector<std::string>& lines,
                       std::string& message);

}  // namespace hxl
