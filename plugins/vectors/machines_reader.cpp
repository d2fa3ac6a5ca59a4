#include "machines_reader.h"

#include "kit/document/common_elements.h"
#include "kit/document/raise.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace veltrane_vectors {

using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Raise;
using veltrane_kit::RaiseAt;
using veltrane_kit::Word;

namespace {

constexpr Word<bool> kRepresentations[] = {{u"SupportVectors", false}, {u"Coefficients", true}};

constexpr Word<Method> kMethods[] = {{u"OneAgainstAll", Method::ONE_AGAINST_ALL},
                                     {u"OneAgainstOne", Method::ONE_AGAINST_ONE}};

struct KernelTag {
    const XMLCh* tag;
    Kernel::Type type;
};

constexpr KernelTag kKernels[] = {{u"LinearKernelType", Kernel::Type::LINEAR},
                                  {u"PolynomialKernelType", Kernel::Type::POLYNOMIAL},
                                  {u"RadialBasisKernelType", Kernel::Type::RADIAL_BASIS},
                                  {u"SigmoidKernelType", Kernel::Type::SIGMOID}};

bool IsKernel(const Element& element) {
    return std::any_of(std::begin(kKernels), std::end(kKernels),
                       [&](const KernelTag& kernel) { return element.Is(kernel.tag); });
}

} // namespace

void MachinesReader::Read(const Element& element) {
    const double threshold = element.NumberOr(u"threshold", 0.0);
    fMachines.areOfFields = element.OneOfOr(u"svmRepresentation", kRepresentations, false);
    fMachines.maxWins = element.FlagOr(u"maxWins", false);
    fVectors.Read(element.RequireChild(u"VectorDictionary"));
    fSeen.resize(fMachines.vectors.Count());
    for (const Element child : element.Children()) {
        if (child.Is(u"SupportVectorMachine")) {
            ReadMachine(child, threshold);
        } else if (IsKernel(child)) {
            ReadKernel(child);
        } else if (!child.Is(u"VectorDictionary")) {
            veltrane_kit::RequireCommonElement(child);
        }
    }
    if (!fHasKernel) {
        Raise<Message::MISSING_NODE_IN>("LinearKernelType", element.Tag());
    }
    if (fMachines.machines.empty()) {
        Raise<Message::MISSING_NODE_IN>("SupportVectorMachine", element.Tag());
    }
    if (!fParts.IsClassification() && fMachines.machines.size() > 1) {
        Raise<Message::MORE_THAN_ONE>("SupportVectorMachine", element.Tag());
    }
    if (fParts.IsClassification()) {
        ReadMethod(element);
        CheckCategories();
    }
    FindUsed();
}

void MachinesReader::ReadKernel(const Element& element) {
    if (std::exchange(fHasKernel, true)) {
        Raise<Message::MORE_THAN_ONE>(element.Tag(), fParts.tag);
    }
    for (const KernelTag& kernel : kKernels) {
        if (element.Is(kernel.tag)) {
            fMachines.kernel.type = kernel.type;
        }
    }
    if (fMachines.areOfFields && fMachines.kernel.type != Kernel::Type::LINEAR) {
        Raise<Message::UNEXPECTED_NODE_IN>(element.Tag(), "LinearKernelType", fParts.tag);
    }
    fMachines.kernel.gamma = element.NumberOr(u"gamma", 1.0);
    fMachines.kernel.coef0 = element.NumberOr(u"coef0", 1.0);
    fMachines.kernel.degree = element.NumberOr(u"degree", 1.0);
}

