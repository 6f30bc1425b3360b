#include "app/main/chart_window.h"
#include "app/main/script.h"

#include <filesystem>
#include <fstream>
#include <iostream>

#include "app/main/frames_window.h"
#include "app/main/hkl_gen.h"
#include "app/main/picture_commands.h"
#include "app/main/menu_groups.h"
#include "app/main/quick_view.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/present_gl.h"
#include "app/store/zendrite_param_global.h"
#include "support/fixed_text.h"
#if ZD_WITH_PLOT
#include "graphics/mouse.h"
#endif

namespace zendrite {

namespace {

std::vector<std::string> lines;
std::size_t next_line = 0;

int to_int(const std::string& s, bool& ok) {
    int err = 0;
    const int v = IStringToInteger(s, err);
    ok = ok && err == 0;
    return v;
}
float to_real(const std::string& s, bool& ok) {
    int err = 0;
    const double v = IStringToReal(s, err);
    ok = ok && err == 0;
    return static_cast<float>(v);
}

void bad(const std::string& line, const std::string& why) {
    std::cout << "SCRIPT line " << next_line << ": " << why << ": " << line << std::endl;
}

// The labels of the reflections listed in the box under the mouse, one a line.
std::string Reflections_Under_Mouse() {
    std::string out;
#if ZD_WITH_PLOT
    const ZENDRITE_STORE& g = zendrite_param_global();
    if (g.ProfilePRFactive < 1 || g.ProfilePRFactive > g.nperfiles) return out;
    const PRF_INFO_ADD_TYPE& info = g.info[static_cast<std::size_t>(g.ProfilePRFactive)];
    for (int i : Mouse_State().found)
        if (i >= 1 && i <= info.refl_label.size()) out += hxl::Trim(info.refl_label(i)) + "\n";
#endif
    return out;
}

// "qv ...": events of the Quick View window, its state and its picture.
// The 2D window: its toolbar, keys, pictures, and the mouse at page fractions (0 to 1).
bool frames_step(const std::string& line, const std::vector<std::string>& w, WIN_MESSAGE& m) {
    const int win = Frames_View().window;
    if (w[1] == "dump" && w.size() == 3) {
        if (!Write_File_Replace(w[2], Frames_Dump())) bad(line, "cannot write");
        return false;
    }
    if (win == 0) {
        bad(line, "no 2D window");
        return false;
    }
    bool ok = true;
    m = WIN_MESSAGE{};
    m.win = win;
    static const std::vector<std::pair<std::string, int>> items = {
        {"open", kFrOpen},   {"previous", kFrPrevious}, {"next", kFrNext},       {"animate", kFrAnimate},
        {"scale", kFrScale}, {"unzoom", kFrUnzoom},     {"pattern", kFrPattern}, {"close", kFrClose},
        {"iso", kFrIso},     {"goto", kFrGoto},         {"geometry", kFrGeometry},
        {"mask", kFrMask},   {"limits", kFrLimits}};
    if (w.size() == 2) {
        for (const auto& [name, item] : items)
            if (name == w[1]) {
                m.type = MenuSelect;
                m.value1 = item;
                return true;
            }
    } else if (w[1] == "picture" && w.size() == 3) {
        if (!WPictureSave(win, w[2])) bad(line, "no picture");
        return false;
    } else if (w[1] == "key" && w.size() == 3 && (w[2] == "left" || w[2] == "right" || w[2] == "home")) {
        m.type = KeyDown;
        m.value1 = w[2] == "left" ? kKeyLeft : w[2] == "right" ? kKeyRight : kKeyHome;
        return true;
    } else if (w[1] == "mouse" && w.size() == 6) {
        m.type = w[2] == "press" ? MouseButDown : w[2] == "release" ? MouseButUp : w[2] == "move" ? MouseMove : 0;
        m.value1 = to_int(w[3], ok);
        m.gx = to_real(w[4], ok), m.gy = to_real(w[5], ok);
        if (ok && m.type) return true;
    }
    bad(line, "not understood");
    return false;
}

bool quick_view_step(const std::string& line, const std::vector<std::string>& w, WIN_MESSAGE& m) {
    const int win = Quick_View().qv_window;
    const std::string& what = w[1];
    bool ok = true;
    if (what == "dump" && w.size() == 3) {
        if (!Write_File_Replace(w[2], Quick_View_Dump())) bad(line, "cannot write");
        return false;
    }
    if (win == 0) {
        bad(line, "no Quick View window");
        return false;
    }
    m = WIN_MESSAGE{};
    m.win = win;
    static const std::vector<std::pair<std::string, int>> items = {
        {"dir", kQvChooseDir}, {"previous", kQvPrevious}, {"next", kQvNext}, {"main", kQvToMain}, {"close", kQvClose}};
    static const std::vector<std::pair<std::string, int>> keys = {
        {"home", kKeyHome}, {"up", kKeyUp},           {"down", kKeyDown},          {"left", kKeyLeft},
        {"right", kKeyRight}, {"pageup", kKeyPageUp}, {"pagedown", kKeyPageDown}};
    if (w.size() == 2) {
        for (const auto& [name, item] : items)
            if (name == what) {
                m.type = MenuSelect;
                m.value1 = item;
                return true;
            }
    } else if (what == "picture" && w.size() == 3) {
        if (!WPictureSave(win, w[2])) bad(line, "no picture");
        return false;
    } else if (what == "key" && w.size() == 3) {
        for (const auto& [name, code] : keys)
            if (name == w[2]) {
                m.type = KeyDown;
                m.value1 = code;
                return true;
            }
    } else if (what == "close" && w.size() == 3 && w[2] == "request") {
        m.type = CloseRequest;
        return true;
    } else if (what == "mouse" && w.size() == 6) {
        m.type = w[2] == "press" ? MouseButDown : w[2] == "release" ? MouseButUp : w[2] == "move" ? MouseMove : 0;
        m.value1 = to_int(w[3], ok);
        m.x = to_real(w[4], ok), m.y = to_real(w[5], ok);
        Quick_View_Data_To_Page(m.x, m.y, m.gx, m.gy);
        if (ok && m.type) return true;
    }
    bad(line, "not understood");
    return false;
}

// "editor ...": the internal editor's commands, its close request, its state and picture.
bool editor_step(const std::string& line, const std::vector<std::string>& w, WIN_MESSAGE& m) {
    const int win = WEditWindow();
    if (w[1] == "state" && w.size() == 3) {
        if (!Write_File_Replace(w[2], WEditState())) bad(line, "cannot write");
        return false;
    }
    if (win == 0) {
        bad(line, "no editor window");
        return false;
    }
    if (w[1] == "close" && w.size() == 2) {
        m = WIN_MESSAGE{};
        m.type = CloseRequest;
        m.win = win;
        return true;
    }
    if (w[1] == "picture" && w.size() == 3) {
        if (!WPictureSave(win, w[2])) bad(line, "no picture");
    } else if (w.size() <= 3) {
        if (!WEditCommand(w[1], w.size() == 3 ? w[2] : "")) bad(line, "not an editor command");
    } else {
        bad(line, "not understood");
    }
    return false;
}

// One line; true with `m` filled when the line is an event for the main loop.
bool step(const std::string& line, WIN_MESSAGE& m) {
    const std::vector<std::string> w = Script_Words(line);
    if (w.empty()) return false;
    const std::string& cmd = w[0];
    bool ok = true;
    if (cmd == "menu" && w.size() == 2) {
        m = WIN_MESSAGE{};
        m.type = MenuSelect;
        m.value1 = to_int(w[1], ok);
        if (ok) return true;
    } else if (cmd == "button" && w.size() == 3) {
        m = WIN_MESSAGE{};
        m.type = PushButton;
        m.win = to_int(w[1], ok);
        m.value1 = to_int(w[2], ok);
        if (ok) return true;
    } else if (cmd == "files") {
        WQueueFiles(std::vector<std::string>(w.begin() + 1, w.end()));
        return false;
    } else if (cmd == "dir") {
        WQueueFiles(w.size() > 1 ? std::vector<std::string>{w[1]} : std::vector<std::string>{});
        return false;
    } else if (cmd == "answer" && w.size() == 2) {
        const int a = to_int(w[1], ok);
        if (ok) {
            WQueueAnswer(a);
            return false;
        }
    } else if (cmd == "dialog" && w.size() == 3 && w[2] == "show") {
        DIALOG_ANSWER a;
        a.op = "show";
        WQueueDialogAnswer(w[1], a);
        return false;
    } else if (cmd == "dialog" && w.size() == 4 && w[2] == "picture") {
        DIALOG_ANSWER a;
        a.op = "picture";
        a.value = w[3];
        WQueueDialogAnswer(w[1], a);
        return false;
    } else if (cmd == "dialog" && w.size() >= 4) {
        DIALOG_ANSWER a;
        a.op = w[2];
        a.field = to_int(w[3], ok);
        if (a.op == "set" && w.size() >= 5) {
            for (std::size_t i = 4; i < w.size(); ++i) a.value += (i > 4 ? " " : "") + w[i];
        } else if (a.op == "check" && w.size() == 5) {
            a.value = w[4];
        } else if (a.op == "grid" && w.size() >= 7) {
            a.row = to_int(w[4], ok);
            a.col = to_int(w[5], ok);
            for (std::size_t i = 6; i < w.size(); ++i) a.value += (i > 6 ? " " : "") + w[i];
        } else if (a.op != "radio" && a.op != "press") {
            ok = false;
        }
        if (ok) {
            WQueueDialogAnswer(w[1], a);
            return false;
        }
    } else if (cmd == "mouse" && (w.size() == 5 || w.size() == 6)) {
        m = WIN_MESSAGE{};
        m.type = w[1] == "press" ? MouseButDown : w[1] == "release" ? MouseButUp : w[1] == "move" ? MouseMove : 0;
        m.value1 = to_int(w[2], ok);
        if (w.size() == 6 && w[3] == "page") {
            m.gx = to_real(w[4], ok), m.gy = to_real(w[5], ok);
            IPgPageToXY(m.gx, m.gy, m.x, m.y);
        } else if (w.size() == 5) {
            m.x = to_real(w[3], ok), m.y = to_real(w[4], ok);
            IPgXYToPage(m.x, m.y, m.gx, m.gy);
        } else {
            ok = false;
        }
        if (ok && m.type) return true;
    } else if (cmd == "wheel" && (w.size() == 4 || w.size() == 5)) {
        m = WIN_MESSAGE{};
        m.type = MouseWheel;
        m.value1 = to_int(w[1], ok);
        if (w.size() == 5 && w[2] == "page") {
            m.gx = to_real(w[3], ok), m.gy = to_real(w[4], ok);
            IPgPageToXY(m.gx, m.gy, m.x, m.y);
        } else if (w.size() == 4) {
            m.x = to_real(w[2], ok), m.y = to_real(w[3], ok);
            IPgXYToPage(m.x, m.y, m.gx, m.gy);
        } else {
            ok = false;
        }
        if (ok) return true;
    } else if (cmd == "key" && w.size() == 2) {
        static const std::vector<std::pair<std::string, int>> keys = {
            {"home", kKeyHome}, {"up", kKeyUp},           {"down", kKeyDown},          {"left", kKeyLeft},
            {"right", kKeyRight}, {"pageup", kKeyPageUp}, {"pagedown", kKeyPageDown}};
        for (const auto& [name, code] : keys)
            if (name == w[1]) {
                m = WIN_MESSAGE{};
                m.type = KeyDown;
                m.value1 = code;
                return true;
            }
    } else if (cmd == "status" && w.size() == 2) {
        std::string text;
        for (int part = 1; part <= 5; ++part) text += "status " + std::to_string(part) + " " + WindowStatusBarText(part) + "\n";
        if (!Write_File_Replace(w[1], text)) bad(line, "cannot write");
        return false;
    } else if (cmd == "view" && w.size() >= 3) {
        if (!Multi_View_Setting(w)) bad(line, "not a view setting");
        return false;
    } else if (cmd == "resize" && w.size() == 3) {
        m = WIN_MESSAGE{};
        m.type = Resize;
        m.width = to_int(w[1], ok), m.height = to_int(w[2], ok);
        if (ok && m.width > 0 && m.height > 0) {
            WindowSize(kRootWindow, m.width, m.height);
            return true;
        }
    } else if (cmd == "dump" && w.size() == 2) {
        if (!Write_File_Replace(w[1], Store_Dump())) bad(line, "cannot write");
        return false;
    } else if (cmd == "picture" && w.size() == 3) {
        if (!WPictureSave(to_int(w[1], ok), w[2]) || !ok) bad(line, "no picture");
        return false;
    } else if (cmd == "export" && (w.size() == 3 || w.size() == 6)) {
        // export WINDOW FILE [WIDTHmm HEIGHTmm DPI]: the kept options, with the size given
        PICTURE_OPTIONS o = Picture_Options();
        const int win = to_int(w[1], ok);
        if (w.size() == 6) {
            o.width = to_real(w[3], ok), o.height = to_real(w[4], ok), o.dpi = to_int(w[5], ok);
            o.pixels = false;
        }
        std::string message;
        if (!ok) bad(line, "not understood");
        else if (!Export_Window_Picture(win, w[2], o, message)) Show_Message(message);
        return false;
    } else if (cmd == "qv" && w.size() >= 2) {
        return quick_view_step(line, w, m);
    } else if (cmd == "frames" && w.size() >= 2) {
        return frames_step(line, w, m);
    } else if (cmd == "charts" && w.size() >= 2) {
        const int win = Chart_Window();
        if (w[1] == "dump" && w.size() == 3) {
            if (!Write_File_Replace(w[2], Chart_Dump())) bad(line, "cannot write");
            return false;
        }
        if (win == 0) {
            bad(line, "no chart window");
            return false;
        }
        if (w[1] == "picture" && w.size() == 3) {
            if (!WPictureSave(win, w[2])) bad(line, "no picture");
            return false;
        }
        if (w[1] == "hover" && w.size() == 4) {  // the mouse at a place of the window, in fractions of it
            bool ok = true;
            m = WIN_MESSAGE{};
            m.win = win;
            m.type = MouseMove;
            m.gx = to_real(w[2], ok), m.gy = to_real(w[3], ok);
            if (ok) return true;
            bad(line, "not understood");
            return false;
        }
        if (w[1] == "look" && w.size() == 2) {  // an event of the window, as a mouse passing over it
            m = WIN_MESSAGE{};
            m.win = win;
            m.type = Expose;
            return true;
        }
        static const std::vector<std::pair<std::string, int>> items = {
            {"open", kChOpen}, {"reload", kChReload}, {"columns", kChColumns}, {"export", kChExport}, {"close", kChClose},
            {"export-ps", kChExportPs}, {"export-emf", kChExportEmf}, {"close-file", kChCloseFile}};
        for (const auto& [name, item] : items)
            if (w.size() == 2 && name == w[1]) {
                m = WIN_MESSAGE{};
                m.win = win;
                m.type = MenuSelect;
                m.value1 = item;
                return true;
            }
        bad(line, "not understood");
        return false;
    } else if (cmd == "gl" && w.size() >= 2) {
        std::string message;
        const bool done = GlModelCommand(std::vector<std::string>(w.begin() + 1, w.end()), message);
        if (!message.empty()) Show_Message(message);
        (void)done;
        return false;
    } else if (cmd == "hklgen" && w.size() == 2) {
        if (!Write_File_Replace(w[1], Hkl_Gen_Dump())) bad(line, "cannot write");
        return false;
    } else if (cmd == "phases" && w.size() == 2) {
        if (!Write_File_Replace(w[1], Structure_Overlay_Dump())) bad(line, "cannot write");
        return false;
    } else if (cmd == "reflections" && w.size() == 2) {
        if (!Write_File_Replace(w[1], Reflections_Under_Mouse())) bad(line, "cannot write");
        return false;
    } else if (cmd == "drop" && w.size() >= 2) {
        m = WIN_MESSAGE{};
        m.type = FilesDropped;
        for (std::size_t i = 1; i < w.size(); ++i) {
            std::error_code ec;
            const std::filesystem::path p = std::filesystem::absolute(w[i], ec);
            m.paths.push_back(ec ? w[i] : p.string());
        }
        return true;
    } else if (cmd == "progress" && w.size() == 4) {
        // "escape" presses the Escape key in the dialog instead of a button.
        const int value = to_int(w[2], ok), button = w[3] == "escape" ? kProgressEscape : to_int(w[3], ok);
        if (ok) {
            WQueueProgressAnswer(w[1], value, button);
            return false;
        }
    } else if (cmd == "editor" && w.size() >= 2) {
        return editor_step(line, w, m);
    } else if (cmd == "history" && w.size() == 2) {
        if (!Write_File_Replace(w[1], History_Dump())) bad(line, "cannot write");
        return false;
    } else if ((cmd == "undo" || cmd == "redo") && w.size() == 1) {
        m = WIN_MESSAGE{};
        m.type = MenuSelect;
        m.value1 = cmd == "undo" ? kUndoItem : kRedoItem;
        return true;
    } else if (cmd == "quit" && w.size() == 1) {
        m = WIN_MESSAGE{};
        m.type = MenuSelect;
        m.value1 = 40005;
        return true;
    }
    bad(line, "not understood");
    return false;
}

}  // namespace

std::vector<std::string> Script_Words(const std::string& line) {
    std::vector<std::string> w;
    std::size_t i = 0;
    while (i < line.size()) {
        while (i < line.size() && (line[i] == ' ' || line[i] == '\t' || line[i] == '\r')) ++i;
        if (i >= line.size() || line[i] == '#') break;
        std::string word;
        if (line[i] == '"') {
            const std::size_t close = line.find('"', i + 1);
            word = line.substr(i + 1, close == std::string::npos ? std::string::npos : close - i - 1);
            i = close == std::string::npos ? line.size() : close + 1;
        } else {
            while (i < line.size() && line[i] != ' ' && line[i] != '\t' && line[i] != '\r') word += line[i++];
        }
        w.push_back(word);
    }
    return w;
}

bool Load_Script(const std::string& file, std::string& message) {
    std::ifstream in(file);
    if (!in) {
        message = "Unable to read the script " + file;
        return false;
    }
    lines.clear();
    next_line = 0;
    for (std::string s; std::getline(in, s);) lines.push_back(s);
    return true;
}

void Run_Script_Source() {
    // Answer lines before the first action answer the questions of start-up.
    while (next_line < lines.size()) {
        const std::vector<std::string> w = Script_Words(lines[next_line]);
        if (!w.empty() && w[0] != "files" && w[0] != "dir" && w[0] != "answer" && w[0] != "dialog" &&
            w[0] != "progress")
            break;
        WIN_MESSAGE unused;
        step(lines[next_line++], unused);
    }
    WSetEventSource([](WIN_MESSAGE& m) {
        while (next_line < lines.size()) {
            const std::string line = lines[next_line++];
            if (step(line, m)) return true;
        }
        return false;
    });
}

}  // namespace zendrite
