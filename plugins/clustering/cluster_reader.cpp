#include "cluster_reader.h"

#include "kit/document/common_elements.h"
#include "kit/document/raise.h"
#include "kit/values/number_array.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>
#include <utility>

namespace veltrane_clustering {

using veltrane_kit::Element;
using veltrane_kit::kMissing;
using veltrane_kit::Message;
using veltrane_kit::Raise;
using veltrane_kit::Word;

namespace {

constexpr const XMLCh* kField = u"field";

bool IsOwn(const Element& child) {
    static constexpr const XMLCh* kTags[] = {u"ComparisonMeasure", u"ClusteringField", u"CenterFields",
                                             u"MissingValueWeights", u"Cluster"};
    return std::any_of(std::begin(kTags), std::end(kTags), [&](const XMLCh* tag) { return child.Is(tag); });
}

std::vector<Element> ChildrenOf(const Element& element, const XMLCh* tag) {
    std::vector<Element> children;
    for (const Element child : element.Children()) {
        if (child.Is(tag)) {
            children.push_back(child);
        }
    }
    return children;
}

[[noreturn]] void RaiseMismatch(std::size_t values, const Element& array, std::size_t fields, const char* of,
                                const Element& in) {
    Raise<Message::NUMBERS_MISMATCH>(std::to_string(values), "value", array.Tag(), std::to_string(fields), of,
                                     in.Tag());
}

} // namespace

ClusterReader::ClusterReader(const Element& model, veltrane_kit::ModelParts& parts)
    : fElement(model), fParts(parts), fComparison(model, parts) {
    static constexpr Word<bool> kClasses[] = {{u"centerBased", false}, {u"distributionBased", true}};
    fIsDistribution = model.OneOf(u"modelClass", kClasses);
    for (const Element child : model.Children()) {
        if (!IsOwn(child)) {
            veltrane_kit::RequireCommonElement(child);
        }
    }
}

Clusters ClusterReader::Read() {
    ReadFields();
    ReadMissingWeights();
    ReadClusters();
    FindNamed();
    fModel.comparison = fComparison.Take();
    return std::move(fModel);
}

void ClusterReader::ReadFields() {
    const Element centers = fElement.Child(u"CenterFields");
    if (centers && !centers.FirstChild()) {
        Raise<Message::MISSING_NODE_IN>("DerivedField", centers.Tag());
    }
    fFields = ChildrenOf(fElement, u"ClusteringField");
    std::set<std::string> names;
    for (const Element& field : fFields) {
        if (!names.insert(field.Text(kField)).second) {
            Raise<Message::DUPLICATE_DEFINITION>(field.Tag(), field.Text(kField), fElement.Tag());
        }
        RequireField(field);
    }
    if (centers) {
        ReadCenterFields(centers);
        return;
    }
    for (std::size_t i = 0; i < fFields.size(); ++i) {
        if (fFields[i].FlagOr(u"isCenterField", true)) {
            fComparison.AddField(fFields[i]);
            fCompared.push_back(i);
        }
    }
    if (fCompared.empty()) {
        Raise<Message::MISSING_NODE_IN>("ClusteringField", fElement.Tag());
    }
}

/// A field that isn't compared has to be there too.
void ClusterReader::RequireField(const Element& element) const {
    if (fParts.fields->count(element.Text(kField)) == 0) {
        fParts.inputs->Derived().Require(element, kField);
    }
}

/// The fields are derived ones, in the order of the centers; a ClusteringField of the same name tells more of one.
void ClusterReader::ReadCenterFields(const Element& element) {
    std::unordered_map<std::string, std::size_t> places;
    for (const Element& field : fFields) {
        places.emplace(field.Text(kField), places.size());
    }
    for (const Element reference : element.Children()) {
        const auto about = places.find(reference.Text(kField));
        const bool isTold = about != places.end();
        fComparison.AddField(isTold ? fFields[about->second] : reference);
        fCompared.push_back(isTold ? about->second : fFields.size());
    }
}

/// A weight for each field that is compared, or for each ClusteringField.
void ClusterReader::ReadMissingWeights() {
    const Element element = fElement.Child(u"MissingValueWeights");
    if (!element) {
        return;
    }
    const Element array = element.RequireChild(u"Array");
    const std::vector<double> weights = veltrane_kit::ArrayNumbers(array);
    const bool isOfCompared = weights.size() == fCompared.size();
    if (!isOfCompared && weights.size() != fFields.size()) {
        RaiseMismatch(weights.size(), array, fCompared.size(), "ClusteringField", fElement);
    }
    for (std::size_t i = 0; i < fCompared.size(); ++i) {
        const std::size_t at = isOfCompared ? i : fCompared[i];
        if (at >= weights.size() || weights[at] < 0.0) {
            Raise<Message::INVALID_CONTENT>(array.Content(), array.Tag());
        }
        fComparison.Get().fields[i].missingWeight = weights[at];
    }
}

void ClusterReader::ReadClusters() {
    const std::vector<Element> clusters = ChildrenOf(fElement, u"Cluster");
    if (clusters.empty()) {
        Raise<Message::MISSING_NODE_IN>("Cluster", fElement.Tag());
    }
    if (fElement.Number(u"numberOfClusters") != static_cast<double>(clusters.size())) {
        Raise<Message::ELEMENT_NUMBER_MISMATCH>(fElement.Text(u"numberOfClusters"), "numberOfClusters",
                                                std::to_string(clusters.size()), "Cluster", fElement.Tag());
    }
    for (const Element& cluster : clusters) {
        ReadCluster(cluster);
    }
}

void ClusterReader::ReadCluster(const Element& element) {
    Cluster cluster;
    ReadId(element, cluster);
    for (const Element child : element.Children()) {
        if (!child.Is(u"KohonenMap") && !child.Is(u"Array") && !child.Is(u"Partition") && !child.Is(u"Covariances")) {
            child.RaiseMisplaced();
        }
    }
    element.Child(u"KohonenMap"); // one at most
    const Element array = element.Child(u"Array");
    const Element partition = element.Child(u"Partition");
    if (array) {
        ReadCenter(array);
    } else if (fIsDistribution && partition) {
        ReadPartition(partition);
    } else {
        Raise<Message::MISSING_NODE_IN>(fIsDistribution ? "Array, Partition" : "Array", element.Tag());
    }
    if (const Element covariances = element.Child(u"Covariances")) {
        CheckCovariances(covariances);
    }
    fModel.clusters.push_back(std::move(cluster));
}

/// A cluster without an id is called by its place.
void ClusterReader::ReadId(const Element& element, Cluster& cluster) {
    cluster.id = element.Has(u"id") ? element.Text(u"id") : std::to_string(fModel.clusters.size() + 1);
    cluster.category =
        element.Has(u"id") ? fParts.target->CategoryOf(element, u"id") : fParts.target->CategoryOf(cluster.id);
    if (cluster.category < 0) {
        Raise<Message::MISSING_VALUE_IN_LIST>(cluster.id, fParts.target->Name());
    }
    if (!fCategories.insert(cluster.category).second) {
        Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), cluster.id, fElement.Tag());
    }
    if (element.Has(u"name")) {
        fParts.target->ShowAs(cluster.category, element.TextOr(u"name", cluster.id));
    }
}

