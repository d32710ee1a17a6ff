#include "platform/shared_library.h"

#include <dlfcn.h>

namespace velmora {

void* SharedLibrary::Find(const char* name) {
    std::call_once(m_opened, [this] {
        // Never closed: its threads and the pointers found in it live as long as the program.
        m_handle = dlopen(m_soname.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (m_handle == nullptr) {
            const char* why = dlerror();
            m_error = why != nullptr ? why : m_soname + ": cannot be opened";
        }
    });
    return m_handle != nullptr ? dlsym(m_handle, name) : nullptr;
}

}  // namespace velmora
