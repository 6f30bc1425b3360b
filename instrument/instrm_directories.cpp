#include "instrument/instrm_directories.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "instrument/current_instrument.h"
#include "instrument/locate_numor.h"
#include "support/fixed_text.h"

namespace hxl {

std::string nrf_data_directory;
std::string instrm_directory;
std::string instrm_geometry_directory;

namespace {

constexpr char kSep = '/';

#ifdef _WIN32
const char* const kLocalNrfDefault = "c:\\diffraction_Windows\\nrfdata\\";
#else
const char* const kLocalNrfDefault = "";
#endif

std::string with_sep(std::string dir) {
    dir = Trim(dir);
    if (!dir.empty() && dir.back() != kSep) dir += kSep;
    return dir;
}

bool is_dir(const std::string& p) {
    std::error_code ec;
    return !p.empty() && std::filesystem::is_directory(p, ec);
}

bool fail(const std::string& message) {
    ERR_Instrm = true;
    ERR_Instrm_Mess = Cut(message, 150);
    return false;
}

}  // namespace

bool Set_Nrf_Data_Directory() {
    ERR_Instrm = false;
    ERR_Instrm_Mess.clear();
    const char* env = std::getenv("NRFDATA");
    std::string root = env ? std::string(env) : std::string();
    if (Is_Blank(root)) root = Nrf_Default_Root();
    if (Is_Blank(root)) root = kLocalNrfDefault;
    nrf_data_directory = with_sep(root);
    if (!is_dir(nrf_data_directory)) return fail("The NRF directory: '" + nrf_data_directory + "' doesn't exist");
    return true;
}

bool Set_Instrm_Directory(const std::string* working_dir, const std::string* instrument) {
    ERR_Instrm = false;
    ERR_Instrm_Mess.clear();
    if (!working_dir && !instrument)
        return fail("A working directory or an instrument name must be at least provided");
    if (working_dir && !instrument && Is_Blank(*working_dir)) return fail("Provided working directory string is empty");
    if (working_dir && !Is_Blank(*working_dir)) {
        instrm_directory = with_sep(*working_dir);
    } else {
        if (!instrument || Is_Blank(*instrument)) return fail("An instrument name must be at least provided");
        if (Is_Blank(nrf_data_directory) && !Set_Nrf_Data_Directory()) return false;
        instrm_directory = nrf_data_directory + "data" + kSep + Trim(*instrument) + kSep;
    }
    if (!is_dir(instrm_directory)) return fail("The INSTRM directory: '" + instrm_directory + "' doesn't exist");
    return true;
}

bool Set_Instrm_Geometry_Directory() {
    ERR_Instrm = false;
    ERR_Instrm_Mess.clear();
    std::string dir = instrm_directory + "Geometry" + kSep;
    if (!Is_Blank(instrm_directory) && is_dir(dir)) {
        instrm_geometry_directory = dir;
        return true;
    }
    instrm_geometry_directory = std::string(".") + kSep;
    return fail("The INSTRM Geometry directory doesn't exist, current directory assumed");
}

}  // namespace hxl
