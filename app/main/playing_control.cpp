// "Playing control": the profiles shown one at a time, with a delay, until Stop.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>
#include <vector>

#include "app/main/profile_commands.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"

namespace zendrite {

namespace {

constexpr int kDelay = 31, kRounds = 32, kStop = 35, kNowShowing = 36;
constexpr float kLongestDelay = 60.0f;
constexpr int kMostRounds = 100;

std::size_t at(int slot) { return static_cast<std::size_t>(slot); }

int control_dialog() {
    static int id = 0;
    if (!id) {
        DIALOG_TEMPLATE t;
        DIALOG_FIELD delay = Fld(kDelay, FIELD_KIND::Real, "Delay between profiles (s)");
        delay.value = "0.5";
        DIALOG_FIELD rounds = Fld(kRounds, FIELD_KIND::Integer, "Rounds");
        rounds.value = "1";
        t.fields = {delay, rounds};
        id = WDialogDefineTitled("Playing control", t);
    }
    return id;
}

int stop_dialog() {
    static int id = 0;
    if (!id) {
        DIALOG_TEMPLATE t;
        t.fields = {Fld(kNowShowing, FIELD_KIND::Label, ""), Fld(kStop, FIELD_KIND::PushButton, "Stop")};
        id = WDialogDefineTitled("Playing", t);
    }
    return id;
}

// Waits `seconds` while the window lives; true when Stop (or a close) came.
// Other events wait in `later` and are given back when the play ends; mouse events are dropped.
bool wait_for_stop(float seconds, int stop_id, std::vector<WIN_MESSAGE>& later) {
    using clock = std::chrono::steady_clock;
    const auto end = clock::now() + std::chrono::milliseconds(static_cast<int>(seconds * 1000.0f));
    do {
        while (WMessagePending()) {
            int type = 0;
            WIN_MESSAGE m;
            WMessage(type, m);
            if (type == PushButton && m.win == stop_id) return true;
            if (type == MouseButDown || type == MouseButUp || type == MouseMove || type == MouseWheel) continue;
            later.push_back(m);
            if (type == CloseRequest) return true;
        }
        if (clock::now() >= end) break;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    } while (clock::now() < end);
    return false;
}

}  // namespace

void Playing_Command() {
    ZENDRITE_STORE& g = zendrite_param_global();
    WDialogLoad(control_dialog());
    WDialogShow(-1, -1, 0, Modal);
    float delay = 0.5f;
    int rounds = 1;
    const bool ok = WInfoDialog(4) == kIdOk;
    WDialogGetReal(kDelay, delay);
    WDialogGetInteger(kRounds, rounds);
    WDialogUnload();
    if (!ok || g.nperfiles < 1) {
        Plot_Again();
        return;
    }
    if (!std::isfinite(delay) || delay < 0 || delay > kLongestDelay || rounds < 1 || rounds > kMostRounds) {
        Show_Message("The delay must lie between 0 and 60 s and the rounds between 1 and 100");
        return;
    }
    const std::vector<bool> shown(g.show_profile.begin() + 1, g.show_profile.begin() + 1 + g.nperfiles);
    const int id = stop_dialog();
    WDialogLoad(id);
    WDialogShow(-1, -1, 0, Modeless);
    std::vector<WIN_MESSAGE> later;
    bool stop = false;
    for (int r = 1; r <= rounds && !stop; ++r) {
        for (int s = 1; s <= g.nperfiles && !stop; ++s) {
            for (int k = 1; k <= g.nperfiles; ++k) g.show_profile[at(k)] = k == s;
            WDialogSelect(id);
            WDialogPutString(kNowShowing, "Profile " + std::to_string(s) + " of " + std::to_string(g.nperfiles));
            Plot_Again();
            stop = wait_for_stop(delay, id, later);
        }
    }
    WDialogSelect(id);
    WDialogUnload();
    for (int k = 1; k <= g.nperfiles; ++k) g.show_profile[at(k)] = shown[at(k - 1)];
    for (const WIN_MESSAGE& m : later) WMessagePost(m);
    Plot_Again();
}

}  // namespace zendrite
