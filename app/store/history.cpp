#include "app/store/history.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <deque>
#include <utility>

#include "app/store/zendrite_param_global.h"

namespace zendrite {

namespace {

using PATTERN = DIFFRACTION_PATTERN_TYPE;

// One slot as a step holds it: the other version of its head and information record and
// of the arrays named in `held`; the arrays not held are empty and stay live.
struct SLOT_CHANGE {
    int slot = 0;
    unsigned held = 0;
    bool head = true, info = true;
    PATTERN rec;
    PRF_INFO_ADD_TYPE inf;
};

struct HISTORY_STEP {
    std::string name;
    std::vector<SLOT_CHANGE> slots;
    STORE_STATE state;
    // Whether the command changed the view or the mode; if not, undo and redo leave the live
    // ones, so that a zoom or a mode chosen since stays.
    bool view_changed = false, mode_changed = false;
    std::size_t bytes = 0;
};

struct HISTORY {
    std::deque<HISTORY_STEP> steps;
    int position = 0;
    bool open = false;
    HISTORY_STEP next;
    int count_before = 0;
    HISTORY_LIMITS limits;
};

HISTORY& H() {
    static HISTORY h;
    return h;
}

// Calls f(array of a, the same array of b, its bit) for the seven arrays of a record.
template <class F>
void each_pair(PATTERN& a, PATTERN& b, F f) {
    f(a.x, b.x, kHistoryX);
    f(a.y, b.y, kHistoryY);
    f(a.sigma, b.sigma, kHistorySigma);
    f(a.istat, b.istat, kHistoryIstat);
    f(a.ycalc, b.ycalc, kHistoryYcalc);
    f(a.bgr, b.bgr, kHistoryBgr);
    f(a.aux, b.aux, kHistoryAux);
}

template <class T>
bool same_bits(const hxl::Array1<T>& a, const hxl::Array1<T>& b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), static_cast<std::size_t>(a.size()) * sizeof(T)) == 0);
}

// The head of `p` alone: its arrays are moved out for the copy and back.
PATTERN head_copy(PATTERN& p) {
    PATTERN arrays;
    auto swap = [](auto& a, auto& b, unsigned) { std::swap(a, b); };
    each_pair(p, arrays, swap);
    PATTERN head = p;
    each_pair(p, arrays, swap);
    return head;
}

// Heads compared with the arrays out of the way; a start time unknown in both is the same.
bool same_head(PATTERN& a, PATTERN& b) {
    PATTERN ha = head_copy(a), hb = head_copy(b);
    if (std::isnan(ha.acq_time) && std::isnan(hb.acq_time)) ha.acq_time = hb.acq_time = 0;
    return ha == hb;
}

bool same_pattern(PATTERN& a, PATTERN& b) {
    if (!same_head(a, b)) return false;
    bool same = true;
    each_pair(a, b, [&same](auto& x, auto& y, unsigned) { same = same && same_bits(x, y); });
    return same;
}

// The view: limits and what the plot derives from them. The mode: graph and calculation
// modes and the mouse's edit flags. Both are given to f(field of a, field of b).
template <class F>
void each_view(STORE_STATE& a, STORE_STATE& b, F f) {
    f(a.data_xmin, b.data_xmin), f(a.data_xmax, b.data_xmax), f(a.data_ymin, b.data_ymin), f(a.data_ymax, b.data_ymax);
    f(a.win_xmin, b.win_xmin), f(a.win_xmax, b.win_xmax), f(a.win_ymin, b.win_ymin), f(a.win_ymax, b.win_ymax);
    f(a.y_floor, b.y_floor), f(a.diff_base, b.diff_base), f(a.diff_band, b.diff_band);
    f(a.tick_step, b.tick_step), f(a.tick_top, b.tick_top), f(a.tick_bottom, b.tick_bottom);
    f(a.log_scale, b.log_scale), f(a.target_at_centre, b.target_at_centre);
}

template <class F>
void each_mode(STORE_STATE& a, STORE_STATE& b, F f) {
    f(a.graph_mode, b.graph_mode), f(a.calc_mode, b.calc_mode), f(a.MoveMode, b.MoveMode);
    f(a.peak_insert, b.peak_insert), f(a.peak_delete, b.peak_delete);
    f(a.bgr_insert, b.bgr_insert), f(a.bgr_delete, b.bgr_delete);
}

const auto kSwap = [](auto& x, auto& y) { std::swap(x, y); };
const auto kTake = [](auto& x, auto& y) { x = y; };

