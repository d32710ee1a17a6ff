// Writes the program's icon into a hicolor theme tree under the folder it is
// given: scalable/apps/velmora.svg and NxN/apps/velmora.png. Run by the build.

#include <QDir>
#include <QFile>
#include <QGuiApplication>

#include <cstdio>

#include "desktop/qt/app_icon.h"

int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: write_app_icons FOLDER\n");
        return 2;
    }
    const QString root = QString::fromLocal8Bit(argv[1]) + "/hicolor/";
    const QString scalable = root + "scalable/apps";
    QFile svg(scalable + "/velmora.svg");
    if (!QDir().mkpath(scalable) || !svg.open(QIODevice::WriteOnly) ||
        svg.write(velmora::AppIconSvg().toUtf8()) < 0) {
        std::fprintf(stderr, "write_app_icons: cannot write %s\n", qPrintable(svg.fileName()));
        return 1;
    }
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString folder = root + QString("%1x%1/apps").arg(size);
        const QString file = folder + "/velmora.png";
        if (!QDir().mkpath(folder) || !velmora::AppIconImage(size).save(file, "PNG")) {
            std::fprintf(stderr, "write_app_icons: cannot write %s\n", qPrintable(file));
            return 1;
        }
    }
    return 0;
}
