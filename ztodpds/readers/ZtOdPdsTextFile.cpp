#include "readers/ZtOdPdsTextFile.h"

#include "readers/ZtOdPdsInputConsumer.h"
#include "ztutil/ZtUSysFile.h"
#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUWideString.h"

int ZtOdPdsTextFile::Open(const wchar_t* path) {
    Close();
    file_ = ZtUSysFile::fopenW(path, ZtUSysFile::kAccessRead, ZtUSysFile::kOpenExisting,
                               ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0,
                               ZtUSysFile::kPermitReadWrite);
    return file_ ? 1 : 0;
}

int ZtOdPdsTextFile::Close() {
    if (file_)
        ZtUSysFile::fclose(file_);
    file_ = nullptr;
    return 1;
}

int ZtOdPdsTextFile::ReadLines(ZtOdPdsInputConsumer& consumer) {
    ZtUWideStringBuffer line;
    consumer.Begin();
    wchar_t text[512];
    while (file_ && ZtUSysFile::fgetws(text, 512, file_)) {
        std::size_t length = ZtUSysString::WideStrlen(text);
        if (length <= 1)
            continue;
        // A CR that the stream lets through stays in the line.
        if (text[length - 1] == L'\n')
            text[--length] = L'\0';
        line.SetString(text, length);
        if (!consumer.Line(line)) {
            consumer.End();
            return 0;
        }
    }
    consumer.End();
    return file_ && ZtUSysFile::ferror(file_) == 0 ? 1 : 0;
}
