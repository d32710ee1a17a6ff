// Damaged Collections and bad media files, made at run time from the golden
// Collection, each run through every command of velmora-cli with a time
// limit. Whatever the damage: every run ends, the user's files are left as
// they were or moved aside whole, the exit code tells the outcome, a refusal
// names the file at fault and its fault, and play names a file it cannot
// play and goes on. One line is printed per failing case.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "cli_run.h"
#include "support/child_process.h"
#include "support/file_tree.h"
#include "support/golden_collection.h"
#include "support/media_collection.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::ChildProcess;
using testing::Golden;

constexpr const char* kCycleEnd = "Every file has been reproduced";
constexpr const char* kSaveError = "Error while saving Collection";
constexpr const char* kMovedAside = ".unreadable";

enum class Kind {
    Damaged,   // a Collection that cannot be read whole
    NotAFile,  // the main file is no regular file
    BadMedia,  // a sound Collection whose first Track cannot be played
    Linked,    // a sound Collection whose main file is a symlink
    // Tracks whole, but the filter lists, which can be built again, damaged:
    // a writer may go on, moving the user's files aside whole first.
    FiltersDamaged,
};

enum Command { kAdd, kIdentify, kPlay, kDump, kInfo, kCommands };
const char* const kCommandNames[kCommands] = {"add", "identify", "play", "dump", "info"};
// Seconds; play also waits out its start screen and plays a one-second file.
const int kTimeouts[kCommands] = {15, 15, 30, 15, 15};
constexpr size_t kAtOnce = 32;  // runs at a time: most of them wait, few compute

// Where a case puts its files: a program folder with the Collection
// "velmora", the folder of its media, and a folder that add takes in.
struct Layout {
    explicit Layout(const fs::path& root) : root(root), at(testing::Golden_Files_In(root.string() + "/")) {}
    fs::path root;
    testing::GoldenFiles at;
    fs::path media = root / "media", incoming = root / "incoming";
};

// What play makes of the bad file of a BadMedia case.
enum class BadFile {
    Named,       // told as a file that cannot be played or made no progress
    Plays,       // its samples play all the same: its status line shows
    PassedOver,  // empty: marked X and passed without reaching the engine
};

struct Case {
    std::string name;
    Kind kind;
    std::function<void(const Layout&)> make;
    // Said by every run that must refuse the Collection: the name of the file
    // at fault, then what is wrong with it.
    std::string told = {};
    BadFile bad = BadFile::Named;
};

constexpr auto Le = testing::RecordBytes::Le;

// Byte offsets of a main record and of a field of a Track in the files side file.
size_t Main_Record(int record) { return static_cast<size_t>(record - 1) * 300; }
size_t Track_Field(int track, int field) { return static_cast<size_t>(45 * track + field - 1) * 400; }

std::string Random_Bytes(size_t n, unsigned seed) {
    std::mt19937 rng(seed);
    std::string bytes(n, '\0');
    for (char& c : bytes) c = static_cast<char>(rng() & 0xFF);
    return bytes;
}

// The media folder, and a one-second file for add to take in.
void Media_Folders(const Layout& l) {
    fs::create_directories(l.media);
    fs::create_directories(l.incoming);
    testing::Put(l.incoming / "new.wav", testing::Wav_Bytes(8000));
}

// The golden Collection, changed by `change` before it is written and by
// `after` once it is on disk.
Case Damaged(std::string name, std::function<void(Golden&)> change, std::string told = {},
             std::function<void(const Layout&)> after = {}) {
    return {std::move(name), Kind::Damaged,
            [change, after](const Layout& l) {
                Golden g = testing::Golden_Bytes();
                if (change) change(g);
                testing::Write_Golden(l.at, g);
                Media_Folders(l);
                if (after) after(l);
            },
            std::move(told)};
}

// The golden Collection with something that is not a regular file where
// its main file, or its files side file, belongs.
Case Not_A_File(std::string name, std::string told, std::function<void(const fs::path&)> put, bool side = false) {
    Case c = Damaged(std::move(name), {}, std::move(told), [put, side](const Layout& l) {
        fs::remove(side ? l.at.files : l.at.main);
        put(side ? l.at.files : l.at.main);
    });
    c.kind = Kind::NotAFile;
    return c;
}

