// The event FIFO, the wait operation and the unattended (scripted) answers.
#include <QApplication>
#include <QThread>
#include <cstdlib>
#include <iostream>

#include "app/qt/present_state.h"

namespace zendrite {
using namespace qt;

namespace qt {
LAYER& L() {
    static LAYER layer;
    return layer;
}
QString Q(const std::string& s) { return QString::fromStdString(s); }
std::string S(const QString& s) { return s.toStdString(); }
}  // namespace qt

void WInitialise(int& argc, char** argv, bool offscreen) {
    if (L().started) return;
    if (offscreen) qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication* app = nullptr;
    if (!QApplication::instance()) app = new QApplication(argc, argv);
    (void)app;
    L().started = true;
    L().offscreen = offscreen || QGuiApplication::platformName() == "offscreen";
}

bool WOffscreen() { return L().offscreen; }

void WStop(int status) {
    std::cout.flush();
    std::exit(status);
}

void WSetUnattended(bool on) { L().unattended = on; }
bool WUnattended() { return L().unattended; }
void WSetEventSource(std::function<bool(WIN_MESSAGE&)> source) { L().source = std::move(source); }

void WMessagePost(const WIN_MESSAGE& message) {
    auto& q = L().fifo;
    // Successive movements and resizes of one window collapse into the newest.
    if (!q.empty() && (message.type == MouseMove || message.type == Resize) && q.back().type == message.type &&
        q.back().win == message.win) {
        q.back() = message;
        return;
    }
    q.push_back(message);
}

bool WMessagePending() {
    if (QApplication::instance()) QApplication::processEvents();
    return !L().fifo.empty();
}

void WMessageMouseMove(bool on) { L().mouse_move = on; }

void WMessage(int& type, WIN_MESSAGE& message) {
    LAYER& l = L();
    for (;;) {
        if (QApplication::instance()) QApplication::processEvents();
        if (!l.fifo.empty()) {
            message = l.fifo.front();
            l.fifo.pop_front();
            type = message.type;
            return;
        }
        if (l.unattended) {
            WIN_MESSAGE m;
            if (!l.source || !l.source(m)) {
                l.script_ended = true;
                m = WIN_MESSAGE{};
                m.type = CloseRequest;
                m.win = kRootWindow;
            }
            // Answers queued for an open modeless dialog take effect before its button
            // is pressed, as a user's edits would.
            if (m.type == PushButton)
                if (auto it = l.dialogs.find(m.win); it != l.dialogs.end() && it->second->modeless)
                    Apply_Dialog_Answers(*it->second);
            message = m;
            type = m.type;
            return;
        }
        if (QApplication::instance())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        else
            QThread::msleep(10);
    }
}

void WQueueFiles(const std::vector<std::string>& files) { L().file_answers.push_back(files); }
void WQueueAnswer(int button) { L().box_answers.push_back(button); }
void WQueueProgressAnswer(const std::string& key, int value, int button) {
    L().progress_answers[key].emplace_back(value, button);
}
void WQueueDialogAnswer(const std::string& key, const DIALOG_ANSWER& answer) {
    L().dialog_answers[key].push_back(answer);
}

}  // namespace zendrite
