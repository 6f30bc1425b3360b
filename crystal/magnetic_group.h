#pragma once
// The 1651 magnetic space-group types (spglib's database): numbers in the BNS
// and OG schemes and the operators with their time reversal.
#include <ostream>
#include <string>
#include <vector>

#include "crystal/sym_oper.h"

namespace hxl {

struct MAGNETIC_GROUP_TYPE {
    int uni = 0;             // 1..1651
    int litvin = 0;
    std::string bns_number;  // "62.448"
    std::string og_number;   // "62.9.509"
    int sg_number = 0;       // the family space group
    int type = 0;            // 1 to 4
    std::vector<SYM_OPER_TYPE> operators;
    std::vector<int> time_reversal;  // +1 or -1, parallel to operators
};

// "62.448" (BNS), "62.9.509" (OG) or a number 1..1651 (UNI). False with a
// message for a number the database does not hold.
bool Get_Magnetic_Group(const std::string& number, MAGNETIC_GROUP_TYPE& mg, std::string& message);

// The listing: numbers, type, then one operator a line, "x,y,z,+1".
void List_Magnetic_Group(const MAGNETIC_GROUP_TYPE& mg, std::ostream& unit);

}  // namespace hxl