// A Collection of a bad file and a good one-second file, in that order.
Case Bad_Media(std::string name, const std::string& extension, std::string bytes, BadFile bad = BadFile::Named) {
    return {std::move(name), Kind::BadMedia,
            [extension, bytes](const Layout& l) {
                Media_Folders(l);
                const fs::path bad = l.media / ("bad" + extension), good = l.media / "good.wav";
                testing::Put(bad, bytes);
                testing::Put(good, testing::Wav_Bytes(8000));
                testing::Put(l.incoming / ("bad copy" + extension), bytes);
                testing::Write_Golden(l.at, testing::Golden_With_Paths(bad.string(), good.string()));
            },
            "", bad};
}

std::vector<Case> Corpus() {
    const auto fifo = [](const fs::path& p) { ::mkfifo(p.c_str(), 0644); };
    std::vector<Case> cases = {
        Damaged("Artist of Track 2 with length 0xFFFF",
                [](Golden& g) { g.files.replace(Track_Field(1, 7), 2, Le(0xFFFF, 2)); }),
        Damaged("Rating_Class 9 on Track 2", [](Golden& g) { g.files.replace(Track_Field(1, 3), 2, Le(9, 2)); },
                "velmora_files.qqel: Track 1: Rating_Class 9 is out of range 0 to 5"),
        Damaged("a byte code page 1253 leaves undefined in Track 2's path",
                [](Golden& g) { g.files[Track_Field(1, 12) + 2 + 6] = '\x81'; },
                "velmora_files.qqel: Track 1: the path holds bytes code page 1253 does not define"),
        Damaged("slot text of Track 2 longer than its record",
                [](Golden& g) { g.files.replace(Track_Field(1, 15), 2, Le(500, 2)); }),
        Damaged("files side file missing", {}, {}, [](const Layout& l) { fs::remove(l.at.files); }),
        Damaged("files side file of random bytes", [](Golden& g) { g.files = Random_Bytes(g.files.size(), 7); }),
        Damaged("files side file empty", [](Golden& g) { g.files.clear(); }),
        Damaged("Track_Count 2^31-1", [](Golden& g) { g.main.replace(Main_Record(6), 4, Le(0x7FFFFFFF, 4)); }),
        Damaged("Current_Track past the Tracks", [](Golden& g) { g.main.replace(Main_Record(4), 4, Le(5, 4)); },
                "velmora.qel: Current_Track 5 is out of range 0 to 1"),
        Damaged("main file of version 4.0", [](Golden& g) { g.main.replace(2, 3, "4.0"); },
                "velmora.qel: a Collection of another version (4.0)"),
        Damaged("main file holding its version 5.0 alone", [](Golden& g) { g.main.resize(Main_Record(2)); }),
        Damaged("main file of random bytes",
                [](Golden& g) {
                    g.main = Random_Bytes(g.main.size(), 11);
                    g.main[0] = '\x7F';  // never the length of "5.0"
                }),
        Not_A_File("main file a directory", "velmora.qel: a folder, not a regular file",
                   [](const fs::path& p) { fs::create_directory(p); }),
        Not_A_File("main file a FIFO", "velmora.qel: a named pipe", fifo),
        Not_A_File("files side file a FIFO", "velmora_files.qqel: a named pipe", fifo, true),
        Not_A_File("main file a dangling symlink", "velmora.qel: a link to a file that does not exist",
                   [](const fs::path& p) { fs::create_symlink("/no/such.qel", p); }),
        Not_A_File("main file a symlink loop", "velmora.qel: a loop of links",
                   [](const fs::path& p) {
                       const fs::path other = p.parent_path() / "loop.qel";
                       fs::create_symlink(other, p), fs::create_symlink(p, other);
                   }),
        Not_A_File("main file a symlink to /dev/zero", "velmora.qel: a device",
                   [](const fs::path& p) { fs::create_symlink("/dev/zero", p); }),
        Bad_Media("random bytes named .mp3", ".mp3", Random_Bytes(65536, 23)),
        Bad_Media("random bytes named .avi", ".avi", Random_Bytes(65536, 29)),
        Bad_Media("ID3 tag claiming 256 Mb", ".mp3",
                  std::string("ID3\x03\x00\x00\x7F\x7F\x7F\x7F", 10) + Random_Bytes(4096, 31)),
        Bad_Media("WAV of its 44-byte header alone", ".wav", testing::Wav_Bytes(0)),
        Bad_Media("WAV whose sizes say 0xFFFFFFF0", ".wav", testing::Wav_Bytes(8000, 0xFFFFFFF0), BadFile::Plays),
        Bad_Media("zero-length .mp3", ".mp3", "", BadFile::PassedOver),
        {"main file a symlink to a sound Collection", Kind::Linked,
         [](const Layout& l) {
             // The Collection stands whole behind the link and beside it, so
             // that its side files are found from either place.
             const testing::GoldenFiles real = testing::Golden_Files_In((l.root / "store").string() + "/");
             testing::Write_Golden(real);
             testing::Write_Golden(l.at);
             fs::remove(l.at.main);
             fs::create_symlink(real.main, l.at.main);
             Media_Folders(l);
         }},
    };
    // Cuts inside what a load reads: the main file's records 1 to 19, the
    // Tracks' records but the last, the filters' counts and rows.
    std::mt19937 rng(1101);
    const std::tuple<const char*, std::string Golden::*, size_t> cuts[] = {
        {"main file", &Golden::main, Main_Record(20)},
        {"main file", &Golden::main, Main_Record(20)},
        {"files side file", &Golden::files, Track_Field(1, 45)},
        {"files side file", &Golden::files, Track_Field(1, 45)},
        {"filters side file", &Golden::filters, 12 * 600},
    };
    for (const auto& [file, part, below] : cuts) {
        const size_t at = 1 + rng() % (below - 1);
        cases.push_back(Damaged(file + (" cut at byte " + std::to_string(at)), [part, at](Golden& g) {
            (g.*part).resize(at);
        }));
        if (part == &Golden::filters) cases.back().kind = Kind::FiltersDamaged;
    }
    return cases;
}

