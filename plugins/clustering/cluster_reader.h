#ifndef VELTRANE_PLUGINS_CLUSTERING_CLUSTER_READER_H
#define VELTRANE_PLUGINS_CLUSTERING_CLUSTER_READER_H

#include "clustering_scorer.h"
#include "comparison_reader.h"

#include <set>
#include <vector>

namespace veltrane_clustering {

/// Reads the clusters of a ClusteringModel.
class ClusterReader {
public:
    /// @param parts borrowed
    ClusterReader(const veltrane_kit::Element& model, veltrane_kit::ModelParts& parts);

    /// @throws VTException what ComparisonReader throws; 260115 without fields or clusters, or a cluster without
    /// center,
    ///         260246 for another number of clusters than stated, 260251 for arrays that don't have a value for each
    ///         field, 260203 for an id that comes twice, 260153 for one that the target doesn't list and for an output
    ///         field that names none, 260156 for what is no value of its field
    Clusters Read();

private:
    void ReadFields();
    void ReadCenterFields(const veltrane_kit::Element& element);
    void RequireField(const veltrane_kit::Element& element) const;
    void ReadMissingWeights();
    void ReadClusters();
    void ReadCluster(const veltrane_kit::Element& element);
    void ReadId(const veltrane_kit::Element& element, Cluster& cluster);
    void ReadCenter(const veltrane_kit::Element& array);
    void ReadPartition(const veltrane_kit::Element& partition);
    double ReadStatistics(std::size_t field, const veltrane_kit::Element& statistics);
    void CheckCovariances(const veltrane_kit::Element& covariances) const;
    void FindNamed();

    veltrane_kit::Element fElement;
    veltrane_kit::ModelParts& fParts;
    ComparisonReader fComparison;
    bool fIsDistribution;
    std::vector<veltrane_kit::Element> fFields; ///< all ClusteringFields
    std::vector<std::size_t> fCompared;         ///< the places of those that are compared
    std::set<int> fCategories;
    Clusters fModel;
};

} // namespace veltrane_clustering

#endif
