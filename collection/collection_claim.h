#pragma once
// Taking a Collection for writing: one program at a time, and only when its
// files are regular files or not there yet. Those that only read it (a dump,
// a summary) take nothing.

#include <string>

#include "base/file_kind.h"

namespace velmora {

struct AppContext;

enum class ClaimOutcome {
    Held,      // this program may write it
    Busy,      // another program holds it; `text` names the holder
    NotAFile,  // one of its files is not a regular file; `text` names it and what it is
    Unlocked,  // no lock could be made (a folder closed to us, say); `text` says why.
               // Writing may go on: it fails as it would have anyway, or it is alone.
};

struct Claim {
    ClaimOutcome outcome = ClaimOutcome::Held;
    std::string text;
};

// Claims the Collection at Collection_Path, clearing what a claim of another
// Collection refused. Claiming the one already held costs nothing.
Claim Claim_Collection(AppContext& ctx);

// The window's claim. A Collection held by another program is offered
// read-only (the window then never saves it) or not at all; false when the
// user cancels, and the program is to end touching nothing. One of its files
// not being a regular file is left to the load to tell.
bool Claim_Or_Offer_Read_Only(AppContext& ctx);

// Lets go of the lock: the program is done with the Collection.
void Release_Collection(AppContext& ctx);

// The lock file of a main file, beside the file itself (links followed), so
// that every way to name one Collection meets at one lock.
std::string Lock_Path(const std::string& real_main);

// What the load and a save tell when a file is not a regular file, Greek and
// English; the log puts its arrow in front.
std::string Not_A_File_Text(const std::string& path, FileKind kind);

}  // namespace velmora
