#pragma once
// The small second player window: playing passes to it and back at the same
// position, and its transport passes each press to the main window's.

namespace velmora {

struct AppContext;

// -1: the main window gives way to the second player window; 0: back. The
// engine that is left is emptied and disabled.
void Passage(AppContext& ctx, int direction);

// The second window's own events.
void Form4_Form_Load(AppContext& ctx);
// Its slider follows its engine's position.
void Form4_Timer1_Timer(AppContext& ctx);
void Form4_Command1_Click(AppContext& ctx);
void Form4_Command3_Click(AppContext& ctx, int index);
void Form4_Command11_Click(AppContext& ctx);
void Form4_Command15_Click(AppContext& ctx, int index);
void Form4_Command8_Click(AppContext& ctx);
void Form4_Text3_Change(AppContext& ctx);
void Form4_HScroll1_Change(AppContext& ctx);
void Form4_HScroll1_Scroll(AppContext& ctx);
void Form4_Slider1_Change(AppContext& ctx);

}  // namespace velmora
