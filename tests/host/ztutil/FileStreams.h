#pragma once
#include "ztutil/ZtUSysFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// The value fgetwc gives at the end of the input.
constexpr unsigned kEnd = 0xFFFF;

inline ZtUFile* OpenStream(const std::wstring& path, ZtUSysFile::AccessMode access) {
    return ZtUSysFile::fopenW(path.c_str(), access,
                              access == ZtUSysFile::kAccessRead ? ZtUSysFile::kOpenExisting
                                                                : ZtUSysFile::kCreateAlways,
                              ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0, 384);
}

inline ZtUFile* OpenForReading(const std::wstring& path) {
    return OpenStream(path, ZtUSysFile::kAccessRead);
}

inline ZtUFile* OpenForWriting(const std::wstring& path) {
    return OpenStream(path, ZtUSysFile::kAccessWrite);
}

// Every character up to the end, and checks that the end stays the end.
inline std::vector<unsigned> ReadUnits(const std::wstring& path) {
    std::vector<unsigned> units;
    ZtUFile* file = OpenForReading(path);
    if (!file) {
        ADD_FAILURE() << "cannot open the file";
        return units;
    }
    for (unsigned c; (c = ZtUSysFile::fgetwc(file)) != kEnd;)
        units.push_back(c);
    EXPECT_EQ(ZtUSysFile::fgetwc(file), kEnd);
    EXPECT_EQ(ZtUSysFile::ferror(file), 0);
    EXPECT_EQ(ZtUSysFile::fclose(file), 0);
    return units;
}
