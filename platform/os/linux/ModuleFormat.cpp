#include "os/linux/ModuleFormat.h"

#include <cstring>
#include <elf.h>
#include <fstream>
#include <optional>

namespace os {

namespace {

/// What the first bytes of an ELF file say; the same in its 32-bit and its 64-bit form.
struct ElfStart {
    unsigned char ident[EI_NIDENT];
    Elf64_Half type;
    Elf64_Half machine;
};

std::optional<ElfStart> ReadElfStart(std::string const& path) {
    ElfStart start{};
    std::ifstream file(path, std::ios::binary);
    if (!file.read(reinterpret_cast<char*>(&start), sizeof start) || std::memcmp(start.ident, ELFMAG, SELFMAG) != 0)
        return std::nullopt;
    return start;
}

} // namespace

char const* ExplainRefusedModule(std::string const& path) {
    std::optional<ElfStart> const module = ReadElfStart(path);
    std::optional<ElfStart> const self = ReadElfStart("/proc/self/exe");
    if (!module)
        return "it is no module";
    bool const fits = !self || (module->machine == self->machine && module->ident[EI_CLASS] == self->ident[EI_CLASS] &&
                                module->ident[EI_DATA] == self->ident[EI_DATA]);
    return fits ? nullptr : "it was made for another kind of machine";
}

} // namespace os
