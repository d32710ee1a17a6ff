#pragma once
// The small second player window (Form4): what plays, its times, the
// position and volume, and a transport whose every press the logic passes
// to the main window's.

#include <QWidget>

#include <vector>

#include "base/signal.h"

class QLabel;
class QLineEdit;
class QToolButton;

namespace velmora {

struct Form4;
class CaptionControl;
class TextBox;

class SecondPlayerWindow : public QWidget {
public:
    explicit SecondPlayerWindow(Form4& form, QWidget* parent = nullptr);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QToolButton* Button(CaptionControl& button, const char* picture, const QString& tip);
    QLineEdit* TimeBox(TextBox& box, const QString& tip);
    void Apply();

    Form4& m_form;
    std::vector<Subscription> m_subscriptions;
};

}  // namespace velmora
