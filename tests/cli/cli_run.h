#pragma once
// velmora-cli run as a program, as a user's shell runs it: its exit code,
// standard output and standard error; and the paths given to it.

#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace velmora::testing {

inline std::string Quoted(const std::filesystem::path& path) { return "'" + path.string() + "'"; }

struct CliRun {
    int code = -1;
    std::string out, err;
};

// Standard input is never a terminal here, so nothing waits for a key; the
// time limit keeps a player that never stops from hanging the run. Standard
// error goes through a file in scratch; `program` may be a copy of the tool.
inline CliRun Cli(const std::string& args, const std::filesystem::path& scratch,
                  const std::string& program = VELMORA_CLI) {
    const std::filesystem::path err_file = scratch / "stderr.txt";
    const std::string command =
        "timeout 60 '" + program + "' " + args + " </dev/null 2>'" + err_file.string() + "'";
    CliRun run;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return run;
    char buffer[4096];
    for (size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) run.out.append(buffer, n);
    const int status = pclose(pipe);
    run.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    std::ifstream in(err_file);
    run.err.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return run;
}

}  // namespace velmora::testing

namespace velmora {
// The terminal tests call these by their short names.
using testing::Cli;
using testing::CliRun;
using testing::Quoted;
}  // namespace velmora
