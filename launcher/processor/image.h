#pragma once
// An image for the device, of the library or of a companion's, loaded into this process: relocated,
// its imports leading to the emulated device's own libraries.

#include <map>
#include <stdint.h>
#include <string>
#include <windows.h>

class Image {
  public:
    // An empty string, or one line that says what is wrong. The map of the image's functions lies
    // beside it; symbols lists the names of the desk's build of the same sources, decorated with
    // the bytes of their arguments, and may be missing: then every function leaves its arguments to
    // the caller. A companion's imports from the toolkit lead to the toolkit's image.
    std::string load(const std::string& path, const std::string& symbols,
                     const Image* toolkit = nullptr);

    char* base() const { return memory; }
    uint32_t size() const { return headers()->OptionalHeader.SizeOfImage; }
    bool contains(uint32_t address) const {
        return memory && address - reinterpret_cast<uint32_t>(memory) < size();
    }
    // The part that holds instructions.
    char* code() const { return memory + section(".text")->VirtualAddress; }
    uint32_t codeSize() const;

    // What calls the export; null when there is none.
    void* exportNamed(const std::string& name) const;
    // What calls the entry point.
    void* entryPoint() const;

    // "function+offset", of an address inside.
    std::string describe(uint32_t address) const;

  private:
    struct Function {
        uint32_t size;
        std::string name;
    };

    const IMAGE_NT_HEADERS32* headers() const;
    const IMAGE_SECTION_HEADER* section(const char* name) const;
    const IMAGE_DATA_DIRECTORY& directory(int index) const {
        return headers()->OptionalHeader.DataDirectory[index];
    }
    std::string readFile(const std::string& path);
    std::string readMap(const std::string& path);
    void readSymbols(const std::string& path);
    std::string relocate();
    void relocateWord(uint32_t offset, uint32_t delta);
    std::string bindImports(const Image* toolkit);
    std::string bindToToolkit(const IMAGE_IMPORT_DESCRIPTOR& module, const Image& toolkit);
    void* entryAt(uint32_t offset) const;

    char* memory = nullptr;
    uint32_t preferredBase = 0;
    std::map<uint32_t, Function> functions; // by their place in the image
    std::map<std::string, uint32_t> argumentBytes;
};
