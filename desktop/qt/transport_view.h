#pragma once
// The transport area of the main window: the buttons that steer playing,
// the position and volume sliders, the time boxes, the step count, and the
// lines that tell what plays and how much of the Collection has been heard.
// It draws Form1's controls and raises their signals; the handlers decide.

#include <QWidget>

#include <vector>

#include "base/signal.h"

class QLabel;
class QLineEdit;
class QSlider;
class QToolButton;

namespace velmora {

struct Form1;
class CaptionControl;
class Control;
class TextBox;

// The path of what plays, its folders in grey and elided from the left so
// that the nearest stay, and the part the logic marks (the file's name) bold
// and always whole where the width allows.
class PathLabel : public QWidget {
public:
    explicit PathLabel(QWidget* parent = nullptr);
    // start and length count characters, as the logic's text box does.
    void SetPath(const QString& text, int start, int length);
    const QString& Text() const { return m_text; }
    QString Marked() const { return m_text.mid(m_start, m_length); }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_text;
    int m_start = 0;   // in UTF-16 units
    int m_length = 0;
};

class TransportView : public QWidget {
    Q_OBJECT

public:
    explicit TransportView(Form1& form, QWidget* parent = nullptr);

    QToolButton& PlayButton() const { return *m_play; }
    QSlider& Position() const { return *m_position; }
    QSlider& Volume() const { return *m_volume; }
    QLineEdit& Steps() const { return *m_steps; }

private:
    QToolButton* Button(CaptionControl& button, const char* picture, const QString& tip);
    QLineEdit* TimeBox(TextBox& box, int chars, const QString& tip);

    void ApplyPlayButton();
    void ApplyPath();
    void ApplySteps();

    Form1& m_form;
    QToolButton* m_play = nullptr;
    QSlider* m_position = nullptr;
    QSlider* m_volume = nullptr;
    QLineEdit* m_steps = nullptr;
    PathLabel* m_path = nullptr;
    bool m_syncing = false;  // the widgets are being set from the controls
    std::vector<Subscription> m_subscriptions;
};

}  // namespace velmora
