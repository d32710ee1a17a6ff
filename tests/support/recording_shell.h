#pragma once
// A shell that records what the program asked of the desktop.

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/shell.h"

namespace velmora::testing {

class RecordingShell : public Shell {
public:
    void Beep(int frequency_hz, int milliseconds) override { beeps.push_back({frequency_hz, milliseconds}); }
    Status OpenUrl(const std::string& url) override { opened.push_back(url); return {}; }
    Status OpenFolder(const std::string& folder, const std::string&) override {
        opened.push_back(folder);
        return {};
    }
    Status MoveToTrash(const std::string& path) override { trashed.push_back(path); return {}; }
    bool AutostartExists(const std::string& name) override { return autostart.count(name) > 0; }
    std::optional<AutostartFault> AutostartWrite(bool enable, const std::string& name) override {
        if (autostart_fault) return autostart_fault;
        if (enable) autostart.insert(name);
        else autostart.erase(name);
        return std::nullopt;
    }
    void SetClipboardText(const std::string& text) override { clipboard = text; }
    bool AddTrayIcon(const std::string& tip) override {
        tray_shown = has_tray;
        tray_tip = tip;
        return has_tray;
    }
    void SetTrayTip(const std::string& tip) override { tray_tip = tip; }
    void RemoveTrayIcon() override { tray_shown = false; }
    void SetAlwaysOnTop(const std::string& form, bool on) override { on_top[form] = on; }

    struct BeepCall {
        int frequency, ms;
    };
    std::vector<BeepCall> beeps;
    std::vector<std::string> opened, trashed;
    std::set<std::string> autostart;
    std::string clipboard, tray_tip;
    bool tray_shown = false;
    bool has_tray = true;
    std::optional<AutostartFault> autostart_fault;
    std::map<std::string, bool> on_top;
};

}  // namespace velmora::testing
