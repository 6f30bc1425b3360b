// What each item of the root menu does, in one line for the status bar, and the keys
// that choose the everyday items.
#include <utility>
#include <vector>

#include "app/main/menu_groups.h"
#include "app/main/root_menu.h"
#include "app/present.h"

namespace zendrite {

const std::vector<std::pair<int, const char*>>& Menu_Hints() {
    static const std::vector<std::pair<int, const char*>> hints = {
        // File
        {40014, "Open one or more pattern files; the format is guessed or asked"},
        {kOpenFolderItem, "Open every pattern file of a folder, in natural order"},
        {kOpenStructureItem, "Read a structure and draw its calculated pattern over the shown profile"},
        {40016, "Open a Rietveld profile file (.prf) with its calculated curve and reflections"},
        {40015, "Open a buffer file: a list of pattern files read together"},
        {40157, "Open a raw data file of the SLR instruments (KG3, KG2)"},
        {40212, "Open a numor file (NRF) of a facility run"},
        {40211, "Extract numors of an instrument into patterns (Pellan)"},
        {40210, "Show the header of a numor file"},
        {40208, "Save the first profile as a free-format file"},
        {40209, "Save the first profile as an XY or XYS file"},
        {40009, "Save the names of the loaded patterns as a buffer file"},
        {40044, "Save the plot as PNG, SVG, PDF, PostScript, EMF or another picture format"},
        {40030, "Show the profile file beside the main window in a small Quick View"},
        {40169, "Open the 2D frames window: detector images and their integration"},
        {40179, "Open the generic charts of .gdf and .seq files"},
        {40122, "Print the plot"},
        {40019, "Close every profile and go back to the title screen (Edit, Undo brings them back)"},
        {40038, "Open the most recent file or folder again"},
        {40067, "Open the second most recent file again"},
        {40068, "Open the third most recent file again"},
        {40069, "Open the fourth most recent file again"},
        {40070, "Open the fifth most recent file again"},
        {40005, "Leave Zendrite"},
        // Edit
        {kUndoItem, "Take back the last change of the profiles or lists"},
        {kRedoItem, "Make again the change just taken back"},
        {kHistoryItem, "List the steps of the history, go to one of them, set how much is kept"},
        // Profiles
        {40021, "Show the whole range of the data"},
        {40036, "Show one profile alone"},
        {40111, "Keep the cross-hair target at the centre of the plot"},
        {40141, "Draw the profiles as a stack, each moved from the one before"},
        {40149, "Offset or align chosen profiles by values or by the mouse"},
        {40124, "Scale X of chosen profiles about a pivot, by values or by the mouse"},
        {40115, "Scale Y of chosen profiles about a pivot, by values or by the mouse"},
        {40026, "Normalize the profiles to one monitor value"},
        {40102, "Copy the first profile into a new slot"},
        {40023, "Choose which profiles, curves and reflections are drawn"},
        {40025, "Sort the profiles by name, temperature or a number of your own"},
        {40037, "Close chosen profiles"},
        {40158, "Show the profiles one after another, as a film"},
        // Plot
        {40027, "Draw all profiles in one 2D plot"},
        {40226, "Draw all profiles in one 2D plot with a logarithmic intensity axis"},
        {40028, "Draw the profiles as a 3D stack"},
        {40031, "Draw the profiles as a contour map: X against pattern number"},
        {40227, "Contour map of the logarithm of the intensity"},
        {40125, "Draw the profiles as a shaded 3D surface"},
        {40022, "Open the profiles as a lit 3D model drawn with OpenGL"},
        {kMultiSettingsItem, "Colour scale, iso-line levels and stack rise of the many-pattern views"},
        {kSecondAxisD, "Label the top axis in d-spacing"},
        {kSecondAxisQ, "Label the top axis in Q"},
        // X space
        {40042, "Convert the X axis to 2theta"},
        {40228, "Convert the X axis to omega"},
        {40043, "Convert the X axis to time of flight"},
        {40229, "Convert the X axis to energy"},
        {40017, "Convert the X axis to d-spacing"},
        {40089, "Convert the X axis to Q = 4 pi sin(theta) / lambda"},
        {40081, "Convert the X axis to s = 2 sin(theta) / lambda"},
        {40087, "Set the wavelengths of the profiles"},
        {40088, "Set the dtt1 and dtt2 constants of time-of-flight profiles"},
        // Calculations, smoothing
        {40100, "Add chosen profiles into a new one"},
        {40123, "Average chosen profiles into a new one"},
        {40101, "Subtract one profile from another into a new one"},
        {40162, "Multiply Y, shift X or normalize the maxima of chosen profiles"},
        {40163, "Divide the profiles by an efficiency file"},
        {40020, "Smooth by a Fourier low-pass filter"},
        {40090, "Smooth by a five-point polynomial filter"},
        // Excluded regions
        {40110, "Draw excluded regions with the mouse"},
        {40151, "Add an excluded region by its limits"},
        {40034, "List, change and delete the excluded regions"},
        // Peak detection
        {40091, "The peak detection mode: search and edit the peak list (P)"},
        {40096, "Enter the peak detection mode (P)"},
        {40097, "Leave the peak detection mode"},
        {40092, "Find the peaks of the profile automatically"},
        {40180, "Find the magnetic satellites of the reflections"},
        {kZoneSearchItem, "Search peaks in a band drawn with the mouse"},
        {40147, "Empty the peak list"},
        {40093, "Add peaks by clicking on the plot"},
        {40094, "Delete peaks by clicking near them"},
        {40010, "Save the peak list as a free-format file"},
        {40098, "Save the peak list as input for Dicvol"},
        {40160, "Save the peak list as input for Ito"},
        {40177, "Save the peak list as input for Ombra"},
        {40191, "Save the peak list as input for Treor"},
        {kSaveAllIndexingItem, "Save the peak list for every indexing program at once"},
        {40008, "Show the peak list"},
        // Background
        {40120, "The background mode: search and edit the background points (B)"},
        {40138, "Enter the background mode (B)"},
        {40139, "Leave the background mode"},
        {40159, "Find the background points automatically"},
        {40148, "Empty the background list"},
        {40144, "Add background points by clicking on the plot"},
        {40145, "Delete background points by clicking near them"},
        {40002, "Save the background points"},
        // Profile fitting
        {40024, "The profile fitting mode: fit peak shapes to the profile (F)"},
        {40095, "Enter the profile fitting mode (F)"},
        {40099, "Leave the profile fitting mode"},
        {40194, "Find peaks and background before a fit"},
        {40146, "Empty the lists of the fit"},
        {40150, "Fit the profile from the starting parameters, or go on from the last fit"},
        {40225, "Edit the job file (.pik) of the fit"},
        {40224, "Read the job of a fit from a .pik or .new file"},
        // Tools
        {40128, "Open a command window in the working folder"},
        {40132, "Open the file manager in the working folder"},
        {40107, "Open a text file in the editor"},
        {40140, "Cell, d-spacing and angle calculations"},
        {40154, "Generate the reflections of a cell and space group and mark them on the plot"},
        {40215, "Mark the spectral lines of an element on the plot"},
        {40220, "Show the spectral lines"},
        {40221, "Hide the spectral lines"},
        {40216, "Show the K-alpha1 lines"},
        {40217, "Show the K-alpha2 lines"},
        {40218, "Show the K-beta lines"},
        {40219, "Show the L-alpha1 line of tungsten"},
        {40222, "Choose the element and the lines shown"},
        // Ext. Applications
        {40135, "Run the Rietveld refinement program on a control file and load its result"},
        {kSequentialRunItem, "Run the refinement program on a series of patterns, one after another"},
        {40117, "Run Tessara on the control file"},
        {40129, "Run gLattiq on the control file"},
        {40142, "Run Quavor on the control file"},
        {40134, "Run Tindra on the control file"},
        {40108, "Open the refinement suite's own window"},
        {40188, "Run the indexing program Dicvol"},
        {40192, "Run the indexing program Ito"},
        {40178, "Run the indexing program Ombra"},
        {40193, "Run the indexing program Treor"},
        {40197, "Run Pellan on the numors of an instrument"},
        {40213, "Write a pair-distribution input (QVL) for Virelle"},
        {40207, "Run Virelle on a QVL file and load its result"},
        // Options, Help
        {40033, "Plot colours, styles, helper programs and the window"},
        {kPlotStyleItem, "A white page, twelve colours that colour-blind readers tell apart, thin lines"},
        {kErrorBarsItem, "Draw the standard deviations of the profiles that have them as bars"},
        {40084, "Open the user's guide in the web browser (F1)"},
        {40085, "Open the user's guide as a PDF file"},
        {40086, "Open the guide of the refinement suite's window"},
        {40121, "Read the release notes in the editor"},
        {40156, "Read the release notes in the web browser"},
        {40130, "Open the web site"},
        {40079, "Open the download page"},
        {40018, "Version and rights"},
    };
    return hints;
}

const std::vector<std::pair<int, const char*>>& Menu_Keys() {
    // The desktop's keys for the everyday items; the arrows, + and - act on the plot and are
    // free again in the many-pattern views, which grey those items.
    static const std::vector<std::pair<int, const char*>> keys = {
        {40014, "Ctrl+O"},     {40016, "Ctrl+Shift+O"},       {kOpenFolderItem, "Ctrl+Alt+O"}, {40209, "Ctrl+S"},
        {40044, "Ctrl+E"},     {40122, "Ctrl+P"},             {40005, "Ctrl+Q"},               {kUndoItem, "Ctrl+Z"},
        {kRedoItem, "Ctrl+Shift+Z; Ctrl+Y"},                  {kHistoryItem, "Ctrl+H"},        {40084, "F1"},
        {40137, "+; ="},       {40136, "-"},                  {40106, "Left"},                 {40109, "Right"},
        {40118, "Down"},       {40119, "Up"},                 {40133, "Ctrl+Left"},            {40116, "Ctrl+Right"},
        {40021, "Ctrl+F"},     {40226, "L"},                  {40027, "G"},                    {40096, "P"},
        {40138, "B"},          {40095, "F"},                  {40110, "X"},                    {40105, "H"},
        {40113, "A"},          {40017, "Ctrl+D"},             {40042, "Ctrl+T"},               {40033, "Ctrl+,"},
    };
    return keys;
}

void Set_Menu_Hints_And_Keys() {
    for (const auto& [item, hint] : Menu_Hints()) WMenuSetHint(item, hint);
    for (const auto& [item, key] : Menu_Keys()) WMenuSetShortcut(item, key);
}

}  // namespace zendrite
