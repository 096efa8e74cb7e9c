#pragma once

// Holds one locale category of the calling thread at the C locale for the object's
// lifetime, so that numbers are read and written with a decimal point whatever the
// user's locale. Categories carry the host's numbers (Category); any other number
// overrides nothing. Overrides nest, and each restores the thread's locale as it found it.
class ZtUAutoCLocaleOverride {
public:
    enum Category : int {
        kAll = 0,
        kCollate = 1,
        kCtype = 2,
        kMonetary = 3,
        kNumeric = 4,
        kTime = 5
    };

    explicit ZtUAutoCLocaleOverride(int category);
    ~ZtUAutoCLocaleOverride();
    ZtUAutoCLocaleOverride(const ZtUAutoCLocaleOverride&) = delete;
    ZtUAutoCLocaleOverride& operator=(const ZtUAutoCLocaleOverride&) = delete;

private:
    // The platform's saved state (on POSIX the locale_t values), kept opaque so that
    // this header needs no system header.
    void* override_ = nullptr;
    void* previous_ = nullptr;
};
