// zendrite [file [width height]]
// zendrite --script FILE [file [width height]]   driven by a script, without a display
// zendrite --render OUT.png [file [width height]] writes the root window's picture (1200 x 800) and ends
#include <iostream>
#include <string>
#include <vector>

#include "app/main/picture_commands.h"
#include "app/main/script.h"
#include "app/main/render_check.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"

int main(int argc, char** argv) {
    using namespace zendrite;
    std::vector<std::string> args(argv + 1, argv + argc);
    std::string script, render;
    if (!args.empty() && (args[0] == "--script" || args[0] == "--render")) {
        if (args.size() < 2) {
            std::cerr << "usage: zendrite " << args[0] << " FILE [file [width height]]\n";
            return 2;
        }
        (args[0] == "--script" ? script : render) = args[1];
        args.erase(args.begin(), args.begin() + 2);
    }
    const bool unattended = !script.empty() || !render.empty();
    WInitialise(argc, argv, unattended);
    WSetUnattended(unattended);
    if (!script.empty()) {
        std::string message;
        if (!Load_Script(script, message)) {
            std::cerr << message << "\n";
            return 2;
        }
        Run_Script_Source();
    }
    if (!render.empty()) {
        // A picture of the title screen in place of the file is no answer: a
        // file that needs the format dialog, or that could not be read, ends
        // the run with status 1 and the reason (the message boxes are printed).
        const std::string file = args.empty() ? std::string() : args[0];
        WSetEventSource([render, file](WIN_MESSAGE& m) {
            if (!file.empty() && !Render_File_Loaded(file)) std::exit(1);
            // The whole page, drawn again at 1200 x 800 in the window's colours.
            PICTURE_OPTIONS o;
            o.width = 1200, o.height = 800, o.pixels = true, o.dpi = 96, o.white = false;
            std::string message;
            if (!Export_Window_Picture(kRootWindow, render, o, message)) {
                std::cerr << message << "\n";
                std::exit(1);
            }
            m = WIN_MESSAGE{};
            m.type = MenuSelect;
            m.value1 = 40005;
            return true;
        });
    }
    Zendrite_Start(args);
    Main_Loop();
}
