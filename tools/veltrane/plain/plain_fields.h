#ifndef VELTRANE_HOST_PLAIN_FIELDS_H
#define VELTRANE_HOST_PLAIN_FIELDS_H

#include <memory>
#include <string>
#include <vector>

namespace MCVeltrane_900 {
class ScoreDictionary;
class ScoreValue;
class TransformationDictionary;
} // namespace MCVeltrane_900

namespace veltrane::host {

class CaseRow;

/// Derived fields that the library alone computes, as further fields of each case.
class PlainFields {
public:
    /// @param fields  the data dictionary as the library reads it; borrowed, like the derived fields, which borrow from
    ///                it
    /// @param names   of the derived fields that are wanted, which the row has as computed ones
    /// @param row     borrowed
    PlainFields(const MCVeltrane_900::ScoreDictionary& fields, MCVeltrane_900::TransformationDictionary& derivedFields,
                const std::vector<std::string>& names, CaseRow& row);
    ~PlainFields();
    PlainFields(const PlainFields&) = delete;
    PlainFields& operator=(const PlainFields&) = delete;

    /// The fields that have to come from a case for some of the data fields and of these.
    std::vector<std::string> CaseFieldsOf(const std::vector<std::string>& names) const;

    /// Computes the fields for the case in the row. Once for each case, in their order: lag fields count.
    void Compute();

private:
    class Case;

    const MCVeltrane_900::ScoreDictionary& fFields;
    MCVeltrane_900::TransformationDictionary& fDerivedFields;
    CaseRow& fRow;
    std::unique_ptr<Case> fCase;
    struct Wanted {
        int slot;     ///< in the row
        int position; ///< among the derived values
    };
    std::vector<Wanted> fWanted;
};

} // namespace veltrane::host

#endif
