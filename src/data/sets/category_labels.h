#ifndef VELTRANE_DATA_CATEGORY_LABELS_H
#define VELTRANE_DATA_CATEGORY_LABELS_H

#include <string>
#include <vector>

namespace veltrane::data {

/// Sets the display label of a category; the labels grow to the number of categories first. A code that isn't in use
/// is ignored.
inline void SetCategoryLabel(std::vector<std::string>& labels, std::size_t categories, int code,
                             const std::string& label) {
    if (labels.size() < categories) {
        labels.resize(categories);
    }
    if (code >= 0 && static_cast<std::size_t>(code) < categories) {
        labels[code] = label;
    }
}

} // namespace veltrane::data

#endif
