#include <veltrane_export.h>

#include <gtest/gtest.h>

TEST(Platform, TextOfTheXmlParserHasSixteenBitUnits) {
    EXPECT_EQ(sizeof(XMLCh), sizeof(char16_t));
}
