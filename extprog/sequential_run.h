#pragma once
// A sequential refinement: one run of the refinement program over a numbered
// series of data files, its argument text and the script that reruns it.
#include <string>
#include <vector>

namespace hxl {

struct SEQUENTIAL_FORM_TYPE {
    std::string pcr;            // control file
    std::string code;           // data file code [.ext], or "multi_pattern"
    int first = 1, last = 2;    // passed on as they stand, last below first included
    bool prf = true, hkl = false, mic = false, dis = false, calc = false;
    bool out = false;           // "Save OUT files"
    std::string temperatures;   // file with the temperatures, or blank
    bool script = false;        // "Generate Script for FP-Seq"
};

// "seq", the control file, the code, first and last, Y or N for the five switches,
// " +OUT", " -temp " and the temperature file; each part behind one blank.
std::string Sequential_Arguments(const SEQUENTIAL_FORM_TYPE& form);

// The control file's text with "_FPseq.bat" (system "WIND") or "_FPseq.sh" added.
std::string Sequential_Script_Name(const std::string& pcr, const std::string& os_tag);

// Adds the line "corvane2k " + args to the script (made when missing) and, off Windows,
// lets its owner run it. False with a message when it cannot be written.
bool Append_Sequential_Script(const std::string& script, const std::string& args, const std::string& os_tag,
                              std::string& message);

// The argument text cut into the words the program receives.
std::vector<std::string> Sequential_Words(const std::string& args);

}  // namespace hxl
