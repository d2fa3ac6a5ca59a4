#include "segmentation_reader.h"

#include "foreign_model.h"
#include "kinds.h"
#include "kit/document/raise.h"
#include "kit/model/completion.h"

#include <algorithm>
#include <utility>

namespace veltrane_mining {

using veltrane_kit::ConditionReader;
using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Outputs;
using veltrane_kit::Raise;
using veltrane_kit::RaiseAt;
using veltrane_kit::Word;

namespace {

constexpr Word<MissingPrediction> kTreatments[] = {
    {u"continue", MissingPrediction::CONTINUE},
    {u"skipSegment", MissingPrediction::SKIP_SEGMENT},
    {u"returnMissing", MissingPrediction::RETURN_MISSING},
};

constexpr const XMLCh* kMethod = u"multipleModelMethod";

/// What a segment has one of.
constexpr const char* kPredicate = "PREDICATE";
constexpr const char* kModel = "MODEL-ELEMENT";

const char* NameOf(const veltrane_kit::ModelParts& parts) {
    return parts.IsClustering() ? "clustering" : parts.IsClassification() ? "classification" : "regression";
}

/// Has a failure tell the segment that it comes from, behind what it tells already.
template <typename Action>
void InSegment(const std::string& id, const Action& action) {
    try {
        action();
    } catch (MCVeltrane_900::VTException& failure) {
        failure.SetDetailMessage((failure.GetDetailMessage() + " Segment '" + id + "'.").c_str());
        throw;
    }
}

/// Whether a method leaves the prediction to one segment.
constexpr bool Selects(Method method) {
    return method >= Method::SELECT_FIRST;
}

} // namespace

void SegmentationReader::Read(const Element& model) {
    veltrane_kit::RequireRoomForParts(model, fParts);
    fSegmentation.isClassification = fParts.IsClassification();
    NoteAsked(model);
    ReadEmbedded(model);
    const Element element = model.Child(u"Segmentation");
    if (element) {
        fSegmentation.ahead = fSegmentation.segments.size();
        ReadSegments(element);
    } else if (fSegmentation.segments.empty()) {
        Raise<Message::MISSING_NODE_IN>("Segmentation", model.Tag());
    }
    CheckFunctions();
    CheckAsked();
}

/// The older models of a model are a chain, the last of which has the prediction where there are no segments behind it.
void SegmentationReader::ReadEmbedded(const Element& model) {
    fSegmentation.method = Method::MODEL_CHAIN;
    for (const Element child : model.Children()) {
        if (child.Is(u"Regression") || child.Is(u"DecisionTree")) {
            Segment segment;
            segment.id = child.TextOr(u"modelName", "");
            ReadModel(child, segment);
            fSegmentation.segments.push_back(std::move(segment));
        }
    }
}

void SegmentationReader::ReadSegments(const Element& element) {
    ReadMethod(element);
    for (const Element child : element.Children()) {
        if (!child.Is(u"Segment")) {
            child.RaiseMisplaced();
        }
        ReadSegment(child);
    }
    if (fSegmentation.segments.size() == fSegmentation.ahead) {
        Raise<Message::NO_CHILD_ELEMENT>(element.Tag());
    }
}

void SegmentationReader::ReadMethod(const Element& element) {
    fSegmentation.method = element.OneOf(kMethod, kMethods);
    if (!fParts.IsClassification() && IsVote(fSegmentation.method)) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(element.Text(kMethod), veltrane_kit::Narrow(kMethod), element.Tag(),
                                             "average, weightedAverage, median, weightedMedian, max, sum, weightedSum, "
                                             "selectFirst, selectAll, modelChain");
    }
    if (fParts.IsClustering() && !IsVote(fSegmentation.method) && !Selects(fSegmentation.method)) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(element.Text(kMethod), veltrane_kit::Narrow(kMethod), element.Tag(),
                                             "majorityVote, weightedMajorityVote, selectFirst, selectAll, modelChain");
    }
    fSegmentation.missing = element.OneOfOr(u"missingPredictionTreatment", kTreatments, MissingPrediction::CONTINUE);
    fSegmentation.threshold = element.NumberOr(u"missingThreshold", 1.0);
    if (fSegmentation.threshold < 0.0 || fSegmentation.threshold > 1.0) {
        element.RaiseInvalid(u"missingThreshold");
    }
}

/// The output fields of the whole model that a segment answers.
void SegmentationReader::NoteAsked(const Element& model) {
    const Element output = model.Child(u"Output");
    if (!output) {
        return;
    }
    for (const Element field : output.Children()) {
        if (field.Is(u"OutputField") && field.Has(u"segmentId")) {
            fAsked[field.Text(u"segmentId")].push_back(field);
        }
    }
}

void SegmentationReader::CheckAsked() const {
    for (const auto& [id, fields] : fAsked) {
        if (fIds.count(id) == 0) {
            fields.front().RaiseInvalid(u"segmentId");
        }
    }
}

void SegmentationReader::ReadSegment(const Element& element) {
    Segment segment;
    segment.id = element.Has(u"id") ? element.Text(u"id")
                                    : std::to_string(fSegmentation.segments.size() - fSegmentation.ahead + 1);
    if (!fIds.insert(segment.id).second) {
        Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), segment.id, "Segmentation");
    }
    InSegment(segment.id, [&] {
        segment.weight = ReadWeight(element);
        const Children children = Survey(element);
        segment.condition = fConditions.Read(children.predicate);
        ReadModel(children.model, segment);
    });
    fSegmentation.segments.push_back(std::move(segment));
}

