#ifndef VELTRANE_TESTS_SUPPORT_VTABLE_SLOT_H
#define VELTRANE_TESTS_SUPPORT_VTABLE_SLOT_H

#include <cstddef>
#include <cstring>

namespace veltrane::tests {

/// The place of a virtual operation in its class's table, from 0: a pointer to a virtual member holds one plus the
/// offset into the table under the common C++ ABI.
template <typename Member>
std::size_t VtableSlot(Member member) {
    std::size_t offset = 0;
    std::memcpy(&offset, &member, sizeof(offset));
    return (offset - 1) / sizeof(void*);
}

} // namespace veltrane::tests

#endif
