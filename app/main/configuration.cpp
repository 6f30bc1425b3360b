#include "app/main/configuration.h"

#include <fstream>
#include <iostream>

#include "app/present.h"
#include "extprog/os_commands.h"
#include "support/fixed_text.h"

namespace zendrite {

CONFIGURATION_TYPE& Configuration() {
    static CONFIGURATION_TYPE c;
    return c;
}

[[noreturn]] static void fault(const std::string& text) {
    std::cerr << text << std::endl;
    std::exit(1);
}

void init_configure() {
    CONFIGURATION_TYPE& c = Configuration();
    c.title_bg = WRGB(0, 0, 96);
    c.title_fg = WRGB(255, 255, 160);
    int code = 0, sub = 0;
    IOsOpSystem(code, sub);
    c.os_tag = code == 4 ? (sub == 14 ? "LINU" : "MACO") : code == 6 ? "WIND" : "UNKN";
    if (c.os_tag == "UNKN") fault("Fault: Unknown Operating System ");
    const bool win = c.os_tag == "WIND";
    c.dir_sep = win ? "\\" : "/";
    hxl::OS_COMMAND_TABLE_TYPE t;
    hxl::Os_Command_Table(c.os_tag, t);
    c.file_browser = t.file_explorer;
    c.web_browser = t.web_browser;
    c.pdf_viewer = t.pdf_viewer;
    c.cmd_window = t.console;
    c.text_editor = t.text_editor;
    c.compressor = t.unpacker;
    c.cmd_prefix = win ? "cmd /t:0e /c" : "";
    c.prog_corvane = hxl::Sibling_Program(hxl::SIBLING::Corvane, c.os_tag);
    c.prog_tessara = hxl::Sibling_Program(hxl::SIBLING::Tessara, c.os_tag);
    c.prog_glattiq = hxl::Sibling_Program(hxl::SIBLING::Glattiq, c.os_tag);
    c.prog_quavor = hxl::Sibling_Program(hxl::SIBLING::Quavor, c.os_tag);
    c.prog_atelier = hxl::Sibling_Program(hxl::SIBLING::Atelier, c.os_tag);
    c.prog_dicvol = hxl::Sibling_Program(hxl::SIBLING::Dicvol, c.os_tag);
    c.setfile_name = "zendrite-2006.set";
    if (c.setfile_name != "zendrite-2006.set") fault("Fault: /zendrite_initialize/init_configure/03 bad setfilename");
}

static std::string strip_sep(std::string s, const std::string& sep) {
    while (s.size() > 1 && s.substr(s.size() - sep.size()) == sep) s.resize(s.size() - sep.size());
    return s;
}

void Init_Directories() {
    CONFIGURATION_TYPE& c = Configuration();
    c.corvane_dir = hxl::Trim(IOsVariable("CORVANE"));
    if (!IOsIsDir(c.corvane_dir)) {
        const char* v = std::getenv("CORVANE");
        c.corvane_dir = v && IOsIsDir(v) ? hxl::Trim(v) : "";
    }
    if (c.os_tag == "WIND") {
        c.settings_dir = c.corvane_dir;
    } else {
        c.settings_dir = IOsVariable("HOME") + c.dir_sep + ".zdp";
        if (!IOsIsDir(c.settings_dir)) IOsDirMake(c.settings_dir);
    }
    c.pcr_file.clear();
    c.prf_path.clear();
    c.last_dir.clear();
    if (!c.corvane_dir.empty()) {
        c.corvane_dir = strip_sep(c.corvane_dir, c.dir_sep);
        c.settings_dir = strip_sep(c.settings_dir, c.dir_sep);
    }
    const std::string tcv = c.settings_dir + c.dir_sep + "tcv.set";
    if (IOsExists(tcv)) {
        std::ifstream in(tcv);
        std::string line;
        while (std::getline(in, line)) {
            line = hxl::Cut(line, 132);
            if (line.empty() || line[0] == '!' || line[0] == ' ') continue;
            const std::size_t eq = line.find('=');
            const std::string key = hxl::Upper(hxl::Trim(line.substr(0, eq == std::string::npos ? line.size() : eq)));
            if (key == "LASTD" && eq != std::string::npos) {
                c.last_dir = hxl::Trim(line.substr(eq + 1));
                break;
            }
        }
        if (!c.last_dir.empty()) IOsDirChange(c.last_dir);
    } else if (const std::string dirf = c.settings_dir + c.dir_sep + "zendrite.dir"; IOsExists(dirf)) {
        std::ifstream in(dirf);
        std::getline(in, c.last_dir);
        c.last_dir = hxl::Trim(c.last_dir);
        if (!c.last_dir.empty()) IOsDirChange(c.last_dir);
    }
    const std::string cvd = c.settings_dir + c.dir_sep + "corvane.dir";
    if (IOsExists(cvd)) {
        std::ifstream in(cvd);
        std::string first, second;
        std::getline(in, first);
        if (std::getline(in, second)) {
            second = hxl::Trim(second);
            if (second.empty()) c.pcr_file.clear();
            else if (second.find(c.dir_sep) != std::string::npos) c.pcr_file = second;
            else c.pcr_file += second;
        }
    }
}

std::string Preference_File_Name() {
    const CONFIGURATION_TYPE& c = Configuration();
    if (c.os_tag == "WIND") {
        const std::string local = c.start_dir + c.dir_sep + c.setfile_name;
        return IOsExists(local) ? local : c.corvane_dir + c.dir_sep + c.setfile_name;
    }
    return IOsVariable("HOME") + c.dir_sep + ".zdp" + c.dir_sep + c.setfile_name;
}

int File_Time_Stamp(const std::string& file) {
    const FILE_INFO_TYPE f = IOsFileInfo(file);
    if (f.size < 0) return -1;
    return f.hour * 10000 + f.minute * 100 + f.second;
}

}  // namespace zendrite
