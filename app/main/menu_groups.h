#pragma once
// The routines of the root menu, one declaration per item family, grouped by
// the file that holds them. Each takes the item it was chosen by.

#include <string>
#include <vector>

#include "peaks/search_points.h"

namespace hxl {
struct ARC_FIT_RESULT_TYPE;
struct PIK_JOB_TYPE;
}

namespace zendrite {

// file_menu.cpp
void File_Open_Data(int item);
void File_Open_Folder(int item);
void File_Open_Structure(int item);  // a structure's calculated pattern over the shown profile
void Connect_Structure_Overlay();
void Clear_Structure_Phases();  // File, Reset: no phase is drawn any more
std::string Structure_Overlay_Dump();  // the phases drawn, for scripts
void File_Open_Prf(int item);
void File_Open_Buffer(int item);
void File_Result_Command(int item);  // raw files, numors, saves
void File_Reset(int item);
void File_Recent(int item);
void File_Exit(int item);

// edit_menu.cpp: the history of the store
inline constexpr int kUndoItem = 40246, kRedoItem = 40247, kHistoryItem = 40248;
void Edit_Undo(int item);
void Edit_Redo(int item);
void Edit_History(int item);  // the steps, a click goes to one; the limits of the history
// Around every menu command: the commands that change the store record themselves as a step.
void Command_Begin(int item);
void Command_End();
// Around a press and release of the mouse on the plot: an edit of the lists or regions is a step.
void Mouse_Edit_Begin();
void Mouse_Edit_End();
void History_Menus();  // the Undo and Redo items named after their steps
void Read_History_Limits();
std::string History_Dump();  // position, steps, bytes and the names, for scripts

// picture_commands.cpp: the root window's picture into a file or onto a printer
void File_Save_Graphic(int item);
void File_Print(int item);

// view_menu.cpp
void View_Window_Limits(int item);
void View_Focus(int item);
void View_Target(int item);
void View_Zoom_Mode(int item);
void View_Multi(int item);

// multi_menu.cpp: the views of many patterns at once
void Plot_Multi_View(int item);  // Graph 3D, Graph 2D Contour (and log), Graph 3D Surface
void Plot_Gl_Model(int item);  // the OpenGL model window of the shown profiles
// Greys the commands the many-pattern views cannot serve while one is shown, and gives
// them back their states after; called at every change of mode.
void Multi_View_Menus();
// Script settings of the views, as words: "view scale viridis|grey", "view offset F",
// "view levels I..." (the iso-lines of the contour map, none without values); false
// when not understood.
bool Multi_View_Setting(const std::vector<std::string>& words);
#if ZD_WITH_PLOT
struct MULTI_VIEW_STATE;
// The same words read into `state` without drawing; false when not understood.
bool Read_View_Setting(const std::vector<std::string>& words, MULTI_VIEW_STATE& state);
void Redraw_Multi_View();  // the present many-pattern view again, from its kept map
#endif
// multi_settings.cpp: the dialog of the colour scale, iso-line levels and stack rise
inline constexpr int kMultiSettingsItem = 40244;
// Ext. Applications, "Sequential Corvane run..."
inline constexpr int kSequentialRunItem = 40245;
void Ext_Sequential_Run(int item);
void Multi_View_Settings(int item);

// plot_style_setting.cpp: Options, the Classic or Publication plot style
inline constexpr int kPlotStyleItem = 40249, kErrorBarsItem = 40253;
void Options_Plot_Style(int item);  // both items: the style, and the error bars from sigma
void Read_Plot_Style_Setting();  // the kept style, with the menu check

// second_axis_setting.cpp: the check items of a second X axis in d or in Q
inline constexpr int kSecondAxisD = 40240, kSecondAxisQ = 40241;
void View_Second_Axis(int item);
void Read_Second_Axis_Setting();  // the kept choice, with the menu checks

// profile_menu.cpp
void Profile_Copy(int item);
void Profile_Quick_View(int item);
void Profile_Focus(int item);
void Profile_Graph_Show(int item);
void Profile_Sorting(int item);
void Profile_Delete(int item);
void Profile_Playing(int item);
void Profile_Calculation_Mode(int item);

// xspace_menu.cpp
void XSpace_Convert(int item);
void XSpace_Constants(int item);  // the grids of the wavelengths or of dtt1/dtt2
void Install_X_Space_Hooks();

// excluded_region_dialogs.cpp
void Excluded_Insert(int item);
void Excluded_Admin(int item);
// The dialog "Add exclude region" (limits swapped when reversed); from the mouse, a single
// shown profile takes the region without it. `text` "Cancelled" when given up.
void Add_Excluded_Region(float xlow, float xhigh, bool& error, std::string& text, bool from_mouse);
void Admin_Excluded_Regions();

// arith_menu.cpp
void Arith_Sum(int item);  // Summation and Average
void Arith_Difference(int item);
void Arith_Multiply_Efficiency(int item);  // the Multiply/Shift panel and the efficiency correction
void Arith_Normalize_Monitor(int item);
void Arith_Shift(int item);         // the profiles drawn as a stack
void Arith_Offset_Scale(int item);  // Offset/Align, Scaling X, Scaling Y
void Arith_Smoothing(int item);     // Fourier and polynomial filters

// peak_menu.cpp
void Peak_Auto_Search(int item);  // Auto detection of peaks, of satellites, of background
inline constexpr int kZoneSearchItem = 40242, kSaveAllIndexingItem = 40243;
void Peak_Zone_Search(int item);  // the next band drawn in the peak mode is searched
void Search_Zone_Peaks(float low, float high);
int Peak_Search_Type();  // the peak type of the conditions dialog, 1 to 4
// The searches a fit needs first, each with its conditions dialog: the background when
// fewer than two points are listed, the peaks when none is. False with `status` when one failed.
bool Fit_Detection(std::string& status);
// The wavelengths of the last peak search's type; the profile's own before any search.
hxl::WAVELENGTHS_TYPE Fit_Wavelengths(float lambda1, float lambda2);

// fit_menu.cpp: the Profile fitting menu and the run of the fit
void Fit_Command(int item);
// The calculated curve and background of a fit on the first profile, and the
// single peaks as profiles of their own.
void Fit_Store_Curves(const hxl::ARC_FIT_RESULT_TYPE& r, bool single);
// The job of the last constant-wavelength fit that finished (its final values), or none.
const hxl::PIK_JOB_TYPE* Last_Profile_Fit();

// peak_save_menu.cpp: the peak and background files, the indexing inputs
void Peak_Save(int item);
// `status` "Cancelled" when the user gave up, else the failure text; `file` the name written.
bool Save_Peaks(const std::string& format, std::string& status, std::string& file);
bool Save_Background(std::string& status);
bool Save_All_Indexing(std::string& status);

// ext_apps_menu.cpp: console, explorer, the indexing programs and Pellan
void Ext_Run(int item);
void Ext_Run_Refinement(int item);    // Run Corvane, Run Virelle: run, then load the result
void Ext_Run_Suite_Window(int item);
void Run_Virelle_On(const std::string& qvl_file);  // the run of Run Virelle on a file already chosen
void Ext_Prepare_Qvl(int item);       // the form of the pair-distribution input  // Run Tessara, gLattiq, Quavor, Tindra, Corvane Atelier
// The file a suite window opens for the control file `pcr_file`: the file
// itself for an empty `ending`, else the same name with `ending` (".inp",
// ".qvl", "1.fst"); empty when it does not exist or the name has no extension.
std::string Suite_Window_File(const std::string& pcr_file, const char* ending);
// The question "Do you want to run ...?" after a save of an indexing input, and the run.
void After_Peak_Save(int save_item, const std::string& file);

// editor_menu.cpp: Text editor, the last control file, Edit PIK-file
void Editor_Open(int item);
// The internal editor when the preference asks for it, else the text editor program.
void Edit_Text_File(const std::string& file);

// cryst_calc.cpp: the metrics, space-group listing and reflection conditions of a cell and group
void Cryst_Calc(int item);

// frames_menu.cpp: the 2D mode, a window of detector frames
void Frames_Mode(int item);
// extraction_dialog.cpp: the input of the extraction program, its run, its patterns loaded
void Numors_Extraction(int item);

// help_menu.cpp
void Options_Preferences(int item);
void Help_About(int item);
void Help_Docs(int item);  // the guides and the news of the suite's folder "Docs"
void Help_Web(int item);   // the web site and the download page

}  // namespace zendrite
