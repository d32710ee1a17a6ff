#include "core/constant_tables.h"

#include <cstdio>

namespace velmora {

namespace {

std::array<std::string, 128> BuildGenres() {
    static const char* const kGreek[32] = {
        "000 - Αργά - Blues", "001 - Κλασσικό Ροκ - Classic Rock", "002- Κάντρυ - Country",
        "003 - Χορευτική - Dance", "004 - Ντίσκο - Disco", "005 - Φάνκ - Funk", "006 - Grunge",
        "007 - Χιπ-Χοπ - Hip Hop", "008 - Τζαζ - Jazz", "009 - Θρησκευτική - Religious",
        "010 - Νέα Εποχή - New Age", "011 - Παλιά - Oldies", "012 - Άλλο - Other", "013 - Ποπ - Pop",
        "014 - R&b", "015 - Ραπ - Rap", "016 - Ρέγκε - Reggae", "017 - Ροκ - Rock", "018 - Τέκνο - Techno",
        "019 - Βιομηχανική - Industrial", "020 - Εναλλακτική - Alternative", "021 - Σκα - Ska",
        "022 - Αρχαία - Ancient", "023 - Pranks", "024 - Μουσική Ταινίας - Soundtrack",
        "025 - Euro - Techno", "026 - Περιβάλλοντος - Ambient", "027 - Τριπ Χοπ - Trip Hop",
        "028 - Φωνητική - Vocal", "029 - Τζαζ Φανκ - Jazz Funk", "030 - Fusion", "031 - Τρανς - Trance",
    };
    // From 32 on: the common genre list with its extensions.
    static const char* const kEnglish[96] = {
        "Classical", "Instrumental", "Acid", "House", "Game", "Sound Clip", "Gospel", "Noise",
        "AlternRock", "Bass", "Soul", "Punk", "Space", "Meditative", "Instrumental Pop",
        "Instrumental Rock", "Ethnic", "Gothic", "Darkwave", "Techno-Industrial", "Electronic",
        "Pop-Folk", "Eurodance", "Dream", "Southern Rock", "Comedy", "Cult", "Gangsta", "Top 40",
        "Christian Rap", "Pop/Funk", "Jungle", "Native American", "Cabaret", "New Wave", "Psychadelic",
        "Rave", "Showtunes", "Trailer", "Lo-Fi", "Tribal", "Acid Punk", "Acid Jazz", "Polka", "Retro",
        "Musical", "Rock & Roll", "Hard Rock", "Folk", "Folk-Rock", "National Folk", "Swing",
        "Fast Fusion", "Bebob", "Latin", "Revival", "Celtic", "Bluegrass", "Avantgarde", "Gothic Rock",
        "Progressive Rock", "Psychedelic Rock", "Symphonic Rock", "Slow Rock", "Big Band", "Chorus",
        "Easy Listening", "Acoustic", "Humour", "Speech", "Chanson", "Opera", "Chamber Music", "Sonata",
        "Symphony", "Booty Bass", "Primus", "Porn Groove", "Satire", "Slow Jam", "Club", "Tango", "Samba",
        "Folklore", "Ballad", "Power Ballad", "Rhythmic Soul", "Freestyle", "Duet", "Punk Rock",
        "Drum Solo", "A capella", "Euro-House", "Dance Hall", "Goa", "Drum & Bass",
    };
    std::array<std::string, 128> g;
    for (int i = 0; i < 32; ++i) g[i] = kGreek[i];
    for (int i = 32; i < 128; ++i) {
        int number = i;
        if (i == 32) number = 33;
        if (i == 33 || i == 34) number = 34;
        char head[8];
        std::snprintf(head, sizeof head, "%03d", number);
        g[i] = std::string(head) + " - " + kEnglish[i - 32];
    }
    return g;
}

}  // namespace

const std::array<std::string, 128>& Genre_Captions() {
    static const std::array<std::string, 128> genres = BuildGenres();
    return genres;
}

const std::array<std::string, 32>& Media_Extension_Table() {
    static const std::array<std::string, 32> table = {
        ".mp3", ".wav", ".snd",  ".au",   ".aif",  ".aifc", ".aiff", ".mid",  ".rmi",  ".midi", ".cda",
        ".wm",  ".wma", ".wax",  ".wmv",  ".wmd",  ".mpeg", ".mpg",  ".mpe",  ".m1v",  ".mp2",  ".mpa",
        ".mpv2", ".mp2v", ".asf", ".wmv", ".wmd",  ".avi",  ".dvr-ms", ".m3u", ".wpl",  ".wvx",
    };
    return table;
}

const std::array<std::string, 3>& Search_Address_Table() {
    static const std::array<std::string, 3> table = {
        "https://www.youtube.com/results?search_query=",
        "https://vimeo.com/search?q=",
        "https://duckduckgo.com/#q=",
    };
    return table;
}

}  // namespace velmora
