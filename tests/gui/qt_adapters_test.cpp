// The dialogs and shell adapters against real Qt, offscreen, with the
// desktop's folders moved into a temporary directory.

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QUrl>

#include <gtest/gtest.h>

#include <cerrno>
#include <functional>

#include "platform/qt_dialogs.h"
#include "platform/qt_shell.h"

namespace velmora {
namespace {

// Sets an environment variable for the life of the object.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const QByteArray& value)
        : m_name(name), m_had(qEnvironmentVariableIsSet(name)), m_old(qgetenv(name)) {
        qputenv(name, value);
    }
    ~ScopedEnv() { m_had ? qputenv(m_name, m_old) : qunsetenv(m_name); }

private:
    const char* m_name;
    bool m_had;
    QByteArray m_old;
};

// Acts on the modal dialog as soon as it is up.
void WhenModal(std::function<void(QWidget&)> act) {
    QTimer::singleShot(0, [act] {
        QWidget* modal = QApplication::activeModalWidget();
        ASSERT_NE(modal, nullptr);
        act(*modal);
    });
}

TEST(QtFilter, BecomesQtsFormWithPatternsItCanRead) {
    const struct {
        const char* in;
        const char* out;
    } cases[] = {
        {"Collections (*.qel)|*.qel|All (*.*)|*.*", "Collections (*.qel);;All (*)"},
        {"Playlists (*.wpl; *.m3u)|*.wpl;*.m3u", "Playlists (*.wpl *.m3u)"},
        {"Pictures|*.jpg", "Pictures (*.jpg)"},
        {"", ""},
    };
    for (const auto& c : cases) EXPECT_EQ(ToQtFilter(c.in), QString::fromUtf8(c.out)) << c.in;
}

TEST(QtDialogsTest, MessageBoxAnswersTheButtonPressed) {
    const struct {
        MsgButtons buttons;
        QMessageBox::StandardButtons shown;
        QMessageBox::StandardButton press;
        MsgAnswer answer;
    } cases[] = {
        {MsgButtons::OK, QMessageBox::Ok, QMessageBox::Ok, MsgAnswer::OK},
        {MsgButtons::OKCancel, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel, MsgAnswer::Cancel},
        {MsgButtons::AbortRetryIgnore, QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore,
         QMessageBox::Ignore, MsgAnswer::Ignore},
        {MsgButtons::YesNoCancel, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::No,
         MsgAnswer::No},
        {MsgButtons::YesNo, QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes, MsgAnswer::Yes},
        {MsgButtons::RetryCancel, QMessageBox::Retry | QMessageBox::Cancel, QMessageBox::Retry, MsgAnswer::Retry},
    };
    QtDialogs dialogs;
    for (const auto& c : cases) {
        QMessageBox::StandardButtons shown;
        QString text;
        WhenModal([&](QWidget& modal) {
            auto& box = static_cast<QMessageBox&>(modal);
            shown = box.standardButtons();
            text = box.text();
            box.button(c.press)->click();
        });
        EXPECT_EQ(dialogs.MsgBox("Συνέχεια; - Continue?", c.buttons, MsgIcon::Question, "Velmora II"), c.answer);
        EXPECT_EQ(std::tuple(shown, text), std::tuple(c.shown, QStringLiteral("Συνέχεια; - Continue?")));
    }
}

TEST(QtDialogsTest, InputBoxGivesTheTextOrNothingOnCancel) {
    QtDialogs dialogs;
    WhenModal([](QWidget& modal) {
        auto& box = static_cast<QInputDialog&>(modal);
        EXPECT_EQ(box.textValue(), QStringLiteral("10"));
        box.setTextValue(QStringLiteral("25"));
        box.accept();
    });
    EXPECT_EQ(dialogs.InputBox("Δευτερόλεπτα - Seconds", "Velmora II", "10"), std::optional<std::string>("25"));
    WhenModal([](QWidget& modal) { static_cast<QInputDialog&>(modal).reject(); });
    EXPECT_EQ(dialogs.InputBox("Δευτερόλεπτα - Seconds", "Velmora II", "10"), std::nullopt);
}

TEST(QtShellTest, AutostartEntryIsWrittenFoundAndRemovedItsFolderFallsBackAndFailuresAreReported) {
    QTemporaryDir home;
    ScopedEnv home_env("HOME", home.path().toUtf8());
    {
        ScopedEnv config("XDG_CONFIG_HOME", "relative/config");
        EXPECT_EQ(AutostartFolder(), home.path() + "/.config/autostart");
    }
    ScopedEnv config("XDG_CONFIG_HOME", (home.path() + "/config").toUtf8());
    QtShell shell("/opt/My $App/vel\"mora%");
    EXPECT_FALSE(shell.AutostartExists("velmora"));
    ASSERT_FALSE(shell.AutostartWrite(true, "velmora"));
    ASSERT_TRUE(shell.AutostartExists("velmora"));
    QFile entry(home.path() + "/config/autostart/velmora.desktop");
    ASSERT_TRUE(entry.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(entry.readAll());
    EXPECT_TRUE(text.startsWith("[Desktop Entry]\n")) << text.toStdString();
    EXPECT_TRUE(text.contains("\nExec=\"/opt/My \\\\$App/vel\\\\\"mora%%\"\n")) << text.toStdString();

    ASSERT_FALSE(shell.AutostartWrite(false, "velmora"));
    EXPECT_FALSE(shell.AutostartExists("velmora"));
    EXPECT_FALSE(shell.AutostartWrite(false, "velmora")) << "removing what is not there is no fault";

    // A file where the folder should be.
    ASSERT_TRUE(QFile(home.path() + "/blocked").open(QIODevice::WriteOnly));
    ScopedEnv blocked("XDG_CONFIG_HOME", (home.path() + "/blocked").toUtf8());
    const auto fault = shell.AutostartWrite(true, "velmora");
    ASSERT_TRUE(fault);
    EXPECT_EQ(std::tuple(fault->opening, fault->number, fault->description.empty()), std::tuple(true, ENOTDIR, false));
}

TEST(QtShellTest, TrashTakesTheFileAndReportsAMissingOne) {
    QTemporaryDir root;
    // A data folder that does not exist yet, as for a new user.
    ScopedEnv data("XDG_DATA_HOME", (root.path() + "/data").toUtf8());
    ScopedEnv home("HOME", root.path().toUtf8());
    const QString path = root.path() + "/Τραγούδι.mp3";
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("ID3") == 3);
    file.close();

    QtShell shell;
    EXPECT_TRUE(shell.MoveToTrash(path.toStdString()).ok() && !QFile::exists(path));
    const QStringList trashed = QDir(root.path() + "/data/Trash/files").entryList(QDir::Files);
    ASSERT_EQ(trashed.size(), 1);
    // The file manager restores from the info file: the original path,
    // percent-encoded, and when it was deleted.
    QFile info(root.path() + "/data/Trash/info/" + trashed[0] + ".trashinfo");
    ASSERT_TRUE(info.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(info.readAll()).split('\n', Qt::SkipEmptyParts);
    ASSERT_GE(lines.size(), 3);
    EXPECT_EQ(lines[0], "[Trash Info]");
    EXPECT_EQ(QUrl::fromPercentEncoding(lines.filter("Path=").value(0).mid(5).toUtf8()), path);
    EXPECT_TRUE(QDateTime::fromString(lines.filter("DeletionDate=").value(0).mid(13), Qt::ISODate).isValid());
    EXPECT_FALSE(shell.MoveToTrash(path.toStdString()).ok());
}

TEST(QtShellTest, WindowsComeOnTopWhenTheyRegister) {
    QtShell shell;
    std::vector<bool> calls;
    shell.SetAlwaysOnTop("Form4", true);
    shell.RegisterOnTop("Form4", [&](bool on) { calls.push_back(on); });
    shell.SetAlwaysOnTop("Form4", false);
    shell.RegisterOnTop("Form4", {});
    shell.SetAlwaysOnTop("Form4", true);
    EXPECT_EQ(calls, std::vector<bool>({true, false}));
}

}  // namespace
}  // namespace velmora
