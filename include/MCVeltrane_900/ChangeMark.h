#ifndef MCVELTRANE_900_CHANGEMARK_H
#define MCVELTRANE_900_CHANGEMARK_H

#include <veltrane_export.h>

namespace veltrane::data {
struct Marks;
}

namespace MCVeltrane_900 {

/// The field of an object that may stand in an index, such as a value among the labels of a variable. Whoever puts the
/// object there marks it; the next change takes the mark off and is counted for the whole process, so an index that
/// compares that count knows without a look at its objects that none of them has changed.
///
/// A copy of an object isn't marked, and assignment leaves the mark where it is.
class VELTRANE_API ChangeMark {
public:
    constexpr ChangeMark() = default;
    constexpr ChangeMark(const ChangeMark&) {}
    ChangeMark& operator=(const ChangeMark&) { return *this; }

    /// To be called by every operation that changes the object.
    void Note() {
        if (fIsMarked) {
            TakeOff();
        }
    }

private:
    friend struct veltrane::data::Marks;

    void TakeOff();

    mutable bool fIsMarked = false;
};

} // namespace MCVeltrane_900

#endif
