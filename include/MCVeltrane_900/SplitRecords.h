#ifndef MCVELTRANE_900_SPLITRECORDS_H
#define MCVELTRANE_900_SPLITRECORDS_H

#include <vector>

namespace MCVeltrane_900 {

/// The branches of a split in the order of insertion: objects that the split owns, each with a child index. Several
/// records may have one index. A null object is kept and matches nothing.
///
/// Copying clones the objects. Assignment keeps what is there and appends clones: plug-ins that assign one split to
/// another rely on it. T needs `T* Clone() const`.
template <typename T>
class SplitRecords {
public:
    struct Record {
        T* object;
        int index;
    };

    SplitRecords() = default;
    SplitRecords(const SplitRecords& other) { AppendClones(other); }
    SplitRecords& operator=(const SplitRecords& other) {
        if (this != &other) {
            AppendClones(other);
        }
        return *this;
    }
    ~SplitRecords() {
        for (const Record& record : fRecords) {
            delete record.object;
        }
    }

    /// @param object becomes the split's
    void Append(T* object, int index) { fRecords.push_back({object, index}); }

    const std::vector<Record>& All() const { return fRecords; }
    int Size() const { return static_cast<int>(fRecords.size()); }

    /// The child index of the first object that matches, or -1.
    template <typename Matches>
    int FindChild(Matches matches) const {
        for (const Record& record : fRecords) {
            if (record.object && matches(*record.object)) {
                return record.index;
            }
        }
        return -1;
    }

private:
    void AppendClones(const SplitRecords& other) {
        fRecords.reserve(fRecords.size() + other.fRecords.size());
        for (const Record& record : other.fRecords) {
            Append(record.object ? record.object->Clone() : nullptr, record.index);
        }
    }

    std::vector<Record> fRecords;
};

} // namespace MCVeltrane_900

#endif
