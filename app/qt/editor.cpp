// The internal text editor: one child window with a menu bar, the text, a find
// bar and a status line. Its questions and selectors go through the layer's own
// operations, so that scripts answer them as they answer the program's.
#include "app/qt/editor.h"

#include <unistd.h>

#include <QAction>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QVBoxLayout>
#include <filesystem>
#include <functional>

#include "app/qt/canvas.h"
#include "app/qt/present_state.h"

namespace zendrite {
using namespace qt;

namespace {

const char* const kTitle = "Zendrite text editor";
const char* const kAllFiles = "All files (*)|*|";

void say(const std::string& text) { WMessageBox(OkOnly, ExclamationIcon, 1, text, kTitle); }

std::string base_name(const std::string& f) { return std::filesystem::path(f).filename().string(); }

std::string full_name(const std::string& f) {
    std::error_code ec;
    const std::filesystem::path p = std::filesystem::absolute(f, ec);
    return ec ? f : p.lexically_normal().string();
}

bool changed(const EDITOR_STATE& e) { return e.text && !e.read_only && e.text->document()->isModified(); }

void show_title(const EDITOR_STATE& e) {
    if (!e.frame) return;
    std::string t = std::string(kTitle) + " - " + base_name(e.file);
    if (e.read_only) t += " (read only)";
    if (changed(e)) t += " *";
    e.frame->setWindowTitle(Q(t));
}

void status(const EDITOR_STATE& e, const std::string& text) {
    if (e.status) e.status->setText(Q(text));
}

// The document's text as it will be written: raw, so that no-break spaces stay what they are.
std::string editor_text(const EDITOR_STATE& e) {
    QString s = e.text->document()->toRawText();
    s.replace(QChar::ParagraphSeparator, QChar('\n'));
    return S(s);
}

bool save_to(EDITOR_STATE& e, const std::string& file) {
    if (full_name(file) == e.file && !changed(e)) {
        status(e, "No change to save");
        return true;
    }
    std::string bytes, message;
    if (!hxl::Text_File_Bytes(e.form, editor_text(e), bytes, message)) {
        say(message);
        return false;
    }
    if (IOsExists(file) && ::access(file.c_str(), W_OK) != 0) {
        say("The file " + file + " is read-only: nothing was written.\rSave the text under another name (Ctrl+Shift+S).");
        return false;
    }
    if (!hxl::Replace_File_Told(file, bytes, message)) {
        say(message + "\rThe file on disk is as it was; the text stays in the editor.");
        return false;
    }
    e.file = full_name(file);
    e.text->document()->setModified(false);
    show_title(e);
    status(e, "Saved " + e.file);
    return true;
}

// The question before the text is left: true when it may go (saved or given up).
bool may_leave(EDITOR_STATE& e) {
    if (!changed(e)) return true;
    WMessageBox(SaveDiscardCancel, QuestionIcon, kAnswerSave,
                "The text of " + base_name(e.file) + " has changed.\rSave it before it is left?", kTitle);
    const int answer = WInfoDialog(4);
    if (answer == kAnswerSave) return save_to(e, e.file);
    return answer == kAnswerDiscard;
}

std::string form_text(const hxl::TEXT_FILE_TYPE& t) {
    std::string s = t.latin1 ? "Latin-1" : "UTF-8";
    if (t.bom) s += " with BOM";
    s += t.crlf ? ", CR LF" : "";
    if (t.mixed) s += std::string(", line ends of mixed kinds: a save writes them all as ") + (t.crlf ? "CR LF" : "LF");
    return s;
}

void add_action(EDITOR_STATE& e, QMenu* menu, const std::string& key, const char* label, const QKeySequence& keys,
                std::function<void()> run) {
    QAction* a = menu->addAction(label);
    a->setShortcut(keys);
    QObject::connect(a, &QAction::triggered, [run = std::move(run)] { run(); });
    e.actions[key] = a;
}

void post_close(int handle) {
    WIN_MESSAGE m;
    m.type = CloseRequest;
    m.win = handle;
    WMessagePost(m);
}

bool open_in(EDITOR_STATE& e, const std::string& file, bool read_only);

void open_other(EDITOR_STATE& e) {
    std::string name;
    WSelectFile(kAllFiles, LoadDialog, name, kTitle);
    if (WInfoDialog(4) != kIdOk || name.empty()) return;
    open_in(e, name, false);
}

void save_as(EDITOR_STATE& e) {
    std::string name = e.file;
    WSelectFile(kAllFiles, SaveDialog, name, "Save as");
    if (WInfoDialog(4) != kIdOk || name.empty()) return;
    save_to(e, name);
}

void build(EDITOR_STATE& e) {
    LAYER& l = L();
    e.handle = l.next_child++;
    e.frame = new Child_Frame(e.handle);
    auto* lay = new QVBoxLayout(e.frame);
    lay->setContentsMargins(0, 0, 0, 0);
    lay->setSpacing(0);
    auto* bar = new QMenuBar(e.frame);
    lay->setMenuBar(bar);
    QMenu* file = bar->addMenu("&File");
    add_action(e, file, "open", "&Open...", QKeySequence::Open, [] { open_other(Editor()); });
    add_action(e, file, "save", "&Save", QKeySequence::Save, [] { save_to(Editor(), Editor().file); });
    add_action(e, file, "saveas", "Save &As...", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S),
               [] { save_as(Editor()); });
    file->addSeparator();
    add_action(e, file, "close", "&Close", QKeySequence(Qt::CTRL | Qt::Key_W), [] { post_close(Editor().handle); });
    QMenu* edit = bar->addMenu("&Edit");
    add_action(e, edit, "undo", "&Undo", QKeySequence::Undo, [] { Editor().text->undo(); });
    add_action(e, edit, "redo", "&Redo", QKeySequence::Redo, [] { Editor().text->redo(); });
    edit->addSeparator();
    add_action(e, edit, "find", "&Find...", QKeySequence::Find, [] { Show_Find_Bar(Editor()); });
    add_action(e, edit, "next", "Find &next", QKeySequence(Qt::Key_F3), [] { Find_Again(Editor(), false); });
    add_action(e, edit, "previous", "Find &previous", QKeySequence(Qt::SHIFT | Qt::Key_F3),
               [] { Find_Again(Editor(), true); });
    e.text = new QPlainTextEdit;
    e.text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    e.text->setLineWrapMode(QPlainTextEdit::NoWrap);  // column files read best unwrapped
    QObject::connect(e.text->document(), &QTextDocument::modificationChanged, [] { show_title(Editor()); });
    lay->addWidget(e.text, 1);
    lay->addWidget(Build_Find_Bar(e));
    e.status = new QLabel;
    e.status->setContentsMargins(6, 2, 6, 2);
    e.status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lay->addWidget(e.status);
    WINDOW_STATE& w = l.windows[e.handle];
    w.handle = e.handle;
    w.top = e.frame;
    e.frame->resize(760, 560);
    l.edit_window = e.handle;
}

bool open_in(EDITOR_STATE& e, const std::string& file, bool read_only) {
    hxl::TEXT_FILE_TYPE t;
    std::string message;
    if (!hxl::Read_Text_File(file, hxl::kTextFileLimit, t, message)) {
        say(message);
        return false;
    }
    if (!may_leave(e)) return false;
    // A save in the question may have rewritten this very file.
    if (!hxl::Read_Text_File(file, hxl::kTextFileLimit, t, message)) {
        say(message);
        return false;
    }
    if (!e.handle) build(e);
    e.read_only = read_only;
    e.file = full_name(file);
    e.form = t;
    e.text->setReadOnly(read_only);
    for (const char* k : {"save", "saveas", "undo", "redo"}) e.actions[k]->setEnabled(!read_only);
    e.text->setPlainText(QString::fromUtf8(t.text.data(), static_cast<qsizetype>(t.text.size())));
    e.text->document()->setModified(false);
    e.find_note->clear();
    show_title(e);
    status(e, e.file + "   (" + form_text(t) + ")");
    e.frame->show();
    e.frame->raise();
    e.frame->activateWindow();
    e.text->setFocus();
    return true;
}

// The state is dropped when the window was closed from outside the editor.
EDITOR_STATE& live() {
    EDITOR_STATE& e = Editor();
    if (e.handle && (L().edit_window != e.handle || !e.frame)) e = EDITOR_STATE{};
    return e;
}

}  // namespace

