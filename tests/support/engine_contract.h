#pragma once
// What every MediaEngine promises the program, run against each engine by
// instantiating EngineContract with a factory of its harness, in one file of
// a test program. Every engine call goes through the fixture, which fails the
// test when an engine event is raised inside the call that caused it.

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "core/event_loop.h"
#include "core/media_engine.h"
#include "support/child_process.h"

namespace velmora::contract {

// An engine on its loop, with the files the contract plays.
struct EngineHarness {
    virtual ~EngineHarness() = default;
    virtual EventLoop& Loop() = 0;
    virtual MediaEngine& Engine() = 0;

    std::string audio;  // about audio_seconds long, audio only, titled audio_title
    double audio_seconds = 2.0;
    std::string audio_title = "Contract Tone";
    std::string video;             // about a second of video
    std::string missing, garbage;  // garbage exists and is no media
    // How far a position may stray from the ideal, in seconds, and how long
    // (by the loop's clock) anything asynchronous may take.
    double tolerance = 0.3;
    int timeout_ms = 5000;
};

using HarnessFactory = std::unique_ptr<EngineHarness> (*)();

inline void PrintTo(HarnessFactory, std::ostream* os) { *os << "harness"; }
inline std::string EngineContractName(const ::testing::TestParamInfo<HarnessFactory>&) { return "Engine"; }

class EngineContract : public ::testing::TestWithParam<HarnessFactory> {
protected:
    void SetUp() override {
        m_harness = GetParam()();
        ASSERT_NE(m_harness, nullptr);
        m_states_sub = E().PlayStateChange.connect([this](int state) {
            if (m_in_call) m_raised_in_call.push_back("PlayStateChange in " + m_call);
            m_states.push_back(state);
            // Handlers read the state afresh; note what they would see.
            m_seen.push_back(E().playState());
        });
        m_status_sub = E().StatusChange.connect([this] {
            if (m_in_call) m_raised_in_call.push_back("StatusChange in " + m_call);
            ++m_status_changes;
        });
        E().setAutoStart(false);  // as the program sets every playing engine
    }

    void TearDown() override {
        EXPECT_TRUE(m_raised_in_call.empty()) << ::testing::PrintToString(m_raised_in_call);
    }

    EngineHarness& H() { return *m_harness; }
    MediaEngine& E() { return m_harness->Engine(); }
    int State() { return E().playState(); }
    double Position() {
        auto position = E().currentPosition();
        EXPECT_TRUE(position.ok()) << position.error();
        return position.value_or(-1.0);
    }

    // Engine calls, each checked for events raised inside it.
    template <class F>
    Status Call(const std::string& what, F&& fn) {
        m_in_call = true;
        m_call = what;
        Status result = fn();
        m_in_call = false;
        return result;
    }
    Status Load(const std::string& path) { return Call("setURL", [&] { return E().setURL(path); }); }
    Status Play() { return Call("play", [&] { return E().play(); }); }
    Status Pause() { return Call("pause", [&] { return E().pause(); }); }
    Status Stop() { return Call("stop", [&] { return E().stop(); }); }
    Status Close() { return Call("close", [&] { return E().close(); }); }
    Status Seek(double s) { return Call("setCurrentPosition", [&] { return E().setCurrentPosition(s); }); }
    Status SetVolume(int v) { return Call("setVolume", [&] { return E().setVolume(v); }); }

    // Gives way to the loop until pred holds or the harness's timeout passes.
    bool Until(const std::function<bool()>& pred) { return testing::Within(H().Loop(), H().timeout_ms, pred); }
    bool UntilState(int state) { return Until([&] { return State() == state; }); }
    // A call that succeeds and the state it leads to.
    bool To(const Status& called, int state) { return called.ok() && UntilState(state); }
    void Pass(int ms) { Wait(H().Loop(), ms); }
    void ExpectAudioItem(const std::unique_ptr<MediaItem>& item) {
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(std::tuple(item->sourceURL(), item->getItemInfo("Title")),
                  std::tuple(H().audio, H().audio_title));
        EXPECT_NEAR(item->duration(), H().audio_seconds, 0.1);
    }

    bool LoadAudio() { return To(Load(H().audio), PS_Ready); }
    // Plays the audio file from near its end and waits for the end.
    bool PlayToEnd() { return LoadAudio() && Seek(H().audio_seconds - 0.4).ok() && To(Play(), PS_MediaEnded); }
    bool UntilEvent(int state) { return Until([&] { return !m_states.empty() && m_states.back() == state; }); }

