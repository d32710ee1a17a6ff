#pragma once
// The slide show of the About menu: which picture comes next, and the
// passage of each picture through a file in the program's folder.

#include <functional>
#include <string>

namespace velmora {

// The pictures are numbered from 85 upward, as the resources hold them.
constexpr int kFirstSlide = 85;
constexpr int kSlideCount = 34;
constexpr int kSlideEffects = 6;

struct Slide_Choice {
    int picture = kFirstSlide;
    int effect = 0;
};

// One random number in [0, 1) picks both: its whole part scaled by the
// picture count, what remains by the count of effects.
Slide_Choice Choose_Slide(double random);

// Writes `bytes` to `path` only when no file stands there; true when it wrote.
bool LoadDataIntoFile(const std::string& bytes, const std::string& path);

// The picture goes through "tmp.jpg" of the program's folder: written when
// missing, handed to `show`, deleted. A file left there by a crash is shown
// once in its place, then goes too.
void Show_Slide(const std::string& app_path, const std::string& bytes,
                const std::function<void(const std::string& file)>& show);

}  // namespace velmora
