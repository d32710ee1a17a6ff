#pragma once
// An advisory lock held through a small file of its own, with the holder's
// process number and program name written into it, so that whoever finds it
// taken can say who holds it.
//
// The lock is flock(2) on the lock file: the kernel lets go of it when the
// holder ends in any way, a kill included, so a lock never outlives its
// process. A lock file is never renamed, as the files it guards are on every
// full save; a lock on one of those would stay with the old file while the
// next process locked the new one.

#include <string>

namespace velmora {

class FileLock {
public:
    enum class Outcome {
        Held,    // taken, or already held by this object
        Busy,    // another open of the file holds it; Holder() says who
        Failed,  // the lock file cannot be made or locked; Error() says why
    };

    FileLock() = default;
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    // Takes the lock at `path` without waiting, letting go of any other this
    // object holds.
    Outcome Acquire(const std::string& path);
    // Removes the lock file and lets go.
    void Release();

    bool Held() const { return m_fd >= 0; }
    const std::string& Path() const { return m_path; }
    // After Busy: "velmora-cli (pid 4242)", or what the file says when it is
    // not in that form.
    const std::string& Holder() const { return m_holder; }
    const std::string& Error() const { return m_error; }

private:
    int m_fd = -1;
    std::string m_path;
    std::string m_holder;
    std::string m_error;
};

}  // namespace velmora
