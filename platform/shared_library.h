#pragma once
// A shared library opened when a function of it is first asked for, not
// with the program, and kept open from then on. libmpv and libavformat each
// bring some hundred libraries with them, near 40 MB resident between them
// before anything plays or is read.

#include <mutex>
#include <string>

namespace velmora {

class SharedLibrary {
public:
    // By its soname, as the dynamic linker finds it.
    explicit SharedLibrary(std::string soname) : m_soname(std::move(soname)) {}
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;

    // The function of that name; null when the library cannot be opened or lacks it.
    void* Find(const char* name);
    // Why the library could not be opened; empty when it could, or before the first Find.
    const std::string& OpenError() const { return m_error; }

private:
    std::once_flag m_opened;
    void* m_handle = nullptr;
    std::string m_soname;
    std::string m_error;
};

// The function of that name from the library, as a pointer of its type.
template <class Function>
Function* Find_Function(SharedLibrary& library, const char* name) {
    return reinterpret_cast<Function*>(library.Find(name));
}

}  // namespace velmora
