#include "desktop/qt/media_player_adaptors.h"

namespace velmora {

// The audio and video types of the media table, as the desktop entry lists them.
QStringList MediaPlayerRoot::SupportedMimeTypes() const {
    return {QStringLiteral("audio/mpeg"),       QStringLiteral("audio/x-wav"),    QStringLiteral("audio/basic"),
            QStringLiteral("audio/x-aiff"),     QStringLiteral("audio/midi"),     QStringLiteral("audio/x-ms-wma"),
            QStringLiteral("audio/x-ms-wax"),   QStringLiteral("video/x-ms-wmv"), QStringLiteral("video/mpeg"),
            QStringLiteral("video/x-ms-asf"),   QStringLiteral("video/x-msvideo")};
}

}  // namespace velmora
