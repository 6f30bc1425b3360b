#pragma once
// State shared by the files of the Qt presentation layer. Not for use outside app/qt/.
#include <QDialog>
#include <QImage>
#include <QMainWindow>
#include <QPainter>
#include <QPointer>
#include <QWidget>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/present.h"

class QAction;
class QStatusBar;
class QLabel;
class QToolBar;
class QPainter;

namespace zendrite::qt {

class Canvas;

// A window: what it shows (front) and the widget that shows it.
struct WINDOW_STATE {
    int handle = 0;
    QImage front;
    QPointer<QWidget> top;     // the top-level widget
    QPointer<Canvas> canvas;   // its drawing area
    float page_w = 1200, page_h = 800;  // page units of the last full-area IGrUnits
    QPointer<QStatusBar> status;        // a child's own status bar (ChildStatusBar)
    std::vector<QPointer<QLabel>> status_labels;
    std::vector<std::string> status_texts = std::vector<std::string>(6);
    QPointer<QToolBar> toolbar;         // a child's own toolbar
    std::vector<int> tool_items;        // its items, registered among the menu actions
};

struct FIELD_STATE {
    DIALOG_FIELD def;
    std::string text;     // text, real, integer, label, picture file
    int ivalue = 0;       // check, radio (0/1), combo (from 1), slider, spin, progress, tab
    bool enabled = true;
    std::vector<std::string> options;
    int low = 0, high = 100;
    std::vector<std::vector<std::string>> cells;  // [row-1][col-1]
    std::vector<std::string> row_labels;
    std::vector<std::vector<bool>> cell_enabled;
    std::vector<bool> col_enabled;
    int cur_row = 1, cur_col = 1;
    int fg = -1, bg = -1;
};

struct DIALOG_STATE {
    DIALOG_TEMPLATE tpl;
    std::map<int, FIELD_STATE> fields;
    QPointer<QDialog> widget;  // while shown
    bool modeless = false;
    int current_tab = 1;
};

struct GR_STATE {
    int kind = 1, handle = 0;   // target: 1 window, 2 bitmap
    float ax1 = 0, ay1 = 0, ax2 = 1, ay2 = 1;
    float ux1 = 0, uy1 = 0, ux2 = 1, uy2 = 1;
    int colour = 0, background = 0xFFFFFF;
    int line_width = 1, line_type = 0, fill = 0, fill_direction = 0;
    int plot_mode = PlotNormal;
    float cx = 0, cy = 0;       // current point
    int font = 1, font_style = 0;
    float font_w = 0.01f, font_h = 0.02f, orientation = 0;
};

struct PG_SET {
    int fill = 0, marker = 2, colour = 0, line_type = 0, line_width = 1, marker_size = 5;
};

struct PG_STATE {
    float left = 0.15f, bottom = 0.15f, right = 0.85f, top = 0.85f;  // fractions of the page
    float page_x1 = 0, page_y1 = 0, page_x2 = 1200, page_y2 = 800;    // page units at IPgArea
    float gax1 = 0, gay1 = 0, gax2 = 1, gay2 = 1;                     // IGrArea at IPgArea
    float x1 = 0, y1 = 0, x2 = 1, y2 = 1;                             // data units
    bool polar = false;
    float xtick_y = 0, ytick_x = 0;
    bool xtick_set = false, ytick_set = false;
    std::vector<PG_SET> sets = std::vector<PG_SET>(2);
    int current_set = 1;
};

// A picture being drawn into a file or a printer: one painter for the whole picture.
struct EXPORT_STATE {
    bool on = false;
    QPainter* painter = nullptr;
    int width = 0, height = 0;   // pixels of the target
    double dot_scale = 1;        // target pixels per screen pixel
    PICTURE_OPTIONS options;
};

struct LAYER {
    bool started = false, offscreen = false, unattended = false;
    bool script_ended = false;  // the event source has nothing more: the run is ending
    std::deque<WIN_MESSAGE> fifo;
    std::function<bool(WIN_MESSAGE&)> source;
    bool mouse_move = true;
    std::map<int, WINDOW_STATE> windows;
    int selected_window = 0;
    int next_child = 1001;
    int edit_window = 0;
    QMainWindow* root = nullptr;
    QStatusBar* status = nullptr;
    std::vector<QLabel*> status_parts;
    std::vector<int> status_widths;
    std::vector<std::string> status_texts = std::vector<std::string>(6);
    int cursor = 0;
    std::map<int, std::vector<MENU_ENTRY>> menu_templates;
    std::map<int, QAction*> actions;
    std::map<int, std::string> menu_labels;
    std::map<int, bool> menu_enabled, menu_checked;
    std::map<int, std::string> menu_shortcuts, menu_hints;
    QToolBar* toolbar = nullptr;
    std::map<int, QAction*> tool_actions;  // a toolbar button greys with its menu item
    std::map<int, DIALOG_TEMPLATE> templates;
    int next_titled = 9000;
    std::map<int, std::unique_ptr<DIALOG_STATE>> dialogs;
    int selected_dialog = 0;
    int info4 = 0;
    std::deque<std::vector<std::string>> file_answers;
    std::deque<int> box_answers;
    std::map<std::string, std::deque<DIALOG_ANSWER>> dialog_answers;
    std::map<std::string, std::deque<std::pair<int, int>>> progress_answers;  // value, button
    std::map<int, QImage> bitmaps;
    int next_bitmap = 1;
    GR_STATE gr;
    PG_STATE pg;
    EXPORT_STATE ex;
};

LAYER& L();
// A painter on what the drawing operations paint on: its own on a picture, or the shared one
// of a picture being exported (its state kept and given back). False when there is nothing to
// paint on, or when an exported picture is asked for exclusive-or drawing, which files don't keep.
class Target_Painter {
public:
    Target_Painter();
    ~Target_Painter();
    Target_Painter(const Target_Painter&) = delete;
    Target_Painter& operator=(const Target_Painter&) = delete;
    explicit operator bool() const { return p_ != nullptr; }
    QPainter* operator->() { return p_; }
    QPainter& operator*() { return *p_; }

private:
    QPainter own_;
    QPainter* p_ = nullptr;
    bool shared_ = false;
};
// Width and height in pixels of what the drawing operations paint on; false when none.
bool Target_Size(double& width, double& height);
// Screen pixels -> pixels of the target: line widths (with the line factor) and marks.
double Line_Scale();
double Dot_Scale();
// Text pixel size for `fraction` of the target's height, at least 6 screen pixels.
int Font_Pixels(double fraction);
WINDOW_STATE* Window(int handle);
QImage* Target();               // the image the drawing operations paint on
void Refresh_Window(int handle);  // repaint the widget from its front picture
DIALOG_STATE* Current_Dialog();
FIELD_STATE* Field(int field);
QString Q(const std::string& s);
std::string S(const QString& s);
QColor Colour(int rgb);
// Builds and runs the Qt widgets of a dialog (layer file dialog_widgets.cpp).
int Run_Dialog_Widgets(DIALOG_STATE& d, bool modal);
void Sync_From_Widgets(DIALOG_STATE& d);
void Sync_To_Widgets(DIALOG_STATE& d);
// Applies queued script answers; returns the button that ends the dialog, 0 when none was queued.
int Apply_Dialog_Answers(DIALOG_STATE& d);
// A progress bar of dialog `d` was set to `value`: queues the button a script asked for at that step.
void Apply_Progress_Answers(const DIALOG_STATE& d, int value);
// User units -> pixel of the target, as one affine map for long curves.
struct PIXEL_MAP {
    double sx = 1, ox = 0, sy = 1, oy = 0;
    QPointF operator()(double x, double y) const { return QPointF(ox + sx * x, oy + sy * y); }
};
PIXEL_MAP Pixel_Map();
// A marker (2 circle, 3 square, 4 triangle, 5 diamond, 6 plus, 7 cross, 8 dot) of radius r pixels.
void Draw_Marker(QPainter& p, const QPointF& c, int marker, double r);
// User units -> pixel of the target.
QPointF To_Pixel(float x, float y);
void From_Pixel(const QPointF& p, float& x, float& y);
float Pixels_Per_Unit_X();
float Pixels_Per_Unit_Y();

}  // namespace zendrite::qt
