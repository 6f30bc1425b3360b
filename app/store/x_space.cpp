// The X space of the store.
#include "app/store/x_space.h"

#include <algorithm>
#include <cmath>
#include <thread>

#include "app/store/zendrite_param_global.h"
#include "calc/xspace.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

std::size_t at(int slot) { return static_cast<std::size_t>(slot); }

std::string name_of(int slot) { return hxl::Trim(zendrite_param_global().info[at(slot)].prf_name); }

bool constants_good(int slot, bool dtt) {
    const DIFFRACTION_PATTERN_TYPE& p = zendrite_param_global().pattern[at(slot)];
    return std::isfinite(p.lambda1) && p.lambda1 > 0.0f && (!dtt || std::isfinite(p.lambda2));
}

// The guard of `slots`: their wavelength, or dtt1 and dtt2, must be usable; the grid
// is offered to put them right. A refusal leaves every record as it was.
bool guard(bool dtt, const std::vector<int>& slots, std::string& message) {
    ZENDRITE_STORE& g = zendrite_param_global();
    int first = 0;
    for (int s : slots)
        if (!constants_good(s, dtt)) {
            first = s;
            break;
        }
    if (first == 0) return true;
    message = (dtt ? "vtt1 <= 0 - Value incorrect for " : "lambda<=0 - Value incorrect for ") + name_of(first) +
              "\rOperation cancelled.";
    if (!X_Space_Hooks().edit_constants) return false;
    std::vector<std::pair<float, float>> old;
    for (int s : slots) old.emplace_back(g.pattern[at(s)].lambda1, g.pattern[at(s)].lambda2);
    auto restore = [&] {
        for (std::size_t k = 0; k < slots.size(); ++k) {
            g.pattern[at(slots[k])].lambda1 = old[k].first;
            g.pattern[at(slots[k])].lambda2 = old[k].second;
        }
    };
    if (!X_Space_Hooks().edit_constants(dtt, slots)) {
        restore();
        message = "Conversion of xspace cancelled";
        return false;
    }
    std::string names;
    for (int s : slots)
        if (!constants_good(s, dtt)) names += "\r" + name_of(s);
    if (names.empty()) return true;
    restore();
    message = (dtt ? "Invalid values of ddt1/dtt2 found for:" : "Invalid value of wavelength found in:") + names;
    return false;
}

bool guard_of(hxl::X_GUARD kind, const std::vector<int>& slots, std::string& message) {
    if (kind == hxl::X_GUARD::None) return true;
    return guard(kind == hxl::X_GUARD::Dtt, slots, message);
}

// No point of `slots` may be lost on the way: a point without a value in the new space refuses all.
bool convertible(const std::vector<int>& slots, const std::vector<hxl::X_STEP>& steps, const std::string& target,
                 std::string& message) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    for (int s : slots) {
        const std::string why = hxl::Unconvertible_Point(g.pattern[at(s)], g.info[at(s)], steps);
        if (why.empty()) continue;
        message = "The " + why + " of " + name_of(s) + " has no value in " + target + "\rConversion of xspace cancelled";
        return false;
    }
    return true;
}

// f(0) .. f(count-1), the even ones here and the odd ones on a second thread.
template <class F>
void on_two_threads(std::size_t count, F f) {
    std::thread second([&] {
        for (std::size_t k = 1; k < count; k += 2) f(k);
    });
    for (std::size_t k = 0; k < count; k += 2) f(k);
    second.join();
}

void convert_slot(int s, const std::vector<hxl::X_STEP>& steps) {
    ZENDRITE_STORE& g = zendrite_param_global();
    std::vector<std::string> messages;
    hxl::Convert_Pattern_X(g.pattern[at(s)], g.info[at(s)], steps, messages);
    for (const std::string& m : messages)
        if (X_Space_Hooks().message) X_Space_Hooks().message(m);
}

}  // namespace

X_SPACE_STATE& X_Space_State() {
    static X_SPACE_STATE s;
    return s;
}

X_SPACE_HOOKS& X_Space_Hooks() {
    static X_SPACE_HOOKS h;
    return h;
}

bool Update_Mixed_Scat_Var() {
    ZENDRITE_STORE& g = zendrite_param_global();
    g.mixed_scat_var = false;
    for (int k = 2; k <= g.nperfiles && k <= kMaxProfiles; ++k)
        if (hxl::X_Space_Name(g.pattern[at(k)].scat_var) != hxl::X_Space_Name(g.pattern[1].scat_var))
            g.mixed_scat_var = true;
    return g.mixed_scat_var;
}

