#include "readers/ZtOdPdsBlockReader.h"

#include "readers/ZtOdPdsBlock.h"
#include "ztutil/ZtUMemory.h"

#include <cwchar>
#include <cwctype>

ZtOdPdsBlockReader::ZtOdPdsBlockReader(ZtOdPdsBlock* block, std::int32_t stopAtName)
    : stopAtName_(stopAtName), block_(block) {
    block_->Clear();
    flags_ = block_->GetFlags();
    buffer_ = static_cast<wchar_t*>(ZtUMemory::Alloc(kInitialCapacity * sizeof(wchar_t)));
    capacity_ = buffer_ ? kInitialCapacity : 0;
}

ZtOdPdsBlockReader::~ZtOdPdsBlockReader() {
    ZtUMemory::Dealloc(buffer_);
}

void ZtOdPdsBlockReader::Grow() {
    const std::size_t capacity = capacity_ ? capacity_ + capacity_ / 2 : kInitialCapacity;
    void* grown = ZtUMemory::Realloc(buffer_, capacity * sizeof(wchar_t));
    if (!grown)
        return;
    buffer_ = static_cast<wchar_t*>(grown);
    capacity_ = capacity;
}

bool ZtOdPdsBlockReader::EndsWithText() const {
    return length_ >= 4 && buffer_[length_ - 4] == L't' && buffer_[length_ - 3] == L'e' &&
           buffer_[length_ - 2] == L'x' && buffer_[length_ - 1] == L't';
}

std::size_t ZtOdPdsBlockReader::LengthToNul() const {
    const wchar_t* nul = std::wmemchr(buffer_, L'\0', length_);
    return nul ? static_cast<std::size_t>(nul - buffer_) : length_;
}

int ZtOdPdsBlockReader::OpenBrace() {
    ++depth_;
    // Before the name is taken, so that a key ending in "text" counts at any depth.
    if ((flags_ & ZtOdPdsCountedText) && EndsWithText()) {
        inCount_ = 1;
        count_ = 0;
    }
    if (depth_ == 1) {
        block_->SetName(buffer_, LengthToNul());
        length_ = 0;
        if (stopAtName_ == 1)
            return kComplete;
    } else {
        Append(L'{');
    }
    return complete_ ? kComplete : kContinue;
}

int ZtOdPdsBlockReader::CloseBrace() {
    --depth_;
    if (depth_ < 0)
        return kUnmatchedClose;
    if (depth_ == 0) {
        block_->SetValue(buffer_, LengthToNul());
        length_ = 0;
        complete_ = 1;
        return kComplete;
    }
    Append(L'}');
    return complete_ ? kComplete : kContinue;
}

// The count's digits and the character that ends them stay in the value; the caller
// splits them off. The subtraction wraps for counts below 2.
void ZtOdPdsBlockReader::CountDigit(wchar_t c) {
    if (std::iswdigit(static_cast<std::wint_t>(c))) {
        count_ = count_ * 10 + static_cast<std::uint32_t>(c - L'0');
    } else {
        inCount_ = 0;
        passThrough_ = count_ - 2;
    }
}
