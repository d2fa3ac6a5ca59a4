#include "support/dom.h"
#include "translators/dictionary_reading.h"

#include <algorithm>
#include <ctime>
#include <functional>

namespace {

using veltrane::tests::DictionaryReading;
using veltrane::tests::ParsedXml;
using veltrane::tests::ParseXml;

constexpr int kFew = 500;
constexpr int kMany = 32 * kFew;
/// Reading each with each would cost 32 times as much for one of many; what is left is noise and a map's depth.
constexpr double kMostGrowth = 8.0;

class DictionaryScale : public DictionaryReading {
protected:
    /// Processor seconds that one of `count` elements takes, the best of a few runs: other load does not count.
    double SecondsOfOne(int count, const std::function<std::string(int count)>& makeElement) {
        const ParsedXml document = ParseXml(makeElement(count));
        double best = 1e9;
        for (int run = 0; run < 5; ++run) {
            const std::clock_t start = std::clock();
            const Dictionary dictionary(translator.ParseDictionary(document.Root(), true));
            best = std::min(best, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
        }
        return best / count;
    }

    void ExpectLinear(const std::function<std::string(int count)>& makeElement) {
        EXPECT_LT(SecondsOfOne(kMany, makeElement), kMostGrowth * SecondsOfOne(kFew, makeElement));
    }
};

std::string Repeated(int count, const std::string& head, const std::string& tail) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += head + std::to_string(i) + tail;
    return text;
}

std::string ManyFields(int count) {
    return "<DataDictionary numberOfFields='" + std::to_string(count) + "'>" +
           Repeated(count, "<DataField name='f",
                    "' optype='ordinal'><Extension name='x-measure' value='set'/><Value value='1'/></DataField>") +
           "</DataDictionary>";
}

std::string ManyValues(int count, const std::string& dataType) {
    return "<DataDictionary numberOfFields='1'><DataField name='f' optype='ordinal' dataType='" + dataType +
           "'><Value value='-1' property='missing'/>" + Repeated(count, "<Value value='", "'/>") +
           "</DataField></DataDictionary>";
}

TEST_F(DictionaryScale, CostGrowsWithTheNumberOfFields) {
    ExpectLinear(ManyFields);
}

TEST_F(DictionaryScale, CostGrowsWithTheNumberOfTexts) {
    ExpectLinear([](int count) { return ManyValues(count, "string"); });
}

TEST_F(DictionaryScale, CostGrowsWithTheNumberOfNumbers) {
    ExpectLinear([](int count) { return ManyValues(count, "double"); });
}

TEST_F(DictionaryScale, NestingDoesNotUseTheStack) {
    const int depth = 100000;
    std::string nested;
    for (int i = 0; i < depth; ++i)
        nested += "<Extension>";
    nested += "<Extension name='x-storageType' value='string'/>";
    for (int i = 0; i < depth; ++i)
        nested += "</Extension>";
    const auto* var = ReadField("<DataField name='f' optype='ordinal'>" + nested + "</DataField>");
    EXPECT_EQ(var->GetVarType(), MCVeltrane_900::ScoreDictVar::STRING_VAR);
}

} // namespace