void Set_X_Space(const std::string& name, const std::string& legend_x, const std::string& legend_y) {
    ZENDRITE_STORE& g = zendrite_param_global();
    X_SPACE_STATE& st = X_Space_State();
    g.xspace = hxl::Cut(hxl::Trim(name), 20);
    hxl::X_Space_Legends(g.xspace, st.legend_scaled, st.legend_x, st.legend_y);
    if (!hxl::Is_Blank(legend_x)) st.legend_x = hxl::Trim(legend_x);
    if (!hxl::Is_Blank(legend_y)) st.legend_y = hxl::Trim(legend_y);
    if (X_Space_Hooks().menu_states) X_Space_Hooks().menu_states();
}

bool Identify_X_Space(int slot, std::string& message) {
    ZENDRITE_STORE& g = zendrite_param_global();
    DIFFRACTION_PATTERN_TYPE& p = g.pattern[at(slot)];
    const bool first = hxl::Same(g.xspace, "----");
    const hxl::X_IDENTIFY r = hxl::Identify_Scat_Var(g.xspace, p.scat_var);
    if (r.error) {
        message = r.message;
        return false;
    }
    if (first) {
        Set_X_Space(r.space, p.xax_text, p.yax_text);
        return true;
    }
    if (r.convert.error) {
        message = r.convert.message;
        return false;
    }
    if (!r.convert.steps.empty()) {
        if (!guard_of(r.convert.guard, {slot}, message)) return false;
        if (!convertible({slot}, r.convert.steps, g.xspace, message)) return false;
        convert_slot(slot, r.convert.steps);
        p.xax_text = X_Space_State().legend_x;
    }
    Update_Mixed_Scat_Var();
    return true;
}

void Convert_X_Space(const std::string& target, bool& error, std::string& message) {
    ZENDRITE_STORE& g = zendrite_param_global();
    error = true;
    const hxl::X_CONVERSION plan = hxl::Conversion_Plan(g.xspace, target, Update_Mixed_Scat_Var());
    if (plan.error) {
        message = plan.message;
        return;
    }
    const std::string to = hxl::X_Space_Name(target);
    std::vector<int> slots;
    for (int s = 1; s <= g.nperfiles; ++s) slots.push_back(s);
    if (!guard_of(plan.guard, slots, message)) return;
    // The domain of every point is checked first, and the points are converted in place only
    // when all of them have a value in the target. Two workers share the slots in both passes.
    std::vector<int> bad(slots.size(), 0);
    on_two_threads(slots.size(), [&](std::size_t k) {
        const DIFFRACTION_PATTERN_TYPE& p = g.pattern[at(slots[k])];
        bad[k] = hxl::Unconvertible_X_Point(p.x.data(), std::min(p.npts, p.x.size()), plan.steps, p.lambda1,
                                            p.lambda2);
    });
    for (std::size_t k = 0; k < slots.size(); ++k)
        if (bad[k] != 0 || (hxl::Same(g.info[at(slots[k])].prf_type, "PRF") &&
                            !convertible({slots[k]}, plan.steps, to, message))) {  // reflections too
            if (bad[k] != 0)
                message = "The point " + std::to_string(bad[k]) + " (X = " +
                          std::to_string(g.pattern[at(slots[k])].x(bad[k])) + ") of " + name_of(slots[k]) +
                          " has no value in " + to + "\rConversion of xspace cancelled";
            return;
        }
    on_two_threads(slots.size(),
                   [&](std::size_t k) { hxl::Convert_Points_In_Place(g.pattern[at(slots[k])], plan.steps); });
    for (int s : slots) {
        std::vector<std::string> messages;
        hxl::Convert_Reflections_And_Regions(g.pattern[at(s)], g.info[at(s)], plan.steps, messages);
        for (const std::string& m : messages)
            if (X_Space_Hooks().message) X_Space_Hooks().message(m);
    }
    Set_X_Space(to);
    for (int s : slots) g.pattern[at(s)].xax_text = X_Space_State().legend_x;
    error = false;
    message.clear();
}

void Check_Lambda(bool& error, std::string& message) {
    std::vector<int> slots;
    for (int s = 1; s <= zendrite_param_global().nperfiles; ++s) slots.push_back(s);
    error = !guard(false, slots, message);
}

void Check_Dtt(bool& error, std::string& message) {
    std::vector<int> slots;
    for (int s = 1; s <= zendrite_param_global().nperfiles; ++s) slots.push_back(s);
    error = !guard(true, slots, message);
}

}  // namespace zendrite
