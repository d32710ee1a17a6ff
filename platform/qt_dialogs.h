#pragma once
// The dialogs port over Qt's standard dialogs. Every box is modal to the
// window that is active when it is asked for.

#include <QString>

#include "core/dialogs.h"

namespace velmora {

// "Collections (*.qel)|*.qel|All (*.*)|*.*" -> "Collections (*.qel);;All (*)".
// Qt reads the patterns from the parentheses of each entry, separated by
// spaces, so the parentheses are rebuilt from the pattern half; "*.*" becomes
// "*" because here a file need not have an extension.
QString ToQtFilter(const std::string& filter);

class QtDialogs : public Dialogs {
public:
    MsgAnswer MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                     const std::string& title) override;
    std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                        const std::string& default_text) override;
    std::optional<std::string> OpenFile(const FileDialogOptions& options) override;
    std::optional<std::string> SaveFile(const FileDialogOptions& options) override;
    std::optional<std::string> PickFolder(const std::string& title, const std::string& initial_dir) override;
};

}  // namespace velmora
