#include "BenchSupport.h"

#include "ztutil/ZtUSysFile.h"

#include <fstream>
#include <string>

void ZtBenchResetPeakMemory() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

double ZtBenchStatusMiB(const char* key) {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind(key, 0) == 0)
            return std::stod(line.substr(std::string(key).size())) / 1024.0;
    return 0;
}

unsigned ZtBenchDecodeFile(const wchar_t* path) {
    ZtUFile* file =
        ZtUSysFile::fopenW(path, ZtUSysFile::kAccessRead, ZtUSysFile::kOpenExisting,
                           ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0, 384);
    if (!file)
        return 0;
    unsigned sum = 0;
    for (unsigned c; (c = ZtUSysFile::fgetwc(file)) != ZtUFile::kEnd;)
        sum += c;
    ZtUSysFile::fclose(file);
    return sum;
}
