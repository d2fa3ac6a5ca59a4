#include "support/dom.h"
#include "support/faults/failure.h"
#include "translators/kord/kord_reading.h"

#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/ScoreMissingValueSet.h>
#include <MCVeltrane_900/VTException.h>

#include <xercesc/util/NumberFormatException.hpp>

namespace {

using namespace veltrane::tests;

#ifdef VELTRANE_SANITIZED
constexpr int kMany = 20000;
#else
constexpr int kMany = 100000;
#endif

/// Elements with the values FROM to FROM + kMany - 1.
std::string Many(const std::string& before, int from, const std::string& after) {
    std::string text;
    for (int i = from; i < from + kMany; ++i) {
        text += before + std::to_string(i) + after;
    }
    return text;
}

std::string Categories(int from) {
    return "<categories>" + Many("<category value='", from, "'/>") + "</categories>";
}

std::string Missing(int from) {
    return "<missing-values>" + Many("<category value='", from, "'/>") + "</missing-values>";
}

std::string RangesWithOneMaximum() {
    return "<missing-values>" + Many("<range><category value='", kMany, "'/><category value='9999999'/></range>") +
           "</missing-values>";
}

std::string RangesWithOneMinimum() {
    return "<missing-values>" + Many("<range><category value='-9'/><category value='", kMany, "'/></range>") +
           "</missing-values>";
}

class HostileKord : public KordReading {};

TEST_F(HostileKord, CategoriesWithoutEnd) {
    const ScoreDictVar* var = ReadVariable(TextVariable(Categories(0)));
    EXPECT_EQ(var->GetNumberOfCats(), kMany);
    EXPECT_EQ(var->GetEncoder()->GetNumberOfCategories(), kMany);
}

TEST_F(HostileKord, CategoriesAndMissingTextsWithoutEnd) {
    const ScoreDictVar* var = ReadVariable(TextVariable(Categories(0) + Missing(kMany)));
    EXPECT_EQ(var->GetNumberOfCats(), kMany);
    EXPECT_EQ(var->GetMissingValues()->Size(), kMany);
}

TEST_F(HostileKord, CategoriesAndMissingNumbersWithoutEnd) {
    const ScoreDictVar* var = ReadVariable(NumberVariable(Categories(0) + Missing(kMany)));
    EXPECT_EQ(var->GetMissingValues()->Size(), kMany);
}

TEST_F(HostileKord, CategoriesAndMissingRangesWithoutEnd) {
    for (const std::string& ranges : {RangesWithOneMaximum(), RangesWithOneMinimum()}) {
        EXPECT_EQ(ReadVariable(NumberVariable(Categories(0) + ranges))->GetMissingValues()->Size(), kMany);
        EXPECT_EQ(ReadVariable(TextVariable(Categories(0) + ranges))->GetMissingValues()->Size(), kMany);
    }
}

TEST_F(HostileKord, VariablesWithoutEnd) {
    EXPECT_EQ(
        ReadVariables(Many("<variable name='", 0, "' storage-type='STRING' measurement-level='NOMINAL'/>"))->Size(),
        kMany);
}

/// A dictionary with everything that is read in one.
const std::string kWhole =
    "<dictionary><variable name='n' label='l' storage-type='NUMERIC' measurement-level='ORDINAL'>"
    "<categories><category value='1' display-value='one'/><category value='2'/></categories>"
    "<missing-values><category value='9'/><range><category value='-2'/><category value='-1'/></range></missing-values>"
    "<var-stats minimum='1' maximum='2' mean='1.5' standard-deviation='0.5'/><format-spec decimals='0' width='8'/>"
    "</variable><variable name='t' storage-type='STRING' measurement-level='NOMINAL'>"
    "<categories><category value='a'/></categories><missing-values><category value='b'/></missing-values></variable>"
    "</dictionary>";

class ChangedKord : public KordReading {
protected:
    /// Whether the document is read, or ends in one of the two stated kinds of failure.
    bool IsReadOrRefused(xercesc::DOMElement* dictionary) {
        try {
            const Dictionary read(kord.ParseDictionary(dictionary));
            return read->Size() > 0;
        } catch (const VTException& failure) {
            return !failure.GetErrorMessage().empty();
        } catch (const xercesc::NumberFormatException&) {
            return true;
        }
    }

    /// Applies `change` to one element after the other, each in a document of its own.
    /// @return how many documents were tried
    template <typename Change>
    int ChangeEach(Change change) {
        int tried = 0;
        for (XMLSize_t at = 0;; ++at) {
            const auto document = veltrane::tests::ParseXml(kWhole);
            auto* element = static_cast<xercesc::DOMElement*>(document->getElementsByTagName(u"*")->item(at));
            if (element == nullptr) {
                return tried;
            }
            change(document, element);
            EXPECT_TRUE(IsReadOrRefused(document.Root())) << at;
            ++tried;
        }
    }
};

TEST_F(ChangedKord, AttributesAreReadOrRefused) {
    const std::vector<const XMLCh*> values = {
        nullptr, u"",     u" ",      u"x",          u"-1", u"1e999",           u"-1e999",
        u"NaN",  u"0x10", u"STRING", u"CONTINUOUS", u"9",  u"\u00E9\U0001F642"};
    for (const XMLCh* value : values) {
        for (XMLSize_t attribute = 0; attribute < 4; ++attribute) {
            const int tried = ChangeEach([&](const veltrane::tests::ParsedXml&, xercesc::DOMElement* element) {
                if (attribute >= element->getAttributes()->getLength()) {
                    return;
                }
                const std::u16string name = element->getAttributes()->item(attribute)->getNodeName();
                if (value == nullptr) {
                    element->removeAttribute(name.c_str());
                } else {
                    element->setAttribute(name.c_str(), value);
                }
            });
            EXPECT_EQ(tried, 17);
        }
    }
    EXPECT_EQ(ReadKordElement(kWhole)->Size(), 2);
}

TEST_F(ChangedKord, ElementsAreReadOrRefused) {
    ChangeEach([](const veltrane::tests::ParsedXml& document, xercesc::DOMElement* element) {
        if (element != document.Root()) {
            element->getParentNode()->removeChild(element)->release();
        }
    });
    ChangeEach([](const veltrane::tests::ParsedXml& document, xercesc::DOMElement* element) {
        if (element != document.Root()) {
            element->getParentNode()->appendChild(element->cloneNode(true));
        }
    });
    ChangeEach([](const veltrane::tests::ParsedXml& document, xercesc::DOMElement* element) {
        while (element->getFirstChild() != nullptr) {
            element->removeChild(element->getFirstChild())->release();
        }
        element->appendChild(document->createElement(u"range"));
    });
    EXPECT_EQ(ReadKordElement(kWhole)->Size(), 2);
}

} // namespace
