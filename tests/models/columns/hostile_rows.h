#ifndef VELTRANE_TESTS_MODELS_HOSTILE_ROWS_H
#define VELTRANE_TESTS_MODELS_HOSTILE_ROWS_H

#include "models/columns/model_rows.h"
#include "support/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <string>

/// Models over numbers whose differences, squares and sums are beyond the doubles.
namespace veltrane::tests {

/// Expects of hostile rows that columns hold the bits of cases and that no answer is infinite, nor, in a case, no
/// number.
inline void ExpectFinite(ModelRows& rows, std::mt19937_64& random) {
    rows.FillHostile(random, 300);
    const ModelAnswers cases = rows.CaseByCase();
    EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 256, 0, false), cases);
    const std::string bad[] = {std::to_string(Bits(HUGE_VAL)), std::to_string(Bits(-HUGE_VAL)), "not a number"};
    for (const std::string& answer : cases) {
        for (const std::string& text : bad) {
            ASSERT_EQ(answer.find(text), std::string::npos) << answer;
        }
    }
}

} // namespace veltrane::tests

#endif