/// Numbers may be taken away from a sum, but not votes and shares.
double SegmentationReader::ReadWeight(const Element& element) const {
    const double weight = element.NumberOr(u"weight", 1.0);
    const bool mayTakeAway = fSegmentation.method == Method::WEIGHTED_SUM && !fParts.IsClassification();
    if (weight < 0.0 && !mayTakeAway) {
        element.RaiseInvalid(u"weight");
    }
    return weight;
}

SegmentationReader::Children SegmentationReader::Survey(const Element& element) {
    Children found;
    for (const Element child : element.Children()) {
        if (child.Is(u"VariableWeight") || child.Is(u"Extension")) {
            continue;
        }
        const bool isPredicate = ConditionReader::IsPredicate(child);
        Element& place = isPredicate ? found.predicate : found.model;
        if (place) {
            Raise<Message::MORE_THAN_ONE>(isPredicate ? kPredicate : kModel, element.Tag());
        }
        place = child;
    }
    if (!found.predicate) {
        Raise<Message::MISSING_NODE_IN>(kPredicate, element.Tag());
    }
    if (!found.model) {
        Raise<Message::MISSING_NODE_IN>(kModel, element.Tag());
    }
    return found;
}

bool SegmentationReader::IsInModelList(const Element& model) const {
    const std::vector<std::string>& names = fParts.document->modelNames;
    return std::find(names.begin(), names.end(), model.Tag()) != names.end();
}

void SegmentationReader::ReadModel(const Element& model, Segment& segment) {
    const veltrane_kit::MakeScorer make = MakerOf(model);
    const std::size_t histories = fParts.inputs->Layout().histories.size();
    const auto named = fAsked.find(segment.id);
    const std::vector<Element> asked =
        named != fAsked.end() && fIds.count(segment.id) > 0 ? named->second : std::vector<Element>();
    if (make != nullptr) {
        segment.plan = CompletePart(model, fParts, make, asked);
    } else if (IsInModelList(model)) {
        segment.plan = CompleteForeign(model, fParts, asked);
    } else {
        RaiseAt<Message::UNSUPPORTED_MODEL>("Segment", nullptr, model.Tag());
    }
    segment.looksBack = make == nullptr || fParts.inputs->Layout().histories.size() > histories;
    segment.predictsTarget = segment.plan->Parts().function == fParts.function;
    FindCategories(model, segment);
    for (const veltrane_kit::AskedEntities::Named& named : fParts.more.entities.GetNamed()) {
        segment.named.push_back(segment.plan->Parts().more.entities.PlaceOf(named.id));
    }
    segment.predictsTarget = segment.predictsTarget && !HasOtherTarget(segment);
    Tell(segment);
}

/// The categories of a segment as those of the whole model.
void SegmentationReader::FindCategories(const Element& model, Segment& segment) {
    const veltrane_kit::Target& target = segment.plan->GetTarget();
    for (int code = 0; segment.predictsTarget && fSegmentation.isClassification && code < target.CategoryCount();
         ++code) {
        const int category = fParts.target->CategoryOf(target, code);
        if (category < 0 && fSegmentation.method == Method::MODEL_CHAIN) {
            segment.predictsTarget = false;
            return;
        }
        if (category < 0) {
            RaiseAt<Message::MISSING_VALUE_IN_LIST>(model.Tag(), nullptr, target.Category(code).GetString(),
                                                    fParts.target->Name());
        }
        if (fParts.IsClustering()) {
            fParts.target->ShowAs(category, target.Label(code));
        }
        segment.categories.push_back(static_cast<std::size_t>(category));
    }
}

/// What others may ask of the segment: the output fields of the whole model that name it, and, where one segment has
/// the prediction, its own output fields. Those of them that are final are results of the whole too: producers put the
/// probabilities of a chain into its last segment alone.
void SegmentationReader::Tell(Segment& segment) {
    const bool isSelected = Selects(fSegmentation.method);
    for (const Outputs::Told& told : segment.plan->GetOutputs().AllTold()) {
        if (told.isAsked) {
            fParts.inputs->AddAnswer(told.name, told.found);
            segment.told.push_back({told.found.slot, told.found.slot});
        } else if (isSelected) {
            const int slot = fParts.inputs->AddTold(told.name, told.found);
            segment.told.push_back({told.found.slot, slot});
            if (told.isFinal) {
                fParts.told.push_back(told);
                fParts.told.back().found.slot = slot;
            }
        }
    }
}

/// Whether a segment says that it predicts another field than the whole model.
bool SegmentationReader::HasOtherTarget(const Segment& segment) const {
    const std::string& target = segment.plan->Parts().schema.target;
    return !target.empty() && !fParts.schema.target.empty() && target != fParts.schema.target;
}

void SegmentationReader::RaiseContradiction(const Segment& segment) const {
    const veltrane_kit::ModelParts& parts = segment.plan->Parts();
    if (parts.function == fParts.function) {
        Raise<Message::CONFLICTING_VALUES_IN>(parts.schema.target, "target", parts.tag, fParts.schema.target, "target",
                                              fParts.tag);
    }
    Raise<Message::CONFLICTING_VALUES_IN>(NameOf(parts), "functionName", parts.tag, NameOf(fParts), "functionName",
                                          fParts.tag);
}

/// Predictions that are combined are of one kind and of one field. In a chain the last one counts.
void SegmentationReader::CheckFunctions() const {
    const bool isChain = fSegmentation.method == Method::MODEL_CHAIN;
    for (std::size_t i = fSegmentation.ahead; i < fSegmentation.segments.size(); ++i) {
        const Segment& segment = fSegmentation.segments[i];
        const bool counts = !isChain || &segment == &fSegmentation.segments.back();
        if (counts && !segment.predictsTarget) {
            InSegment(segment.id, [&] { RaiseContradiction(segment); });
        }
    }
}

} // namespace veltrane_mining
