#include "cli/terminal_dialogs.h"

#include <array>
#include <cerrno>
#include <cctype>
#include <istream>
#include <ostream>
#include <utility>
#include <vector>

namespace velmora::cli {

namespace {

struct Choice {
    char key;
    const char* word;
    MsgAnswer answer;
};

// The buttons of a box in their order; the first is the one a box left alone gives.
std::vector<Choice> ChoicesOf(MsgButtons buttons) {
    switch (buttons) {
        case MsgButtons::OK: return {{'o', "OK", MsgAnswer::OK}};
        case MsgButtons::OKCancel: return {{'o', "OK", MsgAnswer::OK}, {'c', "Cancel", MsgAnswer::Cancel}};
        case MsgButtons::AbortRetryIgnore:
            return {{'a', "Abort", MsgAnswer::Abort}, {'r', "Retry", MsgAnswer::Retry}, {'i', "Ignore", MsgAnswer::Ignore}};
        case MsgButtons::YesNoCancel:
            return {{'y', "Yes", MsgAnswer::Yes}, {'n', "No", MsgAnswer::No}, {'c', "Cancel", MsgAnswer::Cancel}};
        case MsgButtons::YesNo: return {{'y', "Yes", MsgAnswer::Yes}, {'n', "No", MsgAnswer::No}};
        case MsgButtons::RetryCancel: return {{'r', "Retry", MsgAnswer::Retry}, {'c', "Cancel", MsgAnswer::Cancel}};
    }
    return {{'o', "OK", MsgAnswer::OK}};
}

const char* IconWord(MsgIcon icon) {
    switch (icon) {
        case MsgIcon::Critical: return "error";
        case MsgIcon::Question: return "question";
        case MsgIcon::Exclamation: return "warning";
        case MsgIcon::Information: return "note";
        case MsgIcon::None: break;
    }
    return "message";
}

Status NotHere(const char* what) { return Error{std::string(what) + ": not available in the terminal"}; }

}  // namespace

TerminalDialogs::TerminalDialogs(std::istream& in, std::ostream& out, bool interactive)
    : m_in(in), m_out(out), m_interactive(interactive) {}

std::optional<std::string> TerminalDialogs::ReadLine() {
    if (!m_interactive) return std::nullopt;
    if (m_handover) m_handover(true);
    std::string line;
    const bool got = static_cast<bool>(std::getline(m_in, line));
    if (m_handover) m_handover(false);
    if (!got) return std::nullopt;
    return line;
}

MsgAnswer TerminalDialogs::MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                                  const std::string& title) {
    const std::vector<Choice> choices = ChoicesOf(buttons);
    // A fresh line: the status line may stand where the cursor is.
    m_out << "\n[" << IconWord(icon) << "] ";
    if (!title.empty()) m_out << title << ": ";
    m_out << text << "\n";
    if (choices.size() == 1 || !m_interactive) {
        m_out.flush();
        return choices.front().answer;
    }
    for (;;) {
        for (size_t i = 0; i < choices.size(); ++i)
            m_out << (i ? " / " : "") << '[' << choices[i].key << ']' << (choices[i].word + 1);
        m_out << " (Enter: " << choices.front().word << ")? " << std::flush;
        const std::optional<std::string> line = ReadLine();
        if (!line || line->empty()) return choices.front().answer;
        const char key = static_cast<char>(std::tolower(static_cast<unsigned char>(line->front())));
        for (const Choice& choice : choices)
            if (choice.key == key) return choice.answer;
    }
}

std::optional<std::string> TerminalDialogs::InputBox(const std::string& prompt, const std::string& title,
                                                     const std::string& default_text) {
    m_out << "\n" << (title.empty() ? "" : title + ": ") << prompt;
    if (!m_interactive) {
        m_out << "\n" << std::flush;
        return default_text;
    }
    m_out << " [" << default_text << "] " << std::flush;
    const std::optional<std::string> line = ReadLine();
    if (!line) return std::nullopt;  // the end of input cancels
    return line->empty() ? default_text : *line;
}

std::optional<std::string> TerminalDialogs::AskPath(const std::string& title, const std::string& initial) {
    m_out << "\n" << title << (initial.empty() ? "" : " (" + initial + ")");
    if (!m_interactive) {
        m_out << ": no answer without a terminal\n" << std::flush;
        return std::nullopt;
    }
    m_out << "\npath, or Enter to cancel: " << std::flush;
    const std::optional<std::string> line = ReadLine();
    if (!line || line->empty()) return std::nullopt;
    return *line;
}

std::optional<std::string> TerminalDialogs::OpenFile(const FileDialogOptions& options) {
    return AskPath(options.title.empty() ? "Open" : options.title, options.initial_dir);
}

std::optional<std::string> TerminalDialogs::SaveFile(const FileDialogOptions& options) {
    return AskPath(options.title.empty() ? "Save as" : options.title, options.initial_dir);
}

std::optional<std::string> TerminalDialogs::PickFolder(const std::string& title, const std::string& initial_dir) {
    return AskPath(title.empty() ? "Folder" : title, initial_dir);
}

void TerminalShell::Beep(int, int) { m_out << '\a' << std::flush; }

Status TerminalShell::OpenUrl(const std::string&) { return NotHere("opening a link"); }

Status TerminalShell::OpenFolder(const std::string&, const std::string&) { return NotHere("opening a folder"); }

Status TerminalShell::MoveToTrash(const std::string&) { return NotHere("the trash"); }

std::optional<AutostartFault> TerminalShell::AutostartWrite(bool, const std::string&) {
    return AutostartFault{ENOTSUP, true, NotHere("the autostart entry").error()};
}

}  // namespace velmora::cli
