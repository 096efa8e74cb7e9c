#pragma once
#include "tools/ZtTestDgnWriter.h"
#include "tools/ZtTestFiles.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztlddgn/ZtDgnReader.h"
#include "ztutil/ZtUName.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

// A temporary folder whose files are written from bytes and read back as models.
class DgnTestFolder {
public:
    std::wstring Write(const std::string& name, const std::vector<std::uint8_t>& bytes) const {
        EXPECT_TRUE(ZtTestWriteBytes(dir_.File(name), std::string(bytes.begin(), bytes.end())));
        return dir_.WideFile(name);
    }

    // Null with the reason in `reason`.
    std::unique_ptr<ZtDgnModel> Load(const std::vector<std::uint8_t>& bytes,
                                     std::string* reason = nullptr,
                                     const std::string& name = "model.dgn") {
        std::string ignored;
        return ZtDgnReadModel(Write(name, bytes).c_str(), &names, true, nullptr,
                              reason ? reason : &ignored);
    }

    ZtUNameDict names;

private:
    ZtTestTempDir dir_;
};
