#include "platform/qt_shell.h"

#include <QApplication>
#include <QClipboard>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QStandardPaths>
#include <QSystemTrayIcon>
#include <QUrl>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace velmora {

namespace {

QString Q(const std::string& text) { return QString::fromStdString(text); }

Status Fail(const QString& text) { return Error{text.toStdString()}; }

// One argument of an Exec line, quoted as the desktop entry rules ask.
QString ExecArgument(const QString& arg) {
    QString quoted;
    for (QChar c : arg) {
        if (c == '"' || c == '`' || c == '$' || c == '\\') quoted += '\\';
        quoted += c;
    }
    // The value as a whole is an escaped string, and '%' starts a field code.
    quoted.replace('\\', QLatin1String("\\\\"));
    quoted.replace('%', QLatin1String("%%"));
    return '"' + quoted + '"';
}

QString EntryPath(const std::string& name) { return AutostartFolder() + '/' + Q(name) + ".desktop"; }

// The padding of a fixed tip record means nothing to a tooltip.
QString TipText(const std::string& tip) {
    QString text = Q(tip);
    while (!text.isEmpty() && (text.back().isSpace() || text.back() == QChar(0))) text.chop(1);
    return text;
}

}  // namespace

QString AutostartFolder() {
    QString config = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (config.isEmpty() || !QDir::isAbsolutePath(config)) config = QDir::homePath() + "/.config";
    return config + "/autostart";
}

std::string AutostartEntryText(const std::string& name, const std::string& executable) {
    QString text = QStringLiteral("[Desktop Entry]\n"
                                  "Type=Application\n");
    text += "Name=" + Q(name) + '\n';
    text += "Exec=" + ExecArgument(Q(executable)) + '\n';
    text += QStringLiteral("Terminal=false\n"
                           "X-GNOME-Autostart-enabled=true\n");
    return text.toStdString();
}

QtShell::QtShell(std::string executable) : m_executable(std::move(executable)) {}

QtShell::~QtShell() = default;

void QtShell::Beep(int, int) {
    // The desktop bell has no pitch or length of its own.
    QApplication::beep();
}

Status QtShell::OpenUrl(const std::string& url) {
    // An absolute path, or a file that exists in the current folder, opens as
    // a file; anything else as a link, "www.example.org" included.
    if (!QDesktopServices::openUrl(QUrl::fromUserInput(Q(url), QDir::currentPath())))
        return Fail("the desktop could not open " + Q(url));
    return {};
}

Status QtShell::OpenFolder(const std::string& folder, const std::string& select_file) {
    if (!QFileInfo(Q(folder)).isDir()) return Fail(Q(folder) + " is not a folder");
    const QUrl folder_url = QUrl::fromLocalFile(Q(folder));
    auto open_folder = [folder_url] { QDesktopServices::openUrl(folder_url); };
    if (select_file.empty()) {
        if (!QDesktopServices::openUrl(folder_url)) return Fail("the desktop could not open " + Q(folder));
        return {};
    }
    const QString file = QDir::isAbsolutePath(Q(select_file)) ? Q(select_file) : Q(folder) + '/' + Q(select_file);
    // dbus-send separates array items by commas, so a comma in the path must
    // stay percent-encoded.
    QString item = QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded);
    item.replace(',', QLatin1String("%2C"));
    // The file manager that shows a file selected answers on the session bus;
    // where none does, dbus-send fails and the folder opens plainly.
    auto* process = new QProcess;
    QObject::connect(process, &QProcess::finished, process,
                     [process, open_folder](int code, QProcess::ExitStatus status) {
                         if (code != 0 || status != QProcess::NormalExit) open_folder();
                         process->deleteLater();
                     });
    QObject::connect(process, &QProcess::errorOccurred, process, [process, open_folder](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart) return;  // finished() follows the other errors
        open_folder();
        process->deleteLater();
    });
    process->start(QStringLiteral("dbus-send"),
                   {QStringLiteral("--session"), QStringLiteral("--print-reply"),
                    QStringLiteral("--reply-timeout=3000"), QStringLiteral("--dest=org.freedesktop.FileManager1"),
                    QStringLiteral("--type=method_call"), QStringLiteral("/org/freedesktop/FileManager1"),
                    QStringLiteral("org.freedesktop.FileManager1.ShowItems"), "array:string:" + item,
                    QStringLiteral("string:")});
    return {};
}

