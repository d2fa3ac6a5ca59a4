#include <MCVeltrane_900/VersionInfo.h>

namespace MCVeltrane_900 {

VersionInfo::VersionInfo() : fVersion("2.1") {}
VersionInfo::VersionInfo(const std::string& version) : fVersion(version) {}
VersionInfo::VersionInfo(const VersionInfo& other) = default;
VersionInfo& VersionInfo::operator=(const VersionInfo& other) = default;
VersionInfo::~VersionInfo() = default;

void VersionInfo::SetVersionInfo(const std::string& version) {
    fVersion = version;
}
ScoreVersionInfo* VersionInfo::Clone() const {
    return new VersionInfo(*this);
}
bool VersionInfo::operator==(const ScoreVersionInfo& other) const {
    return fVersion == other.GetVersionInfo();
}
const std::string& VersionInfo::GetVersionInfo() const {
    return fVersion;
}

} // namespace MCVeltrane_900
