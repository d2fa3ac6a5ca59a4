#ifndef VELTRANE_TESTS_SUPPORT_VTABLE_SLOT_H
#define VELTRANE_TESTS_SUPPORT_VTABLE_SLOT_H

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <vector>

namespace veltrane::tests {

/// The place of a virtual operation in its class's table, from 0: a pointer to a virtual member holds one plus the
/// offset into the table under the common C++ ABI.
template <typename Member>
std::size_t VtableSlot(Member member) {
    std::size_t offset = 0;
    std::memcpy(&offset, &member, sizeof(offset));
    return (offset - 1) / sizeof(void*);
}

/// Expects each operation at its own place: these in this order, behind the two destructors.
/// @param operations in the order in which plug-ins count them
template <typename... Members>
void ExpectInOrder(Members... operations) {
    const std::vector<std::size_t> slots = {VtableSlot(operations)...};
    for (std::size_t i = 0; i < slots.size(); ++i) {
        EXPECT_EQ(slots[i], i + 2) << "operation " << i + 1 << " of " << slots.size();
    }
}

} // namespace veltrane::tests

#endif
