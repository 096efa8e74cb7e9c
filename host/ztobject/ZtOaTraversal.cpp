#include "ztobject/ZtOaTraversal.h"

ZtOaFragment::ZtOaFragment(const ZtOaPathLink& leaf) {
    for (const ZtOaPathLink* link = &leaf; link; link = link->GetParent())
        links_.emplace_back(link->GetNode(), nullptr);
    Link();
}

ZtOaFragment::ZtOaFragment(const ZtOaFragment& other) : links_(other.links_) {
    Link();
}

ZtOaFragment& ZtOaFragment::operator=(const ZtOaFragment& other) {
    links_ = other.links_;
    Link();
    return *this;
}

void ZtOaFragment::Link() {
    for (std::size_t i = 0; i < links_.size(); ++i)
        links_[i] =
            ZtOaPathLink(links_[i].GetNode(), i + 1 < links_.size() ? &links_[i + 1] : nullptr);
}
