#pragma once
// Guessing the row of the format table from the first kilobytes of a file,
// for files whose extension the table does not know. A guess names a layout
// that fits the head; only the reader can tell whether the whole file reads.
#include <cstddef>
#include <string>
#include <string_view>

namespace hxl {

inline constexpr std::size_t kGuessHeadBytes = 16 * 1024;

struct FORMAT_GUESS_TYPE {
    int row = 0;          // 1..16 of the format table; 0 when nothing fits
    std::string library;  // row 16: the library's format name ("bruker_raw", ...), or "ras"
    std::string reason;   // plain words: what was seen and what it means
    bool weak = false;    // other layouts fit the head too; this one was taken by order
};

// Reads at most kGuessHeadBytes of the file; a file that cannot be read gives row 0 and says why.
FORMAT_GUESS_TYPE Guess_Pattern_Format(const std::string& path);

// The same on a head already in memory. `filename` gives the extension, which
// decides whether the PANALYTICAL row can read the file; `complete` tells that
// `head` is the whole file (its last line is then not cut).
FORMAT_GUESS_TYPE Guess_Pattern_Format_Text(std::string_view head, std::string_view filename, bool complete = true);

}  // namespace hxl
