#include "cli/folder_command.h"

#include <QCoreApplication>

#include <array>
#include <cstdint>
#include <iostream>
#include <string>

#include "cli/headless_program.h"
#include "collection/collection_paths.h"
#include "collection/pointer_file.h"

namespace velmora::cli {

int Folder_Command(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const std::string app_path = Default_Program_Folder();
    // Read as Load_Pointer reads it; the statistics are not wanted here.
    std::string collection;
    std::array<int32_t, 7> statistics{};
    std::array<int32_t*, 7> into{};
    for (size_t k = 0; k < statistics.size(); ++k) into[k] = &statistics[k];
    if (!Read_Pointer_File(Pointer_File_Path(app_path), collection, into) || collection.empty())
        collection = Default_Collection_Path(app_path);
    std::cout << app_path << '\n' << collection << '\n' << std::flush;
    return std::cout ? 0 : 1;
}

}  // namespace velmora::cli
