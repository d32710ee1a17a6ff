#pragma once
// Brings a text box that shows a log, newest line first, up to date without
// setting its whole text: a long log laid out again on every change costs
// far more than the lines that changed. The log grows at its top and loses
// whole lines at its bottom; anything else is set whole.

#include <string>

class QPlainTextEdit;

namespace velmora {

class NewestFirstText {
public:
    explicit NewestFirstText(QPlainTextEdit& box);
    void Show(const std::string& text);

private:
    QPlainTextEdit& m_box;
    std::string m_shown;  // what the box holds, as the model's text
};

}  // namespace velmora
