// zendrite-batch average: the Average of the Calculations menu on files.
#include <string>
#include <vector>

#include "app/batch/arith_batch_io.h"
#include "app/batch/batch_verbs.h"

namespace zendrite {

namespace {
int run_average(const std::vector<std::string>& a, std::ostream& o, std::ostream& e) { return Run_Sum_Verb(true, a, o, e); }

const bool registered = Register_Batch_Verb(
    {"average", "average FILE... --out OUT [--interpolate]",
     "      the mean of the y of the files point by point, as sum does, written as OUT",
     run_average});
}  // namespace

}  // namespace zendrite
