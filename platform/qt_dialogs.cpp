#include "platform/qt_dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QStringList>

#include <utility>
#include <vector>

namespace velmora {

namespace {

QString Q(const std::string& text) { return QString::fromStdString(text); }

QWidget* ActiveParent() { return QApplication::activeWindow(); }

struct ButtonAnswer {
    QMessageBox::StandardButton button;
    MsgAnswer answer;
};

std::vector<ButtonAnswer> ButtonsOf(MsgButtons buttons) {
    using B = QMessageBox;
    switch (buttons) {
        case MsgButtons::OK: return {{B::Ok, MsgAnswer::OK}};
        case MsgButtons::OKCancel: return {{B::Ok, MsgAnswer::OK}, {B::Cancel, MsgAnswer::Cancel}};
        case MsgButtons::AbortRetryIgnore:
            return {{B::Abort, MsgAnswer::Abort}, {B::Retry, MsgAnswer::Retry}, {B::Ignore, MsgAnswer::Ignore}};
        case MsgButtons::YesNoCancel:
            return {{B::Yes, MsgAnswer::Yes}, {B::No, MsgAnswer::No}, {B::Cancel, MsgAnswer::Cancel}};
        case MsgButtons::YesNo: return {{B::Yes, MsgAnswer::Yes}, {B::No, MsgAnswer::No}};
        case MsgButtons::RetryCancel: return {{B::Retry, MsgAnswer::Retry}, {B::Cancel, MsgAnswer::Cancel}};
    }
    return {{B::Ok, MsgAnswer::OK}};
}

QMessageBox::Icon IconOf(MsgIcon icon) {
    switch (icon) {
        case MsgIcon::None: return QMessageBox::NoIcon;
        case MsgIcon::Critical: return QMessageBox::Critical;
        case MsgIcon::Question: return QMessageBox::Question;
        case MsgIcon::Exclamation: return QMessageBox::Warning;
        case MsgIcon::Information: return QMessageBox::Information;
    }
    return QMessageBox::NoIcon;
}

// The path the file dialog opens on: the folder, with the proposed name in it.
QString StartPath(const FileDialogOptions& options) {
    if (options.file_name.empty()) return Q(options.initial_dir);
    if (options.initial_dir.empty()) return Q(options.file_name);
    QString dir = Q(options.initial_dir);
    if (!dir.endsWith('/')) dir += '/';
    return dir + Q(options.file_name);
}

std::optional<std::string> Chosen(const QString& path) {
    if (path.isEmpty()) return std::nullopt;
    return path.toStdString();
}

}  // namespace

QString ToQtFilter(const std::string& filter) {
    const QStringList parts = Q(filter).split('|');
    QStringList entries;
    static const QRegularExpression kTrailingGroup(QStringLiteral("\\s*\\([^()]*\\)\\s*$"));
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns = parts[i + 1].split(QRegularExpression(QStringLiteral("[;\\s]+")), Qt::SkipEmptyParts);
        for (QString& p : patterns)
            if (p == QLatin1String("*.*")) p = QStringLiteral("*");
        if (patterns.isEmpty()) patterns << QStringLiteral("*");
        QString name = parts[i];
        name.remove(kTrailingGroup);
        name = name.trimmed();
        entries << (name.isEmpty() ? QString() : name + ' ') + '(' + patterns.join(' ') + ')';
    }
    return entries.join(QStringLiteral(";;"));
}

MsgAnswer QtDialogs::MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon, const std::string& title) {
    QMessageBox box(IconOf(icon), Q(title), Q(text), QMessageBox::NoButton, ActiveParent());
    const std::vector<ButtonAnswer> table = ButtonsOf(buttons);
    for (const ButtonAnswer& b : table) box.addButton(b.button);
    // As with the classic box, the first button is the one Enter presses.
    box.setDefaultButton(table.front().button);
    box.exec();
    const QMessageBox::StandardButton pressed = box.standardButton(box.clickedButton());
    for (const ButtonAnswer& b : table)
        if (b.button == pressed) return b.answer;
    // Closed without a button: the answer a Cancel (or the only button) gives.
    for (const ButtonAnswer& b : table)
        if (b.answer == MsgAnswer::Cancel) return b.answer;
    return table.back().answer;
}

std::optional<std::string> QtDialogs::InputBox(const std::string& prompt, const std::string& title,
                                               const std::string& default_text) {
    bool ok = false;
    const QString text =
        QInputDialog::getText(ActiveParent(), Q(title), Q(prompt), QLineEdit::Normal, Q(default_text), &ok);
    if (!ok) return std::nullopt;
    return text.toStdString();
}

std::optional<std::string> QtDialogs::OpenFile(const FileDialogOptions& options) {
    return Chosen(QFileDialog::getOpenFileName(ActiveParent(), Q(options.title), StartPath(options),
                                               ToQtFilter(options.filter)));
}

std::optional<std::string> QtDialogs::SaveFile(const FileDialogOptions& options) {
    return Chosen(QFileDialog::getSaveFileName(ActiveParent(), Q(options.title), StartPath(options),
                                               ToQtFilter(options.filter)));
}

std::optional<std::string> QtDialogs::PickFolder(const std::string& title, const std::string& initial_dir) {
    return Chosen(QFileDialog::getExistingDirectory(ActiveParent(), Q(title), Q(initial_dir)));
}

}  // namespace velmora
