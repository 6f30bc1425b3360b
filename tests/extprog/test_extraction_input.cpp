// The input of the extraction program: the numor list, the checks, the file.
#include <gtest/gtest.h>

#include "extprog/extraction_input.h"

using namespace hxl;

TEST(ExtractionInput, NumorListsRangesAndTheirRefusals) {
    std::vector<int> n;
    std::string msg;
    ASSERT_TRUE(Parse_Numor_List(" 121459-121462, 121480 7", n, msg)) << msg;
    EXPECT_EQ(n, (std::vector<int>{121459, 121460, 121461, 121462, 121480, 7}));
    for (const auto& [text, words] : std::vector<std::pair<std::string, std::string>>{
             {"", "No numor"}, {"12a", "'12a'"}, {"5-3", "backwards"}, {"0", "'0'"}, {"1000000", "'1000000'"},
             {"1-6000", "5000"}, {"-5", "'-5'"}, {"3-", "'3-'"}}) {
        EXPECT_FALSE(Parse_Numor_List(text, n, msg)) << text;
        EXPECT_NE(msg.find(words), std::string::npos) << text << ": " << msg;
    }
    ASSERT_TRUE(Parse_Numor_List("1-5000", n, msg));
    EXPECT_EQ(n.size(), 5000u);
}

TEST(ExtractionInput, FieldsCheckedAndTheFileWritten) {
    EXTRACTION_INPUT_TYPE in;
    in.instrument = "d2b";
    in.year = 2013;
    in.cycle = 3;
    in.numors = "121459-121470";
    in.output = "run";
    in.monitor = 100000;
    std::vector<int> n;
    std::string msg;
    ASSERT_TRUE(Check_Extraction_Input(in, n, msg)) << msg;
    EXPECT_EQ(Extraction_Input_Text(in, n),
              "! Pattern extraction from numors\nINSTRUMENT d2b\nCYCLE 2013 3\nOUTPUT run\nMONITOR 100000\nNUMORS 12\n"
              "121459 121460 121461 121462 121463 121464 121465 121466 121467 121468\n121469 121470\nEND\n");
    EXPECT_EQ(Extraction_Outputs(in, n).front(), "run_121459.xys");
    EXPECT_EQ(Extraction_Outputs(in, n).size(), 12u);
    in.add = true;
    EXPECT_EQ(Extraction_Outputs(in, n), std::vector<std::string>{"run.xys"});

    EXTRACTION_INPUT_TYPE bad = in;
    bad.cycle = 0;
    EXPECT_FALSE(Check_Extraction_Input(bad, n, msg));
    EXPECT_NE(msg.find("go together"), std::string::npos);
    bad = in;
    bad.output = "../x";
    EXPECT_FALSE(Check_Extraction_Input(bad, n, msg));
    bad = in;
    bad.instrument = "  ";
    EXPECT_FALSE(Check_Extraction_Input(bad, n, msg));
    bad = in;
    bad.monitor = -1;
    EXPECT_FALSE(Check_Extraction_Input(bad, n, msg));
    bad = in;
    bad.year = bad.cycle = 0;
    ASSERT_TRUE(Check_Extraction_Input(bad, n, msg));
    EXPECT_EQ(Extraction_Input_Text(bad, n).find("CYCLE"), std::string::npos);
}