// What stands below a folder, by relative path: each entry's kind and its
// bytes or its link's target.
using Tree = std::map<std::string, std::string>;
const std::string kFolder = std::to_string(static_cast<int>(fs::file_type::directory)) + ":";

// Whether an entry went aside whole, under its name and the mark of a
// Collection that could not be read, in its own folder.
std::string Moved_Aside(const fs::path& name, const std::string& entry, const Tree& after) {
    const std::string prefix = name.filename().string() + kMovedAside;
    for (const auto& [entry_name, now] : after) {
        const fs::path path(entry_name);
        if (path.parent_path() == name.parent_path() && path.filename().string().starts_with(prefix) && now == entry)
            return path.filename().string();
    }
    return {};
}

struct CommandRun {
    const Case* c = nullptr;
    Command command = kAdd;
    std::unique_ptr<testing::TempFolder> folder;  // the logs; the program folder within
    std::unique_ptr<Layout> layout;
    Tree before;
    std::unique_ptr<ChildProcess> process;
    bool timed_out = false;
};

std::vector<std::string> Arguments(const CommandRun& run) {
    std::vector<std::string> args{VELMORA_CLI, kCommandNames[run.command], run.layout->at.main.string()};
    if (run.command == kAdd) args.push_back(run.layout->incoming.string());
    if (run.command == kPlay) args.insert(args.end(), {"--ao", "null"});
    return args;
}

bool Loadable(const fs::path& main, const fs::path& logs) {
    return Cli("dump " + Quoted(main), logs).code == 0;
}

// What a run may do with the files it was given.
struct Rules {
    bool only_reads;    // dump and info: nothing written, moved or created
    bool must_refuse;   // non-zero exit, nothing touched
    bool must_succeed;  // exit 0; the Collection is the command's to change, the media are not
    bool may_move;      // play goes on with what it read, once the Collection is moved aside
};

