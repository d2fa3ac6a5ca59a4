#include "support/failure.h"

#include <MCVeltrane_900/VTException.h>

TEST(VTException, KeepsTheSecondIdAndBothTexts) {
    MCVeltrane_900::VTException failure;
    EXPECT_TRUE(failure.PutErrorMessage(260103, "a.txt", nullptr));
    EXPECT_TRUE(failure.PutErrorMessage(260114, "b", nullptr));
    EXPECT_EQ(failure.GetErrorCode(), 260114);
    EXPECT_EQ(failure.ConstructMessage(), "Could not open file: 'a.txt'.Missing node: 'b'.");
}
