#pragma once
// The catalogue's result lists: List5 holds every Track, List4 those that
// pass the chosen boxes; each row carries its Track's number, which is how a
// click on a row finds the Track again.

namespace velmora {

struct AppContext;
class ListBox;

// -1 builds the cached rows and List5 anew; anything else runs the query
// of the chosen boxes into List4. A cache whose size no longer matches the
// Track list is rebuilt either way.
void Filtered_Songs_List(AppContext& ctx, int rebuild);
// A click on a row of a result list selects its Track in List2 and the mirrors.
void List4_MouseDown(AppContext& ctx);
void List5_MouseDown(AppContext& ctx);
// Row index selected in List2 and in every mirror.
void Select_Row(AppContext& ctx, int index);
// "Όλα - All": the boxes emptied and the whole list shown again.
void Command16_Click(AppContext& ctx, int index);
// The results are rebuilt on their page when rows came or went since.
void Refresh_Stale_Results(AppContext& ctx);

}  // namespace velmora
