#pragma once
// The shell port over the freedesktop desktop: links and folders through
// QDesktopServices, the trash, an XDG autostart entry, the clipboard, the
// tray icon and keeping windows above the others.

#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <unordered_map>

#include "core/shell.h"

class QSystemTrayIcon;

namespace velmora {

// Where the desktop looks for autostart entries: $XDG_CONFIG_HOME/autostart,
// or ~/.config/autostart when that is unset or not absolute.
QString AutostartFolder();
// The text of an entry that starts the given executable.
std::string AutostartEntryText(const std::string& name, const std::string& executable);

// The user's freedesktop trash, with the info file a file manager restores
// from; the terminal companion trashes through it too.
Status Move_To_Trash(const std::string& path);

class QtShell : public Shell {
public:
    // The executable the autostart entry starts; the running one by default.
    explicit QtShell(std::string executable = {});
    ~QtShell() override;

    void Beep(int frequency_hz, int milliseconds) override;
    Status OpenUrl(const std::string& url) override;
    Status OpenFolder(const std::string& folder, const std::string& select_file) override;
    Status MoveToTrash(const std::string& path) override;
    bool AutostartExists(const std::string& name) override;
    std::optional<AutostartFault> AutostartWrite(bool enable, const std::string& name) override;
    void SetClipboardText(const std::string& text) override;
    bool AddTrayIcon(const std::string& tip) override;
    void SetTrayTip(const std::string& tip) override;
    void RemoveTrayIcon() override;
    void SetAlwaysOnTop(const std::string& form_name, bool on) override;

    // The icon itself, created hidden, so the view can give it its menu and
    // picture and hear its clicks.
    QSystemTrayIcon& TrayIcon();
    // Each window view registers how it is kept on top, by its form's name,
    // and registers an empty function when it goes away.
    using OnTopFn = std::function<void(bool on)>;
    void RegisterOnTop(const std::string& form_name, OnTopFn fn);

private:
    std::string m_executable;
    std::unique_ptr<QSystemTrayIcon> m_tray;
    std::unordered_map<std::string, OnTopFn> m_on_top;
    std::unordered_map<std::string, bool> m_top_state;
};

}  // namespace velmora
