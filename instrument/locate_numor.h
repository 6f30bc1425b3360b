#pragma once
// Where numors live: the facility data tree under a root directory, by year
// and cycle, and compressed ".Z" copies unpacked into the temporary directory.
#include <string>

namespace hxl {

// The data root used when NRFDATA is blank; the facility's share, set by configuration.
void Set_Nrf_Default_Root(const std::string& root);
const std::string& Nrf_Default_Root();

// The command that writes a ".Z" file to its standard output. Blank means the
// default: "7z e -y -so" when 7z is on the PATH, else "gzip -dc" when gzip is.
extern std::string nrf_decompress_command;
std::string Default_Decompress_Command();

// Runs the decompression command on `compressed` into `target`; false when it fails.
bool Decompress_Numor(const std::string& compressed, const std::string& target);

// Root and temporary directory as found on the first call (each with a trailing separator).
struct NRF_LOCATIONS {
    bool known = false;
    std::string root, temp_dir;
    bool root_ok = false, temp_ok = false;
};
extern NRF_LOCATIONS nrf_locations;
void Forget_Nrf_Locations();  // the next call looks at the environment again
const NRF_LOCATIONS& Find_Nrf_Locations();  // looks once, then keeps the result

// Finds numor `numor_number` of `instrument`. `year` and `cycle` are used when
// both are given (>= 0). `path` is blank when nothing is found; `plain_path`
// receives the path in the data tree when the file was unpacked.
void Locate_Numor_File(int numor_number, const std::string& instrument, std::string& path, int year = -1,
                       int cycle = -1, std::string* plain_path = nullptr);

}  // namespace hxl
