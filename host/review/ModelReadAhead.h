#pragma once
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

class ZtDgnModel;
class ZtOpProgress;

// Reads design files ahead of a road that takes their models one by one: threads read the
// files in the order given, each as ZtDgnLoaderPlugin::DecodeModel does, while the road
// takes each model when its turn comes, waiting for it if need be. What a file's read
// reports (its model or the reason it has none, its progress, the exception it threw) comes
// out of Take as it would have come out of a read at that point, so that the road's calls
// and outputs do not depend on the threads. A file is read once and its model handed over,
// never copied: the memory held is that of the models read and not yet taken.
class ModelReadAhead {
public:
    // Starts reading `paths` on `threads` threads (at most one a file). With `progress`
    // set, each read's progress is kept for Take to give on.
    ModelReadAhead(std::vector<std::wstring> paths, std::size_t threads, bool progress);
    // Stops the threads after the files they are reading; models not taken are freed.
    ~ModelReadAhead();
    ModelReadAhead(const ModelReadAhead&) = delete;
    ModelReadAhead& operator=(const ModelReadAhead&) = delete;

    // The model of file `i`, once: null with the reason in `reason` if it has none. The
    // fractions its read reported are given to `progress` in their order; the exception
    // the read threw is thrown here. A file no thread has begun is read here.
    std::unique_ptr<ZtDgnModel> Take(std::size_t i, ZtOpProgress* progress, std::string* reason);

private:
    struct File {
        std::wstring path;
        bool claimed = false; // a thread (or Take) reads it
        bool done = false;
        std::unique_ptr<ZtDgnModel> model;
        std::string reason;
        std::vector<double> fractions;
        std::exception_ptr failure;
    };
    void Work();
    // Claims the next file no one reads; false when there is none, or on stopping.
    bool ClaimNext(std::size_t* i);
    void Read(File& file, ZtOpProgress* progress);

    std::vector<File> files_;
    bool keepProgress_;
    std::mutex mutex_;
    std::condition_variable doneOne_;
    std::size_t next_ = 0; // files before it are claimed
    bool stopping_ = false;
    std::vector<std::thread> threads_;
};
