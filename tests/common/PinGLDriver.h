#pragma once
// Keeps the OpenGL driver libraries loaded until the process ends. Mesa unloads its GLX and DRI
// modules when Qt closes the X connection at exit; LeakSanitizer then finds their
// process-lifetime allocations under "<unknown module>", where no suppression by library name can
// reach them. Call once after the first GL context exists.

#include <dlfcn.h>
#include <link.h>

#include <cstring>
#include <string>
#include <vector>

inline void pinGLDriverLibraries()
{
    std::vector<std::string> names;
    dl_iterate_phdr(
        [](dl_phdr_info* info, size_t, void* data) {
            const char* name = info->dlpi_name;
            if (name && (std::strstr(name, "_dri.so") || std::strstr(name, "libGLX_mesa")
                         || std::strstr(name, "libgallium")))
                static_cast<std::vector<std::string>*>(data)->emplace_back(name);
            return 0;
        },
        &names);
    // RTLD_NOLOAD | RTLD_NODELETE marks an already loaded object as never to be unloaded; the
    // handle is deliberately kept.
    for (const std::string& name : names)
        dlopen(name.c_str(), RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
}
