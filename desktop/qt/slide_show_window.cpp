#include "desktop/qt/slide_show_window.h"

#include <array>

#include <QCloseEvent>
#include <QFile>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTimer>
#include <QVBoxLayout>

#include "core/forms.h"
#include "desktop/about.h"
#include "desktop/qt/control_look.h"
#include "desktop/slide_show.h"

namespace velmora {

namespace {

constexpr int kSlideMs = 3000;
constexpr int kPictureWidth = 480, kPictureHeight = 320;
// The line's colour follows the picture's effect.
constexpr std::array<const char*, kSlideEffects> kEffectColours{"#ffd166", "#ffffff", "#06d6a0",
                                                                "#118ab2", "#ef476f", "#f4a261"};

}  // namespace

SlideShowWindow::SlideShowWindow(Form3& form, std::function<std::string()> app_path, std::function<void()> open_link,
                                 QWidget* parent)
    : QWidget(parent, Qt::Window), m_form(form), m_app_path(std::move(app_path)), m_open_link(std::move(open_link)) {
    setObjectName(QStringLiteral("Form3"));
    setWindowTitle(QStringLiteral("Velmora II - Προγραμματισμός - Programming"));
    auto* column = new QVBoxLayout(this);
    m_picture_box = new QLabel(this);
    m_picture_box->setObjectName(QStringLiteral("Picture1"));
    m_picture_box->setFixedSize(kPictureWidth, kPictureHeight);
    m_picture_box->setScaledContents(true);
    column->addWidget(m_picture_box);
    // The line moves over a strip of its own below the picture.
    auto* strip = new QWidget(this);
    strip->setFixedHeight(24);
    m_label = new QLabel(QStringLiteral("Velmora II - ") + Q(kWebPage), strip);
    m_label->setObjectName(QStringLiteral("Label1"));
    m_label->setCursor(Qt::PointingHandCursor);
    m_label->adjustSize();
    m_label->installEventFilter(this);
    column->addWidget(strip);
    auto* close = new QPushButton(QStringLiteral("Κλείσιμο - Close"), this);
    close->setObjectName(QStringLiteral("Command1"));
    connect(close, &QPushButton::clicked, this, [this] { m_form.Hide(); });
    column->addWidget(close, 0, Qt::AlignRight);

    m_timer = new QTimer(this);
    m_timer->setInterval(kSlideMs);
    connect(m_timer, &QTimer::timeout, this, &SlideShowWindow::Tick);
    m_subscriptions.push_back(form.Changed.connect([this](Change) { Apply(); }));
    Apply();
}

void SlideShowWindow::Apply() {
    if (m_form.Visible() == isVisible()) return;
    if (!m_form.Visible()) {
        m_timer->stop();
        hide();
        return;
    }
    ChooseSlide();
    m_timer->start();
    show();
    raise();
}

void SlideShowWindow::ChooseSlide() {
    const Slide_Choice choice = Choose_Slide(QRandomGenerator::global()->generateDouble());
    m_picture = choice.picture;
    QFile resource(QStringLiteral(":/pictures/%1.jpg").arg(choice.picture));
    // A picture that can't be read leaves the box empty.
    const QByteArray bytes = resource.open(QIODevice::ReadOnly) ? resource.readAll() : QByteArray();
    QPixmap shown;
    Show_Slide(m_app_path(), bytes.toStdString(),
               [&shown](const std::string& file) { shown.load(QString::fromStdString(file)); });
    m_picture_box->setPixmap(shown);
    m_label->setStyleSheet(QStringLiteral("color: %1; font-weight: bold;").arg(kEffectColours[choice.effect]));
    m_label->adjustSize();  // bold text is wider
}

void SlideShowWindow::Tick() {
    QWidget* strip = m_label->parentWidget();
    m_label_x += 40;
    if (m_label_x > strip->width()) m_label_x = -m_label->width();
    m_label->move(m_label_x, 2);
    ChooseSlide();
}

void SlideShowWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    m_form.Hide();
}

bool SlideShowWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_label && event->type() == QEvent::MouseButtonPress && m_open_link) m_open_link();
    return QWidget::eventFilter(watched, event);
}

}  // namespace velmora
