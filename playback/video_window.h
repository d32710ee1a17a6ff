#pragma once
// The video window: its load, its size, the way back to audio when it
// closes, and the menu that shows it, hides it or lets each file choose.

namespace velmora {

struct AppContext;

// Shows the window, loading it first when it is not loaded.
void Show_Video_Window(AppContext& ctx);
// Takes the stored size, then lets the picture fill the window.
void Form2_Form_Load(AppContext& ctx);
// The picture fills the window again; a size the user gave is kept for the next load.
void Form2_Form_Resize(AppContext& ctx);
// Closing the window: the main window plays on from where the picture was,
// and the menu goes to Hide.
void Form2_Form_QueryUnload(AppContext& ctx);
// A picture that has no size gets 320 by 240, and the window follows it.
void Size_Video_Control(AppContext& ctx);
// 0 Show, 1 Hide, 2 Auto.
void mnuvideoshow_Click(AppContext& ctx, int index);

}  // namespace velmora