bool same_view(STORE_STATE& a, STORE_STATE& b) {
    bool same = true;
    each_view(a, b, [&same](auto& x, auto& y) { same = same && x == y; });
    return same;
}

bool same_mode(STORE_STATE& a, STORE_STATE& b) {
    bool same = true;
    each_mode(a, b, [&same](auto& x, auto& y) { same = same && x == y; });
    return same;
}

// Everything else: a copy of `a` (without its Quick View arrays) takes the view and mode of
// `b`; the Quick View pair is compared on its own, NaN-aware.
bool same_rest(STORE_STATE& a, STORE_STATE& b) {
    if (!same_pattern(a.qv_pattern, b.qv_pattern)) return false;
    PATTERN qa, qb;
    std::swap(a.qv_pattern, qa), std::swap(b.qv_pattern, qb);
    STORE_STATE t = a;
    each_view(t, b, kTake);
    each_mode(t, b, kTake);
    t.qv_pattern.acq_time = b.qv_pattern.acq_time = 0;  // both empty now; NaN would never compare equal
    const bool same = t == b;
    std::swap(a.qv_pattern, qa), std::swap(b.qv_pattern, qb);
    return same;
}

std::size_t pattern_bytes(const PATTERN& p) {
    std::size_t n = sizeof(PATTERN) + p.title.capacity() + p.filename.capacity() + p.filepath.capacity();
    n += (static_cast<std::size_t>(p.x.size()) + p.y.size() + p.sigma.size() + p.ycalc.size() + p.bgr.size() +
          p.aux.size()) * sizeof(float);
    n += static_cast<std::size_t>(p.istat.size()) * sizeof(int);
    return n;
}

std::size_t info_bytes(const PRF_INFO_ADD_TYPE& in) {
    std::size_t n = sizeof(PRF_INFO_ADD_TYPE) + in.header.capacity();
    n += (static_cast<std::size_t>(in.refl_pos.size()) + in.excl_low.size() + in.excl_high.size()) * sizeof(float);
    n += static_cast<std::size_t>(in.refl_code.size() + in.refl_kind.size() + in.refl_phase.size() +
                                  in.refl_count.size()) * sizeof(int);
    for (const std::string& s : in.refl_label) n += sizeof(std::string) + s.capacity();
    for (const auto& k : in.kvec) n += static_cast<std::size_t>(k.size()) * sizeof(float);
    return n;
}

std::size_t step_bytes(const HISTORY_STEP& s) {
    std::size_t n = sizeof(HISTORY_STEP) + pattern_bytes(s.state.qv_pattern) + info_bytes(s.state.qv_info);
    for (const SLOT_CHANGE& c : s.slots) n += pattern_bytes(c.rec) + (c.info ? info_bytes(c.inf) : 0);
    return n;
}

// Exchanges the step's version with the live one: an undo, and the redo after it.
void exchange(HISTORY_STEP& s) {
    ZENDRITE_STORE& g = zendrite_param_global();
    for (SLOT_CHANGE& c : s.slots) {
        PATTERN& live = g.pattern[static_cast<std::size_t>(c.slot)];
        // The arrays not held stay live: moved into the step's record before the whole swap.
        each_pair(live, c.rec, [&c](auto& a, auto& b, unsigned bit) {
            if (!(c.held & bit)) std::swap(a, b);
        });
        std::swap(live, c.rec);
        if (c.info) std::swap(g.info[static_cast<std::size_t>(c.slot)], c.inf);
    }
    STORE_STATE& live = g;
    if (!s.view_changed) each_view(live, s.state, kSwap);
    if (!s.mode_changed) each_mode(live, s.state, kSwap);
    std::swap(live, s.state);
}

}  // namespace

HISTORY_LIMITS& History_Limits() { return H().limits; }

void History_Begin(const std::string& name, unsigned arrays) {
    HISTORY& h = H();
    if (h.open) History_End();
    ZENDRITE_STORE& g = zendrite_param_global();
    h.next = HISTORY_STEP{};
    h.next.name = name;
    h.next.state = g;
    h.count_before = g.nperfiles;
    h.next.slots.resize(static_cast<std::size_t>(std::max(0, g.nperfiles)));
    for (int s = 1; s <= g.nperfiles; ++s) {
        SLOT_CHANGE& c = h.next.slots[static_cast<std::size_t>(s - 1)];
        PATTERN& live = g.pattern[static_cast<std::size_t>(s)];
        c.slot = s;
        c.held = arrays;
        c.rec = head_copy(live);
        each_pair(live, c.rec, [arrays](auto& a, auto& b, unsigned bit) {
            if (arrays & bit) b = a;
        });
        c.inf = g.info[static_cast<std::size_t>(s)];
    }
    h.open = true;
}

