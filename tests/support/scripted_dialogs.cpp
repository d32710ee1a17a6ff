#include "support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace velmora::testing {

ScriptedDialogs::~ScriptedDialogs() {
    EXPECT_TRUE(m_msg_answers.empty()) << m_msg_answers.size() << " expected message boxes never came";
    EXPECT_TRUE(m_inputs.empty()) << m_inputs.size() << " expected input boxes never came";
    EXPECT_TRUE(m_files.empty()) << m_files.size() << " expected file dialogs never came";
}

MsgAnswer ScriptedDialogs::MsgBox(const std::string& text, MsgButtons, MsgIcon icon, const std::string&) {
    m_shown.push_back({text, icon});
    if (m_msg_answers.empty()) {
        ADD_FAILURE() << "unexpected message box: " << text;
        return MsgAnswer::Cancel;
    }
    MsgAnswer a = m_msg_answers.front();
    m_msg_answers.pop_front();
    return a;
}

std::optional<std::string> ScriptedDialogs::InputBox(const std::string& prompt, const std::string&,
                                                     const std::string&) {
    m_shown.push_back({prompt, MsgIcon::None});
    if (m_inputs.empty()) {
        ADD_FAILURE() << "unexpected input box: " << prompt;
        return std::nullopt;
    }
    auto a = m_inputs.front();
    m_inputs.pop_front();
    return a;
}

std::optional<std::string> ScriptedDialogs::OpenFile(const FileDialogOptions& o) {
    m_file_dialogs.push_back(o);
    if (m_files.empty()) {
        ADD_FAILURE() << "unexpected file dialog: " << o.title;
        return std::nullopt;
    }
    auto a = m_files.front();
    m_files.pop_front();
    return a;
}
std::optional<std::string> ScriptedDialogs::SaveFile(const FileDialogOptions& o) { return OpenFile(o); }
std::optional<std::string> ScriptedDialogs::PickFolder(const std::string& title, const std::string& initial_dir) {
    FileDialogOptions o;
    o.title = title;
    o.initial_dir = initial_dir;
    return OpenFile(o);
}

}  // namespace velmora::testing
