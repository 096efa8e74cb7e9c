#include "review/ModelReadAhead.h"

#include "ztlddgn/ZtDgnLoaderPlugin.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpProgress.h"

#include <algorithm>
#include <utility>

namespace {

// Keeps the fractions a read reports, for the document's thread to give on later.
class KeptProgress : public ZtOpProgress {
public:
    explicit KeptProgress(std::vector<double>& fractions) : fractions_(fractions) {}

protected:
    void OnProgress(double fraction) override { fractions_.push_back(fraction); }

private:
    std::vector<double>& fractions_;
};

} // namespace

ModelReadAhead::ModelReadAhead(std::vector<std::wstring> paths, std::size_t threads, bool progress)
    : keepProgress_(progress) {
    files_.resize(paths.size());
    for (std::size_t i = 0; i < paths.size(); ++i)
        files_[i].path = std::move(paths[i]);
    const std::size_t count = std::min(threads, files_.size());
    try {
        threads_.reserve(count);
        for (std::size_t t = 0; t < count; ++t)
            threads_.emplace_back([this] { Work(); });
    } catch (...) {
        // Fewer threads than asked for: Take reads what no thread reaches.
    }
}

ModelReadAhead::~ModelReadAhead() {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        stopping_ = true;
    }
    for (std::thread& thread : threads_)
        thread.join();
}

bool ModelReadAhead::ClaimNext(std::size_t* i) {
    const std::lock_guard<std::mutex> lock(mutex_);
    while (next_ < files_.size() && files_[next_].claimed)
        ++next_;
    if (stopping_ || next_ == files_.size())
        return false;
    files_[next_].claimed = true;
    *i = next_++;
    return true;
}

void ModelReadAhead::Read(File& file, ZtOpProgress* progress) {
    // The file's fields are this thread's alone until `done` is set under the lock.
    try {
        file.model = ZtDgnLoaderPlugin::DecodeModel(file.path.c_str(), progress, &file.reason);
    } catch (...) {
        file.failure = std::current_exception();
    }
}

void ModelReadAhead::Work() {
    for (std::size_t i; ClaimNext(&i);) {
        File& file = files_[i];
        KeptProgress kept(file.fractions);
        Read(file, keepProgress_ ? &kept : nullptr);
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            file.done = true;
        }
        doneOne_.notify_all();
    }
}

std::unique_ptr<ZtDgnModel> ModelReadAhead::Take(std::size_t i, ZtOpProgress* progress,
                                                 std::string* reason) {
    File& file = files_[i];
    {
        std::unique_lock<std::mutex> lock(mutex_);
        if (!file.claimed) {
            file.claimed = true;
            lock.unlock();
            // Read here, the progress going straight to the road's.
            Read(file, progress);
            progress = nullptr;
        } else {
            doneOne_.wait(lock, [&] { return file.done; });
        }
    }
    if (progress)
        for (const double fraction : file.fractions)
            progress->SetProgress(fraction);
    file.fractions = {};
    if (file.failure)
        std::rethrow_exception(std::exchange(file.failure, nullptr));
    if (reason)
        *reason = std::move(file.reason);
    return std::move(file.model);
}
