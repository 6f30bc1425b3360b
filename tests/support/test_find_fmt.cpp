#include <gtest/gtest.h>

#include "support/edit_format.h"
#include "support/find_fmt.h"

using namespace hxl;

TEST(FindFMT, BuildsAFormatThatReadsTheLine) {
    std::string fmt;
    const std::string line = "   12   3.45  abc  1.5E+03   -7";
    FindFMT(line, "IFAFi", fmt);
    EXPECT_EQ(ierr_fmt, FindFMT_No_Error);
    EXPECT_EQ(mess_findfmt, "FindFMT: no error");
    EXPECT_EQ(fmt, "(I5,F7.2,2X,A3,E9.1,I5)");

    EDIT_FORMAT_TYPE f;
    std::string message;
    ASSERT_TRUE(Parse_Edit_Format(fmt, f, message)) << message;
    Edit_Reader r(f, std::string_view(line));
    int i = 0, j = 0;
    float a = 0, b = 0;
    std::string t;
    ASSERT_TRUE(r.Int(i) && r.Real(a) && r.Text(t) && r.Real(b) && r.Int(j));
    EXPECT_EQ(i, 12);
    EXPECT_FLOAT_EQ(a, 3.45f);
    EXPECT_EQ(t, "abc");
    EXPECT_FLOAT_EQ(b, 1500.0f);
    EXPECT_EQ(j, -7);

    Text_Unit unit;
    unit.Set_Text("\n   \n 1 2\n");
    std::string got;
    FindFMT(unit, got, "ii", fmt);
    EXPECT_EQ(got, " 1 2");
    EXPECT_EQ(fmt, "(I2,I2)");
    FindFMT(unit, got, "ii", fmt);
    EXPECT_EQ(ierr_fmt, FindFMT_End_Of_File);
    EXPECT_EQ(mess_findfmt, "FindFMT: End of file !");
    EXPECT_EQ(fmt, "");
}

TEST(FindFMT, EachRefusalHasItsText) {
    struct Case {
        const char* line;
        const char* fields;
        int status;
        const char* text;
    };
    const Case cases[] = {
        {"1 2", "", FindFMT_Empty_Format, "FindFMT: empty format descriptor (0 field) !"},
        {"1 2", "IQ", FindFMT_Invalid_Field, "FindFMT: invalid field in format descriptor !"},
        {" 12.5", "I", FindFMT_Integer_Found_Real, "FindFMT: integer field found real !"},
        {" 1.2.3", "F", FindFMT_Begged_Character, "FindFMT: begged dot, sign or 'e' character !"},
        {" e5", "F", FindFMT_Begged_Character, "FindFMT: begged dot, sign or 'e' character !"},
        {" 12a", "I", FindFMT_Invalid_Integer_Char, "FindFMT: invalid character in an integer field !"},
        {" 1.2x", "F", FindFMT_Invalid_Numeric_Char, "FindFMT: invalid character in a numeric field !"},
        {" 12 ", "II", FindFMT_No_Character, "FindFMT: 0 character in current field !"},
        {" 12-5", "I", FindFMT_Separator_Missing, "FindFMT: separator missing !"},
        {" 1.5-2.3", "F", FindFMT_Separator_Missing, "FindFMT: separator missing !"},
        {" 1.5E", "F", FindFMT_Incomplete_Exponent, "FindFMT: incomplete E or D format !"},
        {" 1.5D-", "F", FindFMT_Incomplete_Exponent, "FindFMT: incomplete E or D format !"},
        {" -", "F", FindFMT_Incomplete_Number, "FindFMT: incomplete number !"},
        {" +", "I", FindFMT_Incomplete_Number, "FindFMT: incomplete number !"},
    };
    for (const Case& c : cases) {
        std::string fmt = "old";
        FindFMT(std::string_view(c.line), c.fields, fmt);
        EXPECT_EQ(ierr_fmt, c.status) << c.line << " " << c.fields;
        EXPECT_EQ(mess_findfmt, c.text) << c.line;
        EXPECT_EQ(fmt, "") << c.line;
    }

    std::string many, kinds;
    for (int i = 0; i < 100; ++i) {
        many += " 1";
        kinds += "I";
    }
    std::string fmt;
    FindFMT(many, kinds, fmt);
    EXPECT_EQ(ierr_fmt, FindFMT_Length_Exceeded);
    EXPECT_EQ(mess_findfmt, "FindFMT: format string length exceeded !");

    // Digits the reader cannot hold: the line fails to read with the format built.
    FindFMT(" " + std::string(40, '9'), "I", fmt);
    EXPECT_EQ(ierr_fmt, FindFMT_Read_Error);
    EXPECT_EQ(mess_findfmt.rfind("FindFMT: data string, read error !", 0), 0u);
    EXPECT_NE(mess_findfmt.find("Error number"), std::string::npos);
}
