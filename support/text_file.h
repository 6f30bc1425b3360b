#pragma once
// A text file as an editor takes it: read whole, refused when it is not text
// or too large, and written back in the form it came in (encoding, byte-order
// mark, line ends), so that a file saved without a change is the same bytes
// (but for line ends of mixed kinds, which come back all of one kind).
#include <string>

namespace hxl {

// The largest file an editor opens.
inline constexpr long long kTextFileLimit = 50LL * 1024 * 1024;

struct TEXT_FILE_TYPE {
    std::string text;    // UTF-8, lines ended by '\n'
    bool latin1 = false;  // the bytes were not UTF-8 and were read as Latin-1
    bool bom = false;     // a UTF-8 byte-order mark stood in front
    bool crlf = false;    // the line ends are CR LF
    bool mixed = false;   // the line ends were not all alike (or were a CR alone): a save makes them alike
};

// Reads `file`. False with `message` when it is missing, not a plain file,
// unreadable, larger than `limit` bytes, or holds NUL bytes (not text).
bool Read_Text_File(const std::string& file, long long limit, TEXT_FILE_TYPE& t, std::string& message);

// The bytes of `text` (UTF-8, '\n' line ends) in the form of `form`. False
// with `message` when a character cannot be written in a Latin-1 file.
bool Text_File_Bytes(const TEXT_FILE_TYPE& form, const std::string& text, std::string& bytes, std::string& message);

// Replaces `path` by `bytes` through a temporary file in the same folder and a
// rename; the old file keeps its permissions. On failure the old file stands
// untouched and `message` says why.
bool Replace_File_Told(const std::string& path, const std::string& bytes, std::string& message);

// True when `text` is valid UTF-8.
bool Is_Utf8(const std::string& text);

}  // namespace hxl
