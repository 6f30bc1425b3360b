// The internal editor's keys, pressed as a user presses them: typing, Ctrl+S, Ctrl+F with
// Return, F3 and Shift+Return.
#include <gtest/gtest.h>

#include <QApplication>
#include <QPlainTextEdit>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/present.h"

using namespace zendrite;
namespace fs = std::filesystem;

namespace {

QWidget* editor_window() {
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && w->windowTitle().startsWith("Zendrite text editor")) return w;
    return nullptr;
}

std::string state_line(const std::string& key) {
    std::istringstream in(WEditState());
    for (std::string l; std::getline(in, l);)
        if (l.rfind(key + " ", 0) == 0) return l.substr(key.size() + 1);
    return "?";
}

}  // namespace

TEST(EditorKeys, TypeSaveAndFindByTheKeys) {
    static int argc = 1;
    static char name[] = "test";
    static char* argv[] = {name, nullptr};
    WInitialise(argc, argv, true);
    WSetUnattended(true);
    WindowOpen(0, 0, 640, 400, "keys test");
    const fs::path f = fs::temp_directory_path() / ("zd_editor_keys_" + std::to_string(::getpid()) + ".txt");
    std::ofstream(f, std::ios::binary) << "alpha\r\nbeta\r\nalpha\r\n";
    ASSERT_NE(WEditFile(f.string()), 0);
    QWidget* w = editor_window();
    ASSERT_NE(w, nullptr);
    QApplication::setActiveWindow(w);
    auto* text = w->findChild<QPlainTextEdit*>();
    ASSERT_NE(text, nullptr);
    text->setFocus();
    QTest::keyClicks(text, "new ");
    EXPECT_TRUE(w->windowTitle().endsWith(" *")) << w->windowTitle().toStdString();
    QTest::keyClick(text, Qt::Key_S, Qt::ControlModifier);
    std::ifstream in(f, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), "new alpha\r\nbeta\r\nalpha\r\n");
    EXPECT_EQ(state_line("changed"), "0");
    // Ctrl+F opens the bar; the typed word and Return find the first match, F3 the next
    QTest::keyClick(text, Qt::Key_F, Qt::ControlModifier);
    QWidget* focus = QApplication::focusWidget();
    ASSERT_NE(focus, nullptr);
    QTest::keyClicks(focus, "ALPHA");
    QTest::keyClick(focus, Qt::Key_Return);
    EXPECT_EQ(state_line("cursor"), "1 10");  // from the cursor after "new "
    QTest::keyClick(focus, Qt::Key_F3);
    EXPECT_EQ(state_line("cursor"), "3 6");
    EXPECT_EQ(state_line("find"), "");
    QTest::keyClick(focus, Qt::Key_F3);
    EXPECT_EQ(state_line("cursor"), "1 10");
    EXPECT_EQ(state_line("find"), "Went round from the end to the start");
    QTest::keyClick(focus, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(state_line("cursor"), "3 6");
    EXPECT_EQ(state_line("find"), "Went round from the start to the end");
    EXPECT_TRUE(WEditClose());
    fs::remove(f);
}
