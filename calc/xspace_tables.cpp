// Which loads join which space, and which conversions exist between spaces.
#include <array>

#include "calc/xspace.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

bool one_of(const std::string& v, std::initializer_list<const char*> names) {
    for (const char* n : names)
        if (v == n) return true;
    return false;
}

bool angle(const std::string& v) { return one_of(v, {"2theta", "Omega"}); }
bool time_like(const std::string& v) { return one_of(v, {"TOF", "Energy"}); }
bool reciprocal(const std::string& v) { return one_of(v, {"d-space", "q-space", "s-space"}); }
bool general(const std::string& v) {
    return one_of(v, {"Lambda", "Energy", "Temperature", "Frequency", "Time", "Distance", "r.l.u."});
}

X_CONVERSION refuse(const std::string& text) {
    X_CONVERSION c;
    c.error = true;
    c.message = text;
    return c;
}

X_CONVERSION steps(X_GUARD guard, std::vector<X_STEP> s) {
    X_CONVERSION c;
    c.guard = guard;
    c.steps = std::move(s);
    return c;
}

// From d, q or s into d: the first steps of every conversion out of them.
std::vector<X_STEP> to_d(const std::string& from) {
    if (from == "q-space") return {X_STEP::Q_To_D};
    if (from == "s-space") return {X_STEP::S_To_D};
    return {};
}

X_CONVERSION to_angle(const std::string& from, const std::string& target, const std::string& unknown) {
    if (from == "TOF") return refuse("Fault in Zendrite: Impossible to convert TOF -> " + target);
    if (from == "Energy") return refuse("Fault in Zendrite: Impossible to convert Energy -> 2Theta");
    if (from == "mono") return refuse("Conversion not possible");
    if (!reciprocal(from)) return refuse(unknown);
    std::vector<X_STEP> s = to_d(from);
    s.push_back(X_STEP::D_To_Theta);
    return steps(X_GUARD::None, s);
}

X_CONVERSION to_time(const std::string& from, const std::string& unknown) {
    if (angle(from)) return refuse("Fault in Zendrite: Impossible to convert 2theta -> TOF");
    if (from == "mono") return refuse("Conversion not possible");
    if (!reciprocal(from)) return refuse(unknown);
    std::vector<X_STEP> s = to_d(from);
    s.push_back(X_STEP::D_To_Time);
    return steps(X_GUARD::None, s);
}

// d, q and s: from the angles and times through d; among themselves directly.
X_CONVERSION to_reciprocal(const std::string& from, const std::string& target, const std::string& unknown) {
    if (from == "mono") return refuse(target == "s-space" ? "Conversion not posible" : "Conversion not possible");
    X_CONVERSION c;
    if (angle(from)) c = steps(X_GUARD::Lambda, {X_STEP::Theta_To_D});
    else if (time_like(from)) c = steps(X_GUARD::Dtt, {X_STEP::Time_To_D});
    else if (reciprocal(from)) c = steps(X_GUARD::None, {});
    else return refuse(unknown);
    if (target == "d-space") {
        for (X_STEP s : to_d(from)) c.steps.push_back(s);
    } else if (target == "q-space") {
        if (from == "s-space") c.steps = {X_STEP::S_To_Q};
        else c.steps.push_back(X_STEP::D_To_Q);
    } else {
        if (from == "q-space") c.steps = {X_STEP::Q_To_S};
        else c.steps.push_back(X_STEP::D_To_S);
    }
    return c;
}

}  // namespace

std::string X_Space_Name(const std::string& scat_var) {
    const std::string v = Trim(scat_var), l = Lower(v);
    static const std::array<const char*, 15> names = {"2theta", "Omega",       "TOF",       "Energy",   "mono",
                                                      "Lambda", "Temperature", "Frequency", "Time",     "Distance",
                                                      "r.l.u.", "d-space",     "q-space",   "s-space", "----"};
    for (const char* n : names)
        if (l == Lower(n)) return n;
    if (l == "d-spacing") return "d-space";
    return v;
}

X_CONVERSION Conversion_Plan(const std::string& xspace, const std::string& target, bool mixed_scat_var) {
    const std::string from = Trim(xspace);
    const std::string to = X_Space_Name(target);
    if (to == from) return refuse("Same xspace...");
    const bool origin = angle(to) || time_like(to);
    if (origin && mixed_scat_var)
        return refuse("Profiles with diferent scat_var were loaded.\rUnable to converter xspace to scar_var of origin.");
    const std::string unknown = "Zendrite in unknown xspace :" + from;
    if (angle(to)) return to_angle(from, to, unknown);
    if (time_like(to)) return to_time(from, unknown);
    if (to == "s-space") return to_reciprocal(from, to, "Zendrite in unknown xspace  :" + from);
    if (reciprocal(to)) return to_reciprocal(from, to, unknown);
    return refuse("Unknown Xspace target");
}

