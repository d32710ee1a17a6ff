#pragma once
// Giving ratings and showing them. A rating is 0 Unmarked, 1 X, 2 C, 3 B,
// 4 A or 5 S; its slot among the class labels and stars is rating + 1.
//
// What the window draws (see desktop/forms.h for the looks):
//   Command8 and Form4.Command8   caption "Προτίμηση Rating <letter> - [DDD:HH:MM:SS]", Style 1 while marked
//   Picture2 and Form4.Command6   picture "star_<scheme>_<n>", n in 101..120
//   Label21(1..6), Form4.Label21  picture "star_<scheme>_<n>", n in 600..619; Style 2 on the present class
//   Label9(0..6), Label10(1..6)   captions of the totals; Style 1 on the present class
// <scheme> is Star_Colors_Index: 0 gold, 1 blue, 2 black blue, 3 mix.

#include <string>

#include "ratings/rating_menus.h"

namespace velmora {

struct AppContext;

// The class words and letters, by rating.
std::string Class_Caption(int rating);  // "Κλάσεως Υ΄- Class S"; "Όλα - All" for 0
std::string Star_Picture(int scheme, int number);  // "star_1_602"

// The rating button: rates Current_Track by Rating_Code and Auto_Rating.
void Command8_Click(AppContext& ctx);
// Applies `rating` to `track`, whose stored class is `old_rating`; naming
// the class the Track is in clears its mark.
void Rate_Track(AppContext& ctx, int track, int old_rating, int rating);
// Shows a rating and writes its letter to row `track` of the class list.
void DeikseAgapi(AppContext& ctx, int rating, int track);
// The captions of the class labels and of the class menus.
void Update_Class_Labels(AppContext& ctx);
// mode 0: the big picture and the star row; -1: the row and, in the mixed
// scheme, the present class's own star.
void Draw_Rating_Stars(AppContext& ctx, int mode, int rating);

// The tray's class entries: 9 Unmarked, 10 X, 11 C, 12 B, 13 A, 14 S.
void Tray_Favor_Click(AppContext& ctx, int code);
// MnuFavorAuto2 and TrayFavorAuto: every new Track gets the last class given.
void MnuFavorAuto2_Click(AppContext& ctx);
void MnumoreStar_Active_Click(AppContext& ctx, int index);
void MnumoreStar_Colors_Click(AppContext& ctx, int index);

}  // namespace velmora
