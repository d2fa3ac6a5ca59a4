#ifndef VELTRANE_HOST_ERROR_LIMIT_H
#define VELTRANE_HOST_ERROR_LIMIT_H

#include <cstdint>
#include <optional>
#include <string_view>

namespace veltrane::host {

/// How many rows of a run may have errors: a number of them, or a share of all.
class ErrorLimit {
public:
    /// None.
    ErrorLimit() = default;

    /// Reads `5`, or a percentage such as `0.1%`, of up to 100 with up to nine decimals.
    /// @return nothing for any other text
    static std::optional<ErrorLimit> Parse(std::string_view text);

    /// Whether so many errors are no more than the limit; of a share the limit itself is allowed, to the row.
    bool Allows(std::uint64_t errors, std::uint64_t rows) const;

    bool operator==(const ErrorLimit&) const = default;

private:
    std::uint64_t fNumber = 0; ///< of rows, or billionths of a percent
    bool fIsShare = false;
};

} // namespace veltrane::host

#endif
