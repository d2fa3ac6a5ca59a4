#include "support/numbers.h"

#include <MCScore/MCStatus.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

using namespace veltrane::tests;
using MCScore::MCStatus;

static_assert(std::is_trivially_copyable_v<MCStatus>);
static_assert(std::is_same_v<MCCommon_900::MCStatus, MCStatus>);

/// A warning with all six data set.
MCStatus Filled() {
    MCStatus status(7, true);
    for (unsigned int index = 0; index < 3; ++index) {
        status.SetDiscreteDatum(index, 10L + index);
        status.SetScaleDatum(index, 0.5 + index);
    }
    return status;
}

TEST(MCStatus, DefaultIsOkAndAllZero) {
    const MCStatus status;
    EXPECT_TRUE(status.IsOK());
    EXPECT_FALSE(status.IsWarning());
    EXPECT_FALSE(status.IsError());
    EXPECT_EQ(status.GetErrorCode(), 0);
    for (unsigned int index = 0; index < 3; ++index) {
        EXPECT_EQ(status.GetDiscreteDatum(index), 0);
        EXPECT_EQ(status.GetScaleDatum(index), 0.0);
    }
}

TEST(MCStatus, CodeWithTrueIsAWarning) {
    const MCStatus status(7, true);
    EXPECT_TRUE(status.IsWarning());
    EXPECT_FALSE(status.IsOK());
    EXPECT_FALSE(status.IsError());
    EXPECT_EQ(status.GetErrorCode(), 7);
    EXPECT_EQ(status.GetDiscreteDatum(2), 0);
    EXPECT_EQ(status.GetScaleDatum(2), 0.0);
}

TEST(MCStatus, CodeWithFalseIsAnError) {
    const MCStatus status(7, false);
    EXPECT_TRUE(status.IsError());
    EXPECT_FALSE(status.IsOK());
    EXPECT_FALSE(status.IsWarning());
}

TEST(MCStatus, SeverityAloneDecidesOverOk) {
    EXPECT_TRUE(MCStatus(0, false).IsError());
}

TEST(MCStatus, WarningAndErrorOfOneCodeDiffer) {
    EXPECT_FALSE(MCStatus(7, true) == MCStatus(7, false));
}

TEST(MCStatus, CodesDiffer) {
    EXPECT_FALSE(MCStatus(7, true) == MCStatus(8, true));
}

TEST(MCStatus, ScaleDatumDoesNotTouchTheDiscreteData) {
    MCStatus status;
    status.SetScaleDatum(0, 2.5);
    EXPECT_EQ(status.GetScaleDatum(0), 2.5);
    EXPECT_EQ(status.GetDiscreteDatum(0), 0);
    status.SetDiscreteDatum(0, 3);
    EXPECT_EQ(status.GetScaleDatum(0), 2.5);
}

TEST(MCStatus, CopiesKeepAllSixData) {
    const MCStatus copy = Filled();
    EXPECT_EQ(copy.GetErrorCode(), 7);
    EXPECT_TRUE(copy.IsWarning());
    for (unsigned int index = 0; index < 3; ++index) {
        EXPECT_EQ(copy.GetDiscreteDatum(index), 10L + index);
        EXPECT_EQ(copy.GetScaleDatum(index), 0.5 + index);
    }
    EXPECT_TRUE(copy == Filled());
}

TEST(MCStatus, EachDiscreteDatumCounts) {
    for (unsigned int index = 0; index < 3; ++index) {
        MCStatus other = Filled();
        other.SetDiscreteDatum(index, -1);
        EXPECT_FALSE(other == Filled()) << index;
    }
}

TEST(MCStatus, EachScaleDatumCounts) {
    for (unsigned int index = 0; index < 3; ++index) {
        MCStatus other = Filled();
        other.SetScaleDatum(index, -1.0);
        EXPECT_FALSE(other == Filled()) << index;
    }
}

TEST(KeptMCStatus, NanDatumMakesCopiesUnequal) {
    MCStatus status;
    status.SetScaleDatum(1, kNaN);
    const MCStatus copy = status;
    EXPECT_FALSE(copy == status);
}

} // namespace
