// The samples with one place after the other damaged: each ends in a catalogued failure, or in a model that scores.
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "support/folders.h"

#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <vector>

using namespace veltrane::tests;

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

struct Place {
    std::size_t begin;
    std::size_t end;
};

/// The attributes of a document, each with the blank before it.
std::vector<Place> Attributes(const std::string& document) {
    std::vector<Place> places;
    for (std::size_t quote = document.find("=\""); quote != std::string::npos; quote = document.find("=\"", quote)) {
        const std::size_t begin = document.rfind(' ', quote);
        quote = document.find('"', quote + 2) + 1;
        places.push_back({begin, quote});
    }
    return places;
}

/// The elements of a document with all that is in them.
std::vector<Place> Elements(const std::string& document) {
    std::vector<Place> places;
    std::vector<std::size_t> open;
    for (std::size_t begin = document.find('<'); begin != std::string::npos; begin = document.find('<', begin + 1)) {
        const std::size_t end = document.find('>', begin) + 1;
        if (document[begin + 1] == '?' || document[begin + 1] == '!') {
            continue;
        }
        if (document[begin + 1] == '/') {
            places.push_back({open.back(), end});
            open.pop_back();
        } else if (document[end - 2] == '/') {
            places.push_back({begin, end});
        } else {
            open.push_back(begin);
        }
    }
    return places;
}

/// Damages one place after the other.
/// @return how many of the documents could still be read
int ReadDamaged(const std::string& document, const std::vector<Place>& places,
                const std::function<std::string(const std::string&)>& damage) {
    int readable = 0;
    for (const Place& place : places) {
        const std::size_t length = place.end - place.begin;
        std::string damaged = document;
        damaged.replace(place.begin, length, damage(document.substr(place.begin, length)));
        readable += Survives(damaged) ? 1 : 0;
    }
    return readable;
}

class DamagedDocument : public testing::TestWithParam<const char*> {
protected:
    const std::string fDocument = ReadFile(ModelSamplesFolder() + "/" + GetParam() + ".pmml");
};

TEST_P(DamagedDocument, WithoutAnAttribute) {
    ReadDamaged(fDocument, Attributes(fDocument), [](const std::string&) { return ""; });
}

TEST_P(DamagedDocument, WithAnEmptyAttribute) {
    ReadDamaged(fDocument, Attributes(fDocument),
                [](const std::string& text) { return text.substr(0, text.find('=')) + "=\"\""; });
}

TEST_P(DamagedDocument, WithAWrongAttribute) {
    for (const char* wrong : {"x", "-1", "1e308", "true", "price", "&#x20AC;"}) {
        ReadDamaged(fDocument, Attributes(fDocument),
                    [wrong](const std::string& text) { return text.substr(0, text.find('=')) + "=\"" + wrong + "\""; });
    }
}

TEST_P(DamagedDocument, WithADoubledAttributeIsNoneAtAll) {
    EXPECT_EQ(ReadDamaged(fDocument, Attributes(fDocument), [](const std::string& text) { return text + text; }), 0);
}

TEST_P(DamagedDocument, WithoutAnElement) {
    ReadDamaged(fDocument, Elements(fDocument), [](const std::string&) { return ""; });
}

TEST_P(DamagedDocument, WithADoubledElement) {
    ReadDamaged(fDocument, Elements(fDocument), [](const std::string& text) { return text + text; });
}

TEST_P(DamagedDocument, WithAnEmptiedElement) {
    ReadDamaged(fDocument, Elements(fDocument), [](const std::string& text) {
        const std::size_t end = text.find_first_of(" />");
        return "<" + text.substr(1, end - 1) + "/>";
    });
}

TEST_P(DamagedDocument, CutOffIsNoneAtAll) {
    const std::size_t end = fDocument.rfind("</PMML>");
    for (std::size_t length = 0; length < end; length += 37) {
        EXPECT_FALSE(Survives(fDocument.substr(0, length))) << length;
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, DamagedDocument,
                         testing::Values("prices", "health", "ensemble", "chain", "credit", "sorting", "traffic",
                                         "lanes", "vintage", "cider", "cellar", "pears", "syrup", "seedlings", "lunch",
                                         "marks", "pumps", "fruit", "meadow", "pollen", "plums", "twigs"),
                         [](const auto& info) { return std::string(info.param); });

} // namespace
