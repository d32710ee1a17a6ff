#pragma once
// Getting the chosen Track playing, in two stages: here the file is checked,
// a window chosen, the engine loaded and positioned and the clock armed; the
// clock's next tick starts the engine, so the start point is in place before
// any sound. Also the means of making the engine let go of a file.

#include <cstdint>
#include <functional>
#include <string>

namespace velmora {

struct AppContext;
class MediaEngine;

// The engine that plays now: the video window's while Video_Mode is not 0,
// else the main window's (Second_Player 0) or the second window's (-1); null
// for any other Second_Player.
MediaEngine* Active_Engine(AppContext& ctx);
// The engine that plays audio, by Second_Player alone; null for other values.
MediaEngine* Audio_Engine(AppContext& ctx);

// The tag boxes from the file that plays, Tag_File naming it; nothing typed is left.
void Fill_Tag_Boxes(AppContext& ctx);
// Checks Current_File, picks the window by Video_Mode and fills the tag boxes.
void Decide_Video(AppContext& ctx);
// By the reader's MediaType, else by the last four characters of the path.
bool Is_Video_File(AppContext& ctx, const std::string& path);
void Play_Audio(AppContext& ctx);
// The same for the video window.
void Video(AppContext& ctx);
// window 1: the audio engine, 2: the video window's. Loads nothing and starts
// nothing: sets the start point and arms the clock for one short tick.
void Media_Play(AppContext& ctx, int window);
// Empties path when the file cannot be opened or has no length.
void File_Length_Check(AppContext& ctx, std::string& path, int64_t& size);

// The marker of a file about to go away for good: nothing is written to it.
extern const char* const kGoneForGood;  // "never_existed_non_existing.mp3"
// The engine is given this file while the real one changes on disk.
std::string Dump_File_Path(const AppContext& ctx);
// Writes the dump file and loads it into the engine of the window (1 the
// main window's, 2 the video window's), which so lets go of its file.
void Release_Engine(AppContext& ctx, int window);
void Drop_Dump_File(AppContext& ctx);
// Runs write_tags on path, first making the engine let go of it when it is
// the file that plays, and afterwards taking up new_path (or the same file)
// at the same position and play state. With marker kGoneForGood the tags
// are not written and the tag boxes are emptied instead.
void Replace_Playing_File(AppContext& ctx, const std::string& path, const std::string& new_path,
                          const std::string& marker, const std::function<void()>& write_tags);

// A few frames of silent MPEG audio: a file every engine opens and plays.
std::string Silent_Mp3_Bytes();

}  // namespace velmora
