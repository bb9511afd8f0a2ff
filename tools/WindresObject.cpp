#include "WindresObject.h"

#include <elf.h>

#include <cstddef>
#include <cstring>

#include "Resource.h"

namespace zendry {

namespace {

using mavro::ResourceEntry;

#if defined(__x86_64__)
constexpr Elf64_Half cMachine = EM_X86_64;
constexpr Elf64_Xword cAddressRelocation = R_X86_64_64;
#elif defined(__aarch64__)
constexpr Elf64_Half cMachine = EM_AARCH64;
constexpr Elf64_Xword cAddressRelocation = R_AARCH64_ABS64;
#else
#error "windres writes objects for x86-64 and aarch64 only"
#endif
#if __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "windres writes objects of little-endian machines only"
#endif

constexpr uint64_t cDataAlignment = 16;
constexpr Elf64_Xword cDataSymbol = 1;  // the symbol of the section of the contents

enum Section {
  cNoSection,
  cDataSection,
  cTableSection,
  cRelocationSection,
  cSymbolSection,
  cStringSection,
  cNameSection,
  cStackSection,  // says that the program needs no executable stack
  cSectionCount
};
constexpr const char* cSectionNames[cSectionCount] = {"",
                                                      ".rodata.mavro_resources",
                                                      "mavro_resources",
                                                      ".rela.mavro_resources",
                                                      ".symtab",
                                                      ".strtab",
                                                      ".shstrtab",
                                                      ".note.GNU-stack"};

template <class Record>
void AppendRecord(std::string& bytes, const Record& record) {
  bytes.append(reinterpret_cast<const char*>(&record), sizeof record);
}

uint64_t Aligned(uint64_t offset, uint64_t alignment) {
  return (offset + alignment - 1) / alignment * alignment;
}

class ObjectWriter {
 public:
  std::vector<ObjectPiece> Write(const std::vector<Resource>& resources,
                                 const std::vector<uint64_t>& sizes) {
    AppendRecord(symbols, Elf64_Sym{});
    Elf64_Sym data = {};
    data.st_info = ELF64_ST_INFO(STB_LOCAL, STT_SECTION);
    data.st_shndx = cDataSection;
    AppendRecord(symbols, data);
    for (size_t i = 0; i < resources.size(); ++i) AddResource(resources[i], sizes[i]);
    AddTail();
    return std::move(pieces);
  }

 private:
  // The content, a zero byte, then the texts of the entry.
  void AddResource(const Resource& resource, uint64_t size) {
    Pad(cDataAlignment);
    const uint64_t content = dataSize;
    if (resource.file.empty()) {
      AddBytes(resource.bytes);
    } else {
      pieces.push_back({"", &resource});
      dataSize += size;
    }
    AddBytes(std::string(1, '\0'));
    const uint64_t type = dataSize;
    AddBytes(resource.type + '\0');
    const uint64_t name = dataSize;
    if (resource.name.empty())
      AddSymbol("mavro_resource_" + resource.type + "_" + std::to_string(resource.id));
    else
      AddBytes(resource.name + '\0');
    Point(offsetof(ResourceEntry, type), type);
    if (!resource.name.empty()) Point(offsetof(ResourceEntry, name), name);
    Point(offsetof(ResourceEntry, data), content);
    AppendRecord(
        table,
        ResourceEntry{
            .type = nullptr, .id = resource.id, .name = nullptr, .data = nullptr, .size = size});
  }

  void Pad(uint64_t alignment) {
    AddBytes(std::string(Aligned(dataSize, alignment) - dataSize, '\0'));
  }

  void AddBytes(const std::string& bytes) {
    if (pieces.empty() || pieces.back().content) pieces.push_back({});
    pieces.back().bytes += bytes;
    dataSize += bytes.size();
  }

  // Gives a member of the current entry the address of a place in the data.
  void Point(uint64_t member, uint64_t place) {
    AppendRecord(relocations, Elf64_Rela{.r_offset = table.size() + member,
                                         .r_info = ELF64_R_INFO(cDataSymbol, cAddressRelocation),
                                         .r_addend = static_cast<Elf64_Sxword>(place)});
  }

  void AddSymbol(const std::string& name) {
    AppendRecord(symbols, Elf64_Sym{.st_name = static_cast<Elf64_Word>(strings.size()),
                                    .st_info = ELF64_ST_INFO(STB_WEAK, STT_OBJECT),
                                    .st_other = STV_HIDDEN,
                                    .st_shndx = cTableSection,
                                    .st_value = table.size(),
                                    .st_size = sizeof(ResourceEntry)});
    strings += name + '\0';
  }

