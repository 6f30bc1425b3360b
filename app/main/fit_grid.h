#pragma once
// What the two starting-parameters dialogs of the profile fits share: grid
// columns, reading a cell back, the vary/fix fill of a column, and the modal
// loop that refuses a bad cell and shows the dialog again.
#include <functional>
#include <string>
#include <vector>

#include "app/main/fit_dialog.h"
#include "app/present.h"
#include "prf/read_irf.h"

namespace zendrite {

GRID_COLUMN Fit_Real_Column(const char* label);
GRID_COLUMN Fit_Flag_Column(const char* label);
DIALOG_FIELD Fit_Grid(int id, const char* label, std::vector<GRID_COLUMN> columns, int rows);

// Every cell of a column set to `text`.
void Fit_Fill_Column(int field, int col, const std::string& text);
// A finite real of float range in the cell; false otherwise.
bool Fit_Cell(int field, int col, int row, float& v);
int Fit_Check(int field, int col, int row);
// The text with the line number in "(i4)".
std::string Fit_On_Line(const char* text, int line);

// Asks for a resolution file and reads it; a read error is shown and
// false returned, so the caller leaves its cells alone. False also on cancel.
bool Fit_Load_Irf(hxl::IRF_TYPE& irf);
// Tells which values the file gave, or that it gave none of them.
void Fit_Irf_Taken(const std::string& taken);

// Shows the loaded dialog until OK with a good read-back or a button that
// `action` does not take, then unloads it; true on OK. `read_back` fills the
// choices given and returns the refusal text, or empty.
bool Fit_Dialog_Loop(FIT_CHOICES& choices, const std::function<bool(int button)>& action,
                     const std::function<std::string(FIT_CHOICES& c)>& read_back);

}  // namespace zendrite
