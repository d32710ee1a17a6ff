#include "desktop/qt/newest_first_text.h"

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QString>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace velmora {

namespace {

QString Q(std::string_view s) { return QString::fromUtf8(s.data(), static_cast<qsizetype>(s.size())); }

// Where the shown text starts again inside the new one, when the new text is
// lines put before the shown text, less lines cut from its end; npos if not.
size_t Old_Text_At(const std::string& text, const std::string& shown) {
    if (shown.empty()) return text.size();
    const size_t first_line = shown.find('\n');
    const std::string_view head(shown.data(), first_line == std::string::npos ? shown.size() : first_line + 1);
    for (size_t at = text.find(head); at != std::string::npos; at = text.find(head, at + 1)) {
        const size_t kept = text.size() - at;
        if (kept <= shown.size() && text.compare(at, kept, shown, 0, kept) == 0) return at;
    }
    return std::string::npos;
}

}  // namespace

NewestFirstText::NewestFirstText(QPlainTextEdit& box) : m_box(box) {
    // Nobody undoes a log; kept, the history would hold every line ever
    // cut from its end, and the document would never drop the text behind it.
    m_box.setUndoRedoEnabled(false);
}

void NewestFirstText::Show(const std::string& text) {
    if (text == m_shown) return;
    const size_t at = Old_Text_At(text, m_shown);
    if (at == std::string::npos) {
        m_box.setPlainText(Q(text));
    } else {
        QTextCursor cursor(m_box.document());
        cursor.beginEditBlock();
        const size_t kept = text.size() - at;
        if (kept < m_shown.size()) {
            const int cut = static_cast<int>(Q(std::string_view(m_shown).substr(kept)).size());
            // By position, not by moving: a move lays out every line it passes.
            const int end = m_box.document()->characterCount() - 1;
            cursor.setPosition(std::max(0, end - cut));
            cursor.setPosition(end, QTextCursor::KeepAnchor);
            cursor.removeSelectedText();
        }
        if (at > 0) {
            cursor.setPosition(0);
            cursor.insertText(Q(std::string_view(text).substr(0, at)));
        }
        cursor.endEditBlock();
    }
    m_shown = text;
    // The newest line is the first; keep it in sight.
    m_box.verticalScrollBar()->setValue(0);
}

}  // namespace velmora
