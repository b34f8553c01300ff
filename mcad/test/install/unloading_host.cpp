// A host that loads the library along with a plugin, has it used, and unloads both.
#include <cstring>
#include <iostream>

#include <dlfcn.h>
#include <link.h>

namespace {

bool isLoaded(const char* library) {
    const auto hasName = [](dl_phdr_info* info, std::size_t, void* name) {
        return std::strstr(info->dlpi_name, static_cast<const char*>(name)) != nullptr ? 1 : 0;
    };
    return dl_iterate_phdr(hasName, const_cast<char*>(library)) != 0;
}

} // namespace

int main() {
    void* const plugin = dlopen(PLUGIN, RTLD_NOW | RTLD_LOCAL);
    void* const use = plugin ? dlsym(plugin, "useLibrary") : nullptr;
    if (!use) {
        std::cerr << dlerror() << '\n';
        return 1;
    }
    if (!isLoaded("libzeq_api.so")) {
        std::cerr << "the plugin does not use the library\n";
        return 1;
    }
    if (reinterpret_cast<int (*)()>(use)() != 0) return 1;
    dlclose(plugin);
    if (isLoaded("libzeq_api.so")) {
        std::cerr << "the library cannot be unloaded\n";
        return 1;
    }
    return 0;
}
