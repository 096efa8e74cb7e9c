#pragma once
#include <memory>
#include <vector>

// The kind of a document element. Each element class has one static instance, and classes
// are compared by address.
struct ZtOpElementClass {
    const char* name;
};

// A part of a document that is edited as a whole, under a lock of its class.
class ZtOpElement {
public:
    virtual ~ZtOpElement() = default;
    virtual const ZtOpElementClass* GetElementClass() const = 0;
};

// The elements of a document (or of a scene being built), at most one of each class, and
// the classes locked for writing.
class ZtOpElementList {
public:
    ZtOpElementList() = default;
    ZtOpElementList(const ZtOpElementList&) = delete;
    ZtOpElementList& operator=(const ZtOpElementList&) = delete;

    // The element of `elementClass`, or null.
    ZtOpElement* Find(const ZtOpElementClass* elementClass) const;
    // Takes `element` over. An element of the same class that was listed is destroyed.
    void Add(ZtOpElement* element);

    // Marks `elementClass` locked; false if it was locked already.
    bool Lock(const ZtOpElementClass* elementClass);
    void Unlock(const ZtOpElementClass* elementClass);
    bool IsLocked(const ZtOpElementClass* elementClass) const;

private:
    std::vector<std::unique_ptr<ZtOpElement>> elements_;
    std::vector<const ZtOpElementClass*> locked_;
};
