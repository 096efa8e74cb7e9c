#pragma once

// Holds one locale category of the calling thread at the C locale for the object's
// lifetime, so that numbers are read and written with a decimal point whatever the
// user's locale. Categories carry the host's numbers: 0 all, 1 collate, 2 ctype,
// 3 monetary, 4 numeric, 5 time; any other number overrides nothing. Overrides nest,
// and each restores the thread's locale as it found it.
class ZtUAutoCLocaleOverride {
public:
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
