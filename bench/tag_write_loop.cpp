// Writes tags into one media file over and over until it is killed: the
// other half of tag_kill_test.sh. Each write changes the title to a text of
// another length and the rating to another class, so that the tag grows and
// shrinks past its padding and the file is rewritten in full.
//
//   tag_write_loop FILE

#include <cstdio>
#include <string>

#include "platform/tag_writing.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: tag_write_loop FILE\n");
        return 2;
    }
    static const char* const kRatings[] = {"1", "25", "50", "75", "99", "0"};
    for (unsigned long n = 0;; ++n) {
        const std::string title = "Τίτλος " + std::string(n % 7 * 700, 'x');
        const velmora::Status written =
            velmora::Write_Tags(argv[1], {{"title", title}, {"userrating", kRatings[n % 6]}});
        if (!written) {
            std::fprintf(stderr, "%s\n", written.error().c_str());
            return 1;
        }
    }
}
