#ifndef VELTRANE_FACTORY_KEPT_ON_FAILURE_H
#define VELTRANE_FACTORY_KEPT_ON_FAILURE_H

namespace veltrane::factory {

/// Keeps an object to the end of the process without ever deleting it.
void KeepForever(const void* object);

/// Owns an object while a plug-in works with it. When the plug-in throws, the object is not deleted but kept to the end
/// of the process, since what the plug-in has made may still refer to it.
template <typename Object>
class KeptOnFailure {
public:
    explicit KeptOnFailure(Object* object) : fObject(object) {}
    KeptOnFailure(const KeptOnFailure&) = delete;
    KeptOnFailure& operator=(const KeptOnFailure&) = delete;

    ~KeptOnFailure() {
        if (fObject != nullptr) {
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
};

} // namespace veltrane::factory

#endif
