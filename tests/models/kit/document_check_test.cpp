// What every row of the table of elements holds of a document.
#include "kit/document/checks/element_table.h"
#include "models/kit/checked_documents.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;
using namespace veltrane_kit;
using enum MCVeltrane_900::Message;

namespace {

/// An attribute of an element, or the element alone.
struct CheckedPlace {
    std::string name;
    std::string tag;
    std::string attribute;
    AttributeNeed need;
    AttributeKind kind;
};

template <typename Append>
void ForEachRow(Append append) {
    for (TagNumber tag = 0; tag < kMostTags; ++tag) {
        if (const ElementRow* row = ElementRowOf(tag); row != nullptr) {
            append(*row);
        }
    }
}

/// A name as gtest takes it.
std::string Joined(std::string name) {
    std::erase(name, '-');
    return name;
}

std::vector<CheckedPlace> Attributes() {
    std::vector<CheckedPlace> places;
    ForEachRow([&](const ElementRow& row) {
        for (const AttributeRow& about : row.attributes) {
            places.push_back({Joined(Narrow(row.tag) + "_" + Narrow(about.name)), Narrow(row.tag), Narrow(about.name),
                              about.need, about.kind});
        }
    });
    return places;
}

std::vector<CheckedPlace> Elements() {
    std::vector<CheckedPlace> places;
    ForEachRow([&](const ElementRow& row) {
        places.push_back({Joined(Narrow(row.tag)), Narrow(row.tag), "", {}, {}});
    });
    return places;
}

/// The first of the good documents that has an element, and there the first element that has an attribute.
class Place {
public:
    explicit Place(const CheckedPlace& place) : fXml(ParseXml(kCheckedDocuments.front())) {
        for (std::size_t i = 1; fXml.Find(place.tag.c_str()) == nullptr && i < kCheckedDocuments.size(); ++i) {
            fXml = ParseXml(kCheckedDocuments[i]);
        }
        const xercesc::DOMNodeList* found = fXml->getElementsByTagName(Widen(place.tag).c_str());
        for (XMLSize_t i = found->getLength(); i-- > 0;) {
            auto* element = static_cast<xercesc::DOMElement*>(found->item(i));
            if (place.attribute.empty() || element->hasAttribute(Widen(place.attribute).c_str())) {
                fElement = element;
            }
        }
    }

    xercesc::DOMElement* At() const { return fElement; }
    xercesc::DOMDocument* Document() const { return fXml.Document(); }

private:
    ParsedXml fXml;
    xercesc::DOMElement* fElement = nullptr;
};

TEST(DocumentCheck, PassesWhatIsLawful) {
    for (const std::string& document : kCheckedDocuments) {
        Check(document);
    }
}

class CheckedAttribute : public testing::TestWithParam<CheckedPlace> {};

TEST_P(CheckedAttribute, IsRefusedWhereItIsEmptyOrWrong) {
    const Place place(GetParam());
    ASSERT_NE(place.At(), nullptr) << "stands in no document of checked_documents.h";
    const std::u16string name = Widen(GetParam().attribute);
    const char* tag = GetParam().tag.c_str();
    const char* attribute = GetParam().attribute.c_str();
    if (GetParam().kind != AttributeKind::TEXT) {
        place.At()->setAttribute(name.c_str(), u"");
        ExpectFailure([&] { Check(place.Document()); }, {NULL_ATTRIBUTE, attribute, tag});
    }
    if (GetParam().kind != AttributeKind::TEXT && GetParam().kind != AttributeKind::NAME) {
        place.At()->setAttribute(name.c_str(), u"1x");
        ExpectFailure([&] { Check(place.Document()); }, {INVALID_ATTRIBUTE_VALUE_IN, "1x", attribute, tag});
    }
}

TEST_P(CheckedAttribute, IsRefusedWhereItLacks) {
    const Place place(GetParam());
    ASSERT_NE(place.At(), nullptr);
    place.At()->removeAttribute(Widen(GetParam().attribute).c_str());
    if (GetParam().need == AttributeNeed::OPTIONAL) {
        return Check(place.Document());
    }
    const char* tag = GetParam().tag.c_str();
    const char* attribute = GetParam().attribute.c_str();
    ExpectFailure([&] { Check(place.Document()); }, {MISSING_ATTRIBUTE_OF, attribute, tag});
    if (GetParam().need == AttributeNeed::SINCE_3) {
        place.Document()->getDocumentElement()->setAttribute(u"version", u"2.1");
        Check(place.Document());
    }
}

INSTANTIATE_TEST_SUITE_P(Kit, CheckedAttribute, testing::ValuesIn(Attributes()),
                         [](const auto& row) { return row.param.name; });

class CheckedElement : public testing::TestWithParam<CheckedPlace> {};

TEST_P(CheckedElement, HasNoOtherChildren) {
    const Place place(GetParam());
    ASSERT_NE(place.At(), nullptr) << "stands in no document of checked_documents.h";
    xercesc::DOMNode* other = place.At()->appendChild(place.Document()->createElement(u"Konstant"));
    ExpectFailure([&] { Check(place.Document()); }, {INVALID_NODE, "Konstant", GetParam().tag.c_str()});
    place.At()->removeChild(other);
    place.At()->appendChild(place.Document()->createElement(u"PMML"));
    ExpectFailure([&] { Check(place.Document()); }, {INVALID_NODE, "PMML", GetParam().tag.c_str()});
}

TEST_P(CheckedElement, PassesExtensionsAndAttributesOfOthers) {
    const Place place(GetParam());
    ASSERT_NE(place.At(), nullptr);
    place.At()->setAttribute(u"x-note", u"");
    place.At()
        ->appendChild(place.Document()->createElement(u"Extension"))
        ->appendChild(place.Document()->createElement(u"Konstant"));
    Check(place.Document());
}

INSTANTIATE_TEST_SUITE_P(Kit, CheckedElement, testing::ValuesIn(Elements()),
                         [](const auto& row) { return row.param.name; });

} // namespace
