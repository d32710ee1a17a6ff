#pragma once
// The dialogs and the shell of the terminal player. A question is asked on
// the terminal when standard input is one; otherwise, or when the user just
// presses Enter, the box's first button answers, as a box left alone would.
// Every text goes to standard error, so that standard output stays clean.

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

#include "core/dialogs.h"
#include "core/shell.h"

namespace velmora::cli {

class TerminalDialogs : public Dialogs {
public:
    // in is read only when interactive; out receives every text.
    TerminalDialogs(std::istream& in, std::ostream& out, bool interactive);

    // Called with true before a question is asked and false after, so that
    // whoever holds the terminal in raw mode can hand it back for a typed line.
    void SetTerminalHandover(std::function<void(bool)> handover) { m_handover = std::move(handover); }

    MsgAnswer MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon, const std::string& title) override;
    std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                        const std::string& default_text) override;
    std::optional<std::string> OpenFile(const FileDialogOptions& options) override;
    std::optional<std::string> SaveFile(const FileDialogOptions& options) override;
    std::optional<std::string> PickFolder(const std::string& title, const std::string& initial_dir) override;

private:
    // One typed line; nullopt at the end of input or when not interactive.
    std::optional<std::string> ReadLine();
    std::optional<std::string> AskPath(const std::string& title, const std::string& initial);

    std::istream& m_in;
    std::ostream& m_out;
    bool m_interactive;
    std::function<void(bool)> m_handover;
};

// The shell of a terminal: the bell for a beep, the tray's tip kept for the
// status line, and no desktop to open things in or to trash through.
class TerminalShell : public Shell {
public:
    explicit TerminalShell(std::ostream& out) : m_out(out) {}

    void Beep(int frequency_hz, int milliseconds) override;
    Status OpenUrl(const std::string& url) override;
    Status OpenFolder(const std::string& folder, const std::string& select_file) override;
    Status MoveToTrash(const std::string& path) override;
    bool AutostartExists(const std::string&) override { return false; }
    std::optional<AutostartFault> AutostartWrite(bool enable, const std::string& name) override;
    void SetClipboardText(const std::string&) override {}
    bool AddTrayIcon(const std::string& tip) override {
        m_tip = tip;
        return false;
    }
    void SetTrayTip(const std::string& tip) override { m_tip = tip; }
    void RemoveTrayIcon() override {}
    void SetAlwaysOnTop(const std::string&, bool) override {}

    const std::string& TrayTip() const { return m_tip; }

private:
    std::ostream& m_out;
    std::string m_tip;
};

}  // namespace velmora::cli
