#ifndef MCVELTRANE_900_SCOREVERSIONINFO_H
#define MCVELTRANE_900_SCOREVERSIONINFO_H

#include <veltrane_export.h>

#include <string>

namespace MCVeltrane_900 {

/// The version text of a model document.
class VELTRANE_API ScoreVersionInfo {
public:
    virtual ~ScoreVersionInfo();

    virtual void SetVersionInfo(const std::string& version) = 0;
    /// A copy, owned by the caller.
    virtual ScoreVersionInfo* Clone() const = 0;
    /// Equality of the texts.
    virtual bool operator==(const ScoreVersionInfo& other) const = 0;
    virtual const std::string& GetVersionInfo() const = 0;
};

} // namespace MCVeltrane_900

#endif
