#include "support/byte_text.h"

#include <cstdio>
#include <cstring>
#include <new>
#include <sstream>
#include <sys/mman.h>
#include <unistd.h>

namespace veltrane::tests {

std::string Bytes(const std::string& hexadecimal) {
    std::istringstream in(hexadecimal);
    std::string bytes;
    for (unsigned int byte = 0; in >> std::hex >> byte;) {
        bytes.push_back(static_cast<char>(byte));
    }
    return bytes;
}

std::string Hexadecimal(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        char digits[4];
        std::snprintf(digits, sizeof digits, text.empty() ? "%02X" : " %02X", static_cast<unsigned char>(byte));
        text += digits;
    }
    return text;
}

GuardedBuffer::GuardedBuffer() : fSize(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))) {
    void* pages = mmap(nullptr, 2 * fSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED || mprotect(static_cast<char*>(pages) + fSize, fSize, PROT_NONE) != 0) {
        throw std::bad_alloc();
    }
    fStart = static_cast<char*>(pages);
}

GuardedBuffer::~GuardedBuffer() {
    munmap(fStart, 2 * fSize);
}

const char* GuardedBuffer::Put(std::string_view text) {
    char* room = Room(text.size() + 1);
    text.copy(room, text.size());
    room[text.size()] = '\0';
    return room;
}

char* GuardedBuffer::Room(std::size_t size) {
    if (size > fSize) {
        throw std::bad_alloc();
    }
    char* room = fStart + (fSize - size);
    std::memset(room, 'x', size);
    return room;
}

} // namespace veltrane::tests
