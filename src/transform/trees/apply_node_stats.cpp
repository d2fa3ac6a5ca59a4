#include <MCVeltrane_900/ApplyNodeStats.h>

namespace MCVeltrane_900 {

ApplyNodeStats::ApplyNodeStats() = default;
ApplyNodeStats::ApplyNodeStats(const ApplyNodeStats& other) = default;
ApplyNodeStats& ApplyNodeStats::operator=(const ApplyNodeStats& other) = default;
ApplyNodeStats::~ApplyNodeStats() = default;

void ApplyNodeStats::AddArray(const std::vector<double>& array) {
    fArrays.push_back(array);
}

void ApplyNodeStats::ClearArray() {
    fArrays.clear();
}

int ApplyNodeStats::GetNumberOfArray() const {
    return static_cast<int>(fArrays.size());
}

const std::vector<double>& ApplyNodeStats::GetArray(int index) const {
    return fArrays[static_cast<std::size_t>(index)];
}

} // namespace MCVeltrane_900
