// --xspace, --lambda, --dtt1, --dtt2 of the batch verbs.
#include "app/batch/xspace_options.h"

#include <cmath>

#include "app/store/add_profile.h"
#include "app/store/x_space.h"
#include "app/store/zendrite_param_global.h"
#include "calc/xspace.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
constexpr const char* kNames[] = {"2theta", "TOF", "Energy", "d-space", "q-space", "s-space"};
}

bool Take_X_Space_Options(const char* verb, const std::vector<std::string>& args, std::vector<std::string>& rest,
                          X_SPACE_OPTIONS& o, std::ostream& err) {
    rest.clear();
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const bool ours = a == "--xspace" || a == "--lambda" || a == "--dtt1" || a == "--dtt2";
        if (!ours) {
            rest.push_back(a);
            continue;
        }
        if (i + 1 >= args.size()) {
            err << "zendrite-batch " << verb << ": " << a << " needs a value\n";
            return false;
        }
        const std::string v = args[++i];
        if (a == "--xspace") {
            o.target.clear();
            for (const char* n : kNames)
                if (v == n) o.target = n;
            if (o.target.empty()) {
                err << "zendrite-batch " << verb << ": --xspace takes 2theta, TOF, Energy, d-space, q-space or s-space, not "
                    << v << "\n";
                return false;
            }
            continue;
        }
        char* end = nullptr;
        const double d = std::strtod(v.c_str(), &end);
        if (v.empty() || *end != '\0' || !std::isfinite(d) || std::fabs(d) > 3.4e38) {
            err << "zendrite-batch " << verb << ": " << a << " needs a number, not " << v << "\n";
            return false;
        }
        const float f = static_cast<float>(d);
        if (a == "--lambda") o.lambda = f, o.lambda_given = true;
        else if (a == "--dtt1") o.dtt1 = f, o.dtt1_given = true;
        else o.dtt2 = f, o.dtt2_given = true;
    }
    if ((o.lambda_given || o.dtt1_given || o.dtt2_given) && o.target.empty()) {
        err << "zendrite-batch " << verb << ": --lambda, --dtt1 and --dtt2 go with --xspace\n";
        return false;
    }
    return true;
}

bool Apply_X_Space_Options(const X_SPACE_OPTIONS& o, const std::vector<int>& slots, std::ostream& err) {
    if (o.target.empty()) return true;
    ZENDRITE_STORE& g = zendrite_param_global();
    // The options stand in for the grids: the guards then find the values as if typed there.
    const bool times = hxl::Same(g.xspace, "TOF") || hxl::Same(g.xspace, "Energy");
    for (int s : slots) {
        auto& p = g.pattern[static_cast<std::size_t>(s)];
        if (!times && o.lambda_given) p.lambda1 = o.lambda;
        if (times && o.dtt1_given) p.lambda1 = o.dtt1;
        if (times && o.dtt2_given) p.lambda2 = o.dtt2;
    }
    bool error = false;
    std::string message;
    Convert_X_Space(o.target, error, message);
    if (error) {
        for (char& c : message)
            if (c == '\r') c = '\n';  // the message box's line breaks
        err << message << "\n";
        return false;
    }
    return true;
}

bool Convert_Pattern_By_Options(const X_SPACE_OPTIONS& o, hxl::DIFFRACTION_PATTERN_TYPE& pattern, int row,
                                std::ostream& err) {
    if (o.target.empty()) return true;
    ZENDRITE_STORE& g = zendrite_param_global();
    Reset_Store();
    Enter_None_Mode();
    g.nperfiles = 1;
    g.pattern[1] = pattern;
    LOAD_RESULT r;
    bool ok = Enter_Read_Profile(1, row, r);
    for (const auto& m : r.messages) err << m << "\n";
    if (ok) ok = Apply_X_Space_Options(o, {1}, err);
    if (ok) {
        pattern = g.pattern[1];
        // The pattern leaves the store for a file of its own, whose X is now in the target space.
        pattern.scat_var = o.target == "d-space" ? "d-spacing" : o.target;
    }
    Reset_Store();
    Enter_None_Mode();
    return ok;
}

}  // namespace zendrite
