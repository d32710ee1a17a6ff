#include "cli/writer_claim.h"

#include <ostream>

#include "collection/collection_claim.h"
#include "core/app_context.h"

namespace velmora::cli {

bool Claim_For_Writing(AppContext& ctx, std::ostream& err) {
    const Claim claim = Claim_Collection(ctx);
    const std::string& path = ctx.collection.Collection_Path;
    switch (claim.outcome) {
        case ClaimOutcome::Held:
        case ClaimOutcome::Unlocked: return true;
        case ClaimOutcome::Busy:
            err << "velmora-cli: " << path << ": the Collection is open for writing in " << claim.text
                << "; nothing was changed\n";
            return false;
        case ClaimOutcome::NotAFile:
            err << "velmora-cli: " << claim.text << ", not a regular file; nothing was changed\n";
            return false;
    }
    return false;
}

}  // namespace velmora::cli
