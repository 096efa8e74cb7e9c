#include "loader/ZtOdPdsDriLoadRecord.h"

#include "ztutil/ZtUSysFile.h"

ZtOdPdsDriLoadRecord::ZtOdPdsDriLoadRecord(const ZtUWideString& controlFile) : path(controlFile) {
    ZtUSysFile::PopPathW(path.GetString(), &directory, nullptr);
}
