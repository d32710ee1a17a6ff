#include "platform/tag_writing.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <taglib/fileref.h>
#include <taglib/tfilestream.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/tag.h>
#include <taglib/wavfile.h>

#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <utility>

#include "base/fd_io.h"
#include "platform/rating_tags.h"

namespace velmora {

namespace {

std::string Cause(const std::string& path, const char* what) { return path + ": " + what + ": " + std::strerror(errno); }

std::string Folder_Of(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string Name_Of(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// A link is followed, so that the file it names is changed and the link stays.
std::string Real_Path(const std::string& path) {
    char resolved[PATH_MAX];
    return ::realpath(path.c_str(), resolved) != nullptr ? std::string(resolved) : path;
}

bool Parse_Number(const std::string& text, unsigned& out) {
    const char* end = text.data() + text.size();
    const auto [stop, ec] = std::from_chars(text.data(), end, out);
    return ec == std::errc() && stop == end;
}

std::string Check_Values(const std::vector<TagChange>& changes) {
    for (const TagChange& c : changes) {
        unsigned number = 0;
        if (c.field == "year") {
            if (!c.value.empty() && !Parse_Number(c.value, number)) return "not a year: " + c.value;
        } else if (c.field == "userrating") {
            if (!Parse_Number(c.value, number) || number > 99) return "not a rating of 0 to 99: " + c.value;
        } else if (c.field != "title" && c.field != "artist" && c.field != "album" && c.field != "genre" &&
                   c.field != "comment") {
            return "cannot write the attribute " + c.field;
        }
    }
    return {};
}

// Empty when every change found its place in the file.
std::string Apply(TagLib::File& file, const std::vector<TagChange>& changes) {
    // An MP3 gets an ID3v2 tag to write into; an ID3v1 or APE tag it already
    // has is kept in step through the common tag.
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file)) mpeg->ID3v2Tag(true);
    TagLib::Tag* tag = file.tag();
    for (const TagChange& c : changes) {
        const TagLib::String text(c.value, TagLib::String::UTF8);
        if (c.field == "title") tag->setTitle(text);
        else if (c.field == "artist") tag->setArtist(text);
        else if (c.field == "album") tag->setAlbum(text);
        else if (c.field == "genre") tag->setGenre(text);
        else if (c.field == "comment") tag->setComment(text);
        else if (c.field == "year") tag->setYear(c.value.empty() ? 0 : std::stoul(c.value));
        else if (c.field == "userrating" && !WriteUserRating(file, std::stoi(c.value)))
            return "the format keeps no rating";
    }
    return {};
}

bool Save(TagLib::File& file) {
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(&file)) {
        int tags = TagLib::MPEG::File::ID3v2;
        if (mpeg->hasID3v1Tag()) tags |= TagLib::MPEG::File::ID3v1;
        if (mpeg->hasAPETag()) tags |= TagLib::MPEG::File::APE;
        return mpeg->save(tags, TagLib::File::StripNone, TagLib::ID3v2::v4, TagLib::File::DoNotDuplicate);
    }
    if (auto* wav = dynamic_cast<TagLib::RIFF::WAV::File*>(&file))
        return wav->save(TagLib::RIFF::WAV::File::AllTags, TagLib::File::StripNone, TagLib::ID3v2::v4);
    return file.save();
}

// The copy read and written under the file's own name, so that TagLib
// knows the format by the name's ending while the copy's own name ends in
// none a search for media files would take.
class CopyStream : public TagLib::FileStream {
public:
    CopyStream(const std::string& copy, std::string name) : FileStream(copy.c_str()), m_name(std::move(name)) {}
    TagLib::FileName name() const override { return m_name.c_str(); }

private:
    std::string m_name;
};

std::string Change_Copy(const std::string& temp, const std::string& path, const std::vector<TagChange>& changes) {
    try {
        CopyStream stream(temp, path);
        if (!stream.isOpen() || stream.readOnly()) return "cannot open the copy";
        TagLib::FileRef ref(&stream, false);
        if (ref.isNull() || ref.tag() == nullptr) return "the file has no tag that can be written";
        if (std::string failed = Apply(*ref.file(), changes); !failed.empty()) return failed;
        if (!Save(*ref.file())) return "cannot save the tag";
    } catch (const std::exception& e) {
        return e.what();
    }
    return {};
}

class Descriptor {
public:
    explicit Descriptor(int fd) : m_fd(fd) {}
    ~Descriptor() {
        if (m_fd >= 0) ::close(m_fd);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return m_fd; }
    int release() { return std::exchange(m_fd, -1); }

private:
    int m_fd;
};

}  // namespace

