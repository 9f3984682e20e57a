#include "GNUstep/process/ImportedFunction.hpp"

#include <algorithm>
#include <elf.h>
#include <link.h>
#include <span>
#include <sys/mman.h>
#include <unistd.h>

namespace vant {
namespace {

struct Search {
    std::string_view library;
    std::string_view function;
    void *replacement;
    bool isDone = false;
};

/// What the dynamic section of a loaded library says of its imports.
struct Imports {
    const ElfW(Sym) *symbols = nullptr;
    const char *names = nullptr;
    std::span<const ElfW(Rela)> slots;
};

template<class T>
const T *at(const dl_phdr_info &library, ElfW(Addr) address) {
    // The loader has made most of these addresses absolute, but not on every architecture.
    return reinterpret_cast<const T *>(address < library.dlpi_addr ? library.dlpi_addr + address : address);
}

Imports importsOf(const dl_phdr_info &library, const ElfW(Phdr) & dynamic) {
    Imports imports;
    const ElfW(Rela) *slots = nullptr;
    std::size_t bytes = 0;
    for (const auto *entry = reinterpret_cast<const ElfW(Dyn) *>(library.dlpi_addr + dynamic.p_vaddr);
         entry->d_tag != DT_NULL; ++entry) {
        if (entry->d_tag == DT_SYMTAB)
            imports.symbols = at<ElfW(Sym)>(library, entry->d_un.d_ptr);
        else if (entry->d_tag == DT_STRTAB)
            imports.names = at<char>(library, entry->d_un.d_ptr);
        else if (entry->d_tag == DT_JMPREL)
            slots = at<ElfW(Rela)>(library, entry->d_un.d_ptr);
        else if (entry->d_tag == DT_PLTRELSZ)
            bytes = entry->d_un.d_val;
    }
    if (slots != nullptr)
        imports.slots = {slots, bytes / sizeof(ElfW(Rela))};
    return imports;
}

bool isReadOnly(const dl_phdr_info &library, ElfW(Addr) offset) {
    return std::ranges::any_of(std::span(library.dlpi_phdr, library.dlpi_phnum), [offset](const auto &part) {
        return part.p_type == PT_GNU_RELRO && offset >= part.p_vaddr && offset - part.p_vaddr < part.p_memsz;
    });
}

/// A library's slots are usually made read-only once they are filled.
bool fill(const dl_phdr_info &library, ElfW(Addr) offset, void *value) {
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    const ElfW(Addr) slot = library.dlpi_addr + offset;
    auto *const start = reinterpret_cast<void *>(slot / page * page);
    const bool isProtected = isReadOnly(library, offset);
    if (isProtected && ::mprotect(start, page, PROT_READ | PROT_WRITE) != 0)
        return false;
    __atomic_store_n(reinterpret_cast<void **>(slot), value, __ATOMIC_RELEASE);
    return !isProtected || ::mprotect(start, page, PROT_READ) == 0;
}

int look(dl_phdr_info *library, std::size_t /*size*/, void *context) {
    auto &search = *static_cast<Search *>(context);
    if (std::string_view(library->dlpi_name).find(search.library) == std::string_view::npos)
        return 0;
    Imports imports;
    for (const auto &part : std::span(library->dlpi_phdr, library->dlpi_phnum))
        if (part.p_type == PT_DYNAMIC)
            imports = importsOf(*library, part);
    for (const auto &slot : imports.slots)
        if (imports.names + imports.symbols[ELF64_R_SYM(slot.r_info)].st_name == search.function)
            search.isDone = fill(*library, slot.r_offset, search.replacement);
    return search.isDone ? 1 : 0;
}

} // namespace

bool replaceImport(std::string_view library, std::string_view function, void *replacement) {
    Search search{.library = library, .function = function, .replacement = replacement};
    ::dl_iterate_phdr(look, &search);
    return search.isDone;
}

} // namespace vant
