#pragma once
// The profile store: fixed numbered slots (1..2000) and the one global state
// of the application. Library modules never reach it.
#include <array>
#include <string>

#include "patterns/diffraction_pattern.h"
#include "prf/prf_info.h"

namespace zendrite {

using hxl::DIFFRACTION_PATTERN_TYPE;
using hxl::PRF_INFO_ADD_TYPE;

inline constexpr int kMaxProfiles = 2000;
inline constexpr int kMaxPeaks = 400;
inline constexpr int kMaxBgrPoints = 400;
inline constexpr int kMaxRecent = 5;
inline constexpr int kMaxTickPhases = 16;
inline constexpr int kMaxReflUnderMouse = 28;
inline constexpr int kProfileStyles = 12;
inline constexpr int kLegendLimit = 33;
inline constexpr int kRietveldSlots = 20;

struct PEAK_RECORD {
    float x = 0, y = 0, bgr = 0;
    bool operator==(const PEAK_RECORD&) const = default;
};
struct BGR_RECORD {
    float x = 0, y = 0;
    bool operator==(const BGR_RECORD&) const = default;
};
struct PEAK_LIST_TYPE {
    int count = 0;
    std::array<PEAK_RECORD, kMaxPeaks + 2> p{};  // one beyond 400: a 401st peak may be inserted by hand
    bool operator==(const PEAK_LIST_TYPE&) const = default;
};
struct BGR_LIST_TYPE {
    int count = 0;
    std::array<BGR_RECORD, kMaxBgrPoints + 1> p{};
    bool operator==(const BGR_LIST_TYPE&) const = default;
};

// Everything of the store but the slot records: what the history keeps whole with every step.
struct STORE_STATE {
    std::array<bool, kMaxProfiles + 1> show_profile{};
    std::array<bool, kMaxProfiles + 1> plot_calc{};
    std::array<bool, kMaxProfiles + 1> plot_bgr{};
    // Sum of the X shifts and product of the Y multipliers given in the Multiply Y / Shift X
    // panel; 0 and 1 for a slot just filled.
    std::array<float, kMaxProfiles + 1> x_shift_total{};
    std::array<float, kMaxProfiles + 1> y_mult_total{};
    // Where a slot is drawn, moved from its data by the Shift dialog; the data stay.
    std::array<float, kMaxProfiles + 1> draw_dx{}, draw_dy{};

    DIFFRACTION_PATTERN_TYPE qv_pattern;  // the pair of the Quick View
    PRF_INFO_ADD_TYPE qv_info;

    int nperfiles = 0;
    int ProfilePRFactive = 0;
    bool prf_loaded = false;
    std::string xspace = "----";
    std::string graph_mode = "none";
    int MoveMode = 0;
    int calc_mode = 0;
    bool mixed_scat_var = false;
    bool log_scale = false;
    // The last shift X and Y given in the Shift dialog: slot k is drawn k-1 times them apart.
    float shift_x_last = 0, shift_y_last = 0;
    float data_xmin = 0, data_xmax = 0, data_ymin = 0, data_ymax = 0;
    float win_xmin = 0, win_xmax = 0, win_ymin = 0, win_ymax = 0;
    float y_floor = 0;
    float diff_base = 0, diff_band = 0;
    float tick_step = 0;
    std::array<float, kMaxTickPhases + 1> tick_top{}, tick_bottom{};
    bool show_ycalc = true, show_ydiff = true, show_reflexions = true;
    bool show_background = false;
    bool target_at_centre = false;
    // Edit flags of the peak and background lists (mouse insertion and deletion).
    bool peak_insert = false, peak_delete = false, bgr_insert = false, bgr_delete = false;
    PEAK_LIST_TYPE Peak_List;
    BGR_LIST_TYPE Bgr_List;
    bool operator==(const STORE_STATE&) const = default;
};

struct ZENDRITE_STORE : STORE_STATE {
    // Slot arrays; element 0 is unused so that slots are numbered from 1.
    std::array<DIFFRACTION_PATTERN_TYPE, kMaxProfiles + 1> pattern;
    std::array<PRF_INFO_ADD_TYPE, kMaxProfiles + 1> info;
    // The recent files belong to the user, not to a step of the history.
    std::array<std::string, kMaxRecent + 1> recent{"", "-", "-", "-", "-", "-"};
};

// The one store of the process.
ZENDRITE_STORE& zendrite_param_global();

// Texts of the limits.
inline constexpr const char* kMsgMaxProfiles = "The maximum number of profiles has been attained!";
inline constexpr const char* kMsgMaxPeaksFit = "The maximum number of peaks to fit was reached!";
inline constexpr const char* kMsgMaxBgr = "The limit number of background points has been attained!";
inline constexpr const char* kMsgTooManyExcl = " has too many Excluded Regions";
inline constexpr const char* kMsgTooManyExclMouse = " has too much number of Excluded Regions";

void Clear_Pattern_Record(DIFFRACTION_PATTERN_TYPE& pattern);
void Clear_Prf_Info(PRF_INFO_ADD_TYPE& info);
void Copy_Pattern_Record(const DIFFRACTION_PATTERN_TYPE& from, DIFFRACTION_PATTERN_TYPE& to);
void Copy_Prf_Info(const PRF_INFO_ADD_TYPE& from, PRF_INFO_ADD_TYPE& to);

// The window system sets these; without them (batch, tests) the store works alone.
struct STORE_HOOKS {
    void (*after_reset)() = nullptr;            // status bar, HKL dialog, Quick View, fitting state
    void (*after_none_mode)() = nullptr;        // menus greyed, cursor, status bar
    void (*after_mode_change)() = nullptr;      // menu states of the new mode
};
STORE_HOOKS& Store_Hooks();

void Reset_Store();
// The start values of the per-slot totals and drawing offsets of slot `slot`.
void Reset_Slot_Totals(int slot);
void Enter_None_Mode();
void Enter_Single_Mode(int keep);
void Enter_Multi_Mode(bool logflag = false);
void Enter_Calculation_Mode(int mode);

// Limit test of a new region: the message, or empty when a region may be added.
std::string Excluded_Region_Refusal(int slot);

}  // namespace zendrite
