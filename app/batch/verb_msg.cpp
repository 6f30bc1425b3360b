// zendrite-batch msg: the listing of a magnetic space group.
#include <string>

#include "app/batch/batch_verbs.h"
#include "crystal/magnetic_group.h"

namespace zendrite {
namespace {

int run_msg(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.size() != 1) {
        err << "zendrite-batch msg: give one BNS (\"62.448\"), OG (\"62.9.509\") or UNI (1..1651) number\n";
        return 2;
    }
    hxl::MAGNETIC_GROUP_TYPE mg;
    std::string message;
    if (!hxl::Get_Magnetic_Group(args[0], mg, message)) {
        err << message << "\n";
        return 1;
    }
    hxl::List_Magnetic_Group(mg, out);
    return 0;
}

const bool registered = Register_Batch_Verb(
    {"msg", "msg NUMBER",
     "      the listing of a magnetic space group named by its BNS number (\"62.448\"),\n"
     "      OG number (\"62.9.509\") or UNI number (1..1651): numbers, type, and the\n"
     "      operators with time reversal, x,y,z,+1",
     run_msg});

}  // namespace
}  // namespace zendrite
