// The find bar of the internal editor: a text, Next and Previous, a case
// switch, and a note that says when the search went round or found nothing.
#include <QCheckBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTextBlock>
#include <QToolButton>

#include "app/qt/editor.h"

namespace zendrite::qt {

QWidget* Build_Find_Bar(EDITOR_STATE& e) {
    auto* bar = new QWidget;
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(6, 3, 6, 3);
    row->addWidget(new QLabel("Find:"));
    e.find_text = new QLineEdit;
    e.find_text->setMinimumWidth(160);
    row->addWidget(e.find_text, 2);
    auto* next = new QPushButton("Next");
    auto* previous = new QPushButton("Previous");
    e.match_case = new QCheckBox("Match case");
    e.find_note = new QLabel;
    auto* hide = new QToolButton;
    hide->setText("Close");
    hide->setToolTip("Close the find bar (Esc)");
    for (QWidget* w : std::initializer_list<QWidget*>{next, previous, e.match_case}) row->addWidget(w);
    row->addWidget(e.find_note, 3);
    row->addWidget(hide);
    // Return finds the next match, Shift+Return the one before.
    QObject::connect(e.find_text, &QLineEdit::returnPressed, [] {
        Find_Again(Editor(), (QGuiApplication::keyboardModifiers() & Qt::ShiftModifier) != 0);
    });
    QObject::connect(next, &QPushButton::clicked, [] { Find_Again(Editor(), false); });
    QObject::connect(previous, &QPushButton::clicked, [] { Find_Again(Editor(), true); });
    auto close = [bar] {
        bar->hide();
        if (Editor().text) Editor().text->setFocus();
    };
    QObject::connect(hide, &QToolButton::clicked, close);
    auto* esc = new QShortcut(QKeySequence(Qt::Key_Escape), bar);
    esc->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(esc, &QShortcut::activated, close);
    e.find_bar = bar;
    bar->hide();
    return bar;
}

void Show_Find_Bar(EDITOR_STATE& e) {
    // A selection on one line is what the user most likely wants to find.
    const QString sel = e.text->textCursor().selectedText();
    if (!sel.isEmpty() && !sel.contains(QChar::ParagraphSeparator)) e.find_text->setText(sel);
    e.find_note->clear();
    e.find_bar->show();
    e.find_text->setFocus();
    e.find_text->selectAll();
}

void Find_Again(EDITOR_STATE& e, bool backward) {
    const QString what = e.find_text->text();
    e.find_note->clear();
    if (what.isEmpty()) return;
    QTextDocument::FindFlags flags;
    if (backward) flags |= QTextDocument::FindBackward;
    if (e.match_case->isChecked()) flags |= QTextDocument::FindCaseSensitively;
    if (e.text->find(what, flags)) return;
    const QTextCursor keep = e.text->textCursor();
    e.text->moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
    if (e.text->find(what, flags)) {
        e.find_note->setText(backward ? "Went round from the start to the end" : "Went round from the end to the start");
        return;
    }
    e.text->setTextCursor(keep);
    e.find_note->setText("\"" + what + "\" not found");
}

}  // namespace zendrite::qt
