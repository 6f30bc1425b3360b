#include "app/batch/batch_verbs.h"

#include <algorithm>
#include <cstring>

namespace zendrite {
namespace {
std::vector<Batch_Verb>& registry() {
    static std::vector<Batch_Verb> verbs;
    return verbs;
}

void usage(std::ostream& out) {
    out << "zendrite-batch: Zendrite's commands without a window\n\nUsage:\n";
    auto verbs = registry();
    std::sort(verbs.begin(), verbs.end(), [](const Batch_Verb& a, const Batch_Verb& b) { return std::strcmp(a.name, b.name) < 0; });
    for (const auto& v : verbs) out << "  zendrite-batch " << v.usage << "\n" << v.help << "\n";
    out << "  zendrite-batch --help\n      this text\n";
}
}  // namespace

bool Register_Batch_Verb(const Batch_Verb& verb) {
    registry().push_back(verb);
    return true;
}

const std::vector<Batch_Verb>& Batch_Verbs() { return registry(); }

int Batch_Main(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.empty()) {
        usage(err);
        return 2;
    }
    if (args[0] == "--help" || args[0] == "-h" || args[0] == "help") {
        usage(out);
        return 0;
    }
    for (const auto& v : registry()) {
        if (args[0] == v.name) {
            std::vector<std::string> rest(args.begin() + 1, args.end());
            if (std::find(rest.begin(), rest.end(), "--help") != rest.end()) {
                out << "zendrite-batch " << v.usage << "\n" << v.help << "\n";
                return 0;
            }
            return v.run(rest, out, err);
        }
    }
    err << "zendrite-batch: unknown verb '" << args[0] << "'; see zendrite-batch --help\n";
    return 2;
}

}  // namespace zendrite
