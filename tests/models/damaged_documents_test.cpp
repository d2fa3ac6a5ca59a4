// The samples with one place after the other damaged: each ends in a catalogued failure, or in a model that scores.
#include "models/scoring.h"
#include "models/small_documents.h"

#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <functional>
#include <regex>
#include <sstream>

using namespace veltrane::tests;
using MCVeltrane_900::VTException;

namespace {

/// What a case may hold for any field: numbers and texts that some are and others aren't allowed.
Case OddCase(const MCVeltrane_900::ScoreModel& model, const std::string& text) {
    Case row;
    for (const std::string& name : model.GetInputNames()) {
        row[name] = text;
    }
    return row;
}

/// Reads a document and scores with it what can be read.
/// @return whether it could be read
bool Survives(const std::string& document) {
    try {
        Scored scored(document);
        for (const char* text : {"", "1", "-1e300", "north", "true", "2020-01-01", "\xff\xfe"}) {
            scored.Score(OddCase(scored.Model(), text));
        }
        std::ostringstream out;
        scored.Model().Display(out);
        return true;
    } catch (const VTException& failure) {
        EXPECT_FALSE(failure.GetErrorMessage().empty());
        return false;
    }
}

/// Every match of an expression replaced, one at a time.
/// @return how many of the documents could still be read
int ReadDamaged(const std::string& document, const char* expression,
                const std::function<std::string(const std::string&)>& damage) {
    const std::regex place(expression);
    int readable = 0;
    for (auto at = std::sregex_iterator(document.begin(), document.end(), place); at != std::sregex_iterator(); ++at) {
        std::string damaged = document;
        damaged.replace(static_cast<std::size_t>(at->position()), static_cast<std::size_t>(at->length()),
                        damage(at->str()));
        readable += Survives(damaged) ? 1 : 0;
    }
    return readable;
}

constexpr const char* kAttribute = R"( [A-Za-z]+="[^"]*")";
constexpr const char* kSingleElement = R"(<[A-Za-z]+[^<>]*/>)";
constexpr const char* kWholeElement = R"(<([A-Za-z]+)( [^<>]*)?>[^<>]*(<[^<>]*/>[^<>]*)*</\1>)";

class DamagedDocument : public testing::TestWithParam<const char*> {
protected:
    const std::string fDocument = ReadFile(std::string(VELTRANE_MODEL_SAMPLES) + "/" + GetParam() + ".pmml");
};

TEST_P(DamagedDocument, WithoutAnAttribute) {
    ReadDamaged(fDocument, kAttribute, [](const std::string&) { return ""; });
}

TEST_P(DamagedDocument, WithAnEmptyAttribute) {
    ReadDamaged(fDocument, kAttribute,
                [](const std::string& text) { return text.substr(0, text.find('=')) + "=\"\""; });
}

TEST_P(DamagedDocument, WithAWrongAttribute) {
    for (const char* wrong : {"x", "-1", "1e308", "true", "price", "&#x20AC;"}) {
        ReadDamaged(fDocument, kAttribute,
                    [wrong](const std::string& text) { return text.substr(0, text.find('=')) + "=\"" + wrong + "\""; });
    }
}

TEST_P(DamagedDocument, WithADoubledAttributeIsNoneAtAll) {
    EXPECT_EQ(ReadDamaged(fDocument, kAttribute, [](const std::string& text) { return text + text; }), 0);
}

TEST_P(DamagedDocument, WithoutAnElement) {
    for (const char* element : {kSingleElement, kWholeElement}) {
        ReadDamaged(fDocument, element, [](const std::string&) { return ""; });
    }
}

TEST_P(DamagedDocument, WithADoubledElement) {
    for (const char* element : {kSingleElement, kWholeElement}) {
        ReadDamaged(fDocument, element, [](const std::string& text) { return text + text; });
    }
}

TEST_P(DamagedDocument, WithAnEmptiedElement) {
    ReadDamaged(fDocument, kWholeElement, [](const std::string& text) {
        const std::size_t end = text.find_first_of(" >");
        return "<" + text.substr(1, end - 1) + "/>";
    });
}

TEST_P(DamagedDocument, CutOffIsNoneAtAll) {
    const std::size_t end = fDocument.rfind("</PMML>");
    for (std::size_t length = 0; length < end; length += 37) {
        EXPECT_FALSE(Survives(fDocument.substr(0, length))) << length;
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, DamagedDocument, testing::Values("prices", "health"),
                         [](const auto& info) { return std::string(info.param); });

} // namespace