std::string Why_Not_Writable(const std::string& given) {
    const std::string path = Real_Path(given);
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0) return Cause(given, "cannot find the file");
    if (!S_ISREG(st.st_mode)) return given + ": not a regular file";
    if (::access(path.c_str(), W_OK) != 0) return Cause(given, "the file cannot be written");
    // A file its owner marked read-only stays so, also for a user the mark does not stop.
    if ((st.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0) return given + ": the file is marked read-only";
    if (::access(Folder_Of(path).c_str(), W_OK | X_OK) != 0) return Cause(given, "its folder cannot be written");
    return {};
}

Status Write_Tags(const std::string& given, const std::vector<TagChange>& changes) {
    if (const std::string bad = Check_Values(changes); !bad.empty()) return Error{given + ": " + bad};
    if (const std::string why = Why_Not_Writable(given); !why.empty()) return Error{why};
    const std::string path = Real_Path(given);

    Descriptor in(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (in.get() < 0) return Error{Cause(given, "cannot open the file")};
    // Another program that holds a lock on the file is writing it: leave it be.
    if (::flock(in.get(), LOCK_EX | LOCK_NB) != 0)
        return Error{errno == EWOULDBLOCK ? given + ": another program holds the file" : Cause(given, "lock")};
    struct stat before {};
    if (::fstat(in.get(), &before) != 0) return Error{Cause(given, "cannot read the file's state")};

    // One name per file: a copy left by a write that was killed is found
    // and replaced by the next write, since the lock says no write is under
    // way. A name too long for the folder takes a name of its own.
    std::string temp = Folder_Of(path) + "/." + Name_Of(path) + ".velmora-tag";
    if (Name_Of(temp).size() > NAME_MAX) temp = Folder_Of(path) + "/.velmora-tag-XXXXXX";
    const int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    auto make = [&] { return temp.back() == 'X' ? ::mkostemp(temp.data(), O_CLOEXEC) : ::open(temp.c_str(), flags, 0600); };
    int fd = make();
    if (fd < 0 && errno == EEXIST && ::unlink(temp.c_str()) == 0) fd = make();
    Descriptor out(fd);
    if (out.get() < 0) return Error{Cause(given, "cannot make a copy beside the file")};

    std::string why;
    if (!Copy_Contents(in.get(), out.get())) why = Cause(given, "cannot copy the file");
    if (why.empty() && ::fchmod(out.get(), before.st_mode & 07777) != 0) why = Cause(given, "permissions");
    if (why.empty()) (void)::fchown(out.get(), before.st_uid, before.st_gid);  // allowed to fail for others' files
    if (::close(out.release()) != 0 && why.empty()) why = Cause(given, "cannot close the copy");
    if (why.empty()) {
        if (const std::string failed = Change_Copy(temp, path, changes); !failed.empty()) why = given + ": " + failed;
    }
    // A file changed by someone else while the copy was made would lose
    // that change: it wins, and this write is given up.
    struct stat now {};
    if (why.empty() && (::stat(path.c_str(), &now) != 0 || now.st_ino != before.st_ino ||
                        now.st_size != before.st_size || now.st_mtim.tv_sec != before.st_mtim.tv_sec ||
                        now.st_mtim.tv_nsec != before.st_mtim.tv_nsec))
        why = given + ": the file changed while its tags were written";
    if (why.empty() && std::rename(temp.c_str(), path.c_str()) != 0) why = Cause(given, "cannot replace the file");
    if (!why.empty()) {
        ::unlink(temp.c_str());
        return Error{why};
    }
    return {};
}

}  // namespace velmora