  // The order in the file is: ELF header, contents, all small parts, section headers.
  void AddTail() {
    std::string names;
    Elf64_Shdr headers[cSectionCount] = {};
    for (int i = 0; i < cSectionCount; ++i) {
      headers[i].sh_name = static_cast<Elf64_Word>(names.size());
      names += cSectionNames[i] + std::string(1, '\0');
    }
    const uint64_t dataStart = Aligned(sizeof(Elf64_Ehdr), cDataAlignment);
    headers[cDataSection].sh_offset = dataStart;
    headers[cDataSection].sh_size = dataSize;
    const uint64_t tailStart = dataStart + Aligned(dataSize, cDataAlignment);
    Pad(cDataAlignment);
    std::string tail;
    const auto place = [&](Section section, const std::string& bytes) {
      tail.resize(Aligned(tail.size(), alignof(Elf64_Shdr)), '\0');
      headers[section].sh_offset = tailStart + tail.size();
      headers[section].sh_size = bytes.size();
      tail += bytes;
    };
    place(cTableSection, table);
    place(cRelocationSection, relocations);
    place(cSymbolSection, symbols);
    place(cStringSection, strings);
    place(cNameSection, names);
    place(cStackSection, "");
    Describe(headers);
    const uint64_t headerStart = tailStart + tail.size();
    for (const Elf64_Shdr& header : headers) AppendRecord(tail, header);
    pieces.insert(pieces.begin(), ObjectPiece{Head(headerStart, dataStart)});
    pieces.push_back({tail});
  }

  // Sets the values that don't depend on the contents.
  static void Describe(Elf64_Shdr (&headers)[cSectionCount]) {
    headers[cDataSection].sh_type = SHT_PROGBITS;
    headers[cDataSection].sh_flags = SHF_ALLOC;
    headers[cDataSection].sh_addralign = cDataAlignment;
    headers[cTableSection].sh_type = SHT_PROGBITS;
    headers[cTableSection].sh_flags = SHF_ALLOC | SHF_WRITE;
    headers[cTableSection].sh_addralign = alignof(ResourceEntry);
    Elf64_Shdr& relocations = headers[cRelocationSection];
    relocations.sh_type = SHT_RELA;
    relocations.sh_flags = SHF_INFO_LINK;
    relocations.sh_link = cSymbolSection;
    relocations.sh_info = cTableSection;
    relocations.sh_addralign = alignof(Elf64_Rela);
    relocations.sh_entsize = sizeof(Elf64_Rela);
    Elf64_Shdr& symbols = headers[cSymbolSection];
    symbols.sh_type = SHT_SYMTAB;
    symbols.sh_link = cStringSection;
    symbols.sh_info = cDataSymbol + 1;  // the first global symbol
    symbols.sh_addralign = alignof(Elf64_Sym);
    symbols.sh_entsize = sizeof(Elf64_Sym);
    for (Section texts : {cStringSection, cNameSection}) {
      headers[texts].sh_type = SHT_STRTAB;
      headers[texts].sh_addralign = 1;
    }
    headers[cStackSection].sh_type = SHT_PROGBITS;
    headers[cStackSection].sh_addralign = 1;
  }

  static std::string Head(uint64_t headerStart, uint64_t dataStart) {
    Elf64_Ehdr header = {};
    std::memcpy(header.e_ident, ELFMAG, SELFMAG);
    header.e_ident[EI_CLASS] = ELFCLASS64;
    header.e_ident[EI_DATA] = ELFDATA2LSB;
    header.e_ident[EI_VERSION] = EV_CURRENT;
    header.e_type = ET_REL;
    header.e_machine = cMachine;
    header.e_version = EV_CURRENT;
    header.e_shoff = headerStart;
    header.e_ehsize = sizeof(Elf64_Ehdr);
    header.e_shentsize = sizeof(Elf64_Shdr);
    header.e_shnum = cSectionCount;
    header.e_shstrndx = cNameSection;
    std::string head;
    AppendRecord(head, header);
    head.resize(dataStart, '\0');
    return head;
  }

  std::vector<ObjectPiece> pieces;
  uint64_t dataSize = 0;
  std::string table, relocations, symbols;
  std::string strings = std::string(1, '\0');
};

}  // namespace

std::vector<ObjectPiece> LayOutObject(const std::vector<Resource>& resources,
                                      const std::vector<uint64_t>& sizes) {
  return ObjectWriter().Write(resources, sizes);
}

}  // namespace zendry
