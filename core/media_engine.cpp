#include "core/media_engine.h"

#include <cstdio>

namespace velmora {

std::string Position_Text(double seconds) {
    const long total = seconds > 0 ? static_cast<long>(seconds) : 0;
    char text[32];
    if (total >= 3600)
        std::snprintf(text, sizeof text, "%ld:%02ld:%02ld", total / 3600, total / 60 % 60, total % 60);
    else
        std::snprintf(text, sizeof text, "%02ld:%02ld", total / 60, total % 60);
    return text;
}

}  // namespace velmora
