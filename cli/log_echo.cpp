#include "cli/log_echo.h"

#include <algorithm>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

#include "core/forms.h"

namespace velmora::cli {

namespace {

std::string Without_Final_Newlines(std::string text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

}  // namespace

Subscription Echo_Log(Form1& f, std::ostream& out) {
    auto shown = std::make_shared<std::string>(f.Text2[0].Text());
    TextBox& log_box = f.Text2[0];
    return log_box.Changed.connect([&log_box, &out, shown](Change kind) {
        if (kind != Change::Contents) return;
        const std::string& log = log_box.Text();
        // New lines come in front of the old; the oldest may have been cut
        // from the end, so the old text is found by its beginning. A box
        // emptied for a new run prints nothing.
        const std::string_view old_head = std::string_view(*shown).substr(0, std::min<size_t>(shown->size(), 256));
        const size_t at = old_head.empty() ? std::string::npos : log.find(old_head);
        const std::string entry = Without_Final_Newlines(at == std::string::npos ? log : log.substr(0, at));
        *shown = log;
        if (!entry.empty()) out << entry << "\n";
    });
}

}  // namespace velmora::cli
