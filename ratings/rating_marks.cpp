#include "ratings/rating_marks.h"

#include <algorithm>
#include <array>

#include "catalogue/filter_building.h"
#include "catalogue/track_list_totals.h"
#include "base/text_format.h"
#include "core/app_context.h"
#include "core/running_report.h"
#include "ratings/rating_calculation.h"

namespace velmora {

namespace {

const char* const kRatingWord = "Προτίμηση Rating";

// The menu rows of each rating, by the rating's number.
constexpr std::array<const char*, kClassCount> kTrayMark = {"TrayFavorUnclass", "TrayFavorX", "TrayFavorC",
                                                            "TrayFavorB",       "TrayFavorA", "TrayFavorS"};
constexpr std::array<const char*, kClassCount> kPlayRow = {"MnuMorePlayAll", "MnuMorePlayX", "MnuMorePlayC",
                                                           "MnuMorePlayB",   "MnuMorePlayA", "MnuMorePlayS"};
constexpr std::array<const char*, kClassCount> kSelectRow = {"MnuMoreClassAll", "MnuMoreClassX", "MnuMoreClassC",
                                                             "MnuMoreClassB",   "MnuMoreClassA", "MnuMoreClassS"};
constexpr std::array<const char*, kClassCount> kTrayPlayRow = {"TrayFavorPlayUnClass", "TrayFavorPlayX",
                                                               "TrayFavorPlayC",       "TrayFavorPlayB",
                                                               "TrayFavorPlayA",       "TrayFavorPlayS"};

bool Is_Rating(int rating) { return rating >= 0 && rating < kClassCount; }

int Colour_Scheme(const AppContext& ctx) {
    const int index = ctx.settings.Star_Colors_Index;
    return index >= 0 && index <= 3 ? index : 0;  // 65535 (-1 as a word) and strays read as gold
}

void Leave_Class(TrackTable& t, int track, int old_rating) {
    if (!Is_Rating(old_rating)) return;
    t.Class_Count[old_rating] -= Currency(1);
    t.Class_Size[old_rating] -= t.File_Size[track];
    t.Class_Duration[old_rating] -= t.Duration[track];
}

struct Report_Words {
    std::string greek, english, word;
};

void Unrate_Track(AppContext& ctx, int track, Report_Words& words) {
    TrackTable& t = ctx.table;
    t.Class_Count[0] += Currency(1);
    t.Class_Size[0] += t.File_Size[track];
    t.Class_Duration[0] += t.Duration[track];
    t.Rating_Class[track] = 0;
    words = {"Αφαιρέθηκε από τα", " has been deleted from", "-"};
    ctx.ratings.Stats_Dirty = true;
    DeikseAgapi(ctx, 0, track);
}

// The caption a class's menu rows take. Two rows of the Play menu carry their
// own spacing and letter, and keep it.
std::string Play_Row_Caption(int rating) {
    if (rating == 5) return "Κλάσεως Υ΄ - Class S";
    if (rating == 1) return " Κλάσεως Χ - Class X";
    return Class_Caption(rating);
}

}  // namespace

std::string Class_Caption(int rating) {
    switch (rating) {
        case 1: return "Κλάσεως Χ - Class X";
        case 2: return "Κλάσεως Γ΄- Class C";
        case 3: return "Κλάσεως Β΄- Class B";
        case 4: return "Κλάσεως Α΄- Class A";
        case 5: return "Κλάσεως Υ΄- Class S";
        default: return "Όλα - All";
    }
}

std::string Star_Picture(int scheme, int number) {
    return "star_" + std::to_string(scheme) + "_" + std::to_string(number);
}

void Command8_Click(AppContext& ctx) {
    TrackTable& t = ctx.table;
    RatingsState& r = ctx.ratings;
    if (ctx.form1.List2.ListCount() == 0) return;
    const int track = t.Current_Track;
    if (track < 0 || track > t.Bound()) return;

    int rating = 0;
    if (ctx.settings.Auto_Rating != 0) {
        rating = r.Repeat_Rating;
    } else if (r.Rating_Code < 9) {
        // A plain press walks Unmarked, X, C, B, A, S and round again.
        rating = t.Rating_Class[track] + 1;
        if (rating > 5) rating = 0;
        r.Repeat_Rating = static_cast<int16_t>(rating);
    } else if (r.Rating_Code <= 14) {
        rating = r.Rating_Code - 9;
    } else {
        rating = r.Rating_Code - 16;
    }
    r.Rating_Code = static_cast<int16_t>(rating);

    Rate_Track(ctx, track, t.Rating_Class[track], rating);
    Update_Filter_Row(ctx, track, 0);
    if (t.Any_Class_Play != 0) Class_Play_Totals(ctx);
    Etiketes_Synol_Songs(ctx);
}

void Rate_Track(AppContext& ctx, int track, int old_rating, int rating) {
    TrackTable& t = ctx.table;
    if (track < 0 || track > t.Bound() || !Is_Rating(rating)) return;
    Report_Words words;
    const int stored = t.Rating_Class[track];
    if (rating == 0) {
        if (stored != 0) {
            Leave_Class(t, track, old_rating);
            Unrate_Track(ctx, track, words);
        }
    } else if (rating == stored) {
        // Naming the class the Track is in takes the mark away.
        Leave_Class(t, track, rating);
        Unrate_Track(ctx, track, words);
        words.word = Class_Letter(rating);
    } else {
        t.Rating_Class[track] = static_cast<int16_t>(rating);
        words = {"Προστέθηκε στα", " has been added to", Class_Letter(rating)};
        t.Class_Count[rating] += Currency(1);
        t.Class_Size[rating] += t.File_Size[track];
        t.Class_Duration[rating] += t.Duration[track];
        Leave_Class(t, track, old_rating);
    }
    // The row goes with the next incremental save, or the mark is lost.
    t.Saved[track] = false;
    // The totals moved by their own rules above; the next recount counts all rows.
    ctx.ratings.Last_Count.valid = false;
    t.Collection_Saved = 0;

    ctx.ratings.Stats_Dirty = true;
    DeikseAgapi(ctx, t.Rating_Class[track], track);
    ctx.form1.List3_0[1].SetListIndex(track);

    // The file's name alone, as every line about a file names it.
    const ListBox& paths = ctx.form1.List2;
    std::string name;
    if (track >= 0 && track < paths.ListCount()) File_Name_Of(std::string(paths.List(track)), name);
    Log_Line(ctx, "-> " + words.greek + " Αγαπημένα -* " + words.word + " *- το : " + "\n" + "\"" + name + "\"" +
                      " " + "\n" + words.english + " Favorites -* " + words.word + " *-");
}

void DeikseAgapi(AppContext& ctx, int rating, int track) {
    Form1& f = ctx.form1;
    const RatingsState& r = ctx.ratings;

    // No class marked in the tray, the button plain.
    for (const char* name : kTrayMark) f.Tray(name).SetChecked(false);
    f.Command8.SetStyle(1);

    // Fresh class labels and stars, none of them lit.
    Update_Class_Labels(ctx);
    Draw_Rating_Stars(ctx, 0, rating);
    for (auto& label : f.Label9) label.SetStyle(0);
    for (auto& label : f.Label10) label.SetStyle(0);
    for (auto& label : f.Label21) label.SetStyle(0);

    // The Track's class: its letter in the list, its tray mark, its labels
    // lit and its time on the button.
    std::string caption = kRatingWord;
    if (f.List2.ListCount() > 0 && Is_Rating(rating)) {
        ListBox& letters = f.List3_0[1];
        if (track >= 0 && track < letters.ListCount()) letters.SetList(track, Class_Letter(rating));
        f.Tray(kTrayMark[rating]).SetChecked(true);
        if (rating != 0) {
            caption += " " + Class_Letter(rating) + r.Class_Duration_Text[rating];
        } else {
            caption += " " + r.Class_Duration_Text[0];
            f.Command8.SetStyle(0);
        }
        f.Label9[rating + 1].SetStyle(1);
        f.Label10[rating].SetStyle(1);
        f.Label21[rating].SetStyle(2);
    }

    f.Tray("MnuSystemTray_Favor").SetCaption(kRatingWord);
    f.Command8.SetCaption(caption);
    Draw_Rating_Stars(ctx, -1, rating);
}

void Update_Class_Labels(AppContext& ctx) {
    Form1& f = ctx.form1;
    RatingsState& r = ctx.ratings;
    if (r.Stats_Dirty) {
        Class_Stats_Texts(ctx);
        Class_Duration_Texts(ctx);
        r.Stats_Dirty = false;
    }
    f.Label9[0].SetCaption(r.Total_Stats_Text + " - [" + ctx.playback.Sum_Text + "]");
    for (int k = 0; k < kClassCount; ++k) {
        f.Label9[k + 1].SetCaption(r.Class_Stats_Text[k] + r.Class_Duration_Text[k]);
        f.Menus(kPlayRow[k]).SetCaption(Play_Row_Caption(k));
        f.Menus(kSelectRow[k]).SetCaption(Class_Caption(k));
        f.Tray(kTrayPlayRow[k]).SetCaption(Class_Caption(k));
        f.Tray(kTrayMark[k]).SetCaption(Class_Caption(k) + r.Class_Stats_Text[k]);
    }
}

void Draw_Rating_Stars(AppContext& ctx, int mode, int rating) {
    Form1& f = ctx.form1;
    Form4& g = ctx.form4;
    const int scheme = Colour_Scheme(ctx);

    if (mode == 0 && Is_Rating(rating)) {
        int picture = 0;
        if (rating == 0) picture = scheme < 2 ? 102 : 101;
        else if (rating == 5) picture = scheme == 0 || scheme == 3 ? 120 : 119;
        else picture = 102 + 4 * rating - scheme;  // 106, 110, 114, 118 less the scheme
        f.Picture2.SetPicture(Star_Picture(scheme, picture));
    }

    // Slots 2 to 5 by the scheme, the mixed one drawn as black blue; the ends
    // have their own pictures.
    const int shade = scheme == 3 ? 2 : scheme;
    for (int k = 0; k < 4; ++k) f.Label21[1 + k].SetPicture(Star_Picture(scheme, 602 + 3 * k + shade));
    f.Label21[0].SetPicture(Star_Picture(scheme, scheme >= 2 ? 601 : 600));
    f.Label21[5].SetPicture(Star_Picture(scheme, scheme >= 1 ? 619 : 618));

    if (mode == -1 && scheme == 3) {
        // The mixed scheme lights the present class's star alone.
        for (int slot = 1; slot <= kClassCount; ++slot) {
            Label& star = f.Label21[slot - 1];
            if (star.Style() != 2) continue;
            const int picture = slot == 1 ? 600 : slot == 6 ? 618 : slot + 612;
            star.SetPicture(Star_Picture(scheme, picture));
        }
    }

    // The second window shows the same state.
    g.Command8.SetCaption(f.Command8.Caption());
    g.Command8.SetStyle(f.Command8.Style());
    g.Command6.SetPicture(f.Picture2.Picture());
    for (int i = 0; i < kClassCount; ++i) {
        g.Label21[i].SetPicture(f.Label21[i].Picture());
        g.Label21[i].SetStyle(f.Label21[i].Style());
        g.Label21[i].SetVisible(f.Label21[i].Visible());
    }
}

void Tray_Favor_Click(AppContext& ctx, int code) {
    ctx.ratings.Rating_Code = static_cast<int16_t>(code);
    Command8_Click(ctx);
}

void MnuFavorAuto2_Click(AppContext& ctx) {
    MenuItem& menu = ctx.form1.Menus("MnuFavorAuto2");
    menu.SetChecked(!menu.Checked());
    ctx.form1.Tray("TrayFavorAuto").SetChecked(menu.Checked());
    ctx.settings.Auto_Rating = menu.Checked() ? -1 : 0;
}

void MnumoreStar_Active_Click(AppContext& ctx, int) {
    Form1& f = ctx.form1;
    Settings& s = ctx.settings;
    s.Star_Active = s.Star_Active != 0 ? 0 : -1;
    const bool on = s.Star_Active != 0;
    // Each entry is offered only while it would change something.
    f.Menus("MnumoreStar_Active", 0).SetChecked(on);
    f.Menus("MnumoreStar_Active", 0).SetEnabled(!on);
    f.Menus("MnumoreStar_Active", 1).SetChecked(!on);
    f.Menus("MnumoreStar_Active", 1).SetEnabled(on);
    for (auto& star : f.Label21) star.SetVisible(on);
    for (auto& star : ctx.form4.Label21) star.SetVisible(on);
}

void MnumoreStar_Colors_Click(AppContext& ctx, int index) {
    Form1& f = ctx.form1;
    const TrackTable& t = ctx.table;
    ctx.settings.Star_Colors_Index = static_cast<int16_t>(index == 65535 || index == -1 ? 0 : index);
    for (int i = 0; i < 4; ++i) f.Menus("MnumoreStar_Colors", i).SetChecked(i == ctx.settings.Star_Colors_Index);
    int rating = 0;
    if (f.List2.ListCount() > 0 && t.Current_Track >= 0 && t.Current_Track <= t.Bound())
        rating = t.Rating_Class[t.Current_Track];
    Draw_Rating_Stars(ctx, 0, rating);
    Draw_Rating_Stars(ctx, -1, rating);
}

}  // namespace velmora