void ClusterReader::ReadCenter(const Element& array) {
    const std::vector<std::string> words = veltrane_kit::CountedWords(array);
    if (words.size() != fCompared.size()) {
        RaiseMismatch(words.size(), array, fCompared.size(), "ClusteringField", fElement);
    }
    for (std::size_t i = 0; i < words.size(); ++i) {
        fModel.centers.push_back(fComparison.ReadValue(i, words[i], array.Tag()));
    }
}

/// A distribution without a center is taken for its mean in numbers and its most frequent value in others.
void ClusterReader::ReadPartition(const Element& partition) {
    std::map<std::string, Element> known;
    for (const Element statistics : ChildrenOf(partition, u"PartitionFieldStats")) {
        RequireField(statistics);
        statistics.Child(u"Counts"); // one at most
        for (const Element& array : ChildrenOf(statistics, u"Array")) {
            veltrane_kit::CheckArrayType(array);
        }
        if (!known.emplace(statistics.Text(kField), statistics).second) {
            Raise<Message::DUPLICATE_DEFINITION>(statistics.Tag(), statistics.Text(kField), partition.Tag());
        }
    }
    for (std::size_t i = 0; i < fCompared.size(); ++i) {
        const auto statistics = known.find(fComparison.Get().fields[i].name);
        fModel.centers.push_back(statistics == known.end() ? kMissing : ReadStatistics(i, statistics->second));
    }
}

/// @return not a number where nothing tells
double ClusterReader::ReadStatistics(std::size_t field, const Element& statistics) {
    const ComparedField& about = fComparison.Get().fields[field];
    const Element numeric = statistics.Child(u"NumericInfo");
    if (!about.isCode) {
        return numeric && numeric.Has(u"mean") ? fComparison.ReadValue(field, numeric.Text(u"mean"), numeric.Tag())
                                               : kMissing;
    }
    const std::vector<Element> arrays = ChildrenOf(statistics, u"Array");
    const std::vector<veltrane_kit::Value> listed = fComparison.ListedOf(about);
    const bool isUnordered = listed.empty() && fParts.inputs->Derived().Has(about.slot);
    if (arrays.empty() || isUnordered) {
        return kMissing;
    }
    const std::vector<double> counts = veltrane_kit::ArrayNumbers(arrays.front());
    if (counts.size() != listed.size() || counts.empty()) {
        RaiseMismatch(counts.size(), arrays.front(), listed.size(), "Value", statistics);
    }
    const auto most = std::max_element(counts.begin(), counts.end()) - counts.begin();
    return fComparison.ValueOf(field, listed[static_cast<std::size_t>(most)]);
}

/// They describe a cluster and decide nothing.
void ClusterReader::CheckCovariances(const Element& covariances) const {
    const Element element = covariances.RequireChild(u"Matrix");
    const veltrane_kit::Matrix matrix(element);
    if (matrix.Rows() != fCompared.size() || matrix.Columns() != fCompared.size()) {
        Raise<Message::NUMBERS_MISMATCH>(std::to_string(matrix.Rows()), "nbRows", element.Tag(),
                                         std::to_string(fCompared.size()), "ClusteringField", fElement.Tag());
    }
}

void ClusterReader::FindNamed() {
    veltrane_kit::AskedEntities& asked = fParts.more.entities;
    fModel.ranks = asked.Ranks();
    if (asked.GetNamed().empty()) {
        return;
    }
    std::map<std::string, std::size_t> places;
    for (std::size_t i = 0; i < fModel.clusters.size(); ++i) {
        places.emplace(fModel.clusters[i].id, i);
    }
    asked.Resolve([&](const std::string& id) { return places.count(id) > 0; });
    for (const veltrane_kit::AskedEntities::Named& named : asked.GetNamed()) {
        fModel.named.push_back(places.at(named.id));
    }
}

} // namespace veltrane_clustering
