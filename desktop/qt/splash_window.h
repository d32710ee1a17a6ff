#pragma once
// The start screen (frmSplash): the program's picture and name, without a
// frame; any key or a click closes it.

#include <QWidget>

#include <vector>

#include "base/signal.h"

namespace velmora {

struct FrmSplash;

class SplashWindow : public QWidget {
public:
    explicit SplashWindow(FrmSplash& form, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void Apply();

    FrmSplash& m_form;
    QPixmap m_logo;
    std::vector<Subscription> m_subscriptions;
};

}  // namespace velmora
