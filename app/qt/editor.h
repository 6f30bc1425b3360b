#pragma once
// The internal text editor's window, shared by the files of the editor in the layer.
#include <QPointer>
#include <map>
#include <string>

#include "support/text_file.h"

class QAction;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QWidget;

namespace zendrite::qt {

class Child_Frame;

struct EDITOR_STATE {
    int handle = 0;
    QPointer<Child_Frame> frame;
    QPointer<QPlainTextEdit> text;
    QPointer<QLabel> status;
    QPointer<QWidget> find_bar;
    QPointer<QLineEdit> find_text;
    QPointer<QCheckBox> match_case;
    QPointer<QLabel> find_note;
    std::string file;
    hxl::TEXT_FILE_TYPE form;  // how the file was written, kept for the save
    bool read_only = false;
    std::map<std::string, QAction*> actions;  // "open", "save", ...
};

EDITOR_STATE& Editor();
// The find bar under the text (editor_find.cpp): built hidden, shown by Ctrl+F.
QWidget* Build_Find_Bar(EDITOR_STATE& e);
void Show_Find_Bar(EDITOR_STATE& e);
// Looks for the find bar's text after (or before) the cursor, going round the end once.
void Find_Again(EDITOR_STATE& e, bool backward);

}  // namespace zendrite::qt
