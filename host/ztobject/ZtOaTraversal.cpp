#include "ztobject/ZtOaTraversal.h"

ZtOaFragment::ZtOaFragment(const ZtOaPathLink& leaf) {
    Assign(leaf);
}

void ZtOaFragment::Assign(const ZtOaPathLink& leaf) {
    std::size_t depth = 0;
    for (const ZtOaPathLink* link = &leaf; link; link = link->GetParent())
        ++depth;
    links_.clear();
    transformOf_.clear();
    transforms_.clear();
    links_.reserve(depth);
    transformOf_.reserve(depth);
    const ZtLAffine3f* last = nullptr;
    for (const ZtOaPathLink* link = &leaf; link; link = link->GetParent()) {
        links_.emplace_back(link->GetNode(), nullptr);
        const ZtLAffine3f* transform = link->GetTransform();
        if (transform && transform != last)
            transforms_.push_back(*transform);
        transformOf_.push_back(transform ? transforms_.size() - 1 : kIdentity);
        last = transform;
    }
    Link();
}

ZtOaFragment::ZtOaFragment(const ZtOaFragment& other)
    : links_(other.links_), transformOf_(other.transformOf_), transforms_(other.transforms_) {
    Link();
}

ZtOaFragment& ZtOaFragment::operator=(const ZtOaFragment& other) {
    links_ = other.links_;
    transformOf_ = other.transformOf_;
    transforms_ = other.transforms_;
    Link();
    return *this;
}

void ZtOaFragment::Link() {
    for (std::size_t i = 0; i < links_.size(); ++i)
        links_[i] =
            ZtOaPathLink(links_[i].GetNode(), i + 1 < links_.size() ? &links_[i + 1] : nullptr,
                         transformOf_[i] == kIdentity ? nullptr : &transforms_[transformOf_[i]]);
}
