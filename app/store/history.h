#pragma once
// The history of the store: each change recorded before it happens, so that it can be
// taken back (undo) and made again (redo). A step keeps only what its command changed:
// the slot records, information records and arrays that differ, and the rest of the store.
#include <cstddef>
#include <string>
#include <vector>

namespace zendrite {

// The arrays of the loaded slots a command may change; heads and information records are
// always looked at. A command that can change any array says kHistoryArrays.
enum : unsigned {
    kHistoryX = 1,
    kHistoryY = 2,
    kHistorySigma = 4,
    kHistoryIstat = 8,
    kHistoryYcalc = 16,
    kHistoryBgr = 32,
    kHistoryAux = 64,
    kHistoryArrays = 127,
};

struct HISTORY_LIMITS {
    int steps = 50;
    double megabytes = 1024;
};

// Before a command: `name` as the Undo item shows it. A step still open is closed first.
void History_Begin(const std::string& name, unsigned arrays);
// After it: keeps what changed as one step and drops the redo branch; false when nothing
// but the view changed (a cancelled dialog, a refused command), and nothing is kept.
bool History_End();
// The name of the open step may be set late, when only the change tells what it was.
void History_Rename(const std::string& name);
bool History_Recording();
std::string History_Open_Name();

bool History_Undo();
bool History_Redo();
// Undoes or redoes until `position` steps are applied (0: the start).
bool History_Go(int position);
void History_Clear();

int History_Position();  // steps applied
int History_Count();     // steps held, applied or not
std::vector<std::string> History_Names();
std::string History_Undo_Name();  // empty when there is nothing to undo
std::string History_Redo_Name();
// What the steps hold, in bytes.
std::size_t History_Bytes();
std::size_t History_Step_Bytes(int step);

HISTORY_LIMITS& History_Limits();
// Drops the oldest steps until the limits hold; the newest step is always kept.
void History_Apply_Limits();

}  // namespace zendrite
