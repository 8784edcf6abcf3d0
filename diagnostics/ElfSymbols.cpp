#include "diagnostics/ElfSymbols.h"

#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <initializer_list>

namespace orvo {
namespace diagnostics {
namespace {

using Header = ElfW(Ehdr);
using Section = ElfW(Shdr);
using Symbol = ElfW(Sym);

#if defined(__LP64__)
constexpr unsigned char kNativeClass = ELFCLASS64;
#else
constexpr unsigned char kNativeClass = ELFCLASS32;
#endif

// The image may come from any file, so every record is copied out of it
// after a bounds check instead of being read in place at a possibly
// misaligned offset.
class ImageReader {
 public:
  ImageReader(const unsigned char* image, std::size_t size) : _image(image), _size(size) {}

  bool holds(std::uint64_t offset, std::uint64_t length) const {
    return offset <= _size && length <= _size - offset;
  }

  template <class Record>
  bool read(std::uint64_t offset, Record* record) const {
    if (!holds(offset, sizeof(Record))) return false;
    std::memcpy(record, _image + offset, sizeof(Record));
    return true;
  }

  // A terminated text at `offset` inside the table [tableOffset, +tableSize).
  const char* text(std::uint64_t tableOffset, std::uint64_t tableSize, std::uint64_t offset) const {
    if (!holds(tableOffset, tableSize) || offset >= tableSize) return nullptr;
    const unsigned char* start = _image + tableOffset + offset;
    if (std::memchr(start, '\0', tableSize - offset) == nullptr) return nullptr;
    return reinterpret_cast<const char*>(start);
  }

 private:
  const unsigned char* _image;
  std::size_t _size;
};

bool isFunction(const Symbol& symbol) {
  const unsigned type = ELF64_ST_TYPE(symbol.st_info);
  return (type == STT_FUNC || type == STT_GNU_IFUNC) && symbol.st_shndx != SHN_UNDEF &&
         symbol.st_size != 0;
}

bool searchTable(const ImageReader& reader, const Header& header, const Section& table,
                 std::uintptr_t address, const char** name, std::uintptr_t* displacement) {
  Section strings;
  if (table.sh_entsize != sizeof(Symbol) || table.sh_link >= header.e_shnum ||
      !reader.holds(table.sh_offset, table.sh_size) ||
      !reader.read(header.e_shoff + std::uint64_t{table.sh_link} * sizeof(Section), &strings)) {
    return false;
  }
  const std::uint64_t count = table.sh_size / sizeof(Symbol);
  for (std::uint64_t i = 0; i < count; ++i) {
    Symbol symbol;
    if (!reader.read(table.sh_offset + i * sizeof(Symbol), &symbol)) return false;
    if (!isFunction(symbol) || address < symbol.st_value ||
        address - symbol.st_value >= symbol.st_size) {
      continue;
    }
    const char* found = reader.text(strings.sh_offset, strings.sh_size, symbol.st_name);
    if (found == nullptr || found[0] == '\0') continue;
    *name = found;
    *displacement = address - symbol.st_value;
    return true;
  }
  return false;
}

}  // namespace

bool findFunctionSymbol(const unsigned char* image, std::size_t size, std::uintptr_t address,
                        const char** name, std::uintptr_t* displacement) {
  const ImageReader reader(image, size);
  Header header;
  if (image == nullptr || !reader.read(0, &header) ||
      std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 ||
      header.e_ident[EI_CLASS] != kNativeClass || header.e_shentsize != sizeof(Section) ||
      !reader.holds(header.e_shoff, std::uint64_t{header.e_shnum} * sizeof(Section))) {
    return false;
  }
  // The full table names local functions too; the dynamic one is all that a
  // stripped file keeps.
  for (const unsigned type : {SHT_SYMTAB, SHT_DYNSYM}) {
    for (unsigned i = 0; i < header.e_shnum; ++i) {
      Section section;
      if (!reader.read(header.e_shoff + std::uint64_t{i} * sizeof(Section), &section)) {
        return false;
      }
      if (section.sh_type == type &&
          searchTable(reader, header, section, address, name, displacement)) {
        return true;
      }
    }
  }
  return false;
}

bool findFunctionSymbolInFile(const char* path, std::uintptr_t address, char* name,
                              std::size_t nameSize, std::uintptr_t* displacement) {
  if (path == nullptr || path[0] == '\0' || nameSize == 0) return false;
  const int fd = open(path, O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  struct stat status;
  void* image = MAP_FAILED;
  if (fstat(fd, &status) == 0 && S_ISREG(status.st_mode) && status.st_size > 0) {
    image = mmap(nullptr, static_cast<std::size_t>(status.st_size), PROT_READ, MAP_PRIVATE, fd, 0);
  }
  close(fd);
  if (image == MAP_FAILED) return false;
  const char* found = nullptr;
  const bool ok =
      findFunctionSymbol(static_cast<const unsigned char*>(image),
                         static_cast<std::size_t>(status.st_size), address, &found, displacement);
  if (ok) {
    const std::size_t length = strnlen(found, nameSize - 1);
    std::memcpy(name, found, length);
    name[length] = '\0';
  }
  munmap(image, static_cast<std::size_t>(status.st_size));
  return ok;
}

}  // namespace diagnostics
}  // namespace orvo
