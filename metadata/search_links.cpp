#include "metadata/search_links.h"

#include <algorithm>
#include <cctype>

#include "core/app_context.h"

namespace velmora {

namespace {

const char* const kTypeLink =
    "Πληκτρολογήστε δεξιά, το σύνδεσμο όπου πρέπει να γίνει η αναζήτηση πολυμέσου, ...\n"
    "Type on the right, the link to be used for searching a multimedia file, so it can be then registered on "
    "the left, [the link must be full, including the command for searcing within the link. See the Youtube "
    "example & others].\n";
const char* const kNeedWww =
    "Πρέπει να πληκτρολογήσετε διεύθυνση διαδικτύου [www] - \nYou must input a valid internet location [www]";
const char* const kChooseLink =
    "Επιλέξτε μια διεύθυνση διαδικτύου [wwww]  από το πτυσόμενο μενού αριστερά - Select an internet locatio...";
const char* const kBuiltInStay = "Οι πρώτες 3 διευθύνσεις δε γίνεται να διαγραφούν - The first 3 www locations cannot be deleted";
const char* const kNotAvailable = "Μη διαθέσιμο - Not avaible";

constexpr int kBuiltInLinks = 3;

void Add_Link(AppContext& ctx) {
    Form1& f = ctx.form1;
    Dialogs& dialogs = ctx.ports.dialogs;
    const std::string text = f.Text2[3].Text();
    if (text.empty())
        dialogs.MsgBox(kTypeLink + std::string(f.Combo3.List(0)), MsgButtons::OK, MsgIcon::Information, "");
    if (text.find("www") == std::string::npos) {
        dialogs.MsgBox(kNeedWww, MsgButtons::OK, MsgIcon::None, "");
        return;
    }
    // The stored links grow by one unless the last of them is still empty.
    auto& links = ctx.settings.Search_Links;
    if (links.empty() || !links.back().empty()) links.emplace_back();
    links.back() = text;
    ctx.settings.Search_Count = static_cast<int16_t>(links.size() - 1);
    f.Combo3.SetListIndex(f.Combo3.AddItem(text));
}

void Remove_Link(AppContext& ctx) {
    Form1& f = ctx.form1;
    Dialogs& dialogs = ctx.ports.dialogs;
    const int index = f.Combo3.ListIndex();
    if (index < 0) {
        dialogs.MsgBox(kChooseLink, MsgButtons::OK, MsgIcon::None, "");
        return;
    }
    if (index < kBuiltInLinks) {
        dialogs.MsgBox(kBuiltInStay, MsgButtons::OK, MsgIcon::None, "");
        return;
    }
    const std::string link(f.Combo3.List(index));
    if (dialogs.MsgBox("Θέλετε να αφαιρέσετε τη διεύθυνση: " + link + " : would you like to delete it",
                       MsgButtons::YesNo, MsgIcon::Question, "") != MsgAnswer::Yes)
        return;
    f.Combo3.RemoveItem(index);
    // The gap closes in the stored links; one empty entry stays when none is left.
    auto& links = ctx.settings.Search_Links;
    if (auto it = std::find(links.begin(), links.end(), link); it != links.end()) links.erase(it);
    if (links.empty()) links.emplace_back();
    ctx.settings.Search_Count = static_cast<int16_t>(links.size() - 1);
}

}  // namespace

void Command13_Click(AppContext& ctx) {
    if (ctx.form1.Option2[0].Value() != 0) Add_Link(ctx);
    else if (ctx.form1.Option2[1].Value() != 0) Remove_Link(ctx);
}

std::string Url_Query_Text(const std::string& text) {
    static const char* const kHex = "0123456789ABCDEF";
    std::string out;
    for (unsigned char c : text) {
        if (std::isalnum(c) || c == '-' || c == '_' || c == '.' || c == '~') {
            out += static_cast<char>(c);
        } else {
            out += '%';
            out += kHex[c >> 4];
            out += kHex[c & 15];
        }
    }
    return out;
}

void mnusystemtraycopypaste_Click(AppContext& ctx) {
    Form1& f = ctx.form1;
    std::string text;
    if (f.Text1[0].Text().empty() && f.Text1[1].Text().empty()) {
        const int row = f.List2.ListIndex();
        if (row >= 0 && row < f.List2.ListCount()) {
            const std::string path(f.List2.List(row));
            text = path.substr(path.rfind('/') + 1);
        }
    } else {
        text = f.Text1[0].Text() + " - " + f.Text1[1].Text();
    }
    Shell& shell = ctx.ports.shell;
    shell.SetClipboardText("");
    if (text.empty() || text == " - ") text = kNotAvailable;
    shell.SetClipboardText(text);
    // Row 0 is where the search goes, whichever row is on show.
    if (f.Check1.Value() != 0) (void)shell.OpenUrl(std::string(f.Combo3.List(0)) + Url_Query_Text(text));
}

}  // namespace velmora
