#include "readers/ZtOdPdsBlockFileSource.h"

#include "readers/ZtOdPdsBlock.h"
#include "readers/ZtOdPdsBlockReader.h"
#include "ztutil/ZtUSysFile.h"

int ZtOdPdsBlockFileSource::Open(const wchar_t* path) {
    Close();
    file_ = ZtUSysFile::fopenW(path, ZtUSysFile::kAccessRead, ZtUSysFile::kOpenExisting,
                               ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0,
                               ZtUSysFile::kPermitReadWrite);
    return file_ ? 1 : 0;
}

void ZtOdPdsBlockFileSource::Close() {
    if (file_)
        ZtUSysFile::fclose(file_);
    file_ = nullptr;
}

int ZtOdPdsBlockFileSource::ReadName(ZtUWideStringBuffer* out) {
    if (!file_)
        return 0;
    ZtOdPdsBlock block;
    ZtOdPdsBlockReader reader(&block, 1);
    for (unsigned c; (c = ZtUSysFile::fgetwc(file_)) != ZtUFile::kEnd;) {
        // A stray closing brace before the first name is passed over.
        if (reader.FeedChar(static_cast<wchar_t>(c)) == ZtOdPdsBlockReader::kComplete) {
            if (out)
                *out = block.GetName();
            return 1;
        }
    }
    return 0;
}

int ZtOdPdsBlockFileSource::NextBlock(ZtOdPdsBlock* block) {
    if (!block)
        return 0;
    block->AddFlags(flags_);
    ZtOdPdsBlockReader reader(block, 0);
    if (!file_)
        return 0;
    for (unsigned c; (c = ZtUSysFile::fgetwc(file_)) != ZtUFile::kEnd;) {
        const int result = reader.FeedChar(static_cast<wchar_t>(c));
        if (result == ZtOdPdsBlockReader::kComplete)
            return 1;
        if (result == ZtOdPdsBlockReader::kUnmatchedClose)
            return 0;
    }
    return 0;
}
