#include <MCXML_900/KORDMBString.h>

#include <atomic>

namespace MCXML_900 {

namespace {

std::atomic<int> gUTF8mode{1};

} // namespace

void SetUTF8mode(int mode) {
    gUTF8mode.store(mode != 0 ? 1 : 0, std::memory_order_relaxed);
}

int qUTF8mode() {
    return gUTF8mode.load(std::memory_order_relaxed);
}

// The family that is in UTF-8 or in the code page as the process is.

const char* KORDMBstrinc_A(const char* s) {
    return qUTF8mode() != 0 ? KORDMBstrinc_8(s) : KORDMBstrinc_C(s);
}

const char* KORDMBAnsiPrev_A(const char* start, const char* current) {
    return qUTF8mode() != 0 ? KORDMBAnsiPrev_8(start, current) : KORDMBAnsiPrev_C(start, current);
}

char* KORDMBstrncpy_A(char* dst, const char* src, int n) {
    return qUTF8mode() != 0 ? KORDMBstrncpy_8(dst, src, n) : KORDMBstrncpy_C(dst, src, n);
}

const char* KORDMBstrchr_A(const char* s, unsigned int ch) {
    return qUTF8mode() != 0 ? KORDMBstrchr_8(s, ch) : KORDMBstrchr_C(s, ch);
}

const char* KORDMBstrrchr_A(const char* s, unsigned int ch) {
    return qUTF8mode() != 0 ? KORDMBstrrchr_8(s, ch) : KORDMBstrrchr_C(s, ch);
}

std::size_t KORDMBstrcspn_A(const char* s, const char* reject) {
    return qUTF8mode() != 0 ? KORDMBstrcspn_8(s, reject) : KORDMBstrcspn_C(s, reject);
}

int KORDMBstrnicmp_A(const char* a, const char* b, int n) {
    return qUTF8mode() != 0 ? KORDMBstrnicmp_8(a, b, n) : KORDMBstrnicmp_C(a, b, n);
}

int KORDMBqstricmp_A(const char* a, int aLength, const char* b, int bLength, int* status) {
    return qUTF8mode() != 0 ? KORDMBqstricmp_8(a, aLength, b, bLength, status)
                            : KORDMBqstricmp_C(a, aLength, b, bLength, status);
}

} // namespace MCXML_900
