#pragma once
// The buffer-file commands on the store (File menu "Save Buffer file" and
// "Open Buffer file"): the window asks for the names and the format, these
// do the work and hand back the messages to show.
#include <string>
#include <vector>

namespace zendrite {

// Writes one line per profile of type "DATA" (directory, then file name);
// profiles made by calculations have no file and are left out. False with
// "Unable to write buffer file!".
bool Save_Buffer(const std::string& filename, std::string& message);

struct BUFFER_LOAD_RESULT {
    bool opened = false;                  // false: the file was missing or unreadable, store untouched
    std::vector<std::string> messages;    // to be shown, in order
    std::vector<int> slots;               // filled slots
};

// Resets the store and loads every file of the list with the format row `row`
// (1..15) chosen in the dialog "Format of the data file"; row 0 means the
// dialog was cancelled and nothing is loaded. The buffer file enters the recent list.
BUFFER_LOAD_RESULT Open_Buffer(const std::string& filename, int row);

}  // namespace zendrite
