#ifndef VELTRANE_HOST_MODEL_LIST_H
#define VELTRANE_HOST_MODEL_LIST_H

#include <optional>
#include <string>
#include <vector>

namespace veltrane::host {

/// The names of the models for which there are plug-ins.
struct ModelList {
    std::string path;
    std::vector<std::string> names;

    bool Has(const std::string& name) const;

    /// The names as a list for a person.
    std::string Text() const;
};

/// The list of the models whose plug-ins were installed with the library: `modeldll.txt` in the folder `veltrane`
/// beside the library that this process runs with.
std::string InstalledModelList();

/// Starts the library with a list of models, which the library reads; a line may end in CR LF here, and a byte order
/// mark may come first.
/// @param path the installed list without one
/// @throws ExplainedFailure with the library's message and the system's reason when the file cannot be read
ModelList StartLibrary(const std::optional<std::string>& path);

/// Starts the library without a list.
void StartLibrary();

} // namespace veltrane::host

#endif
