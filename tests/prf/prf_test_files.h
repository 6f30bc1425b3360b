#pragma once
// The profile files of tests/data/prf and small helpers to read them.
#include <fstream>
#include <sstream>
#include <string>

#include "prf/read_prf.h"
#include "support/fixed_text.h"

namespace ztest {

inline std::string Prf_Data(const std::string& name) { return std::string(ZD_TEST_DATA) + "/prf/" + name; }

inline std::string Slurp(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

struct PRF_READ {
    hxl::PRF_INFO_ADD_TYPE info;
    hxl::DIFFRACTION_PATTERN_TYPE pattern;
    bool error = true;
    std::string message;
};

inline PRF_READ Read_Data_Prf(const std::string& name) {
    PRF_READ r;
    hxl::Read_Prf_File(Prf_Data(name), r.info, r.pattern, r.error, r.message);
    return r;
}

inline PRF_READ Read_Text_Prf(const std::string& text, const std::string& name = "mem.prf") {
    PRF_READ r;
    hxl::Read_Prf_Text(name, text, r.info, r.pattern, r.error, r.message);
    return r;
}

}  // namespace ztest
