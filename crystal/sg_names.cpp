#include "crystal/sg_names.h"

#include "crystal/space_group.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

const char* const laue_names[16] = {"-1",   "2/m",  "mmm",  "4/m", "4/mmm", "-3 R", "-3m R", "-3",
                                    "-3m1", "-31m", "6/m", "6/mmm", "m-3",  "m-3m", "m3",    "m3m"};
const char* const pg_names[40] = {"1",   "-1",  "2",    "m",    "2/m",  "222", "mm2",  "m2m",  "2mm",  "mmm",
                                  "4",   "-4",  "4/m",  "422",  "4mm",  "-42m", "-4m2", "4/mmm", "3",   "-3",
                                  "32",  "3m",  "-3m",  "312",  "31m",  "-31m", "6",   "-6",   "6/m",  "622",
                                  "6mm", "-62m", "-6m2", "6/mmm", "23",  "m-3", "432",  "-43m", "m-3m", "m3"};

}  // namespace

std::string Laue_Class_Name(int index) {
    Clear_Symm_Error();
    if (index < 1 || index > 16) {
        ERR_Symm = true;
        ERR_Symm_Mess = "Laue Number Incorrect";
        return "";
    }
    return Cut(laue_names[index - 1], 5);
}

std::string Point_Group_Name(int index) {
    Clear_Symm_Error();
    if (index < 1 || index > 40) {
        ERR_Symm = true;
        ERR_Symm_Mess = "Point Group Number Incorrect";
        return "";
    }
    return Cut(pg_names[index - 1], 5);
}

int Laue_Class_Index(const std::string& name) {
    for (int i = 0; i < 16; ++i)
        if (Same(Trim(name), laue_names[i])) return i + 1;
    return 0;
}

int Point_Group_Index(const std::string& name) {
    for (int i = 0; i < 40; ++i)
        if (Same(Trim(name), pg_names[i])) return i + 1;
    return 0;
}

}  // namespace hxl
