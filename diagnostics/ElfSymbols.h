// Function names from the symbol tables of an ELF file, so that a stack trace
// can name functions that the dynamic linker does not know: those of a
// program linked without exported symbols, and functions local to a file.
#ifndef ORVO_DIAGNOSTICS_ELF_SYMBOLS_H_
#define ORVO_DIAGNOSTICS_ELF_SYMBOLS_H_

#include <cstddef>
#include <cstdint>

namespace orvo {
namespace diagnostics {

// Finds, in the `size` bytes of an ELF image of this machine's class, the
// function whose range holds `address` (an address as the image's symbols
// count it). On success `name` points into `image` at a terminated text.
// Any malformed image answers false; nothing outside `image` is read.
bool findFunctionSymbol(const unsigned char* image, std::size_t size, std::uintptr_t address,
                        const char** name, std::uintptr_t* displacement);

// The same on the file at `path`, read through a private read-only mapping;
// the raw (mangled) name is copied into `name`, cut to `nameSize`.
bool findFunctionSymbolInFile(const char* path, std::uintptr_t address, char* name,
                              std::size_t nameSize, std::uintptr_t* displacement);

}  // namespace diagnostics
}  // namespace orvo

#endif  // ORVO_DIAGNOSTICS_ELF_SYMBOLS_H_
