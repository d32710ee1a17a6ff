#pragma once
// How the engines that draw a picture are set up: the video window's, and
// the preview panes', which must stay cheap twelve at a time.

#include <string>

#include "platform/mpv_engine.h"

namespace velmora {

// The video window's engine: it draws through the render API, with the
// graphics card's decoder where one works. `ao` empty is mpv's choice.
MpvEngine::Options Video_Options(const std::string& ao = {});
// A preview pane's engine.
MpvEngine::Options Pane_Options();

}  // namespace velmora