    std::vector<int> m_states;  // PlayStateChange arguments, in order
    std::vector<int> m_seen;    // playState() read inside each of those handlers
    int m_status_changes = 0;

private:
    std::unique_ptr<EngineHarness> m_harness;
    Subscription m_states_sub, m_status_sub;  // let go before the harness
    bool m_in_call = false;
    std::string m_call;
    std::vector<std::string> m_raised_in_call;
};

TEST_P(EngineContract, LoadingStartsPlayingOnlyWithAutoStartAndAVideoPlaysToItsEnd) {
    EXPECT_TRUE(E().URL().empty() && E().currentMedia() == nullptr);
    ASSERT_TRUE(Load(H().audio).ok());
    EXPECT_EQ(E().URL(), H().audio);
    ASSERT_TRUE(UntilState(PS_Ready)) << "state " << State();
    Pass(300);

    EXPECT_EQ(State(), PS_Ready);
    EXPECT_NEAR(Position(), 0.0, 0.05);
    EXPECT_EQ(m_states, (std::vector<int>{PS_Transitioning, PS_Ready}));

    ExpectAudioItem(E().currentMedia());

    // Nor does loading over a file that plays.
    ASSERT_TRUE(To(Play(), PS_Playing));
    ASSERT_TRUE(To(Load(H().video), PS_Ready)) << "state " << State();
    Pass(300);
    EXPECT_EQ(State(), PS_Ready);
    EXPECT_NEAR(Position(), 0.0, 0.05);
    EXPECT_EQ(E().currentMedia()->sourceURL(), H().video);
    EXPECT_TRUE(To(Play(), PS_MediaEnded)) << "the video plays to its end; state " << State();

    E().setAutoStart(true);
    ASSERT_TRUE(To(Load(H().audio), PS_Playing)) << "state " << State();
    Pass(300);
    EXPECT_GT(Position(), 0.1);
}

TEST_P(EngineContract, PlayPauseAndStopGiveTheirStatesAndASeekWhileNotPlayingHoldsUntilPlay) {
    // Set before the load has completed, as the start of a track does.
    ASSERT_TRUE(Load(H().audio).ok());
    ASSERT_TRUE(Seek(1.0).ok());
    ASSERT_TRUE(UntilState(PS_Ready));
    Pass(300);
    EXPECT_EQ(State(), PS_Ready);
    EXPECT_NEAR(Position(), 1.0, 0.01) << "held while not playing";
    EXPECT_EQ(E().currentPositionString(), "00:01");

    ASSERT_TRUE(To(Play(), PS_Playing));
    Pass(400);
    const double played = Position();
    EXPECT_GE(played, 1.0 - H().tolerance) << "playing starts at the held point";
    EXPECT_GT(played, 1.2) << "and the position moves while playing";
    EXPECT_LE(played, 1.4 + H().tolerance);

    ASSERT_TRUE(To(Pause(), PS_Paused));
    Pass(100);  // a real output plays out what it had buffered
    const double paused = Position();
    Pass(300);
    EXPECT_NEAR(Position(), paused, 0.02) << "and stands while paused";

    // Paused, a new point holds as well, and playing goes on from it.
    ASSERT_TRUE(Seek(0.5).ok());
    Pass(300);
    EXPECT_NEAR(Position(), 0.5, 0.01);
    ASSERT_TRUE(To(Play(), PS_Playing));
    Pass(200);
    EXPECT_GT(Position(), 0.5);
    EXPECT_LE(Position(), 0.7 + H().tolerance);

    ASSERT_TRUE(To(Stop(), PS_Stopped));
    Pass(200);
    EXPECT_NEAR(Position(), 0.0, 0.01) << "stop rewinds";
    EXPECT_EQ(E().URL(), H().audio) << "and keeps the file";

    ASSERT_TRUE(To(Play(), PS_Playing));
    Pass(200);
    EXPECT_LT(Position(), 0.2 + 2 * H().tolerance) << "playing after stop starts from the top";

    // The events told each state in turn; the last handler, reading the
    // state afresh, found the one the engine is in.
    ASSERT_TRUE(UntilEvent(PS_Playing));
    EXPECT_EQ(m_states, (std::vector<int>{PS_Transitioning, PS_Ready, PS_Playing, PS_Paused, PS_Playing,
                                          PS_Stopped, PS_Playing}));
    ASSERT_FALSE(m_seen.empty());
    EXPECT_EQ(m_seen.back(), PS_Playing);
}

TEST_P(EngineContract, EventsComeFromTheLoopAfterTheCalls) {
    // Calls in a row with no giving way: nothing is raised in between.
    ASSERT_TRUE(Load(H().audio).ok());
    ASSERT_TRUE(Play().ok());
    ASSERT_TRUE(SetVolume(E().volume() == 40 ? 41 : 40).ok());
    EXPECT_TRUE(m_states.empty());
    EXPECT_EQ(m_status_changes, 0);

    ASSERT_TRUE(UntilState(PS_Playing));
    ASSERT_TRUE(Until([&] { return m_status_changes > 0; }) && UntilEvent(PS_Playing));
    EXPECT_EQ(m_states.front(), PS_Transitioning);
}

TEST_P(EngineContract, TheEndGivesMediaEndedUntilTheNextCommand) {
    const std::vector<std::tuple<const char*, std::function<Status()>, int>> exits{
        {"play", [&] { return Play(); }, PS_Playing},
        {"stop", [&] { return Stop(); }, PS_Stopped},
        {"load", [&] { return Load(H().audio); }, PS_Ready},
        {"close", [&] { return Close(); }, PS_Undefined},
    };
    for (const auto& [name, call, state_after] : exits) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(PlayToEnd()) << "state " << State();
        EXPECT_TRUE(UntilEvent(PS_MediaEnded)) << "the end is told by an event";
        Pass(400);
        EXPECT_EQ(State(), PS_MediaEnded) << "the end stays";
        EXPECT_NEAR(Position(), 0.0, 0.01) << "an ended file resumes from the top";

        // Pausing is no way out of the end.
        ASSERT_TRUE(Pause().ok());
        Pass(100);
        EXPECT_EQ(State(), PS_MediaEnded);

        ASSERT_TRUE(To(call(), state_after)) << "state " << State();
        if (state_after == PS_Playing) {
            Pass(200);
            EXPECT_LT(Position(), 0.2 + 2 * H().tolerance);
        }
    }
}

