#pragma once

class ZtOpState;
struct ZtOpElementClass;

// The right to write one element class of one document.
class ZtOpLock {
public:
    ZtOpLock(const ZtOpElementClass* elementClass, ZtOpState* state)
        : elementClass_(elementClass), state_(state) {}

    const ZtOpElementClass* GetClass() const { return elementClass_; }
    ZtOpState* GetState() const { return state_; }
    // True if this lock allows writing the element of `elementClass` in `state`.
    bool Covers(const ZtOpElementClass* elementClass, const ZtOpState* state) const {
        return elementClass_ == elementClass && state_ == state;
    }

private:
    const ZtOpElementClass* elementClass_;
    ZtOpState* state_;
};

// Holds the lock of one element class of a document while it lives. A second lock of a
// class that is locked already is a programming error: it asserts, and where assertions
// are off the second lock is simply not held (it converts to null).
class ZtOpAutoLock {
public:
    // `flags` is reserved; callers pass 0.
    ZtOpAutoLock(const ZtOpElementClass* elementClass, ZtOpState* state, int flags);
    ZtOpAutoLock(const ZtOpAutoLock&) = delete;
    ZtOpAutoLock& operator=(const ZtOpAutoLock&) = delete;
    ~ZtOpAutoLock();

    // The lock, or null if it isn't held.
    operator ZtOpLock*() { return held_ ? &lock_ : nullptr; }

private:
    ZtOpLock lock_;
    bool held_ = false;
};
