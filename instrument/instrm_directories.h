#pragma once
// The directories of the instrument files: the data root and the instrument's own.
#include <string>

namespace hxl {

extern std::string nrf_data_directory;        // with its trailing separator
extern std::string instrm_directory;          // with its trailing separator
extern std::string instrm_geometry_directory;  // with its trailing separator

// The data root from NRFDATA, else the configured default share, else the
// local default. False with the error pair set when it does not exist.
bool Set_Nrf_Data_Directory();

// The instrument directory: `working_dir` when given, else the data root with
// "data" and the instrument name. Pass nullptr for an argument not given.
bool Set_Instrm_Directory(const std::string* working_dir, const std::string* instrument);

// The "Geometry" directory of the instrument directory, else the current directory.
bool Set_Instrm_Geometry_Directory();

}  // namespace hxl
