#include "ztplugin/ZtOpFindSpec.h"

#include "ztutil/ZtUMemory.h"

#include <new>

void* ZtOpFindSpec::operator new(std::size_t size) {
    if (void* block = ZtUMemory::Alloc(size))
        return block;
    throw std::bad_alloc();
}

void ZtOpFindSpec::operator delete(void* block) {
    ZtUMemory::Dealloc(block);
}

void ZtOpFindSpec::AddCondition(const ZtOpFindCondition& condition) {
    if (followedRun_ < followed_.size()) {
        const Run& from = followed_[followedRun_];
        const std::size_t at = from.begin + followedOffset_;
        if ((*from.block)[at] == condition && (followedOffset_ > 0 || runs_.size() < kMaxRuns)) {
            if (followedOffset_ == 0)
                runs_.push_back({from.block, at, at + 1});
            else
                ++runs_.back().end;
            ++size_;
            if (at + 1 == from.end) {
                ++followedRun_;
                followedOffset_ = 0;
            } else {
                ++followedOffset_;
            }
            return;
        }
        followed_.clear();
    }
    if (runs_.empty() || runs_.back().end != runs_.back().block->size())
        runs_.push_back({std::make_shared<std::vector<ZtOpFindCondition>>(), 0, 0});
    Run& last = runs_.back();
    last.block->push_back(condition);
    ++last.end;
    ++size_;
}

const ZtOpFindCondition& ZtOpFindSpec::GetCondition(std::size_t index) const {
    std::size_t r = 0;
    while (index >= runs_[r].end - runs_[r].begin) {
        index -= runs_[r].end - runs_[r].begin;
        ++r;
    }
    return (*runs_[r].block)[runs_[r].begin + index];
}

void ZtOpFindSpec::Follow(const ZtOpFindSpec& other) {
    if (size_ > 0 || &other == this)
        return;
    followed_ = other.runs_;
    followedRun_ = 0;
    followedOffset_ = 0;
}
