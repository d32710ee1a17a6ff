#pragma once
// The dialogs port: message and input boxes, file dialogs, the folder picker.

#include <optional>
#include <string>

namespace velmora {

enum class MsgButtons { OK, OKCancel, AbortRetryIgnore, YesNoCancel, YesNo, RetryCancel };
enum class MsgIcon { None, Critical, Question, Exclamation, Information };
// The numbers are those the program's logic compares against.
enum class MsgAnswer { OK = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

struct FileDialogOptions {
    std::string title;
    std::string filter;       // "Collections (*.qel)|*.qel|All (*.*)|*.*"
    std::string initial_dir;
    std::string file_name;
};

class Dialogs {
public:
    virtual ~Dialogs() = default;
    virtual MsgAnswer MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                             const std::string& title) = 0;
    // nullopt when the user cancels.
    virtual std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                                const std::string& default_text) = 0;
    virtual std::optional<std::string> OpenFile(const FileDialogOptions& options) = 0;
    virtual std::optional<std::string> SaveFile(const FileDialogOptions& options) = 0;
    virtual std::optional<std::string> PickFolder(const std::string& title,
                                                  const std::string& initial_dir) = 0;
};

}  // namespace velmora
