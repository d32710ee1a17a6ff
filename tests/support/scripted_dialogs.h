#pragma once
// Dialogs that answer from a queue the test fills. A question the test did
// not expect fails the test.

#include <deque>
#include <string>
#include <vector>

#include "core/dialogs.h"

namespace velmora::testing {

class ScriptedDialogs : public Dialogs {
public:
    ~ScriptedDialogs() override;

    void ExpectMsgBox(MsgAnswer answer) { m_msg_answers.push_back(answer); }
    void ExpectInput(std::optional<std::string> answer) { m_inputs.push_back(std::move(answer)); }
    // The next file dialog or folder picker answers so; its options are kept.
    void ExpectFile(std::optional<std::string> answer) { m_files.push_back(std::move(answer)); }
    const std::vector<FileDialogOptions>& FileDialogs() const { return m_file_dialogs; }

    MsgAnswer MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon, const std::string& title) override;
    std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                        const std::string& default_text) override;
    std::optional<std::string> OpenFile(const FileDialogOptions& options) override;
    std::optional<std::string> SaveFile(const FileDialogOptions& options) override;
    std::optional<std::string> PickFolder(const std::string& title, const std::string& initial_dir) override;

    // Every text shown, in order, with its icon.
    struct Shown {
        std::string text;
        MsgIcon icon;
    };
    const std::vector<Shown>& Messages() const { return m_shown; }

private:
    std::deque<MsgAnswer> m_msg_answers;
    std::deque<std::optional<std::string>> m_inputs;
    std::deque<std::optional<std::string>> m_files;
    std::vector<FileDialogOptions> m_file_dialogs;
    std::vector<Shown> m_shown;
};

}  // namespace velmora::testing
