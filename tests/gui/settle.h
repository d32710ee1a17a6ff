#pragma once
// Runs Qt's loop until a redraw asked for just now has been drawn: views
// pace their redraws, so two passes of the loop are not always enough.

#include <QApplication>
#include <QElapsedTimer>
#include <QThread>

#include "desktop/qt/redraw_pacer.h"

namespace velmora::testing {

inline void Settle() {
    QElapsedTimer waited;
    waited.start();
    do {
        QApplication::processEvents();
        QThread::msleep(2);
    } while (waited.elapsed() <= RedrawPacer::kSpacingMs + 10);
    QApplication::processEvents();
}

}  // namespace velmora::testing