Status Move_To_Trash(const std::string& path) {
    const QString file = Q(path);
    if (!QFileInfo::exists(file)) return Fail(file + " does not exist");
    // Where the home trash cannot be made, this Qt moves the file into
    // files/ under the current folder instead of refusing; the folder the
    // home trash lives in must therefore exist first.
    QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    if (!QFile::moveToTrash(file)) return Fail("could not move " + file + " to the trash");
    return {};
}

Status QtShell::MoveToTrash(const std::string& path) { return Move_To_Trash(path); }

bool QtShell::AutostartExists(const std::string& name) { return QFileInfo::exists(EntryPath(name)); }

std::optional<AutostartFault> QtShell::AutostartWrite(bool enable, const std::string& name) {
    namespace fs = std::filesystem;
    const fs::path path = EntryPath(name).toStdString();
    auto fault = [](int number, bool opening) {
        return AutostartFault{number, opening, std::generic_category().message(number)};
    };
    std::error_code error;
    if (!enable) {
        // Already gone is what was asked for.
        if (!fs::remove(path, error) && error) return fault(error.value(), false);
        return std::nullopt;
    }
    fs::create_directories(path.parent_path(), error);
    if (error) return fault(error.value(), true);
    if (m_executable.empty()) m_executable = QCoreApplication::applicationFilePath().toStdString();
    // Written beside the entry and renamed over it, so a session that starts
    // meanwhile reads the old entry or the new one, never half of one.
    const std::string text = AutostartEntryText(name, m_executable);
    const fs::path temporary = path.string() + ".new";
    std::FILE* file = std::fopen(temporary.c_str(), "wb");
    if (file == nullptr) return fault(errno, false);
    const bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    const int write_error = errno;
    if (std::fclose(file) != 0 || !written) {
        const int number = written ? errno : write_error;
        fs::remove(temporary, error);
        return fault(number, false);
    }
    fs::rename(temporary, path, error);
    if (error) {
        const int number = error.value();
        fs::remove(temporary, error);
        return fault(number, false);
    }
    return std::nullopt;
}

void QtShell::SetClipboardText(const std::string& text) { QGuiApplication::clipboard()->setText(Q(text)); }

QSystemTrayIcon& QtShell::TrayIcon() {
    if (!m_tray) m_tray = std::make_unique<QSystemTrayIcon>();
    return *m_tray;
}

bool QtShell::AddTrayIcon(const std::string& tip) {
    // Shown even where no tray answers yet: a panel that starts after the
    // program (as at the session's start) still takes the icon when it comes.
    QSystemTrayIcon& tray = TrayIcon();
    if (tray.icon().isNull()) tray.setIcon(QGuiApplication::windowIcon());
    tray.setToolTip(TipText(tip));
    tray.show();
    return QSystemTrayIcon::isSystemTrayAvailable();
}

void QtShell::SetTrayTip(const std::string& tip) { TrayIcon().setToolTip(TipText(tip)); }

void QtShell::RemoveTrayIcon() {
    if (m_tray) m_tray->hide();
}

void QtShell::SetAlwaysOnTop(const std::string& form_name, bool on) {
    m_top_state[form_name] = on;
    auto it = m_on_top.find(form_name);
    if (it != m_on_top.end()) it->second(on);
}

void QtShell::RegisterOnTop(const std::string& form_name, OnTopFn fn) {
    if (!fn) {
        m_on_top.erase(form_name);
        return;
    }
    m_on_top[form_name] = std::move(fn);
    // A window that comes up after it was asked to stay on top does so at once.
    auto it = m_top_state.find(form_name);
    if (it != m_top_state.end() && it->second) m_on_top[form_name](true);
}

}  // namespace velmora
