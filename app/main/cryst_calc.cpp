// "Crystalographic Calc": a cell and a space group in a dialog, and their
// metrics, group listing and reflection conditions in the text editor, from
// which the user saves them where he likes.
#include <sstream>
#include <string>

#include "app/main/commands.h"
#include "app/main/menu_groups.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "crystal/cryst_listing.h"
#include "crystal/magnetic_group.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr int kCrystCalcDialog = 178, kGroupField = 1787, kMagneticField = 1788;
constexpr int kCellFields[6] = {1781, 1782, 1783, 1784, 1785, 1786};
const char* const kCellLabels[6] = {"a :", "b :", "c :", "alpha :", "beta :", "gamma :"};

// What the user gave last, offered again at the next opening.
struct CRYST_CALC_STATE {
    std::string cell[6] = {"5.5", "5.5", "6.0", "90.0", "90.0", "90.0"};
    std::string group = "P b m n";
    std::string magnetic;  // BNS, OG or UNI number; blank for none
};
CRYST_CALC_STATE& state() {
    static CRYST_CALC_STATE s;
    return s;
}

void define_dialog() {
    static bool done = false;
    if (done) return;
    done = true;
    std::vector<DIALOG_FIELD> f;
    for (int i = 0; i < 6; ++i) f.push_back(Fld(kCellFields[i], FIELD_KIND::Text, kCellLabels[i]));
    f.push_back(Fld(kGroupField, FIELD_KIND::Text, "Sp. group"));
    f.push_back(Fld(kMagneticField, FIELD_KIND::Text, "Magnetic group (BNS, OG or UNI number)"));
    WDialogDefine({kCrystCalcDialog, "Crystalographic Calc", {}, f});
}

}  // namespace

// Bad input (an empty or unknown group, edges that are not positive, angles
// that make no cell) gives its text and opens nothing.
void Cryst_Calc(int) {
    CRYST_CALC_STATE& s = state();
    define_dialog();
    WDialogLoad(kCrystCalcDialog);
    for (int i = 0; i < 6; ++i) WDialogPutString(kCellFields[i], s.cell[i]);
    WDialogPutString(kGroupField, s.group);
    WDialogPutString(kMagneticField, s.magnetic);
    WDialogShow(-1, -1, 0, Modal);
    const bool ok = WInfoDialog(4) == kIdOk;
    CRYST_CALC_STATE given;
    for (int i = 0; i < 6; ++i) WDialogGetString(kCellFields[i], given.cell[i]);
    WDialogGetString(kGroupField, given.group);
    WDialogGetString(kMagneticField, given.magnetic);
    WDialogUnload();
    if (!ok) return;
    s = given;
    float cell[6];
    for (int i = 0; i < 6; ++i) {
        int err = 0;
        cell[i] = static_cast<float>(IStringToReal(hxl::Trim(given.cell[i]), err));
        if (err != 0 || hxl::Is_Blank(given.cell[i])) {
            Show_Message("Wrong cell parameters");
            return;
        }
    }
    std::string text, message;
    if (!hxl::Crystallographic_Listing(cell, hxl::Trim(given.group), text, message)) {
        Show_Message(message);
        return;
    }
    if (!hxl::Is_Blank(given.magnetic)) {
        hxl::MAGNETIC_GROUP_TYPE mg;
        if (!hxl::Get_Magnetic_Group(given.magnetic, mg, message)) {
            Show_Message(message);
            return;
        }
        std::ostringstream listing;
        hxl::List_Magnetic_Group(mg, listing);
        text += "\n" + listing.str();
    }
    const std::string file = Temp_Folder() + "zendrite_cryst_calc.txt";
    if (!Write_File_Replace(file, text)) {
        Show_Message("Unable to write the file " + file);
        return;
    }
    WEditFile(file);
}

}  // namespace zendrite
