#pragma once
// The rating area of the main window: the rating button with the big star
// of the present class, one row per class with its head, its star and its
// totals, the whole Collection's totals, and the progress bar of long work.
// It draws Form1's controls and raises the button's Click; the logic decides
// which class is marked and which pictures show.

#include <QWidget>

#include <array>
#include <functional>
#include <vector>

#include "base/signal.h"
#include "desktop/qt/redraw_pacer.h"

class QLabel;
class QPushButton;

namespace velmora {

struct Form1;
class CaptionControl;
class Control;
class Shape;

// A bar filled to a percentage, its text over it.
class ProgressStrip : public QWidget {
public:
    explicit ProgressStrip(QWidget* parent = nullptr);
    void SetProgress(int percent, const QString& text);
    void SetTextShown(bool on);
    int Percent() const { return m_percent; }
    QString Text() const { return m_text_shown ? m_text : QString(); }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_percent = 0;
    QString m_text;
    bool m_text_shown = true;
};

class RatingView : public QWidget {
    Q_OBJECT

public:
    static constexpr int kStarSize = 22;
    static constexpr int kBigStarSize = 44;

    explicit RatingView(Form1& form, QWidget* parent = nullptr);

    QPushButton& RateButton() const { return *m_rate; }
    QLabel& BigStar() const { return *m_big_star; }
    // By slot, 1 Unmarked to 6 S.
    QLabel& Star(int slot) const { return *m_stars.at(slot - 1); }
    QLabel& Head(int slot) const { return *m_heads.at(slot - 1); }
    // 0 the whole Collection, then by slot.
    QLabel& Totals(int index) const { return *m_totals.at(index); }
    ProgressStrip& Progress() const { return *m_progress; }

private:
    QLabel* StarLabel(CaptionControl& label);
    QLabel* ClassLabel(CaptionControl& label, const QString& head_text);

    // Redraws a widget from its control on the loop's turn after a change: a
    // rating shown restyles every row of the area, once per Track of a walk.
    void Follow(Control& control, std::function<void()> apply, bool now = true);
    void ApplyChanged();
    void ApplyRateButton();
    void ApplyProgress();

    Form1& m_form;
    QPushButton* m_rate = nullptr;
    QLabel* m_big_star = nullptr;
    std::array<QLabel*, 6> m_stars{};
    std::array<QLabel*, 6> m_heads{};
    std::array<QLabel*, 7> m_totals{};
    ProgressStrip* m_progress = nullptr;
    std::vector<Subscription> m_subscriptions;
    std::vector<std::function<void()>> m_applies;
    std::vector<bool> m_dirty;
    RedrawPacer m_pacer{this, [this] { ApplyChanged(); }, 0};
};

}  // namespace velmora
