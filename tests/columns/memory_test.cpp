#include "support/allocations.h"
#include "support/faults/failure.h"

#include <veltrane/c_api.h>

#include <gtest/gtest.h>

using namespace veltrane::tests;

/// Memory that is used up, told by a number and a text.
namespace {

TEST(MemoryOfColumns, ThatIsUsedUpIsTold) {
    veltrane_options* options = nullptr;
    std::int32_t number = 0;
    {
        const FailingAllocation none(0);
        number = veltrane_options_new(&options);
    }
    EXPECT_EQ(number, VELTRANE_OUT_OF_MEMORY);
    EXPECT_EQ(veltrane_error_text(), Failure(OUT_OF_MEMORY).Text());
    EXPECT_EQ(options, nullptr);
    EXPECT_EQ(veltrane_options_new(&options), VELTRANE_OK);
    EXPECT_STREQ(veltrane_error_text(), "");
    EXPECT_EQ(veltrane_options_free(options), VELTRANE_OK);
}

} // namespace
