#include "instrument/locate_numor.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <system_error>

#include "instrument/fixed_columns.h"
#include "support/fixed_text.h"

namespace hxl {

namespace fs = std::filesystem;

std::string nrf_decompress_command;
NRF_LOCATIONS nrf_locations;

namespace {

constexpr char kSep = '/';
std::string default_root;

std::string with_sep(std::string dir) {
    dir = Trim(dir);
    if (!dir.empty() && dir.back() != kSep) dir += kSep;
    return dir;
}

std::string env(const char* name) {
    const char* v = std::getenv(name);
    return v ? std::string(v) : std::string();
}

bool is_dir(const std::string& p) {
    std::error_code ec;
    return !p.empty() && fs::is_directory(p, ec);
}

bool is_file(const std::string& p) {
    std::error_code ec;
    return fs::is_regular_file(p, ec);
}

bool on_path(const std::string& program) {
    std::string path = env("PATH");
    std::size_t from = 0;
    while (from <= path.size()) {
        std::size_t to = path.find(':', from);
        std::string dir = path.substr(from, to == std::string::npos ? std::string::npos : to - from);
        if (!dir.empty() && is_file(dir + "/" + program)) return true;
        if (to == std::string::npos) break;
        from = to + 1;
    }
    return false;
}

// A shell word that stays one word whatever the name holds.
std::string quoted(const std::string& s) {
    std::string q = "'";
    for (char c : s) q += (c == '\'') ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

void find_locations() {
    NRF_LOCATIONS& l = nrf_locations;
    l.known = true;
    l.root = Cut(env("NRFDATA"), 512);
    if (Is_Blank(l.root)) l.root = default_root;
    l.root = with_sep(l.root);
    l.root_ok = is_dir(l.root);
    for (const char* name : {"TEMP", "TMP", "USERPROFILE"}) {
        std::string v = env(name);
        if (!Is_Blank(v)) {
            l.temp_dir = with_sep(Cut(v, 512));
            break;
        }
    }
    l.temp_ok = is_dir(l.temp_dir);
}

// Two digits of the year and one of the cycle: 2007 cycle 3 gives "073".
std::string year_cycle(int year, int cycle) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%04d%01d", year % 10000, cycle % 10);
    std::string s(buf);
    return s.substr(s.size() - 3);
}

}  // namespace

void Set_Nrf_Default_Root(const std::string& root) { default_root = root; }
const std::string& Nrf_Default_Root() { return default_root; }
void Forget_Nrf_Locations() { nrf_locations = NRF_LOCATIONS{}; }

const NRF_LOCATIONS& Find_Nrf_Locations() {
    if (!nrf_locations.known) find_locations();
    return nrf_locations;
}

std::string Default_Decompress_Command() {
    if (on_path("7z")) return "7z e -y -so";
    if (on_path("gzip")) return "gzip -dc";
    return "7z e -y -so";
}

bool Decompress_Numor(const std::string& compressed, const std::string& target) {
    if (Is_Blank(nrf_decompress_command)) nrf_decompress_command = Default_Decompress_Command();
    std::string command = nrf_decompress_command + " " + quoted(compressed) + " > " + quoted(target) + " 2>/dev/null";
    int rc = std::system(command.c_str());
    std::error_code ec;
    if (rc != 0 || !is_file(target) || fs::file_size(target, ec) == 0) {
        fs::remove(target, ec);
        return false;
    }
    return true;
}

void Locate_Numor_File(int numor_number, const std::string& instrument, std::string& path, int year, int cycle,
                       std::string* plain_path) {
    path.clear();
    const NRF_LOCATIONS& l = Find_Nrf_Locations();
    if (!l.root_ok || !l.temp_ok) return;
    if (Is_Blank(nrf_decompress_command)) nrf_decompress_command = Default_Decompress_Command();

    std::string numor = Format_I(numor_number, 6);
    for (char& c : numor)
        if (c == ' ') c = '0';
    std::string name = Trim(Lower(Cut(instrument, 8)));
    std::string sub;
    for (const char* inst : {"kv8", "kw2", "ks1", "ks3", "ks5", "ks4"})
        if (name.find(inst) != std::string::npos) {
            sub = name + "_" + numor.substr(1, 1) + kSep;
            break;
        }

    // A plain file, or its ".Z" form unpacked into the temporary directory.
    auto try_cycle = [&](const std::string& yc) {
        std::string p = l.root + yc + kSep + name + kSep + sub + numor;
        if (is_file(p)) {
            path = p;
            return true;
        }
        if (is_file(p + ".Z")) {
            if (plain_path) *plain_path = p;
            std::string target = l.temp_dir + numor;
            if (Decompress_Numor(p + ".Z", target)) path = target;
            return true;
        }
        return false;
    };

    if (year >= 0 && cycle >= 0 && try_cycle(year_cycle(year, cycle))) return;
    for (const char* data : {"data", "data-1"}) {
        std::string p = l.root + data + kSep + name + kSep + sub + numor;
        if (is_file(p)) {
            path = p;
            return;
        }
    }
    std::time_t now = std::time(nullptr);
    std::tm tm{};
    localtime_r(&now, &tm);
    int y = (tm.tm_year + 1900) % 100, c = 7;
    // The walk back through the cycles stops at the year 72.
    while (y != 72) {
        if (try_cycle(year_cycle(y, c))) return;
        if (--c < 1) {
            c = 7;
            y = (y == 0) ? 99 : y - 1;
        }
    }
}

}  // namespace hxl
