#pragma once
// The program's model without a window, as the terminal commands run it:
// Qt's loop without widgets, the four engines on libmpv with no picture,
// each started on its first use: a command that plays nothing starts none.

#include <QCoreApplication>

#include <string>

#include "core/app_context.h"
#include "platform/lazy_engine.h"
#include "platform/mpv_engine.h"
#include "platform/qt_event_loop.h"
#include "platform/qt_playlist_reader.h"

namespace velmora::cli {

// Qt's application object for a command of the terminal: it takes the
// command line by reference for its whole life, so the line lives here too.
struct TerminalApplication {
    int argc = 1;
    char name[12] = "velmora-cli";
    char* argv[2] = {name, nullptr};
    QCoreApplication app{argc, argv};
};

class HeadlessProgram {
public:
    // ao is the audio output of the engines that play; the reader never does.
    HeadlessProgram(Dialogs& dialogs, Shell& shell, const std::string& ao = "null");

    QCoreApplication& App() { return m_app.app; }
    // Starts the player, so that a failed start is known before anything plays.
    MpvEngine& Player() { return static_cast<MpvEngine&>(m_player.Start()); }
    AppContext& Context() { return m_ctx; }

private:
    LazyEngine::Factory Mpv(const std::string& ao);

    // libmpv reads numbers with the C library and wants a '.' decimal point,
    // from before the first engine is made.
    struct NumericLocaleC {
        NumericLocaleC();
    };

    TerminalApplication m_app;
    NumericLocaleC m_locale;
    QtEventLoop m_loop;
    LazyEngine m_player, m_reader, m_video, m_second;
    QtPlaylistReader m_playlists;
    AppContext m_ctx;
};

// The program folder of a Collection file: the folder that holds the
// collections folder it lies in, or empty when it lies in none.
std::string Program_Folder_Of(const std::string& collection_file);

// App_Path as the window works it out: the executable's folder when it is
// writable, else the user's data folder. Needs a QCoreApplication.
std::string Default_Program_Folder();

// Gives the context the program folder of the Collection file, or the
// default one when the file lies in none.
void Set_Program_Folder(AppContext& ctx, const std::string& collection_file);

// What start-up does before a Collection, without the window: the folders,
// the tables and the preferences.
void Start_Without_Window(AppContext& ctx);

}  // namespace velmora::cli