namespace qt {
EDITOR_STATE& Editor() {
    static EDITOR_STATE e;
    return e;
}
}  // namespace qt

int WEditFile(const std::string& file, bool read_only) {
    EDITOR_STATE& e = live();
    open_in(e, file, read_only);
    return e.handle;
}

int WEditWindow() { return live().handle; }

bool WEditClose() {
    EDITOR_STATE& e = live();
    if (!e.handle) return true;
    if (!may_leave(e)) return false;
    WindowCloseChild(e.handle);
    e = EDITOR_STATE{};
    return true;
}

bool WEditCommand(const std::string& command, const std::string& argument) {
    EDITOR_STATE& e = live();
    if (!e.handle) return false;
    if (command == "type") {
        QString s = Q(argument);
        s.replace("\\n", "\n");
        e.text->insertPlainText(s);
        return true;
    }
    if (command == "top" || command == "end") {
        e.text->moveCursor(command == "top" ? QTextCursor::Start : QTextCursor::End);
        return true;
    }
    const auto it = e.actions.find(command);
    if (it == e.actions.end()) return false;
    it->second->trigger();
    if (command == "find" && !argument.empty()) {
        e.find_text->setText(Q(argument));
        Find_Again(e, false);
    }
    return true;
}

std::string WEditState() {
    EDITOR_STATE& e = live();
    if (!e.handle) return "closed\n";
    const QTextCursor c = e.text->textCursor();
    std::string s = "title " + S(e.frame->windowTitle()) + "\n";
    s += "file " + e.file + "\n";
    s += std::string("changed ") + (changed(e) ? "1" : "0") + "\n";
    s += "cursor " + std::to_string(c.blockNumber() + 1) + " " + std::to_string(c.positionInBlock() + 1) + "\n";
    s += "selection " + S(c.selectedText()) + "\n";
    s += "find " + S(e.find_note->text()) + "\n";
    return s;
}

}  // namespace zendrite
