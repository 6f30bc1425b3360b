#pragma once
// What the program fixes at start-up: names, system tag, directories, helper programs.
#include <string>

namespace zendrite {

struct CONFIGURATION_TYPE {
    std::string product_name = "Zendrite-2006";
    std::string version_text = "Version: 5.10";
    std::string release_date = "January 2023";
    std::string subtitle = "a Powder Diffraction graphic tool";
    std::string platform_line = "for Windows, Linux and MacOS";
    std::string rights_line = "(C) The Zendrite developers";
    std::string web_site = "https://zendrite.example.org";
    std::string download_site = "https://zendrite.example.org/download";
    std::string mail = "zendrite@example.org";
    int win_width = 800, win_height = 500;
    int title_bg = 0, title_fg = 0;  // set from WRGB constants
    bool first_flag = true;
    std::string os_tag;    // "WIND", "LINU", "MACO", "UNKN"
    std::string dir_sep;
    std::string setfile_name;
    std::string recent_name = "zendrite.mlf";
    std::string corvane_dir, settings_dir, start_dir, last_dir, cmd_file, prf_path, pcr_file;
    int prf_stamp = 0;
    // helper programs of the system
    std::string file_browser, web_browser, pdf_viewer, cmd_window, text_editor, cmd_prefix, compressor;
    std::string cif_viewer, ps_viewer, corvane_exe;
    // sibling programs
    std::string prog_corvane, prog_tessara, prog_glattiq, prog_quavor, prog_atelier, prog_dicvol;
    bool always_save_context = false, internal_editor = true;
};

CONFIGURATION_TYPE& Configuration();

// Fixes the system tag and what depends on it; a fault (unknown system) ends the process.
void init_configure();
// Directories of the suite and of the settings, last directory, last control file.
void Init_Directories();
// Full name of the preference file for the present system.
std::string Preference_File_Name();
// Time stamp of a file: hour*10000 + minute*100 + second of its last change; -1 when missing.
int File_Time_Stamp(const std::string& file);

}  // namespace zendrite
