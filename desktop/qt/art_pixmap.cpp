#include "desktop/qt/art_pixmap.h"

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QImageReader>

#include "desktop/qt/control_look.h"
#include "metadata/album_art.h"

namespace velmora {

namespace {

// The decoder fills what a damaged JPEG lacks with grey and calls it read;
// a whole one ends with its end marker, perhaps followed by padding.
bool WholeJpeg(const QByteArray& bytes) {
    if (!bytes.startsWith("\xFF\xD8")) return true;  // not a JPEG: the reader judges it alone
    qsizetype end = bytes.size();
    while (end > 0 && (bytes[end - 1] == '\0' || bytes[end - 1] == '\n' || bytes[end - 1] == '\r')) --end;
    return end >= 4 && static_cast<unsigned char>(bytes[end - 2]) == 0xFF &&
           static_cast<unsigned char>(bytes[end - 1]) == 0xD9;
}

}  // namespace

QPixmap ArtPixmap(const std::string& key) {
    if (key.empty()) return {};
    QByteArray bytes;
    const std::string embedded = kEmbeddedPicture;
    if (key.compare(0, embedded.size(), embedded) == 0) {
        bytes = QByteArray(key.data() + embedded.size(), static_cast<qsizetype>(key.size() - embedded.size()));
    } else {
        QFile file(Q(key));
        if (!file.open(QIODevice::ReadOnly)) return {};
        bytes = file.readAll();
    }
    if (!WholeJpeg(bytes)) return {};
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    QImage image;
    if (!reader.read(&image) || image.isNull()) return {};
    return QPixmap::fromImage(image);
}

}  // namespace velmora
