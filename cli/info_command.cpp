#include "cli/info_command.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <ostream>

#include "cli/read_only_collection.h"

namespace velmora::cli {

namespace {

struct Totals {
    int64_t tracks = 0;
    Currency duration;
    Currency size;  // megabytes
    void Add(const StoredTrack& t) {
        ++tracks;
        duration += t.Duration;
        size += t.File_Size;
    }
};

// DDD:HH:MM:SS, as the program shows its time totals.
std::string Time_Total(Currency seconds) {
    long long s = seconds.Round();
    const char* sign = s < 0 ? "-" : "";
    if (s < 0) s = -s;
    char text[48];
    std::snprintf(text, sizeof text, "%s%03lld:%02lld:%02lld:%02lld", sign, s / 86400, s / 3600 % 24, s / 60 % 60,
                  s % 60);
    return text;
}

// Megabytes, and gigabytes from 1024 Mb on.
std::string Size_Total(Currency megabytes) {
    const double mb = megabytes.ToDouble();
    char text[48];
    if (mb >= 1024) std::snprintf(text, sizeof text, "%.2f Gb", mb / 1024);
    else std::snprintf(text, sizeof text, "%.2f Mb", mb);
    return text;
}

std::string Row(const char* name, const Totals& t) {
    char text[128];
    std::snprintf(text, sizeof text, "  %-9s %7lld  %s  %s\n", name, static_cast<long long>(t.tracks),
                  Time_Total(t.duration).c_str(), Size_Total(t.size).c_str());
    return text;
}

}  // namespace

int Info_Command(const std::string& main_path, std::ostream& out, std::ostream& err) {
    ReadOnlyCollection collection(main_path);
    StoredHeader header;
    if (!collection.Read_Header(header, err)) return 1;
    out << "Collection:  " << main_path << '\n';
    if (header.Version_String.empty()) {
        out << "Empty: created and never saved\n";
        return 0;
    }

    // Only totals are kept: one Track in memory at a time, whatever the size.
    int code = collection.Check_Header(header, err) ? 0 : 1;
    std::array<Totals, 6> classes;
    Totals all;
    int64_t played = 0, pathless = 0;
    if (header.Track_Count > 0) {
        if (!collection.Open_Tracks(err)) {
            code = 1;
        } else {
            StoredTrack track;
            for (int32_t i = 0; i < header.Track_Count; ++i) {
                if (!collection.Read_Track(i, track, err) || !collection.Check_Track(i, track, err)) {
                    code = 1;
                    break;
                }
                // The load leaves a Track with no path out.
                if (Is_Pathless(track.Track_Path)) {
                    ++pathless;
                    continue;
                }
                all.Add(track);
                if (track.Played_Number != 0) ++played;
                classes[track.Rating_Class].Add(track);
            }
        }
    }

    out << "Tracks:      " << header.Track_Count;
    if (all.tracks + pathless != header.Track_Count) out << " (" << all.tracks + pathless << " read)";
    if (pathless > 0) out << " (" << pathless << " without a path, left out)";
    out << "\nPlayed:      " << played << " in this cycle (Played_Count " << header.Played_Count << ", Played_High "
        << header.Played_High << ")\n";
    out << "Resumes at:  Track " << header.Current_Track << ", " << Time_Total(Currency(header.Current_Position))
        << '\n';
    out << "Classes:\n";
    static const std::array<std::pair<const char*, int>, 6> kOrder{
        {{"S", 5}, {"A", 4}, {"B", 3}, {"C", 2}, {"X", 1}, {"Unmarked", 0}}};
    for (const auto& [name, c] : kOrder) out << Row(name, classes[c]);
    out << Row("all", all);
    const std::string filters = collection.Filters_Path();
    std::error_code ec;
    out << "Filters:     " << (!filters.empty() && std::filesystem::exists(filters, ec) ? filters : "none") << '\n';
    return code;
}

}  // namespace velmora::cli
