#pragma once
// The snooze and countdown window (Form5): a moment and a file. It arms,
// counts down once a second and shows the time left; the alarm sounds
// through the window's own engine once a trigger has fired.

namespace velmora {

struct AppContext;

// Shows Form5, loading it the first time; it is active from then on.
void Show_Form5(AppContext& ctx);

// The Triggers menu: both open Form5, then clear one of its two mode boxes.
void mnutimeshut_Click(AppContext& ctx);
void mnutimesnooze_Click(AppContext& ctx);

// Connects Form5's controls and the two Triggers rows; the links go into
// ctx.handlers.
void Wire_Form5(AppContext& ctx);

namespace form5 {

// Fills the alarm list from the Track list once, puts the trigger values in
// the boxes and the mode in the check boxes; mode 0 cancels.
void Form_Load(AppContext& ctx);
void Form_Activate(AppContext& ctx);
// The user closes the window: it stops counting and hides.
void Form_QueryUnload(AppContext& ctx);

// Each keeps one of the two mode boxes on.
void Check1_Click(AppContext& ctx);
void Check2_Click(AppContext& ctx);
void Check4_Click(AppContext& ctx);
// 0 Exit, 1 Ok, 2 Cancel.
void Command1_Click(AppContext& ctx, int index);
void Text1_Change(AppContext& ctx, int index);
void VScroll1_Change(AppContext& ctx, int index);
void Timer1_Timer(AppContext& ctx);

// Tests whether the moment has come and fires the alarm. Nothing calls it:
// the window counts down, and no alarm and no shut-down follow from it.
void test(AppContext& ctx);

}  // namespace form5

}  // namespace velmora
