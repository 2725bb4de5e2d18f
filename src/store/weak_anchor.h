#pragma once
// Weak references to an object that its owner holds by value or unique_ptr. A member of the
// object, declared last so that the references expire before anything else of it is gone.

#include <memory>

namespace kestrel {

/// Locking the reference says whether the object is still there; it does not keep it alive, so
/// only the object's own thread may lock. Copying a reference is safe on any thread.
template <class T>
class WeakAnchor {
  public:
    explicit WeakAnchor(T& object) : self_(&object, [](T*) {}) {}
    WeakAnchor(const WeakAnchor&) = delete;
    WeakAnchor& operator=(const WeakAnchor&) = delete;
    ~WeakAnchor() = default;

    std::weak_ptr<T> weak() const { return self_; }

  private:
    std::shared_ptr<T> self_;
};

} // namespace kestrel
