#include "support/scripted_dialogs.h"

#include <gtest/gtest.h>

namespace velmora::testing {

namespace {

// The next answer the test queued; a failure, and `none`, when it queued none.
template <class T>
T Next(std::deque<T>& answers, T none, const char* what, const std::string& text) {
    if (answers.empty()) {
        ADD_FAILURE() << "unexpected " << what << ": " << text;
        return none;
    }
    T answer = std::move(answers.front());
    answers.pop_front();
    return answer;
}

}  // namespace

ScriptedDialogs::~ScriptedDialogs() {
    EXPECT_TRUE(m_msg_answers.empty()) << m_msg_answers.size() << " expected message boxes never came";
    EXPECT_TRUE(m_inputs.empty()) << m_inputs.size() << " expected input boxes never came";
    EXPECT_TRUE(m_files.empty()) << m_files.size() << " expected file dialogs never came";
}

MsgAnswer ScriptedDialogs::MsgBox(const std::string& text, MsgButtons, MsgIcon icon, const std::string&) {
    m_shown.push_back({text, icon});
    return Next(m_msg_answers, MsgAnswer::Cancel, "message box", text);
}

std::optional<std::string> ScriptedDialogs::InputBox(const std::string& prompt, const std::string&,
                                                     const std::string&) {
    m_shown.push_back({prompt, MsgIcon::None});
    return Next(m_inputs, std::optional<std::string>(), "input box", prompt);
}

std::optional<std::string> ScriptedDialogs::OpenFile(const FileDialogOptions& o) {
    m_file_dialogs.push_back(o);
    return Next(m_files, std::optional<std::string>(), "file dialog", o.title);
}
std::optional<std::string> ScriptedDialogs::SaveFile(const FileDialogOptions& o) { return OpenFile(o); }
std::optional<std::string> ScriptedDialogs::PickFolder(const std::string& title, const std::string& initial_dir) {
    FileDialogOptions o;
    o.title = title;
    o.initial_dir = initial_dir;
    return OpenFile(o);
}

}  // namespace velmora::testing
