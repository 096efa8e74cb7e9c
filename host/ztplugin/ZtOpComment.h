#pragma once
#include "ztutil/ZtUWideString.h"

#include <cstddef>
#include <cstdint>

// A comment of a saved item: an identifier and a text. The item that lists it owns it.
class ZtOpComment {
public:
    // Comments live on the host's heap, so that one made by a plug-in is freed by the host.
    static void* operator new(std::size_t size);
    static void operator delete(void* block);

    explicit ZtOpComment(std::uint64_t id) : id_(id) {}

    std::uint64_t GetId() const { return id_; }
    void SetBody(const wchar_t* body) { body_.SetString(body); }
    const ZtUWideString& GetBody() const { return body_; }

private:
    std::uint64_t id_;
    ZtUWideString body_;
};
