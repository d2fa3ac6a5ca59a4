#include "support/dom.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/Messages.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreCatStringEncoder.h>
#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>
#include <xercesc/util/XMLString.hpp>

#include <memory>
#include <optional>
#include <string>
#include <vector>

// The items of every short text over the characters that the scan tells apart, against the rules followed one position
// at a time.

using namespace MCVeltrane_900;

namespace {

using Strings = std::vector<std::string>;

constexpr std::string_view kCharacters = "a \"\\\n\t";
constexpr std::size_t kLongest = 5;

std::string WithQuotes(std::string item) {
    for (std::size_t at = 0; (at = item.find("\\\"", at)) != std::string::npos; ++at) {
        item.erase(at, 1);
    }
    return item;
}

/// A cursor over a text with the start and the end of the item that it is in, -1 for neither.
struct Scan {
    const std::string& text;
    bool escapes;
    int i = 0;
    int start = -1;
    int end = -1;
    bool hasEscapes = false;

    int Size() const { return static_cast<int>(text.size()); }
    char At(int position) const { return text[static_cast<std::size_t>(position)]; }

    /// False for a quote that nothing closes.
    bool ReadQuoted() {
        start = i + 1;
        hasEscapes = false;
        int closing = start;
        for (; closing < Size(); ++closing) {
            if (At(closing) != '"') {
                continue;
            }
            if (!escapes || At(closing - 1) != '\\') {
                break;
            }
            hasEscapes = true;
        }
        end = closing - 1;
        i = closing;
        return closing < Size();
    }

    void ReadOther() {
        if (At(i) == ' ') {
            end = start == -1 ? -1 : i - 1;
            return;
        }
        start = start == -1 ? i : start;
        end = i == Size() - 1 ? i : -1;
    }
};

/// The items; nothing for an unclosed quote.
std::optional<Strings> Expected(const std::string& text, bool escapes) {
    Strings items;
    Scan scan{text, escapes};
    for (; scan.i < scan.Size(); ++scan.i) {
        if (scan.At(scan.i) == '\n') {
            continue;
        }
        if (escapes && text.compare(static_cast<std::size_t>(scan.i), 2, "\\\"") == 0) {
            ++scan.i;
            continue;
        }
        if (scan.At(scan.i) != '"') {
            scan.ReadOther();
        } else if (!scan.ReadQuoted()) {
            return std::nullopt;
        }
        if (scan.start != -1 && scan.end != -1) {
            const std::string item =
                text.substr(static_cast<std::size_t>(scan.start), static_cast<std::size_t>(scan.end - scan.start + 1));
            items.push_back(scan.hasEscapes ? WithQuotes(item) : item);
            scan.start = scan.end = -1;
            scan.hasEscapes = false;
        }
    }
    return items;
}

/// An Array element whose text is set again and again.
class ArrayOf {
public:
    ArrayOf() : fXml(veltrane::tests::ParseXml("<Array>x</Array>")) {}

    xercesc::DOMElement* With(const std::string& text) {
        XMLCh* wide = xercesc::XMLString::transcode(text.c_str());
        fXml.Root()->getFirstChild()->setNodeValue(wide);
        xercesc::XMLString::release(&wide);
        return fXml.Root();
    }

private:
    veltrane::tests::ParsedXml fXml;
};

class ArrayScanRules : public testing::Test {
protected:
    void SetUp() override { translator.CreateTranscoder("UTF-8"); }

    /// The code of a failure, 0 for none.
    int CodeOf(const std::string& text, const ScoreDictVar* var, Strings& items) {
        try {
            items = translator.GetArrayElements(array.With(text), nullptr, var);
        } catch (const VTException& failure) {
            return failure.GetErrorCode();
        }
        return 0;
    }

    void ExpectRule(const std::string& text, bool escapes, const ScoreDictVar* var) {
        Strings items;
        const int code = CodeOf(text, var, items);
        const std::optional<Strings> expected = Expected(text, escapes);
        if (text.find_first_not_of(" \t\r\n") == std::string::npos) {
            EXPECT_EQ(code, static_cast<int>(MCVeltrane_900::Message::EMPTY_IN)) << testing::PrintToString(text);
        } else if (!expected) {
            EXPECT_EQ(code, static_cast<int>(MCVeltrane_900::Message::INVALID_CONTENT)) << testing::PrintToString(text);
        } else {
            EXPECT_EQ(std::make_pair(code, items), std::make_pair(0, *expected)) << testing::PrintToString(text);
        }
    }

    /// Every text up to the longest that starts with this one.
    void ExpectRules(std::string& text, bool escapes, const ScoreDictVar* var) {
        if (!text.empty()) {
            ExpectRule(text, escapes, var);
        }
        if (text.size() == kLongest) {
            return;
        }
        for (const char c : kCharacters) {
            text.push_back(c);
            ExpectRules(text, escapes, var);
            text.pop_back();
        }
    }

    ArrayOf array;
    PMMLTranslator translator{"UTF-8"};
};

TEST_F(ArrayScanRules, HoldForEveryShortText) {
    std::string text;
    ExpectRules(text, true, nullptr);
}

TEST_F(ArrayScanRules, HoldForEveryShortTextWithoutEscapes) {
    DictVar var("v", ScoreDictVar::STRING_VAR);
    auto encoder = std::make_unique<ScoreCatStringEncoder>(2);
    encoder->Encode(std::string("\\"));
    var.SetEncoder(encoder.release());
    std::string text;
    ExpectRules(text, false, &var);
}

} // namespace
