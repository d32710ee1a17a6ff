#include "cli/held_collection.h"

#include <filesystem>
#include <ostream>

#include "cli/headless_program.h"
#include "cli/writer_claim.h"
#include "collection/collection_file.h"
#include "core/app_context.h"

namespace fs = std::filesystem;

namespace velmora::cli {

bool Open_Held_Collection(AppContext& ctx, const std::string& file, std::ostream& err) {
    std::error_code ec;
    if (!fs::is_regular_file(file, ec)) {
        err << "velmora-cli: " << file << ": no such Collection\n";
        return false;
    }
    Set_Program_Folder(ctx, file);
    ctx.collection.Collection_Path = file;
    if (!Claim_For_Writing(ctx, err)) return false;
    Start_Without_Window(ctx);
    ctx.collection.Collection_Path = file;
    if (!Load_Collection(ctx)) {
        err << "velmora-cli: " << file << ": the Collection could not be read whole";
        if (!ctx.collection.Load_Fault.empty()) err << " (" << ctx.collection.Load_Fault << ")";
        err << "; nothing was changed\n";
        return false;
    }
    return true;
}

bool Save_Held_Collection(AppContext& ctx, std::ostream& err) {
    if (Save_Collection(ctx, false, false)) return true;
    err << "velmora-cli: " << ctx.collection.Collection_Path
        << ": the Collection could not be saved: " << ctx.collection.Save_Fault << "\n";
    return false;
}

}  // namespace velmora::cli
