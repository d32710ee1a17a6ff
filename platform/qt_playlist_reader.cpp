#include "platform/qt_playlist_reader.h"

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>
#include <QStringList>
#include <cmath>
#include <cstring>

namespace velmora {

namespace {

std::string Utf8(const QString& s) { return s.toStdString(); }

// ASX names its elements and attributes in any case; SMIL in lower case.
bool Is(QStringView name, const char* wanted) { return name.compare(QLatin1String(wanted), Qt::CaseInsensitive) == 0; }

QString Attribute(const QXmlStreamAttributes& attributes, const char* wanted) {
    for (const QXmlStreamAttribute& a : attributes)
        if (Is(a.name(), wanted)) return a.value().toString();
    return {};
}

}  // namespace

double Clock_Seconds(std::string_view value) {
    QString text = QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size())).trimmed();
    double scale = 1;
    for (const auto& [unit, factor] : {std::pair{"min", 60.0}, {"ms", 0.001}, {"h", 3600.0}, {"s", 1.0}}) {
        if (text.endsWith(QLatin1String(unit))) {
            text.chop(static_cast<qsizetype>(std::strlen(unit)));
            scale = factor;
            break;
        }
    }
    double seconds = 0;
    const QStringList parts = text.split(u':');
    if (parts.size() > 3 || (parts.size() > 1 && scale != 1)) return 0;
    for (const QString& part : parts) {
        bool ok = false;
        const double v = part.toDouble(&ok);
        if (!ok || v < 0 || !std::isfinite(v)) return 0;
        seconds = seconds * 60 + v;
    }
    seconds *= scale;
    return std::isfinite(seconds) ? seconds : 0;
}

bool QtPlaylistReader::Read(std::string_view bytes, PlaylistContents& out) {
    QXmlStreamReader xml(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
    bool known_root = false;
    bool asx = false;
    PlaylistEntry* entry = nullptr;  // the entry whose children are read
    int depth = 0, entry_depth = -1;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::EndElement) {
            if (depth == entry_depth) entry = nullptr, entry_depth = -1;
            --depth;
            continue;
        }
        if (token != QXmlStreamReader::StartElement) continue;
        ++depth;
        const QStringView name = xml.name();
        if (depth == 1) {
            asx = Is(name, "asx");
            known_root = asx || Is(name, "smil");
            if (!known_root) return false;
            continue;
        }
        const QXmlStreamAttributes attributes = xml.attributes();
        if (Is(name, "title")) {
            // readElementText leaves the reader at the end of the element.
            const std::string text = Utf8(xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed());
            --depth;
            if (entry != nullptr)
                entry->info.emplace_back("Title", text);
            else if (out.title.empty())
                out.title = text;
        } else if (!asx && (Is(name, "media") || Is(name, "audio") || Is(name, "video") || Is(name, "ref"))) {
            PlaylistEntry& e = out.entries.emplace_back();
            e.source = Utf8(Attribute(attributes, "src"));
            e.duration = Clock_Seconds(Utf8(Attribute(attributes, "dur")));
            entry = &e, entry_depth = depth;
        } else if (asx && Is(name, "entry")) {
            out.entries.emplace_back();
            entry = &out.entries.back(), entry_depth = depth;
        } else if (asx && Is(name, "ref") && entry != nullptr && entry->source.empty()) {
            entry->source = Utf8(Attribute(attributes, "href"));
        } else if (asx && Is(name, "duration") && entry != nullptr) {
            entry->duration = Clock_Seconds(Utf8(Attribute(attributes, "value")));
        } else if (asx && Is(name, "author") && entry != nullptr) {
            entry->info.emplace_back("Artist", Utf8(xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed()));
            --depth;
        } else if (Is(name, "param") && entry != nullptr) {
            const QString key = Attribute(attributes, "name");
            if (!key.isEmpty()) entry->info.emplace_back(Utf8(key), Utf8(Attribute(attributes, "value")));
        }
    }
    // An ASX entry with no reference names nothing.
    std::erase_if(out.entries, [](const PlaylistEntry& e) { return e.source.empty(); });
    return known_root && !xml.hasError();
}

}  // namespace velmora
