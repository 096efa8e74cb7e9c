#pragma once
#include "support/ZtTestDgnWriter.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztlddgn/ZtDgnReader.h"
#include "ztutil/ZtUName.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

// A folder of its own for each test, with files written from bytes and read as models.
class DgnTestFolder {
public:
    DgnTestFolder() {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        path_ = std::filesystem::temp_directory_path() /
                ("ztlddgn-" + std::to_string(::getpid()) + "-" + info->test_suite_name() + "-" +
                 info->name());
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~DgnTestFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    DgnTestFolder(const DgnTestFolder&) = delete;
    DgnTestFolder& operator=(const DgnTestFolder&) = delete;

    std::wstring Write(const std::string& name, const std::vector<std::uint8_t>& bytes) const {
        const std::filesystem::path file = path_ / name;
        std::ofstream(file, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        return file.wstring();
    }

    // Writes and reads back; null with the reason in `reason`.
    std::unique_ptr<ZtDgnModel> Load(const std::vector<std::uint8_t>& bytes,
                                     std::string* reason = nullptr,
                                     const std::string& name = "model.dgn") {
        std::string ignored;
        return ZtDgnReadModel(Write(name, bytes).c_str(), &names, true, nullptr,
                              reason ? reason : &ignored);
    }

    ZtUNameDict names;

private:
    std::filesystem::path path_;
};
