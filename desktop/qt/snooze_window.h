#pragma once
// The snooze and countdown window: draws Form5's controls and hands the
// user's clicks and typing back to them. It is shown and hidden as Form5 is.

#include <QWidget>

#include <functional>
#include <vector>

#include "base/signal.h"

class QCalendarWidget;

namespace velmora {

class CaptionControl;
struct Form5;

class SnoozeWindow : public QWidget {
    Q_OBJECT

public:
    explicit SnoozeWindow(Form5& form, QWidget* parent = nullptr);
    ~SnoozeWindow() override;

    // The user closes the window; the handler decides whether it hides.
    void SetCloseHandler(std::function<void()> handler) { m_on_close = std::move(handler); }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget* BuildDate();
    QWidget* BuildBoxes(int first, CaptionControl& frame);
    QWidget* BuildSelection();
    QWidget* BuildFile();
    void ApplyForm();
    void ApplyCalendar();

    Form5& m_form;
    QCalendarWidget* m_calendar = nullptr;
    std::function<void()> m_on_close;
    std::vector<Subscription> m_subscriptions;
};

}  // namespace velmora
