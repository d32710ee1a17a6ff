#include "cli/dump_command.h"

#include <filesystem>
#include <nlohmann/json.hpp>
#include <ostream>

#include "cli/read_only_collection.h"

namespace velmora::cli {

namespace {

using Json = nlohmann::ordered_json;

// A Currency as a number: exact to its four decimals, as a double prints
// its shortest round-trip form.
double Number(Currency c) { return c.ToDouble(); }

std::string Text(const Json& j, int indent) {
    // Strings escape their line breaks, so every raw one is layout.
    std::string s = j.dump(2, ' ', false, Json::error_handler_t::replace);
    std::string out;
    out.reserve(s.size());
    for (char c : s) {
        out += c;
        if (c == '\n') out.append(static_cast<size_t>(indent), ' ');
    }
    return out;
}

Json Header_Json(const StoredHeader& h) {
    Json j;
    j["Version_String"] = h.Version_String;
    j["Drive"] = h.Drive;
    j["Dir"] = h.Dir;
    j["Current_Track"] = h.Current_Track;
    j["Current_Position"] = h.Current_Position;
    j["Track_Count"] = h.Track_Count;
    j["Video_Mode"] = h.Video_Mode;
    j["Alarm_File"] = h.Alarm_File;
    j["Class_Play"] = h.Class_Play;
    j["Played_Count"] = h.Played_Count;
    j["Played_High"] = h.Played_High;
    return j;
}

Json Track_Json(const StoredTrack& t) {
    Json j;
    j["Played_Number"] = t.Played_Number;
    j["Duration"] = Number(t.Duration);
    j["Rating_Class"] = t.Rating_Class;
    j["File_Size"] = Number(t.File_Size);
    j["Stop_Position"] = Number(t.Stop_Position);
    j["Bitrate"] = t.Bitrate;
    j["Artist"] = t.Artist;
    j["Genre"] = t.Genre;
    j["Album"] = t.Album;
    j["Title"] = t.Title;
    j["Year"] = t.Year;
    j["Track_Path"] = t.Track_Path;
    j["Identified"] = t.Identified;
    j["Slot_Value"] = t.Slot_Value;
    j["Slot_Text"] = t.Slot_Text;
    return j;
}

Json Filters_Json(const StoredFilters& f) {
    Json j;
    for (int b = 0; b < filter_record::kValueBoxes; ++b) j["Combo4_0(" + std::to_string(b + 1) + ")"] = f.Boxes[b];
    j["List5"] = f.List5;
    return j;
}

}  // namespace

int Dump_Command(const std::string& main_path, std::ostream& out, std::ostream& err) {
    ReadOnlyCollection collection(main_path);
    StoredHeader header;
    if (!collection.Read_Header(header, err)) return 1;
    int code = collection.Check_Header(header, err) ? 0 : 1;

    // The tracks go out one by one, so the dump of a large Collection needs
    // no more memory than one Track.
    out << "{\n  \"header\": " << Text(Header_Json(header), 2) << ",\n  \"tracks\": [";
    // An empty version is a file that was created and never saved: no Tracks.
    const int32_t count = header.Version_String.empty() ? 0 : header.Track_Count;
    if (count > 0) {
        if (!collection.Open_Tracks(err)) {
            code = 1;
        } else {
            StoredTrack track;
            for (int32_t i = 0; i < count; ++i) {
                if (!collection.Read_Track(i, track, err)) {
                    code = 1;
                    break;
                }
                out << (i == 0 ? "\n    " : ",\n    ") << Text(Track_Json(track), 4);
                // The Track the load stops at is shown, and the dump stops there too.
                if (!collection.Check_Track(i, track, err)) {
                    code = 1;
                    break;
                }
            }
            out << "\n  ";
        }
    }
    out << ']';

    const std::string filters_path = collection.Filters_Path();
    std::error_code ec;
    if (!filters_path.empty() && std::filesystem::exists(filters_path, ec)) {
        StoredFilters filters;
        if (!collection.Read_Filters(filters, err)) code = 1;
        out << ",\n  \"filters\": " << Text(Filters_Json(filters), 2);
    }
    out << "\n}\n";
    out.flush();
    if (!out) {
        err << "velmora-cli: cannot write the output\n";
        return 1;
    }
    return code;
}

}  // namespace velmora::cli
