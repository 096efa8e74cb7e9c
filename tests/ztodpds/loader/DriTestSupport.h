#pragma once
#include "loader/ZtOdPdsDriLoadRecord.h"
#include "loader/ZtOdPdsDriLoaderPlugin.h"
#include "tools/ZtTestFiles.h"
#include "ztlddgn/ZtDgnLoaderPlugin.h"
#include "ztobject/ZtOaAttribute.h"
#include "ztobject/ZtOaGroup.h"
#include "ztplugin/ZtOpDB.h"
#include "ztplugin/ZtOpSceneProps.h"
#include "ztplugin/ZtOpSceneSet.h"
#include "ztutil/ZtUName.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

inline ZtLMatrix3f Rows(double a, double b, double c, double d, double e, double f, double g,
                        double h, double i) {
    ZtLMatrix3f m;
    m.SetValue(a, b, c, d, e, f, g, h, i);
    return m;
}

// A loader with a folder for its control files, and the host's DGN loader registered
// for the length of the test, so that option 10 can be watched.
class DriLoaderTest : public ::testing::Test {
protected:
    DriLoaderTest() : dgnLoader_(ZtDgnRegisterLoaderPlugin()) {}
    ~DriLoaderTest() override {
        // Records that a test did not hand back.
        delete static_cast<ZtOdPdsDriLoadRecord*>(record_);
        ZtOpDB::RemovePlugin(dgnLoader_);
    }

    // Writes `text` as the control file `name` and reads it into `set`. Returns the status.
    int Read(const std::string& text, ZtOpSceneSet* set, const std::string& name = "review.dri") {
        EXPECT_TRUE(ZtTestWriteBytes(folder_.File(name), text));
        return ReadFile(name, set);
    }
    int ReadFile(const std::string& name, ZtOpSceneSet* set) {
        delete static_cast<ZtOdPdsDriLoadRecord*>(record_);
        record_ = nullptr;
        return loader_.IReadSet(ZtUWideString(folder_.WideFile(name)), set, &record_);
    }
    // Hands the record of the last read back to the loader; the status.
    int Finish(ZtOpSceneProps* props, ZtOaPartition* partition) {
        const int status = loader_.IFinishSet(record_, props, partition, nullptr);
        record_ = nullptr;
        return status;
    }

    void SetInputFiles(int value) {
        ZtUStringBuffer text;
        ZtUName::MakeEnumName("ztodpds_dri_input_files_enum", value, &text);
        ZtUData data;
        data.SetName(new ZtUName(text.GetString(), nullptr));
        loader_.ISetParameter(ZtOdPdsDriLoaderPlugin::kParamInputFiles, data);
    }
    bool DgnOption10() { return dgnLoader_->GetOption10(); }
    void SetDgnOption10(bool value) {
        ZtUData data;
        data.SetBool(value);
        dgnLoader_->GetOptionSet()->SetValue(ZtDgnLoaderPlugin::kOption10, data, nullptr);
    }

    // A model root with the factor of a DGN model's scene properties.
    std::unique_ptr<ZtOaGroup> Model(double uorsPerMaster) {
        auto model = std::make_unique<ZtOaGroup>();
        auto* props = new ZtOaPropertyAttribute(names_.Find(nullptr, "ZtDgnSceneProps"));
        ZtUData value;
        value.SetDouble(uorsPerMaster);
        props->EditPropertyVector().PushBack(
            ZtOaProperty(names_.Find(nullptr, "ZtDgnUORsPerMaster"), value));
        model->AddAttribute(props);
        return model;
    }

    ZtTestTempDir folder_;
    ZtOdPdsDriLoaderPlugin loader_;
    ZtDgnLoaderPlugin* dgnLoader_;
    void* record_ = nullptr;
    ZtUNameDict names_;
};
