#include "../support/dom_dump.h"
#include "recording.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <veltrane/subtrees.h>

/// A plug-in that reads the branches of its model as records, and tells them beside the tree that it was given.

using namespace veltrane::tests::recording;
using veltrane::Subtree;
using veltrane::SubtreeKind;
using veltrane::SubtreeNode;
using veltrane::SubtreeRecords;

namespace {

constexpr const char16_t* kWithin[] = {u"Branch", u"b",   u"e",         u"list",   u"named", u"fixed",
                                       u"twig",   u"q:e", u"Extension", u"Listed", nullptr};

constexpr SubtreeKind kKinds[] = {
    {u"SubtreeModel", u"Branch", kWithin}, {u"Grove", u"twig", kWithin}, {nullptr, nullptr, nullptr}};

std::string DumpOf(const SubtreeRecords& records, std::uint32_t at) {
    const SubtreeNode& node = records.nodes[at];
    if (node.tag == SubtreeNode::kText) {
        return "'" + Text(records.texts + node.first) + "'";
    }
    std::string dump = "<" + Text(records.names[node.tag]);
    for (std::uint32_t i = 0; i < node.attributeCount; ++i) {
        const veltrane::SubtreeAttribute& attribute = records.attributes[node.first + i];
        dump += " " + Text(records.names[attribute.name]) + "=" + Text(records.texts + attribute.value);
    }
    dump += ":";
    for (std::uint32_t child = at + 1; child != node.end; child = records.nodes[child].end) {
        dump += records.nodes[child].parent == at ? DumpOf(records, child) : "astray";
    }
    return dump + ">";
}

/// The records that the elements of a tree lead to.
std::string RecordsIn(const xercesc::DOMElement& element) {
    const Subtree* subtree = veltrane::SubtreeOf(element);
    std::string dump = subtree == nullptr ? "" : DumpOf(*subtree->records, subtree->root);
    for (auto* child = element.getFirstElementChild(); child != nullptr; child = child->getNextElementSibling()) {
        dump += RecordsIn(*child);
    }
    return dump;
}

class SubtreeTranslator : public BaseTranslator {
public:
    using BaseTranslator::ParseFromTree;

    /// An attribute `hand-over` of the root brings its first element by way of the factory.
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string&) override {
        xercesc::DOMElement* root = document->getDocumentElement();
        if (root->hasAttribute(u"hand-over")) {
            return MCVeltrane_900::ModelFactory::MakeModelFromXML(root->getFirstElementChild(), {"SubtreeModel"},
                                                                  static_cast<ScoreModel*>(nullptr), "");
        }
        const std::string records = RecordsIn(*root);
        return new RecordingModel(Lines{{"tree", veltrane::tests::DomDump::Of(document)}, {"records", records}});
    }

    ScoreModel* ParseFromTree(xercesc::DOMElement* element, ScoreModel*, const std::string&) override {
        const std::string records = RecordsIn(*element);
        return new RecordingModel(
            Lines{{"tree", veltrane::tests::DomDump::Of(element->getOwnerDocument())}, {"records", records}});
    }
};

} // namespace

extern "C" VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new SubtreeTranslator;
}

extern "C" VELTRANE_API const SubtreeKind* NameMySubtrees(int version) {
    return version == SubtreeKind::kVersion ? kKinds : nullptr;
}
