#pragma once
// The presentation operations: windows, events, menus, dialogs, selectors,
// drawing in page units, presentation graphs, bitmaps, system operations.
// The only way the application draws or asks; implemented once on Qt (app/qt/).
// A W.../IGr... call acts on what was selected last.
#include <functional>
#include <string>
#include <cstdint>
#include <vector>

#include "support/array1.h"

namespace zendrite {

// ---------------------------------------------------------------- events
inline constexpr int MenuSelect = 2, PushButton = 3, MouseButDown = 4, MouseButUp = 5, MouseMove = 6,
                     Expose = 7, Resize = 8, CloseRequest = 9;
// Wheel: value1 the steps (positive away from the user), gx, gy where the mouse is.
// Key: value1 one of the key codes below; other keys are not reported.
inline constexpr int MouseWheel = 10, KeyDown = 11;
// Files or folders dropped on a window: `paths` holds their full names, in the order given.
inline constexpr int FilesDropped = 12;
inline constexpr int kKeyHome = 1;
// The arrows and the page keys, for windows that step through a list.
inline constexpr int kKeyUp = 2, kKeyDown = 3, kKeyLeft = 4, kKeyRight = 5, kKeyPageUp = 6, kKeyPageDown = 7;
// Escape: long work watching for it stops; a modeless dialog with a Cancel reports Cancel instead.
inline constexpr int kKeyEscape = 8;
inline constexpr int kRootWindow = 0;
inline constexpr int kIdOk = 1, kIdCancel = 2;

struct WIN_MESSAGE {
    int type = 0;
    int win = 0;         // window or modeless dialog number; 0 the root window
    int value1 = 0;      // menu item or push button number; mouse button (1 left, 2 right, 3 middle)
    float gx = 0, gy = 0;  // mouse position in page units (Y up)
    float x = 0, y = 0;    // the same in data units of the last graph frame
    int width = 0, height = 0;  // new size at Resize
    std::vector<std::string> paths;  // FilesDropped
};

// Waits for the next event: a pending one is returned first.
void WMessage(int& type, WIN_MESSAGE& message);
// Queues an event as if the window system had sent it (toolbar, tests).
void WMessagePost(const WIN_MESSAGE& message);
// True when an event is waiting, without waiting.
bool WMessagePending();
void WMessageMouseMove(bool on);  // delivery of movement events

// ---------------------------------------------------------------- windows
// Flag of WindowOpenChild: the child has a status bar of its own, which WindowOutStatusBar
// and WindowStatusBarText use while the child is the selected window.
inline constexpr int ChildStatusBar = 1;
// Opens the root window (number 0) with the menu bar `menu` (0: none) and a status bar.
void WindowOpen(int flags, int menu, int width, int height, const std::string& title);
int WindowOpenChild(int flags, int x, int y, int width, int height, const std::string& title);
void WindowCloseChild(int handle);
void WindowSelect(int handle);
int WindowSelected();
void WindowClose();
void WindowTitle(const std::string& title);
void WindowSize(int handle, int width, int height);  // the drawing area's new size
bool WindowExists(int handle);
// Hides or shows a window (the main window while another mode has the screen); its state
// and contents stay.
void WindowShow(int handle, bool shown);
bool WindowShown(int handle);
int WInfoWindow(int code);  // 1 width, 2 height of the selected window's drawing area, in pixels
void WindowOutStatusBar(int part, const std::string& text);
std::string WindowStatusBarText(int part);
void WStatusBarParts(int count, const std::vector<int>& widths);  // -1 takes the rest
void WCursorShape(int shape);  // 0 arrow, 3 cross-hair, 6 hand
int WCursorShapeNow();
// The internal editor: a child window titled "Zendrite text editor - <name>", with " *" behind
// the name while the text differs from the file. Its keys: Ctrl+O open another file, Ctrl+S save,
// Ctrl+Shift+S save as, Ctrl+F find (F3, Shift+F3 the next and the previous match), Ctrl+W close.
// Opens `file` in it, after the question about unsaved changes of the file open before; returns
// the window's number. A file that cannot be read (missing, not text, larger than 50 MB) is named
// in a message and nothing changes: the result is then the editor open before, or 0.
int WEditFile(const std::string& file, bool read_only = false);
int WEditWindow();  // number of the editor window, 0 when closed
// Closes the editor after the question about unsaved changes; false when the user keeps it open.
bool WEditClose();
// A command of the editor as its keys and menus give it, for scripts: "open", "save", "saveas",
// "find <text>", "next", "previous", "type <text>" ("\n" a line end), "top", "end", "undo".
// False when there is no editor or no such command.
bool WEditCommand(const std::string& command, const std::string& argument);
// What the editor shows, one item a line: title, file, changed, cursor, selection, find.
std::string WEditState();

// ---------------------------------------------------------------- menus and toolbar
inline constexpr int MenuPopup = 1, MenuItem = 2, MenuSeparator = 3, MenuEnd = 4;
struct MENU_ENTRY {
    int kind = MenuItem;  // MenuPopup opens a sub-menu closed by MenuEnd
    int item = 0;
    std::string label;
    bool checkable = false;
};
// Registers the template of menu bar `id`.
void WMenuDefine(int id, const std::vector<MENU_ENTRY>& entries);
void WMenu(int id);
void WMenuSetState(int item, int kind, int value);  // kind 1: 1 enables, 0 greys; kind 2: 1 checks
int WMenuGetState(int item, int kind);
void WMenuSetString(int item, const std::string& text);
// The keys that choose an item, as "Ctrl+Shift+O", several parted by "; "; may come before the menu bar is built.
void WMenuSetShortcut(int item, const std::string& keys);
std::string WMenuGetString(int item);
// The line the status bar shows while the pointer rests on the item (menus and toolbar).
void WMenuSetHint(int item, const std::string& text);
std::string WMenuGetHint(int item);
// The keys of the item, as given to WMenuSetShortcut; empty without.
std::string WMenuGetShortcut(int item);
bool WMenuHasItem(int item);

struct TOOL_ENTRY {
    int item = 0;        // 0: a separator
    std::string icon;    // a standard icon name of the layer ("open", "left", "zoomin", ...)
    std::string tip;
};
void WMenuToolbar(int id, const std::vector<TOOL_ENTRY>& entries);
// A toolbar on a child window: its items come out of WMessage as MenuSelect events with the
// child's number as window, and WMenuSetState/WMenuGetState act on them like menu items.
void WChildToolbar(int handle, const std::vector<TOOL_ENTRY>& entries);
// A menu bar of its own for a child window; its items come out of WMessage as MenuSelect
// events of that window.
void WChildMenu(int handle, const std::vector<MENU_ENTRY>& entries);

// ---------------------------------------------------------------- dialogs
enum class FIELD_KIND {
    Label, Text, Real, Integer, CheckBox, Radio, Combo, Slider, Progress, Spin, Picture, Grid, Tree,
    PushButton, MultiText
};
enum class CELL_KIND { Text, Real, Integer, CheckBox, Combo };
struct GRID_COLUMN {
    std::string label;
    CELL_KIND kind = CELL_KIND::Text;
    std::vector<std::string> options;  // combo cells
};
struct DIALOG_FIELD {
    int id = 0;
    FIELD_KIND kind = FIELD_KIND::Label;
    std::string label;
    std::string value;        // start value, as text
    int group = 0;            // radio: number of the first field of its group
    int tab = 0;              // tab page, from 1; 0 without tabs
    std::vector<std::string> options;  // combo entries, tree lines ("  " per level)
    int rows = 0;             // grid rows
    std::vector<GRID_COLUMN> columns;  // grid columns
    int low = 0, high = 100;  // slider, spin and progress ranges
    bool wrap = false;        // label: its text wraps at the dialog's width
    // In a modeless dialog, a change made by the user (a slider moved, a check box clicked,
    // Return in an edit) comes out of WMessage as a PushButton event with the field's number.
    // In a modal one, a double-click on a line of a tree ends the dialog with OK.
    bool notify = false;
};
inline DIALOG_FIELD Fld(int id, FIELD_KIND kind, const std::string& label, int tab = 0) {
    DIALOG_FIELD f;
    f.id = id;
    f.kind = kind;
    f.label = label;
    f.tab = tab;
    return f;
}
// A radio button of the group named by its first button's id.
inline DIALOG_FIELD Radio(int id, const std::string& label, int group) {
    DIALOG_FIELD f = Fld(id, FIELD_KIND::Radio, label);
    f.group = group;
    return f;
}
struct DIALOG_TEMPLATE {
    int id = 0;
    std::string title;
    std::vector<std::string> tabs;      // labels of the tab pages
    std::vector<DIALOG_FIELD> fields;   // push buttons 1 (OK) and 2 (Cancel) are added when missing
};
void WDialogDefine(const DIALOG_TEMPLATE& dialog);
bool WDialogDefined(int id);
// A template made by the program at run time, named only by its title; returns its number.
int WDialogDefineTitled(const std::string& title, DIALOG_TEMPLATE dialog);

void WDialogLoad(int id);
void WDialogSelect(int id);
int WDialogSelected();
inline constexpr int Modal = 0, Modeless = 1;
// Modal (type 0): runs its own loop until a push button ends it. Modeless: its buttons come
// out of WMessage as PushButton events with the dialog's number as window.
void WDialogShow(int x, int y, int button, int type);
void WDialogHide();
void WDialogUnload();
bool WDialogOpen(int id);
int WInfoDialog(int code);  // 4: button that ended the last modal dialog, selector or message box
void WDialogFieldState(int field, int state);
int WDialogGetFieldState(int field);
void WDialogPutString(int field, const std::string& text);
void WDialogGetString(int field, std::string& text);
void WDialogPutReal(int field, double value, const std::string& format = "");
void WDialogGetReal(int field, float& value);
void WDialogGetReal(int field, double& value);
void WDialogPutInteger(int field, int value);
void WDialogGetInteger(int field, int& value);
void WDialogPutCheckBox(int field, int value);
void WDialogGetCheckBox(int field, int& value);
void WDialogPutRadioButton(int field);               // sets this button of its group
void WDialogGetRadioButton(int first, int& index);   // index from 1 within the group named by its first field
void WDialogPutMenu(int field, const std::vector<std::string>& options, int selected);
void WDialogGetMenu(int field, int& selected, std::string* text = nullptr);
void WDialogPutOption(int field, int option, const std::string& text);
void WDialogPutTrackbar(int field, int value);
void WDialogGetTrackbar(int field, int& value);
void WDialogPutProgressBar(int field, int value);
void WDialogRangeProgressBar(int field, int low, int high);
void WDialogRangeInteger(int field, int low, int high);
void WDialogPutImage(int field, const std::string& file);
void WDialogClearField(int field);
void WDialogSetTab(int field, int tab);
void WDialogColour(int field, int foreground, int background);

// Grids: rows and columns from 1.
void WGridRows(int field, int rows);
int WGridRowCount(int field);
void WGridLabelRow(int field, int row, const std::string& label);
void WGridPutCellString(int field, int col, int row, const std::string& text);
void WGridGetCellString(int field, int col, int row, std::string& text);
void WGridPutCellReal(int field, int col, int row, double value, const std::string& format = "");
void WGridGetCellReal(int field, int col, int row, float& value);
void WGridPutCellInteger(int field, int col, int row, int value);
void WGridGetCellInteger(int field, int col, int row, int& value);
void WGridPutCellCheckBox(int field, int col, int row, int value);
void WGridGetCellCheckBox(int field, int col, int row, int& value);
void WGridPutString(int field, int col, const std::vector<std::string>& texts);
void WGridPutCheckBox(int field, int col, const std::vector<int>& values);
void WGridGetCheckBox(int field, int col, std::vector<int>& values);  // a whole column
void WGridGetReal(int field, int col, std::vector<float>& values);
void WGridState(int field, int col, int state);               // 0 greys, 1 enables a column
void WGridStateCell(int field, int col, int row, int state);
void WInfoGridCell(int field, int& col, int& row);            // the current cell

// ---------------------------------------------------------------- selectors and messages
inline constexpr int LoadDialog = 1, SaveDialog = 2, MultiFile = 4, PromptOn = 8;
// The filter is "label|patterns;...|" pairs. With several files chosen `name` holds the
// directory, then the names, separated by NULs; one file gives its full name.
void WSelectFile(const std::string& filter, int flags, std::string& name, const std::string& title);
std::vector<std::string> Selected_Files(const std::string& name);  // full names from that list
void WSelectDir(int flags, std::string& name, const std::string& title);
// SaveDiscardCancel answers 1 Save, 2 Discard, 3 Cancel.
inline constexpr int OkOnly = 0, YesNo = 3, SaveDiscardCancel = 4;
inline constexpr int kAnswerSave = 1, kAnswerDiscard = 2, kAnswerCancel = 3;
inline constexpr int StopIcon = 1, QuestionIcon = 2, ExclamationIcon = 3, InformationIcon = 4;
// `text` lines are separated by carriage returns; the answer is WInfoDialog(4): 1 OK/Yes, 2 No.
void WMessageBox(int buttons, int icon, int def, const std::string& text, const std::string& title);
void WSelectColour(int& rgb);

// ---------------------------------------------------------------- drawing
int WRGB(int r, int g, int b);  // red in the low byte
void WRGBsplit(int rgb, int& r, int& g, int& b);
void IGrSelect(int kind, int handle);  // 1 the window picture, 2 a bitmap
void IGrArea(float x1, float y1, float x2, float y2);
void IGrUnits(float x1, float y1, float x2, float y2);
void IGrColourN(int rgb);
void IGrColour(const std::string& name);
void IGrPaletteBackground(int rgb);
void IGrAreaClear();
void IGrLineWidth(int width);
void IGrLineType(int type);  // 0 solid, 1 dotted, 2 dashed, 3 dash-dot, 4 dash-dot-dot
// 0 outline, 1 hatched (direction 0 rising, 1 falling, 2 level, 3 upright), 2 cross-hatched, 3 solid
void IGrFillPattern(int pattern, int density = 0, int direction = 0);
inline constexpr int PlotNormal = 0, PlotXor = 1;
void IGrPlotMode(int mode);
void IGrMoveTo(float x, float y);
void IGrLineTo(float x, float y);
void IGrPoint(float x, float y);
void IGrRectangle(float x1, float y1, float x2, float y2);
void IGrCircle(float x, float y, float radius);
void IGrEllipse(float x, float y, float radius, float ratio);
void IGrArc(float x, float y, float radius, float start_angle, float sweep);
void IGrPolygonSimple(const std::vector<float>& x, const std::vector<float>& y);
void IGrPolygonShaded(const std::vector<float>& x, const std::vector<float>& y);
void IGrPolygonGrad(const std::vector<float>& x, const std::vector<float>& y, int rgb_from, int rgb_to);
void IGrTriangle(float x1, float y1, float x2, float y2, float x3, float y3);
void IGrTrapezium(float x1, float y1, float x2, float y2, float x3, float y3, float x4, float y4);
void IGrMarker(float x, float y, int marker, float size);  // marker 1 none, 2 circle, 3..8 others
// A picture of width x height pixels (0xRRGGBB, the first row the top) stretched over the
// rectangle (x1, y1)-(x2, y2) in user units, pixel for pixel, without smoothing; a pixel of
// value kNoPixel leaves the target as it is. Vector files hold it as an embedded bitmap.
inline constexpr unsigned kNoPixel = 0xFF000000u;
void IGrImage(float x1, float y1, float x2, float y2, int width, int height, const std::vector<unsigned>& rgb);
// The same from 8-bit R, G, B triples (rows from the top), as the frame pictures hold them.
void IGrImageRGB(float x1, float y1, float x2, float y2, int width, int height, const std::vector<std::uint8_t>& rgb);
// font 1 sans, 2 serif, 3 fixed; style 0 plain, 1 bold, 2 italic; width and height as fractions of the target
void WGrTextFont(int font, int style, float width, float height);
void WGrTextOrientation(float degrees);
void WGrTextString(float x, float y, const std::string& text);
void WGrTextCentre(float x, float y, const std::string& text);
void WGrTextRight(float x, float y, const std::string& text);
float WGrTextLength(const std::string& text);  // in user units
// Off-screen pictures; mode 0 copies onto the selected window.
void WBitmapCreate(int& handle, int width, int height);
void WBitmapDestroy(int handle);
void WBitmapPut(int handle, int mode);
void IGrLoadImageData(const std::string& file, int& error);
// The picture a window shows, as a PNG (scripts and --render).
bool WPictureSave(int window, const std::string& file);
// The pixel at (px, py) of the selected target, Y from the top, as WRGB.
int IGrGetPixelRGB(int px, int py);

// ---------------------------------------------------------------- pictures into files and printers
// How a picture is written: its size (millimetres, or pixels when `pixels` is set), the
// resolution of raster files (vector files reduce dense curves at it), grey levels for the
// colours, white in place of the window's background, and factors on line widths and texts.
struct PICTURE_OPTIONS {
    double width = 160, height = 107;
    bool pixels = false;
    int dpi = 300;
    bool grey = false, white = true;
    double line_factor = 1, font_scale = 1;
};
// Formats by lower-case extension without the dot: raster png jpg jpeg bmp tif tiff; vector svg
// pdf eps ps emf plt hpgl dxf. Empty when the extension names none.
std::string Picture_Format(const std::string& file);
// The size in pixels the options give; false with a message when they are out of bounds.
bool Picture_Pixels(const PICTURE_OPTIONS& o, int& width, int& height, std::string& message);
// Runs `draw` with every drawing operation painting on `file` (through a temporary file and a
// rename; the windows' pictures stay as they were), WInfoWindow giving its size in pixels and
// bitmap copies onto windows left out. False with a message when nothing was written.
bool WPictureExport(const std::string& file, const PICTURE_OPTIONS& o, const std::function<void()>& draw,
                    std::string& message);
// Qt's print dialog (or, unattended, the printer file queued by WQueueFiles, as PDF), then the
// picture drawn by `draw` scaled to the page; with `preview` the print preview comes first.
// False with "Cancelled" when the user gave up, or with the reason.
bool WPrintPicture(const PICTURE_OPTIONS& o, bool preview, const std::function<void()>& draw, std::string& message);
// True while a picture is drawn into a file or a printer, and the options it is drawn with.
bool WPictureExporting();
const PICTURE_OPTIONS& WPictureExportOptions();

// ---------------------------------------------------------------- presentation graphs
inline constexpr int PgXY = 1, PgPolar = 2;
void IPgArea(float left, float bottom, float right, float top);
void IPgUnits(float x1, float y1, float x2, float y2);
void IPgUnitsPolar(float x1, float y1, float x2, float y2);  // polar: angle in degrees, radius
void IPgUnitsXYZ(float x1, float y1, float z1, float x2, float y2, float z2);
void IPgStartGraph(int kind, int sets, int points);
inline constexpr int PgNoFill = 0, PgMarkerOnly = 0, PgLine = 1;
void IPgStyle(int set, int fill, int marker, int colour, int line_type = 0, int line_width = 1,
              int marker_size = 5);
void IPgMarker(int set, int marker);
void IPgNewSet(int set);  // the set the next curve belongs to
void IPgXYLine(const float* x, const float* y, int n);
void IPgXYMarkers(const float* x, const float* y, int n);
// Many polylines in the frame's data units with one painter, each in its own colour (WRGB)
// and the present set's line width; smoothed, and clipped to the frame.
void IPgPolylines(const std::vector<std::vector<float>>& x, const std::vector<std::vector<float>>& y,
                  const std::vector<int>& colours);
// The same with the polylines one after another in x and y: line k runs from point
// start[k] to start[k+1] (the last to the end).
void IPgPolylines(const std::vector<float>& x, const std::vector<float>& y, const std::vector<int>& start,
                  const std::vector<int>& colours);
void IPgErrorBars(const float* x, const float* y_low, const float* y_high, int n);
inline void IPgXYLine(const hxl::Array1<float>& x, const hxl::Array1<float>& y, int n) {
    IPgXYLine(x.data(), y.data(), n);
}
inline void IPgXYMarkers(const hxl::Array1<float>& x, const hxl::Array1<float>& y, int n) {
    IPgXYMarkers(x.data(), y.data(), n);
}
void IPgTitle(const std::string& text, const std::string& position);
void IPgXLabel(const std::string& text, const std::string& position);
void IPgYLabel(const std::string& text, const std::string& position);
void IPgXScale(const std::string& code);  // "T" ticks, "N" numbers, "P" the values are powers of ten
void IPgYScale(const std::string& code);
void IPgXTickPos(float y);  // Y of the X axis in data units
void IPgYTickPos(float x);
void IPgBorder();
void IPgToGrUnits();
void IPgXYToPage(float x, float y, float& px, float& py);
void IPgPageToXY(float px, float py, float& x, float& y);
void IPgLegendText(const std::string& position, float px, float py, const std::string& text);
void IPgFrameLimits(float& x1, float& y1, float& x2, float& y2);  // data limits of the last frame
// Tick spacing of an axis: a 1, 2 or 5 times a power of ten, about `wanted` steps over the range.
double Nice_Tick_Step(double low, double high, int wanted);

// ---------------------------------------------------------------- system and conversions
void IOsDirName(std::string& dir);
bool IOsDirChange(const std::string& dir);
bool IOsDirMake(const std::string& dir);
int IOsDirCount(const std::string& dir, const std::string& pattern);
void IOsDirInfo(const std::string& dir, const std::string& pattern, std::vector<std::string>& names);
bool IOsDeleteFile(const std::string& file);
bool IOsCopyFile(const std::string& from, const std::string& to);
bool IOsExists(const std::string& path);
bool IOsIsDir(const std::string& path);
struct FILE_INFO_TYPE {
    long long size = -1;  // -1 when the file is missing
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
};
FILE_INFO_TYPE IOsFileInfo(const std::string& file);
std::string IOsVariable(const std::string& name);
int IOsCommand(const std::string& command, bool wait);
// System code: 4 with sub-code 14 Linux, 4 with another sub-code Mac, 6 Windows.
void IOsOpSystem(int& code, int& subcode);
int IStringToInteger(const std::string& text, int& error);
double IStringToReal(const std::string& text, int& error);
std::string IRealToString(double value, const std::string& format = "");
std::string IntegerToString(int value);
double INextReal(const std::string& text, std::size_t& pos, int& error);
// Writes a whole file through a temporary file and a rename.
bool Write_File_Replace(const std::string& file, const std::string& content);

// ---------------------------------------------------------------- start, stop, scripting
// Starts the layer; `offscreen` runs without a display (scripts, --render).
void WInitialise(int& argc, char** argv, bool offscreen);
bool WOffscreen();
void WStop(int status);  // ends the process after closing the windows
// Unattended runs answer every question from queues; message boxes are printed as
// "MESSAGE <title> | <text>" and dialogs without a queued answer are cancelled ("UNANSWERED").
void WSetUnattended(bool on);
bool WUnattended();
// Called when the event FIFO is empty in unattended runs: fills the next event, or
// returns false (then a close request of the root window is delivered).
void WSetEventSource(std::function<bool(WIN_MESSAGE&)> source);
void WQueueFiles(const std::vector<std::string>& files);  // empty: Cancel
void WQueueAnswer(int button);
// The button `button` of the modeless dialog `key` is pressed (a PushButton event is queued)
// once one of its progress bars has been set to `value` or beyond.
void WQueueProgressAnswer(const std::string& key, int value, int button);
// As the button: the Escape key pressed in the dialog (in the root window while the
// dialog has no widgets, as in scripted runs).
inline constexpr int kProgressEscape = -1;
struct DIALOG_ANSWER {
    std::string op;   // "set", "check", "grid", "radio", "press"; "show" and "picture" report the dialog
    int field = 0;
    int row = 0, col = 0;
    std::string value;
};
// `key` is the template number as text, or the dialog's title.
void WQueueDialogAnswer(const std::string& key, const DIALOG_ANSWER& answer);

}  // namespace zendrite