X_IDENTIFY Identify_Scat_Var(const std::string& present_space, const std::string& scat_var) {
    X_IDENTIFY r;
    const std::string present = Trim(present_space);
    const std::string v = X_Space_Name(scat_var);
    auto no = [&r](const std::string& first, const std::string& second) {
        r.error = true;
        r.message = first + "\r" + second;
        return r;
    };
    const char* merge_vars = "It is not possible to merge different scattering variables";
    const char* merge_spaces = "It is not possible to merge different x-spaces";
    const char* not_permitted = "conversion of xspace is not permitted";
    const bool is_angle = angle(v), is_tof = v == "TOF", is_mono = v == "mono";
    r.space = present;
    if (present == "----") {
        if (angle(v) || time_like(v) || is_mono || general(v) || v == "d-space") {
            r.space = v;
            return r;
        }
        r.error = true;
        r.message = "Unknown scattering variable: " + Trim(scat_var);
        return r;
    }
    if (angle(present)) {
        if (is_angle) return r;
        if (is_tof) return no("Present space: 2theta, file in TOF,", std::string(merge_vars) + " ");
        if (is_mono) return no("Present Space: 2theta, file type Integrated Intensity,", not_permitted);
        return no("Present Space: 2theta, file type: General Abcisa,", merge_spaces);
    }
    if (present == "TOF") {
        if (is_tof) return r;
        if (is_angle) return no("Present space: TOF, file in 2theta,", merge_vars);
        if (is_mono) return no("Present space: TOF, file type Integrated Intensity,", not_permitted);
        return no("Present Space: TOF, file type: General Abcisa,", merge_spaces);
    }
    if (present == "mono") {
        if (is_angle) return no("Present space: Integrated Intensity, file in 2theta,", not_permitted);
        if (is_tof) return no("Present space: Integrated Intensity, file in TOF,", not_permitted);
        if (is_mono)
            return no("Present space: Integrated Intensity, file type Integrated Intensity,",
                      "only one profile of type Integrated Intensity can be plotted at same time");
        return no("Present Space: Integrated Intensity, file type: General Abcisa,", merge_spaces);
    }
    if (reciprocal(present)) {
        // A pattern in d joins d as it is and q or s by conversion, like the angles and times.
        if (is_angle || is_tof || v == "d-space") {
            if (v != present) r.convert = Conversion_Plan(v, present, false);
            return r;
        }
        if (is_mono) {
            if (present == "d-space")
                return no("Present space: d-spacing, file type Integrated Intensity,",
                          "only a single Integrated Intensity type is allowed at the same time");
            if (present == "q-space")
                return no("Present Space: q-space, file type Integrated Intensity ,",
                          "only one profile of type Integrated Intensity is allowed at same time");
            return no("Present Space: s-space, file type Integrated Intensity,",
                      "only one Integrated Intensity pattern is allowed at the same time");
        }
        const std::string name = present == "d-space" ? "d-spacing" : present;
        return no("Present Space: " + name + ", file type: General Abcisa,", merge_spaces);
    }
    if (general(present)) {
        if (v == present) return r;
        if (is_angle) return no("Present space: " + present + ", file in 2Theta,", merge_spaces);
        if (is_tof) return no("Present space: " + present + ", file in TOF,", merge_spaces);
        if (is_mono) return no("Present Space: " + present + ", file type Integrated Intensity ", merge_spaces);
        return no("Present Space: " + present + ", file type General Abcisa ", merge_spaces);
    }
    return no("Zendrite in unknown X-space " + present, "Load profile cancelled");
}

void X_Space_Legends(const std::string& name, bool scaled, std::string& legend_x, std::string& legend_y) {
    // The angstrom and micro signs of Latin-1 (197 and 181), in the UTF-8 of the texts.
    const std::string angstrom = "\u00C5", micro = "\u00B5";
    const std::string n = Trim(name), arb = "Intensity (arb. units)";
    legend_x.clear();
    legend_y.clear();
    if (n == "2theta") legend_x = "2theta (deg)", legend_y = arb;
    else if (n == "Omega") legend_x = "Omega (deg)", legend_y = arb;
    else if (n == "Energy") legend_x = "Energy (KeV)", legend_y = arb;
    else if (n == "TOF") legend_x = "TOF (" + micro + "sec)", legend_y = arb;
    else if (n == "mono") legend_x = "sin(theta)/lambda", legend_y = "Fcalc. - Fobs.";
    else if (n == "d-space" || n == "d-spacing") legend_x = "d-spacing (" + angstrom + ")", legend_y = arb;
    else if (n == "q-space") legend_x = "Q (" + angstrom + "-1)", legend_y = arb;
    else if (n == "s-space") legend_x = "s (" + angstrom + "-1)", legend_y = arb;
    else if (n == "Lambda") legend_x = "Lambda", legend_y = "F(Lambda)";
    else if (n == "Frequency") legend_x = "Frequency", legend_y = "F(Frequency)";
    else if (n == "Temperature") legend_x = "Temperature", legend_y = "F(Temperature)";
    else if (n == "Time") legend_x = "Time", legend_y = "F(time)";
    else if (n == "r.l.u.") legend_x = "r.l.u.", legend_y = arb;
    else if (n == "Distance") legend_x = "Distance(R) (Angstroms)", legend_y = scaled ? "G(R) x 1000" : "G(R)";
}

}  // namespace hxl