TEST_P(EngineContract, FailingCallsReportTheEngineGoesOnAndCloseEmptiesIt) {
    for (const std::string& bad : {H().missing, H().garbage}) {
        SCOPED_TRACE(bad);
        const Status loaded = Load(bad);
        EXPECT_TRUE(!loaded.ok() && !loaded.error().empty());
        EXPECT_EQ(E().URL(), "");
    }
    EXPECT_EQ(std::tuple(Play().ok(), Pause().ok(), Seek(1.0).ok()), std::tuple(false, false, false));
    EXPECT_TRUE(Stop().ok()) << "stopping nothing is no fault";

    // A failed load lets go of the file held before, as releasing a file
    // through a dummy relies on, and leaves the engine Ready.
    ASSERT_TRUE(LoadAudio());
    EXPECT_FALSE(Load(H().garbage).ok());
    EXPECT_EQ(E().URL(), "");
    ASSERT_TRUE(UntilState(PS_Ready));

    ASSERT_TRUE(LoadAudio() && To(Play(), PS_Playing)) << "a good file plays after bad ones";

    // Closing empties the engine at once.
    ASSERT_TRUE(Close().ok());
    EXPECT_TRUE(E().URL().empty() && E().currentMedia() == nullptr);
    ASSERT_TRUE(UntilState(PS_Undefined));
    EXPECT_EQ(Position(), 0.0);
    EXPECT_FALSE(Play().ok()) << "nothing to play";
    EXPECT_TRUE(Close().ok()) << "closing twice is harmless";
}

TEST_P(EngineContract, VolumeRoundTripsAndIsClamped) {
    const std::pair<int, int> cases[] = {{37, 37}, {0, 0}, {100, 100}, {150, 100}, {-5, 0}};  // set, read
    for (const auto& [set, read] : cases) {
        SCOPED_TRACE(set);
        const int before = m_status_changes;
        const bool changes = E().volume() != read;
        ASSERT_TRUE(SetVolume(set).ok());
        EXPECT_EQ(E().volume(), read);
        if (changes) {
            EXPECT_TRUE(Until([&] { return m_status_changes > before; })) << "StatusChange follows";
        }
    }
}

TEST_P(EngineContract, ItemsAnswerWithoutLoading) {
    auto audio = E().newMedia(H().audio);
    ASSERT_NO_FATAL_FAILURE(ExpectAudioItem(audio));
    EXPECT_EQ(E().URL(), "") << "newMedia loads nothing";
    EXPECT_EQ(std::tuple(audio->getItemInfo("MediaType"), audio->getItemInfo("NoSuchAttribute")),
              std::tuple("audio", ""));
    EXPECT_EQ(E().newMedia(H().video)->getItemInfo("MediaType"), "video");
    EXPECT_EQ(E().newMedia(H().missing)->duration(), 0.0);

    // An item that says it can be written takes the value; one that says it
    // cannot refuses with an error.
    if (audio->isReadOnlyItem("Title")) {
        EXPECT_FALSE(audio->setItemInfo("Title", "Other").ok());
    } else {
        ASSERT_TRUE(audio->setItemInfo("Title", "Other").ok());
        EXPECT_EQ(E().newMedia(H().audio)->getItemInfo("Title"), "Other");
    }
}

}  // namespace velmora::contract
