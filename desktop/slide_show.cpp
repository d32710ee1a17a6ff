#include "desktop/slide_show.h"

#include <filesystem>
#include <fstream>

namespace velmora {

Slide_Choice Choose_Slide(double random) {
    if (!(random >= 0.0) || random >= 1.0) random = 0.0;
    const double scaled = random * kSlideCount;
    Slide_Choice choice;
    const int whole = static_cast<int>(scaled);
    choice.picture = kFirstSlide + whole;
    choice.effect = static_cast<int>((scaled - whole) * kSlideEffects);
    return choice;
}

bool LoadDataIntoFile(const std::string& bytes, const std::string& path) {
    std::error_code ec;
    if (std::filesystem::exists(path, ec) || ec) return false;
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out);
}

void Show_Slide(const std::string& app_path, const std::string& bytes,
                const std::function<void(const std::string& file)>& show) {
    const std::string file = app_path + "tmp.jpg";
    // A picture that can't be written leaves the box as it is.
    (void)LoadDataIntoFile(bytes, file);
    std::error_code ec;
    if (std::filesystem::exists(file, ec)) show(file);
    std::filesystem::remove(file, ec);
}

}  // namespace velmora