Rules Rules_Of(Kind kind, Command command) {
    const bool writes = command == kAdd || command == kIdentify || command == kPlay;
    return {.only_reads = !writes,
            .must_refuse = kind == Kind::NotAFile || (kind == Kind::Damaged && command != kPlay),
            .must_succeed = kind == Kind::BadMedia || kind == Kind::Linked,
            .may_move = (kind == Kind::Damaged && command == kPlay) || (kind == Kind::FiltersDamaged && writes)};
}

void Exit_Faults(const CommandRun& run, const Rules& rules, const std::string& said, std::vector<std::string>& faults) {
    const ChildProcess& p = *run.process;
    if (run.timed_out) return faults.push_back("did not end within " + std::to_string(kTimeouts[run.command]) + " s");
    if (p.EndSignal() != 0) faults.push_back("ended by signal " + std::to_string(p.EndSignal()));
    if (p.ExitCode() == 0 && said.find(kSaveError) != std::string::npos) faults.push_back("exit 0 after a failed save");
    if (p.ExitCode() == 0 && rules.must_refuse) faults.push_back("exit 0 on a Collection it must refuse");
    if (p.ExitCode() != 0 && rules.must_succeed) faults.push_back(p.Outcome());
}

// Every entry it was given is where it was as it was, or, where the rules
// let it, moved aside whole; nothing new lies beside a refused Collection.
void File_Faults(const CommandRun& run, const Rules& rules, const std::string& said, const Tree& after,
                 std::vector<std::string>& faults) {
    std::vector<std::string> moved;
    for (const auto& [name, entry] : run.before) {
        const std::string top = fs::path(name).begin()->string();
        const bool media = top == "media" || top == "incoming";
        if (rules.must_succeed && !media && !rules.only_reads) continue;
        const auto now = after.find(name);
        if (now != after.end() && now->second == entry) continue;
        const std::string aside = Moved_Aside(name, entry, after);
        if (!aside.empty() && rules.may_move) moved.push_back(aside);
        else faults.push_back(name + (aside.empty() ? " changed" : " moved aside"));
    }
    for (const std::string& name : moved)
        if (said.find(name) == std::string::npos) faults.push_back("did not say it moved " + name);
    if (!moved.empty() && !Loadable(run.layout->at.main, run.folder->Path()))
        faults.push_back("left no loadable Collection after moving it aside");
    if (!rules.must_refuse && !rules.only_reads) return;
    // The pointer to the last Collection and a lock are the program's own.
    for (const auto& [name, entry] : after) {
        const std::string file = fs::path(name).filename().string();
        const std::string top = fs::path(name).begin()->string();
        const bool collection_folders = top == "velmora_sylloges" || top == "velmora_filtra";
        if (run.before.count(name) != 0 || file == "default.qr" || file.ends_with(".lock")) continue;
        if ((rules.only_reads || collection_folders) && !entry.starts_with(kFolder) &&
            file.find(kMovedAside) == std::string::npos)
            faults.push_back("left " + name);
    }
}

// Play tells of the bad file as its case says, and plays the good one after it.
void Bad_Media_Faults(const CommandRun& run, const std::string& said, std::vector<std::string>& faults) {
    std::string bad;
    for (const auto& [name, entry] : run.before)
        if (name.starts_with("media/bad.")) bad = (run.layout->root / name).string();
    const bool named = said.find(bad + " cannot be played") != std::string::npos ||
                       said.find(bad + " made no progress") != std::string::npos;
    // The entry of a missing or empty file holds nothing after the path on its first line.
    const bool passed = said.find(")" + bad + "\n") != std::string::npos;
    const bool shown = said.find("] " + fs::path(bad).filename().string() + "  ") != std::string::npos;
    const bool as_said = run.c->bad == BadFile::Named ? named
                         : run.c->bad == BadFile::Plays ? shown && !named && !passed
                                                          : passed && !named;
    if (!as_said) faults.push_back("told of the bad file otherwise than its case says");
    if (said.find(kCycleEnd) == std::string::npos || said.find("] good.wav  ") == std::string::npos)
        faults.push_back("the walk did not get past the bad file");
}

