#pragma once
// Record layouts in edit-descriptor notation, "(i5,2f14.5)": iW[.M] integers,
// fW.D, eW.D[Ee], dW.D and gW.D reals, a or aW text, nX blanks, "/" a new
// line, and repeated groups "10(i2,f8.0)". A format is parsed once into a
// flat list of fields and then drives any number of writes and reads.
//
// When the values outlast the format, a new line starts and the format
// restarts at the last group of the outer level (or at its beginning when it
// has no group), as Fortran does.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "support/text_unit.h"

namespace hxl {

enum class Edit_Kind : unsigned char { Int, Real_F, Real_E, Real_D, Real_G, Text, Skip, New_Line };

struct EDIT_ITEM {
    Edit_Kind kind = Edit_Kind::Skip;
    int width = 0;       // 0 for a text field without width
    int decimals = 0;    // D of fW.D, M of iW.M
    int exp_digits = 0;  // e of eW.DEe; 0 when not given
};

struct EDIT_FORMAT_TYPE {
    std::vector<EDIT_ITEM> items;  // groups expanded
    std::size_t revert = 0;        // first item of a new pass
    int data_items = 0;            // values one pass takes
    int revert_data_items = 0;     // values a pass from `revert` takes
};

// False with a message when `text` is not a format this reader knows.
bool Parse_Edit_Format(std::string_view text, EDIT_FORMAT_TYPE& format, std::string& message);

enum class Edit_Result { Ok, End_Of_File, Bad_Value, Bad_Format };

// One write statement: values go in order into lines appended to `out`, each
// ended by '\n'. A value too wide for its field is written as stars.
// The statement ends with End() or the destructor.
class Edit_Writer {
public:
    Edit_Writer(const EDIT_FORMAT_TYPE& format, std::string& out);
    Edit_Writer(EDIT_FORMAT_TYPE&&, std::string&) = delete;  // the format must outlive the writer
    ~Edit_Writer() { End(); }
    Edit_Writer(const Edit_Writer&) = delete;
    Edit_Writer& operator=(const Edit_Writer&) = delete;

    Edit_Writer& Int(long long value);
    Edit_Writer& Real(double value);
    Edit_Writer& Text(std::string_view value);
    void End();

    // A value that did not match its field (text for a number, a real for an
    // integer, or a format without fields) is written as stars and noted here.
    bool Failed() const { return failed_; }
    const std::string& Message() const { return message_; }

private:
    const EDIT_ITEM* next_field();
    void new_line();
    void fail(const std::string& message, const EDIT_ITEM* item);
    char* field(int width);

    const EDIT_FORMAT_TYPE& fmt_;
    std::string& out_;
    std::size_t pos_ = 0;
    int blanks_ = 0;
    bool ended_ = false;
    bool failed_ = false;
    std::string message_;
};

// One read statement: it starts on the next line of the unit (or on the first
// line of an internal text) and, when done, leaves the unit at the line after
// the last one it used. Short lines read as if padded with blanks; a blank
// numeric field is zero; blanks inside a numeric field are ignored.
// After a failure every further call returns false and the status stays.
class Edit_Reader {
public:
    Edit_Reader(const EDIT_FORMAT_TYPE& format, Text_Unit& unit);
    Edit_Reader(const EDIT_FORMAT_TYPE& format, std::string_view text);
    Edit_Reader(EDIT_FORMAT_TYPE&&, Text_Unit&) = delete;  // the format must outlive the reader
    Edit_Reader(EDIT_FORMAT_TYPE&&, std::string_view) = delete;

    bool Int(int& value);
    bool Real(float& value);
    bool Real(double& value);
    bool Text(std::string& value);  // aW gives W characters, a the rest of the line

    Edit_Result Status() const { return status_; }
    const std::string& Message() const { return message_; }
    int Line_Number() const { return lines_; }  // lines this statement has used

private:
    bool next_line();
    const EDIT_ITEM* next_field();
    std::string_view take(int width);
    template <class T> bool real(T& value);
    bool fail(Edit_Result status, std::string_view what, std::string_view field);

    const EDIT_FORMAT_TYPE& fmt_;
    Text_Unit* unit_ = nullptr;
    std::string_view rest_;  // internal text not yet read
    std::string_view line_;
    std::size_t col_ = 0;
    std::size_t field_col_ = 0;
    std::size_t pos_ = 0;
    int lines_ = 0;
    Edit_Result status_ = Edit_Result::Ok;
    std::string message_;
};

// Whole-array helpers for the common layouts: `n` values of one kind.
Edit_Result Edit_Read(Text_Unit& unit, const EDIT_FORMAT_TYPE& format, float* out, int n, std::string& message);
Edit_Result Edit_Read(Text_Unit& unit, const EDIT_FORMAT_TYPE& format, int* out, int n, std::string& message);
void Edit_Write(const EDIT_FORMAT_TYPE& format, const float* values, int n, std::string& out);
void Edit_Write(const EDIT_FORMAT_TYPE& format, const int* values, int n, std::string& out);

}  // namespace hxl
