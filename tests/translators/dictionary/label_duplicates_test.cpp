#include "translators/dictionary/dictionary_reading.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/VTException.h>

#include <functional>
#include <random>

namespace {

using namespace veltrane::tests;

using Texts = std::vector<std::string>;
using AreEqual = std::function<bool(const std::string&, const std::string&)>;
using TextOfValue = std::function<std::string(const std::string&)>;

/// The message of the first label that is equal to another one, by comparing each with each; empty for none.
std::string FirstDuplicate(const Texts& values, const AreEqual& areEqual, const TextOfValue& textOf) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        for (std::size_t j = 0; j < values.size(); ++j) {
            if (i != j && areEqual(values[i], values[j])) {
                return "Duplicate definition of 'value': '" + textOf(values[i]) + "', already in 'DataDictionary'.";
            }
        }
    }
    return "";
}

class LabelDuplicates : public DictionaryReading {
protected:
    std::string MessageOf(const std::string& field) {
        try {
            ReadField(field);
        } catch (const VTException& failure) {
            return failure.GetErrorMessage();
        }
        return "";
    }

    /// Tries many random lists of a few of these texts.
    void ExpectTheSameVerdict(const Texts& pool, const std::string& attributes, const std::string& extension,
                              const AreEqual& areEqual, const TextOfValue& textOf) {
        std::mt19937 random(20240229);
        for (int round = 0; round < 400; ++round) {
            Texts values;
            std::string children = extension;
            for (int i = 0; i < 4; ++i) {
                values.push_back(pool[random() % pool.size()]);
                children += "<Value value='" + values.back() + "'/>";
            }
            ASSERT_EQ(MessageOf(Categorical(children, attributes)), FirstDuplicate(values, areEqual, textOf))
                << children;
        }
    }
};

const Texts kNumbers = {"1",
                        "1.00000000000001",
                        "1.00000000000002",
                        "1.00000000000003",
                        "1.00000000000004",
                        "-1",
                        "-1.00000000000001",
                        "-1.00000000000003",
                        "0",
                        "-0.0",
                        "1e-300",
                        "1e999",
                        "1.7e308",
                        "1.70000000000002e308"};

TEST_F(LabelDuplicates, OfNumbersAreThoseOfComparingEachWithEach) {
    const auto number = [](const std::string& text) { return NumericValue(BaseTranslator::VerifyDouble(text)); };
    ExpectTheSameVerdict(
        kNumbers, "", "", [&](const std::string& a, const std::string& b) { return number(a) == number(b); },
        [&](const std::string& text) { return number(text).GetString(); });
}

TEST_F(LabelDuplicates, OfTextsAreThoseOfComparingEachWithEach) {
    for (bool noSpaceTrim : {false, true}) {
        ExpectTheSameVerdict(
            {"a", "a ", "a  ", " a", "A", "b", "", " ", "   "}, "dataType='string'",
            noSpaceTrim ? "<Extension name='noSpaceTrim' value='true'/>" : "",
            [&](const std::string& a, const std::string& b) {
                const StringValue other(b);
                return StringValue(a).Equal(&other, noSpaceTrim, true);
            },
            [](const std::string& text) { return text; });
    }
}

} // namespace