void History_Rename(const std::string& name) {
    if (H().open) H().next.name = name;
}

bool History_Recording() { return H().open; }

std::string History_Open_Name() { return H().open ? H().next.name : std::string(); }

bool History_End() {
    HISTORY& h = H();
    if (!h.open) return false;
    h.open = false;
    ZENDRITE_STORE& g = zendrite_param_global();
    HISTORY_STEP step = std::move(h.next);
    h.next = HISTORY_STEP{};
    std::vector<SLOT_CHANGE> kept;
    for (SLOT_CHANGE& c : step.slots) {
        PATTERN& live = g.pattern[static_cast<std::size_t>(c.slot)];
        each_pair(live, c.rec, [&c](auto& a, auto& b, unsigned bit) {
            if ((c.held & bit) && same_bits(a, b)) {
                b.clear();
                c.held &= ~bit;
            }
        });
        c.head = !same_head(c.rec, live);
        c.info = !(c.inf == g.info[static_cast<std::size_t>(c.slot)]);
        if (!c.info) c.inf = PRF_INFO_ADD_TYPE{};
        if (c.held || c.head || c.info) kept.push_back(std::move(c));
    }
    // Slots filled by the command were empty before it, as far as anything reads them.
    for (int s = h.count_before + 1; s <= g.nperfiles; ++s) {
        SLOT_CHANGE c;
        c.slot = s;
        c.held = kHistoryArrays;
        kept.push_back(std::move(c));
    }
    step.slots = std::move(kept);
    STORE_STATE& live = g;
    const bool rest_changed = !same_rest(step.state, live);
    step.view_changed = !same_view(step.state, live);
    step.mode_changed = !same_mode(step.state, live);
    if (step.slots.empty() && !rest_changed) return false;
    step.bytes = step_bytes(step);
    h.steps.erase(h.steps.begin() + h.position, h.steps.end());
    h.steps.push_back(std::move(step));
    h.position = static_cast<int>(h.steps.size());
    History_Apply_Limits();
    return true;
}

void History_Apply_Limits() {
    HISTORY& h = H();
    auto too_much = [&h] {
        return static_cast<int>(h.steps.size()) > std::max(1, h.limits.steps) ||
               static_cast<double>(History_Bytes()) > h.limits.megabytes * 1048576.0;
    };
    // The oldest applied step goes first; with everything undone, the newest of the redo branch.
    while (h.steps.size() > 1 && too_much()) {
        if (h.position > 0) {
            h.steps.pop_front();
            h.position = std::max(0, h.position - 1);
        } else {
            h.steps.pop_back();
        }
    }
}

bool History_Undo() {
    HISTORY& h = H();
    if (h.open || h.position == 0) return false;
    exchange(h.steps[static_cast<std::size_t>(--h.position)]);
    return true;
}

bool History_Redo() {
    HISTORY& h = H();
    if (h.open || h.position >= static_cast<int>(h.steps.size())) return false;
    exchange(h.steps[static_cast<std::size_t>(h.position++)]);
    return true;
}

bool History_Go(int position) {
    HISTORY& h = H();
    if (h.open || position < 0 || position > static_cast<int>(h.steps.size())) return false;
    while (h.position > position) History_Undo();
    while (h.position < position) History_Redo();
    return true;
}

void History_Clear() {
    HISTORY& h = H();
    h.steps.clear();
    h.position = 0;
    h.open = false;
    h.next = HISTORY_STEP{};
}

int History_Position() { return H().position; }
int History_Count() { return static_cast<int>(H().steps.size()); }

std::vector<std::string> History_Names() {
    std::vector<std::string> v;
    for (const HISTORY_STEP& s : H().steps) v.push_back(s.name);
    return v;
}

std::string History_Undo_Name() {
    const HISTORY& h = H();
    return h.position > 0 ? h.steps[static_cast<std::size_t>(h.position - 1)].name : std::string();
}

std::string History_Redo_Name() {
    const HISTORY& h = H();
    return h.position < static_cast<int>(h.steps.size()) ? h.steps[static_cast<std::size_t>(h.position)].name
                                                           : std::string();
}

std::size_t History_Bytes() {
    std::size_t n = 0;
    for (const HISTORY_STEP& s : H().steps) n += s.bytes;
    return n;
}

std::size_t History_Step_Bytes(int step) {
    const HISTORY& h = H();
    return step >= 1 && step <= static_cast<int>(h.steps.size()) ? h.steps[static_cast<std::size_t>(step - 1)].bytes : 0;
}

}  // namespace zendrite
