#include "kit/document/checks/document_check.h"

#include "kit/document/checks/attribute_check.h"
#include "kit/document/checks/element_table.h"
#include "kit/document/meaningless.h"

#include <algorithm>
#include <vector>

namespace veltrane_kit {

namespace {

/// Has the row of each element on the way down at hand.
class DocumentCheck : public ElementVisitor {
public:
    DocumentCheck(const Element& root, const XMLCh* model, const std::vector<std::string>& others)
        : fRoot(root), fModel(model), fAttributes(root), fOthers(others) {
        for (const XMLCh* common : {u"MiningSchema", u"Output", u"Targets", u"LocalTransformations"}) {
            fOtherModel.children.Add(TagNumberOf(common));
        }
    }

    void Enter(const Element& element) override {
        const ElementRow* row = fPath.empty()                  ? ElementRowOf(TagNumberOf(u"PMML"))
                                : fPath.back() == nullptr      ? nullptr
                                : fPath.size() == 1            ? RowOfTop(element)
                                : fPath.back() == &fOtherModel ? RowOfCommon(element)
                                                               : RowOfChild(element, *fPath.back());
        if (row != nullptr) {
            fAttributes.Check(element, *row);
        }
        fPath.push_back(row);
    }

    void Leave(const Element& element) override {
        const ElementRow* row = fPath.back();
        fPath.pop_back();
        if (row != nullptr && row->rule != nullptr) {
            row->rule(element);
        }
    }

private:
    /// Of the models the one that is read has a row here, and whatever its kind is, it is one. What has no row is
    /// passed over, with all that it holds.
    const ElementRow* RowOfTop(const Element& element) {
        const TagNumber tag = NumberOf(element);
        if (Same(element.TagText(), fModel)) {
            fModel = nullptr;
            const ElementRow* row = ElementRowOf(tag);
            return row == nullptr ? &fOtherModel : row;
        }
        const bool isRead =
            Same(element.TagText(), u"DataDictionary") || Same(element.TagText(), u"TransformationDictionary");
        const ElementRow* row = RowOfChild(element, *fPath.back());
        return isRead ? row : nullptr;
    }

    /// Of a kind of model without a row, what it has in common with others.
    const ElementRow* RowOfCommon(const Element& element) {
        const TagNumber tag = NumberOf(element);
        return IsChild(tag, fOtherModel) ? ElementRowOf(tag) : nullptr;
    }

    const ElementRow* RowOfChild(const Element& child, const ElementRow& parent) {
        const TagNumber tag = NumberOf(child);
        if (IsOther(child, parent)) {
            return nullptr;
        }
        if (!IsChild(tag, parent)) {
            child.RaiseMisplaced();
        }
        return ElementRowOf(tag);
    }

    /// Whether an element is a model that another plug-in reads as a part of one.
    bool IsOther(const Element& child, const ElementRow& parent) const {
        return Same(parent.tag, u"Segment") &&
               std::find(fOthers.begin(), fOthers.end(), child.Tag()) != fOthers.end() &&
               ElementRowOf(TagNumberOf(child.TagText())) == nullptr;
    }

    static bool IsChild(TagNumber tag, const ElementRow& parent) { return parent.children.Has(tag); }

    /// The elements of one document that have the same name share its text, so the text's place tells the name.
    TagNumber NumberOf(const Element& element) {
        const XMLCh* tag = element.TagText();
        Known& known = fKnown[(reinterpret_cast<std::uintptr_t>(tag) / sizeof(void*)) % kKnown];
        if (known.tag != tag) {
            known = {tag, TagNumberOf(tag)};
        }
        return known.number;
    }

    struct Known {
        const XMLCh* tag = nullptr;
        TagNumber number = kOtherTag;
    };
    static constexpr std::size_t kKnown = 128;

    Element fRoot;
    const XMLCh* fModel; ///< null when it was met
    AttributeCheck fAttributes;
    const std::vector<std::string>& fOthers;
    ElementRow fOtherModel;
    std::vector<const ElementRow*> fPath; ///< null for what is passed over
    Known fKnown[kKnown];
};

} // namespace

void CheckDocument(const Element& root, const XMLCh* model, const std::vector<std::string>& others) {
    DocumentCheck check(root, model, others);
    DropMeaningless(root, &check);
}

} // namespace veltrane_kit
