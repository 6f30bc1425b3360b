// The root window's menu bar: every item present, greyed and checked as the modes say.
#include <gtest/gtest.h>

#include <set>

#include "app/main/root_menu.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/add_profile.h"
#include "app/store/zendrite_param_global.h"

// Qt after the program's headers: its "slots" would clash with a field of theirs.
#include <QAction>
#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QTest>
#include <QToolBar>
#include <QDialog>
#include <QTimer>
#include <QTreeWidget>

using namespace zendrite;

namespace {
struct RootMenu : ::testing::Test {
    static void SetUpTestSuite() {
        static int argc = 1;
        static char name[] = "test";
        static char* argv[] = {name, nullptr};
        WInitialise(argc, argv, true);
        WSetUnattended(true);
        Install_Mode_Hooks();
        Define_Root_Menu();
        WStatusBarParts(5, {4500, 1500, 1500, 1500, -1});
        WindowOpen(0, kRootMenu, 800, 500, "menu test");
    }
};
}  // namespace

TEST_F(RootMenu, EveryItemHasOneEntryWithItsLabel) {
    const std::vector<int> items = Root_Menu_Items();
    const std::set<int> unique(items.begin(), items.end());
    EXPECT_EQ(unique.size(), items.size()) << "an item number appears twice";
    for (int item : items) {
        EXPECT_TRUE(WMenuHasItem(item)) << item;
        EXPECT_FALSE(WMenuGetString(item).empty()) << item;
    }
    EXPECT_EQ(WMenuGetString(40014), "Open Pattern file (*.dat)");
    EXPECT_EQ(WMenuGetString(40088), "Change ddt1/dtt2");
    EXPECT_EQ(WMenuGetString(40140), "Crystalographic Calc");
    for (int item : {40005, 40019, 40033, 40018, 40042, 40229, 40150, 40213, 40222, 40079}) EXPECT_TRUE(unique.count(item)) << item;
}

TEST_F(RootMenu, NoneModeGreysTheCommandsThatNeedData) {
    Enter_None_Mode();
    for (int item : {40027, 40042, 40017, 40100, 40020, 40110, 40096, 40138, 40095, 40021, 40208})
        EXPECT_EQ(WMenuGetState(item, 1), 0) << item;
    for (int item : {40014, 40016, 40005, 40033, 40018, 40019, 40135, 40154})
        EXPECT_EQ(WMenuGetState(item, 1), 1) << item;
    EXPECT_EQ(zendrite_param_global().graph_mode, "none");
    EXPECT_EQ(WindowStatusBarText(5), "Mode: none");
}

TEST_F(RootMenu, CalculationModesSetTheirGroup) {
    Enter_Calculation_Mode(2);
    EXPECT_EQ(WMenuGetState(40091, 2), 1);
    for (int item : {40097, 40092, 40147, 40093, 40094, 40008}) EXPECT_EQ(WMenuGetState(item, 1), 1) << item;
    EXPECT_EQ(WMenuGetState(40180, 1), 0) << "satellites need a Rietveld profile";
    for (int item : {40096, 40095, 40138, 40014, 40027, 40102}) EXPECT_EQ(WMenuGetState(item, 1), 0) << item;
    Enter_Calculation_Mode(3);
    EXPECT_EQ(WMenuGetState(40091, 2), 0);
    EXPECT_EQ(WMenuGetState(40120, 2), 1);
    EXPECT_EQ(WMenuGetState(40159, 1), 1);
    EXPECT_EQ(WMenuGetState(40097, 1), 0);
    Enter_Calculation_Mode(0);
    for (int item : {40105, 40091, 40096, 40120, 40138, 40154, 40215, 40095, 40014, 40027})
        EXPECT_EQ(WMenuGetState(item, 1), 1) << item;
    EXPECT_EQ(WMenuGetState(40097, 1), 0);
    EXPECT_EQ(WMenuGetState(40120, 2), 0);
    Enter_None_Mode();
}

