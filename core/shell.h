#pragma once
// The shell port: what the program asks of the desktop around it.

#include <optional>
#include <string>

#include "base/result.h"

namespace velmora {

// Why the start-with-the-session entry could not be written or removed: the
// system's error number, whether it failed at the folder (opening) or at the
// entry itself (setting), and the system's description.
struct AutostartFault {
    int number = 0;
    bool opening = false;
    std::string description;
};

class Shell {
public:
    virtual ~Shell() = default;
    virtual void Beep(int frequency_hz, int milliseconds) = 0;
    virtual Status OpenUrl(const std::string& url) = 0;
    // Opens the folder in the file manager, with the file selected where the desktop allows.
    virtual Status OpenFolder(const std::string& folder, const std::string& select_file) = 0;
    virtual Status MoveToTrash(const std::string& path) = 0;
    // The entry that starts the program with the desktop session.
    virtual bool AutostartExists(const std::string& name) = 0;
    virtual std::optional<AutostartFault> AutostartWrite(bool enable, const std::string& name) = 0;
    virtual void SetClipboardText(const std::string& text) = 0;
    // False where the desktop has no tray to put it in.
    virtual bool AddTrayIcon(const std::string& tip) = 0;
    virtual void SetTrayTip(const std::string& tip) = 0;
    virtual void RemoveTrayIcon() = 0;
    virtual void SetAlwaysOnTop(const std::string& form_name, bool on) = 0;
};

}  // namespace velmora
