#pragma once
#include <utility>

// Intrusive counting for host objects that are shared by pointer. An object starts with
// no holder; each holder adds one, and the release that reaches 0 deletes it.
class ZtURefCounted {
public:
    void AddRef() const { ++refs_; }
    void Release() const {
        if (--refs_ == 0)
            delete this;
    }
    int GetRefCount() const { return refs_; }

protected:
    ZtURefCounted() = default;
    ZtURefCounted(const ZtURefCounted&) : refs_(0) {}
    ZtURefCounted& operator=(const ZtURefCounted&) { return *this; }
    virtual ~ZtURefCounted() = default;

private:
    mutable int refs_ = 0;
};

// Holds one count on a ZtURefCounted object.
template <class T> class ZtUAutoRefPtr {
public:
    ZtUAutoRefPtr() = default;
    ZtUAutoRefPtr(T* object) : object_(object) {
        if (object_)
            object_->AddRef();
    }
    ZtUAutoRefPtr(const ZtUAutoRefPtr& other) : ZtUAutoRefPtr(other.object_) {}
    ZtUAutoRefPtr(ZtUAutoRefPtr&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)) {}
    ZtUAutoRefPtr& operator=(ZtUAutoRefPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ZtUAutoRefPtr() {
        if (object_)
            object_->Release();
    }

    T* Get() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }

private:
    T* object_ = nullptr;
};
