#pragma once
// The slide show of the About menu (Form3): the program's own pictures, one
// after another, a line that moves across and opens the web page when
// clicked, and a button that closes the window.

#include <QWidget>

#include <functional>
#include <string>
#include <vector>

#include "base/signal.h"

class QLabel;
class QTimer;

namespace velmora {

struct Form3;

class SlideShowWindow : public QWidget {
public:
    // `app_path` is the program's folder, where each picture passes through
    // a file; `open_link` opens the web page.
    SlideShowWindow(Form3& form, std::function<std::string()> app_path, std::function<void()> open_link,
                    QWidget* parent = nullptr);

    // The picture shown now, by its number; 0 before the first.
    int Picture() const { return m_picture; }
    // The next picture and the line's next step, as each tick brings them.
    void Tick();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Apply();
    void ChooseSlide();

    Form3& m_form;
    std::function<std::string()> m_app_path;
    std::function<void()> m_open_link;
    QLabel* m_picture_box = nullptr;
    QLabel* m_label = nullptr;
    QTimer* m_timer = nullptr;
    int m_picture = 0;
    int m_label_x = 0;
    std::vector<Subscription> m_subscriptions;
};

}  // namespace velmora
