#ifndef MCVELTRANE_900_OWNED_H
#define MCVELTRANE_900_OWNED_H

#include <vector>

namespace MCVeltrane_900 {

/// The pointer field of a class that owns what it points to: deleted with the holder, cloned when the holder is copied.
/// T needs `T* Clone() const` and has to be complete only where the holder's special members are defined.
template <typename T>
class Owned {
public:
    Owned() = default;
    explicit Owned(T* object) : fObject(object) {}
    Owned(const Owned& other) : fObject(CloneOf(other.fObject)) {}
    Owned& operator=(const Owned& other) {
        if (this != &other) {
            Reset(nullptr);
            fObject = CloneOf(other.fObject);
        }
        return *this;
    }
    ~Owned() {
        static_assert(sizeof(T) > 0, "the owned class must be complete");
        delete fObject;
    }

    T* Get() const { return fObject; }
    T* operator->() const { return fObject; }
    T& operator*() const { return *fObject; }
    explicit operator bool() const { return fObject != nullptr; }

    /// Deletes the old object and takes the new one.
    void Reset(T* object) {
        T* old = fObject;
        fObject = object;
        delete old;
    }

    /// Takes the new object and leaves the old one to whoever else still knows it.
    void Overwrite(T* object) { fObject = object; }

private:
    static T* CloneOf(const T* object) { return object ? object->Clone() : nullptr; }

    T* fObject = nullptr;
};

/// The vector field of a class that owns the objects pointed to: deleted with the holder, cloned when the holder is
/// copied. A null entry stays null.
template <typename T>
class OwnedVector {
public:
    OwnedVector() = default;
    OwnedVector(const OwnedVector& other) { CloneAll(other); }
    OwnedVector& operator=(const OwnedVector& other) {
        if (this != &other) {
            DeleteAll();
            CloneAll(other);
        }
        return *this;
    }
    ~OwnedVector() { DeleteAll(); }

    std::vector<T*>& Items() { return fItems; }
    const std::vector<T*>& Items() const { return fItems; }
    int Size() const { return static_cast<int>(fItems.size()); }

private:
    void DeleteAll() {
        static_assert(sizeof(T) > 0, "the owned class must be complete");
        for (T* item : fItems) {
            delete item;
        }
        fItems.clear();
    }

    void CloneAll(const OwnedVector& other) {
        fItems.reserve(other.fItems.size());
        for (const T* item : other.fItems) {
            fItems.push_back(item ? item->Clone() : nullptr);
        }
    }

    std::vector<T*> fItems;
};

} // namespace MCVeltrane_900

#endif
