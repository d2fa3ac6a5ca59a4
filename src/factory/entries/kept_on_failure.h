#ifndef VELTRANE_FACTORY_KEPT_ON_FAILURE_H
#define VELTRANE_FACTORY_KEPT_ON_FAILURE_H

#ifdef VELTRANE_FUZZING
#include <veltrane_export.h>

namespace MCVeltrane_900 {

/// Deletes what is kept, of which nothing may be in use any more. Only the library that fuzz targets are built with has
/// it: they run thousands of calls in a process.
VELTRANE_API void FreeKept();

} // namespace MCVeltrane_900
#endif

namespace veltrane::factory {

/// Keeps an object to the end of the process.
/// @param destroy deletes it; for fuzz targets
void Keep(const void* object, void (*destroy)(const void*));

/// Keeps an object to the end of the process without ever deleting it.
template <typename Object>
void KeepForever(const Object* object) {
    Keep(object, [](const void* kept) { delete static_cast<const Object*>(kept); });
}

/// What becomes of an object with which a plug-in works when the plug-in throws.
enum class OnFailure {
    KEEP,  ///< it stays to the end of the process, since what the plug-in has made may still refer to it
    DELETE ///< for hosts that open documents all day and let go of all that a plug-in has made
};

/// Owns an object while a plug-in works with it.
template <typename Object>
class KeptOnFailure {
public:
    explicit KeptOnFailure(Object* object, OnFailure onFailure = OnFailure::KEEP)
        : fObject(object), fOnFailure(onFailure) {}
    KeptOnFailure(const KeptOnFailure&) = delete;
    KeptOnFailure& operator=(const KeptOnFailure&) = delete;

    ~KeptOnFailure() {
        if (fOnFailure == OnFailure::DELETE) {
            delete fObject;
        } else if (fObject != nullptr) {
            KeepForever(fObject);
        }
    }

    Object* operator->() const { return fObject; }
    Object* Get() const { return fObject; }

    /// Gives the object back when all went well.
    Object* Release() {
        Object* object = fObject;
        fObject = nullptr;
        return object;
    }

    void Delete() { delete Release(); }

private:
    Object* fObject;
    OnFailure fOnFailure;
};

} // namespace veltrane::factory

#endif
