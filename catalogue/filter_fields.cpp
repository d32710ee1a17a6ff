#include "catalogue/filter_fields.h"

#include <array>

#include "base/char_span.h"
#include "base/text_format.h"
#include "core/app_context.h"

namespace velmora {

namespace {

struct Field {
    int width;
    const char* head;
};

// In the order of the row: title, class, time, size, bit rate, genre,
// artist, album, year, file name, folder.
constexpr std::array<Field, 11> kFields{{{45, "          ΤΙΤΛΟΣ - TITLE"},
                                         {20, "ΠΡΟΤΙΜΗΣΗ - FAVORITE"},
                                         {9, "HH:MM:SS"},
                                         {10, "ΜΕΓ - SIZE"},
                                         {7, "KBPS"},
                                         {15, "ΕΙΔΟΣ - GENRE"},
                                         {20, "ΚΑΛΛΙΤΕΧΝΗΣ - ARTIST"},
                                         {50, "        ΆΛΜΠΟΥΜ - ALBUM"},
                                         {4, "Ε:Y"},
                                         {60, "         ΑΡΧΕΙΟ - FILE"},
                                         {256, "         ΔΙΑΔΡΟΜΗ - PATH"}}};

template <class Value>
std::string Join(Value&& value) {
    std::string row;
    row.reserve(600);
    for (size_t f = 0; f < kFields.size(); ++f) {
        row += Pad_Field(value(f), kFields[f].width);
        row += '|';
    }
    return row;
}

std::string_view Class_Caption(const AppContext& ctx, int i) {
    const TrackTable& t = ctx.table;
    return ctx.form1.Combo4_0[0].List(i >= 0 && i <= t.Bound() ? t.Rating_Class[i] : -1);
}

}  // namespace

std::string Duration_Box_Text(Currency duration) {
    const int64_t seconds = duration.IntDiv(1);  // truncated, not rounded
    return "00:" + Format(int64_t{seconds % 3600 / 60}, "00");
}

std::string Size_Box_Text(Currency megabytes) {
    if (megabytes < Currency(int64_t{1024})) return Format(megabytes, "#0.00") + "Mb";
    return Format(megabytes / Currency(int64_t{1024}), "#0.00") + "Gb";
}

std::string Bitrate_Box_Text(int16_t bitrate) { return Trim(Str(int64_t{bitrate})) + "Kbps"; }

std::string Pad_Field(std::string_view text, int width) {
    const size_t cut = Char_Offset(text, width);
    std::string out(text.substr(0, cut));
    const int have = Char_Count(out);
    if (have < width) out.append(static_cast<size_t>(width - have), ' ');
    return out;
}

std::string Filter_Row(const AppContext& ctx, int i) {
    const TrackTable& t = ctx.table;
    const Form1& f = ctx.form1;
    const bool in_table = i >= 0 && i <= t.Bound();
    const std::string_view path = f.List2.List(i);
    const size_t slash = path.rfind('/');
    const std::string_view folder = slash == std::string_view::npos ? std::string_view() : path.substr(0, slash + 1);
    const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
    const std::string bitrate = std::string(f.List3_0[4].List(i)) + "Kbps";
    auto column = [&](const std::vector<std::string>& col) -> std::string_view {
        return in_table ? std::string_view(col[i]) : std::string_view();
    };
    return Join([&](size_t field) -> std::string_view {
        switch (field) {
            case 0: return column(t.Title);
            case 1: return Class_Caption(ctx, i);
            case 2: return f.List3_0[2].List(i);
            case 3: return f.List3_0[3].List(i);
            case 4: return bitrate;
            case 5: return column(t.Genre);
            case 6: return column(t.Artist);
            case 7: return column(t.Album);
            case 8: return column(t.Year);
            case 9: return name;
            default: return folder;
        }
    });
}

std::string Head_Title() {
    return "FILTER| TOTAL|" + Join([](size_t field) { return std::string_view(kFields[field].head); });
}

std::string Head_Rule() {
    std::string row = "~~~~~~|~~~~~~|";
    for (const Field& field : kFields) row += std::string(static_cast<size_t>(field.width), '~') + "|";
    return row;
}

std::string List_Row(int number, int track, std::string_view filter_text) {
    std::string row = Format(int64_t{number}, "000000") + "|" + Format(int64_t{track}, "000000") + "|";
    row += filter_text;
    return row;
}

int Row_Track_Number(std::string_view row) {
    const std::string number = Char_Mid(Char_Left(row, 20), 8, 6);
    if (!IsNumeric(number)) return -1;
    return static_cast<int>(Val(number));
}

std::string Filter_Column_Value(const AppContext& ctx, int k, int i) {
    const TrackTable& t = ctx.table;
    const Form1& f = ctx.form1;
    const bool in_table = i >= 0 && i <= t.Bound();
    switch (k) {
        case 0: return std::string(Class_Caption(ctx, i));
        case 1: return std::string(f.List3_0[2].List(i));
        case 2: return std::string(f.List3_0[3].List(i));
        case 3: return std::string(f.List3_0[4].List(i)) + "Kbps";
        case 4: return in_table ? t.Genre[i] : std::string();
        case 5: return in_table ? t.Album[i] : std::string();
        case 6: return in_table ? t.Artist[i] : std::string();
        case 7: return in_table ? t.Year[i] : std::string();
        case 8: return in_table ? t.Title[i] : std::string();
        default: return {};
    }
}

}  // namespace velmora
