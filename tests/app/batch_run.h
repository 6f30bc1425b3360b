#pragma once
// Runs one zendrite-batch command line in the test's process.
#include <sstream>
#include <string>
#include <vector>

#include "app/batch/batch_verbs.h"

namespace zdtest {

inline int Run_Batch(std::vector<std::string> args, std::string& out, std::string& err) {
    std::ostringstream o, e;
    const int rc = zendrite::Batch_Main(args, o, e);
    out = o.str();
    err = e.str();
    return rc;
}

}  // namespace zdtest
