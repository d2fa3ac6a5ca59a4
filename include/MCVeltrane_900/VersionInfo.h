#ifndef MCVELTRANE_900_VERSIONINFO_H
#define MCVELTRANE_900_VERSIONINFO_H

#include <MCVeltrane_900/ScoreVersionInfo.h>

#include <concepts>

namespace MCVeltrane_900 {

/// The library's version text.
class VELTRANE_API VersionInfo : public ScoreVersionInfo {
public:
    /// The version "2.1".
    VersionInfo();
    explicit VersionInfo(const std::string& version);
    VersionInfo(const VersionInfo& other);
    VersionInfo& operator=(const VersionInfo& other);
    ~VersionInfo() override;

    void SetVersionInfo(const std::string& version) override;
    ScoreVersionInfo* Clone() const override;
    bool operator==(const ScoreVersionInfo& other) const override;

    /// The same operator with the exact type of its right side, so that a comparison of two concrete classes isn't
    /// ambiguous with its own reversed form.
    template <std::derived_from<ScoreVersionInfo> T>
    bool operator==(const T& other) const {
        return *this == static_cast<const ScoreVersionInfo&>(other);
    }

    const std::string& GetVersionInfo() const override;

private:
    std::string fVersion;
};

} // namespace MCVeltrane_900

#endif
