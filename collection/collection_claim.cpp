#include "collection/collection_claim.h"

#include "collection/collection_paths.h"
#include "core/app_context.h"
#include "core/running_report.h"

namespace velmora {

namespace {

const char* const kReadOnly =
    "-> Η συλλογή άνοιξε μόνο για ανάγνωση και δε θα σωθεί - The Collection was opened read-only and will not be "
    "saved";
const char* const kUnlocked = "-> Η συλλογή δεν κλειδώθηκε - The Collection could not be locked: ";

std::string In_Use_Text(const std::string& path, const std::string& holder) {
    return "Η συλλογή \"" + path + "\" είναι ανοιχτή για εγγραφή από άλλο πρόγραμμα (" + holder +
           ") και δε θα σωθεί - The Collection \"" + path + "\" is open for writing in " + holder +
           " and will not be saved";
}

std::string Busy_Question(const std::string& path, const std::string& holder) {
    return "Η συλλογή \"" + path + "\" είναι ανοιχτή για εγγραφή από άλλο πρόγραμμα (" + holder +
           "). OK: μόνο για ανάγνωση, χωρίς σώσιμο. Cancel: έξοδος.\nThe Collection \"" + path +
           "\" is open for writing in " + holder + ". OK opens it read-only and never saves it; Cancel ends the program.";
}

const char* Greek_Kind(FileKind kind) {
    switch (kind) {
        case FileKind::Directory: return "φάκελος";
        case FileKind::Pipe: return "επώνυμη σωλήνωση";
        case FileKind::Device: return "συσκευή";
        case FileKind::Socket: return "υποδοχή";
        case FileKind::DanglingLink: return "σύνδεσμος προς αρχείο που δεν υπάρχει";
        case FileKind::LinkLoop: return "κύκλος συνδέσμων";
        case FileKind::Unreachable: return "εκτός πρόσβασης";
        case FileKind::Missing:
        case FileKind::Regular: break;
    }
    return "άλλο";
}

}  // namespace

std::string Lock_Path(const std::string& real_main) { return real_main + ".lock"; }

std::string Not_A_File_Text(const std::string& path, FileKind kind) {
    return "Η συλλογή δε θα σωθεί: το \"" + path + "\" είναι " + Greek_Kind(kind) +
           ", όχι κανονικό αρχείο - The Collection will not be saved: \"" + path + "\" is " + Kind_Text(kind) +
           ", not a regular file";
}

Claim Claim_Collection(AppContext& ctx) {
    CollectionState& c = ctx.collection;
    if (c.Collection_Path.empty()) c.Collection_Path = Default_Collection_Path(ctx);
    c.Write_Refused.clear();
    const ResolvedCollection r = Resolve_Collection(Collection_Paths_Of(ctx, c.Collection_Path));
    if (!r.refused.empty()) {
        ctx.collection_lock.Release();
        c.Write_Refused = Not_A_File_Text(r.refused, r.refused_kind);
        return {ClaimOutcome::NotAFile, r.refused + ": " + Kind_Text(r.refused_kind)};
    }
    FileLock& lock = ctx.collection_lock;
    switch (lock.Acquire(Lock_Path(r.paths.main))) {
        case FileLock::Outcome::Held: return {ClaimOutcome::Held, {}};
        case FileLock::Outcome::Busy:
            // Safe whatever the caller does next: nothing of it is written.
            c.Write_Refused = In_Use_Text(c.Collection_Path, lock.Holder());
            return {ClaimOutcome::Busy, lock.Holder()};
        case FileLock::Outcome::Failed: break;
    }
    return {ClaimOutcome::Unlocked, lock.Error()};
}

bool Claim_Or_Offer_Read_Only(AppContext& ctx) {
    const Claim claim = Claim_Collection(ctx);
    if (claim.outcome == ClaimOutcome::Unlocked) Log_Line(ctx, kUnlocked + claim.text);
    if (claim.outcome != ClaimOutcome::Busy) return true;
    const std::string& path = ctx.collection.Collection_Path;
    if (ctx.ports.dialogs.MsgBox(Busy_Question(path, claim.text), MsgButtons::OKCancel, MsgIcon::Exclamation, "") !=
        MsgAnswer::OK)
        return false;
    Log_Line(ctx, kReadOnly);
    return true;
}

void Release_Collection(AppContext& ctx) { ctx.collection_lock.Release(); }

}  // namespace velmora
