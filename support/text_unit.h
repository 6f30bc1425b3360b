#pragma once
// A text file held in memory and read line by line, as a formatted unit is read.
// Readers take a unit positioned at the start of the file; the list-directed and
// edit-descriptor readers consume whole lines from it.
#include <cstddef>
#include <string>
#include <string_view>

namespace hxl {

class Text_Unit {
public:
    // Loads the whole file; false when it cannot be opened or read.
    bool Open(const std::string& path);
    void Set_Text(std::string text);
    void Close() { text_.clear(); pos_ = 0; }

    // The next line without its end-of-line characters (LF, CR LF or CR);
    // false at end of file. The view lives as long as the unit's text.
    bool Read_Line(std::string_view& line);
    bool Read_Line(std::string& line);
    void Backspace();   // steps back over the line just read
    void Rewind() { pos_ = last_ = 0; }
    bool At_End() const { return pos_ >= text_.size(); }

    std::size_t Position() const { return pos_; }
    void Seek(std::size_t pos) { pos_ = last_ = pos < text_.size() ? pos : text_.size(); }
    const std::string& Text() const { return text_; }

private:
    std::string text_;
    std::size_t pos_ = 0;
    std::size_t last_ = 0;
};

}  // namespace hxl