TEST_F(RootMenu, RecentItemsShowNamesOrEmpty) {
    auto& r = zendrite_param_global().recent;
    r = {"", "/data/b.dat", "/data/a.dat", "-", "-", "-"};
    Show_Recent_Files();
    EXPECT_EQ(WMenuGetString(40038), "1. /data/b.dat");
    EXPECT_EQ(WMenuGetString(40067), "2. /data/a.dat");
    EXPECT_EQ(WMenuGetString(40068), "3. <Empty>");
    EXPECT_EQ(WMenuGetState(40038, 1), 1);
    EXPECT_EQ(WMenuGetState(40070, 1), 0);
    Add_Recent_File("/data/a.dat");
    Show_Recent_Files();
    EXPECT_EQ(WMenuGetString(40038), "1. /data/a.dat");
    EXPECT_EQ(WMenuGetString(40067), "2. /data/b.dat");
    EXPECT_EQ(WMenuGetState(40068, 1), 0);
}

// Every item says in the status bar what it does, the toolbar buttons too, and the keys of the
// everyday items reach their commands as a press on the real window would.
TEST_F(RootMenu, EveryItemHasAHintAndTheKeysReachTheirCommands) {
    for (int item : Root_Menu_Items()) EXPECT_GE(WMenuGetHint(item).size(), 12u) << item << " " << WMenuGetString(item);
    QMainWindow* root = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* m = qobject_cast<QMainWindow*>(w); m && m->isVisible()) root = m;
    ASSERT_NE(root, nullptr);
    Show_Root_Toolbar();
    const QToolBar* bar = root->findChild<QToolBar*>();
    ASSERT_NE(bar, nullptr);
    for (const QAction* a : root->findChildren<QAction*>())
        if (!a->isSeparator() && !a->menu() && !a->text().isEmpty() && a != bar->toggleViewAction()) EXPECT_FALSE(a->statusTip().isEmpty()) << a->text().toStdString();
    root->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(root));
    // the items are enabled as with profiles loaded; each key, pressed on the window, gives its item
    for (const auto& [item, keys] : Menu_Keys()) WMenuSetState(item, 1, 1);
    int checked = 0;
    for (const auto& [item, keys] : Menu_Keys()) {
        for (const QKeySequence& k : QKeySequence::listFromString(QString::fromUtf8(keys))) {
            while (WMessagePending()) {
                int t = 0;
                WIN_MESSAGE m;
                WMessage(t, m);
            }
            QTest::keySequence(root, k);
            int type = 0;
            WIN_MESSAGE m;
            ASSERT_TRUE(WMessagePending()) << keys << " gave nothing";
            WMessage(type, m);
            EXPECT_EQ(type, MenuSelect) << keys;
            EXPECT_EQ(m.value1, item) << keys;
            ++checked;
        }
    }
    EXPECT_GE(checked, 30);
    EXPECT_EQ(WMenuGetShortcut(40014), "Ctrl+O");
    EXPECT_EQ(WMenuGetShortcut(40016), "Ctrl+Shift+O");
    EXPECT_EQ(WMenuGetShortcut(40084), "F1");
}

// The History window's list: a double-click on a line is that line and OK, in a dialog shown for real.
TEST_F(RootMenu, ADoubleClickOnANotifyingTreeLineEndsTheDialogWithIt) {
    DIALOG_TEMPLATE t;
    DIALOG_FIELD tree = Fld(11, FIELD_KIND::Tree, "Steps");
    tree.notify = true;
    t.fields = {tree, Fld(1, FIELD_KIND::PushButton, "Go to step"), Fld(2, FIELD_KIND::PushButton, "Close")};
    WDialogLoad(WDialogDefineTitled("Double-click test", t));
    WDialogPutMenu(11, {"0. Start", "1. Open", "2. Smooth", "3. Shift"}, 1);
    WSetUnattended(false);
    bool clicked = false;
    QTimer::singleShot(200, [&clicked] {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* tw = w->findChild<QTreeWidget*>(); tw && w->isVisible()) {
                QTreeWidgetItem* item = tw->topLevelItem(2);
                const QRect r = tw->visualItemRect(item);
                QTest::mouseDClick(tw->viewport(), Qt::LeftButton, Qt::NoModifier, r.center());
                clicked = true;
            }
    });
    // a safety: the dialog closes with Close if the click never came
    QTimer::singleShot(3000, [] {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* d = qobject_cast<QDialog*>(w); d && d->isVisible()) d->done(2);
    });
    WDialogShow(-1, -1, 0, Modal);
    WSetUnattended(true);
    EXPECT_TRUE(clicked);
    EXPECT_EQ(WInfoDialog(4), 1);
    int chosen = 0;
    WDialogGetMenu(11, chosen);
    EXPECT_EQ(chosen, 3);
    WDialogUnload();
}