void MachinesReader::ReadMachine(const Element& element, double threshold) {
    Machine machine;
    machine.threshold = element.NumberOr(u"threshold", threshold);
    if (fParts.IsClassification()) {
        ReadCategories(element, machine);
    }
    for (const Element child : element.Children()) {
        const bool isOfVectors = child.Is(u"SupportVectors") && !fMachines.areOfFields;
        if (!isOfVectors && !child.Is(u"Coefficients") && !child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    if (!fMachines.areOfFields) {
        ReadSupportVectors(element.RequireChild(u"SupportVectors"), machine);
    }
    ReadCoefficients(element.RequireChild(u"Coefficients"), machine);
    fMachines.machines.push_back(std::move(machine));
}

void MachinesReader::ReadCategories(const Element& element, Machine& machine) {
    machine.category = fParts.target->CategoryOf(element, u"targetCategory");
    if (!element.Has(u"alternateTargetCategory")) {
        return;
    }
    machine.alternate = fParts.target->CategoryOf(element, u"alternateTargetCategory");
    if (machine.alternate == machine.category) {
        RaiseAt<Message::CONFLICTING_VALUES>(element.Tag(), nullptr, element.AnyText(u"targetCategory"),
                                             "targetCategory", element.AnyText(u"alternateTargetCategory"),
                                             "alternateTargetCategory");
    }
}

void MachinesReader::ReadSupportVectors(const Element& element, Machine& machine) {
    const std::size_t number = fMachines.machines.size() + 1;
    for (const Element child : element.Children()) {
        if (!child.Is(u"SupportVector")) {
            if (!child.Is(u"Extension")) {
                child.RaiseMisplaced();
            }
            continue;
        }
        const std::uint32_t place = fVectors.PlaceOf(child);
        if (std::exchange(fSeen[place], number) == number) {
            Raise<Message::DUPLICATE_DEFINITION>(child.Tag(), child.Text(u"vectorId"), element.Tag());
        }
        machine.places.push_back(place);
    }
    if (machine.places.empty()) {
        Raise<Message::MISSING_NODE_IN>("SupportVector", element.Tag());
    }
    CheckCount(element, u"numberOfSupportVectors", "SupportVector", machine.places.size());
    const std::size_t fields = fMachines.fields.size();
    if (element.Has(u"numberOfAttributes") && element.Number(u"numberOfAttributes") != static_cast<double>(fields)) {
        Raise<Message::NUMBER_MISMATCH>(element.Text(u"numberOfAttributes"), "numberOfAttributes",
                                        std::to_string(fields), "FieldRef, CategoricalPredictor", "VectorFields");
    }
}

void MachinesReader::ReadCoefficients(const Element& element, Machine& machine) {
    machine.bias = element.NumberOr(u"absoluteValue", 0.0);
    for (const Element child : element.Children()) {
        if (child.Is(u"Coefficient")) {
            machine.coefficients.push_back(child.NumberOr(u"value", 0.0));
        } else if (!child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    const std::size_t count = machine.coefficients.size();
    CheckCount(element, u"numberOfCoefficients", "Coefficient", count);
    const std::size_t wanted = fMachines.areOfFields ? fMachines.fields.size() : machine.places.size();
    if (count != wanted) {
        Raise<Message::NUMBERS_MISMATCH>(std::to_string(count), "Coefficient", element.Tag(), std::to_string(wanted),
                                         fMachines.areOfFields ? "FieldRef, CategoricalPredictor" : "SupportVector",
                                         fMachines.areOfFields ? "VectorFields" : "SupportVectors");
    }
}

/// Producers leave the method out where every machine tells two categories apart.
void MachinesReader::ReadMethod(const Element& element) {
    const auto paired = static_cast<std::size_t>(
        std::count_if(fMachines.machines.begin(), fMachines.machines.end(),
                      [](const Machine& machine) { return machine.alternate != Machine::kNoCategory; }));
    const std::size_t count = fMachines.machines.size();
    fMachines.method = element.OneOfOr(u"classificationMethod", kMethods,
                                       paired == 0 ? Method::ONE_AGAINST_ALL : Method::ONE_AGAINST_ONE);
    if (count == 1 && fMachines.method == Method::ONE_AGAINST_ALL) {
        fMachines.method = Method::ONE_AGAINST_ONE;
    }
    if (fMachines.method == Method::ONE_AGAINST_ONE && paired == 0) {
        Raise<Message::MISSING_ATTRIBUTE_OF>("alternateTargetCategory", "SupportVectorMachine");
    }
    if (fMachines.method == Method::ONE_AGAINST_ONE && paired < count) {
        Raise<Message::ATTRIBUTE_NOT_EVERYWHERE>("SupportVectorMachine", "alternateTargetCategory");
    }
}

/// A category, or two of them, have one machine. Against one another all that have some have one with each other: votes
/// that some categories can't get say nothing.
void MachinesReader::CheckCategories() const {
    const bool isPaired = fMachines.method == Method::ONE_AGAINST_ONE;
    Pairs known;
    for (const Machine& machine : fMachines.machines) {
        const int other = isPaired ? machine.alternate : machine.category;
        if (!known.insert(std::minmax(machine.category, other)).second) {
            Raise<Message::DUPLICATE_DEFINITION>("SupportVectorMachine",
                                                 fParts.target->Category(machine.category).GetString(), fParts.tag);
        }
    }
    if (isPaired) {
        CheckPairs(known);
    }
}

void MachinesReader::CheckPairs(const Pairs& known) const {
    std::set<int> categories;
    for (const auto& [one, other] : known) {
        categories.insert({one, other});
    }
    for (auto one = categories.begin(); one != categories.end(); ++one) {
        for (auto other = std::next(one); other != categories.end(); ++other) {
            if (known.count({*one, *other}) == 0) {
                Raise<Message::MISSING_ELEMENT_WITH_VALUE>(fParts.target->Category(*one).GetString() + ", " +
                                                               fParts.target->Category(*other).GetString(),
                                                           "targetCategory, alternateTargetCategory", fParts.tag);
            }
        }
    }
}

void MachinesReader::FindUsed() {
    for (std::size_t place = 0; place < fSeen.size(); ++place) {
        if (fSeen[place] != 0) {
            fMachines.used.push_back(static_cast<std::uint32_t>(place));
        }
    }
}

} // namespace veltrane_vectors