// What went against the required outcome of this run, in a few words each.
std::vector<std::string> Faults(const CommandRun& run) {
    std::vector<std::string> faults;
    const Rules rules = Rules_Of(run.c->kind, run.command);
    const fs::path logs = run.folder->Path();
    const std::string said = testing::Bytes(logs / "out.txt") + testing::Bytes(logs / "err.txt");
    const Tree after = testing::File_Tree(run.layout->root);
    Exit_Faults(run, rules, said, faults);
    File_Faults(run, rules, said, after, faults);
    if (rules.must_refuse && !run.c->told.empty() && said.find(run.c->told) == std::string::npos)
        faults.push_back("did not say \"" + run.c->told + "\"");
    const std::string out = testing::Bytes(logs / "out.txt");
    if (rules.must_refuse && !out.empty() && out.back() != '\n') faults.push_back("left its last line unended");
    if (run.c->kind == Kind::BadMedia && run.command == kPlay && !run.timed_out) Bad_Media_Faults(run, said, faults);
    if (run.c->kind == Kind::Linked) {
        const std::string main = run.layout->at.main.lexically_relative(run.layout->root).string();
        const auto now = after.find(main);
        if (now == after.end() || now->second != run.before.at(main)) faults.push_back("the symlink was replaced");
        else if (!Loadable(run.layout->at.main, logs)) faults.push_back("the Collection behind the link no longer loads");
    }
    return faults;
}

TEST(DamageCorpus, EveryCommandEndsKeepsTheUsersFilesAndTellsTheOutcome) {
    const std::vector<Case> cases = Corpus();
    std::vector<CommandRun> runs;
    for (const Case& c : cases)
        for (int command = 0; command < kCommands; ++command) {
            auto folder = std::make_unique<testing::TempFolder>();
            auto layout = std::make_unique<Layout>(folder->Path() / "program");
            c.make(*layout);
            Tree before = testing::File_Tree(layout->root);
            runs.push_back(
                {&c, static_cast<Command>(command), std::move(folder), std::move(layout), std::move(before), nullptr});
        }

    // Many at a time, the longest allowed first, each killed at its limit.
    std::stable_sort(runs.begin(), runs.end(), [](const CommandRun& a, const CommandRun& b) {
        return kTimeouts[a.command] > kTimeouts[b.command];
    });
    for (size_t first = 0; first < runs.size(); first += kAtOnce) {
        const size_t end = std::min(runs.size(), first + kAtOnce);
        for (size_t i = first; i < end; ++i)
            runs[i].process = std::make_unique<ChildProcess>(Arguments(runs[i]), runs[i].folder->Path() / "out.txt",
                                                             runs[i].folder->Path() / "err.txt");
        const auto started = std::chrono::steady_clock::now();
        for (size_t i = first; i < end; ++i) {
            CommandRun& run = runs[i];
            const auto left = started + std::chrono::seconds(kTimeouts[run.command]) - std::chrono::steady_clock::now();
            const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(left).count();
            if (!run.process->Ended(static_cast<int>(std::max<int64_t>(ms, 0)))) {
                run.process->Kill();
                run.timed_out = true;
            }
        }
    }

    std::map<const Case*, std::string> failing;
    for (const CommandRun& run : runs) {
        const std::vector<std::string> faults = Faults(run);
        if (faults.empty()) continue;
        std::string& line = failing[run.c];
        line += std::string(line.empty() ? "" : " | ") + kCommandNames[run.command] + ": ";
        for (size_t i = 0; i < faults.size(); ++i) line += (i ? ", " : "") + faults[i];
    }
    for (const Case& c : cases)
        if (failing.count(&c) != 0) std::cout << "corpus: FAIL " << c.name << " -- " << failing[&c] << "\n";
    std::cout << "corpus: " << cases.size() << " cases, " << runs.size() << " runs, " << failing.size()
              << " failing cases\n"
              << std::flush;
    EXPECT_EQ(failing.size(), 0u) << "the failing cases are listed above, one line each";
}

}  // namespace
}  // namespace velmora
