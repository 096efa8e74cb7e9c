// Every allocation of the four roads fails in turn, as in SQLite's fault simulation: a
// tag import, a tag export, a display-set import with its evaluation, and a control
// file's road with its side files. Each run must end with a status the operation can
// give, leave nothing allocated behind (the sanitizer run checks the same for the
// process), and, for the export, leave no temporary file and the old file as it was.
#include "FailingAllocator.h"

#include "displaysets/ZtOdPdsDstImportPlugin.h"
#include "loader/ZtOdPdsDriLoaderPlugin.h"
#include "plugin/ZtOdPdsStatus.h"
#include "review/ModelLoad.h"
#include "review/OpenRoad.h"
#include "review/SelectionEvaluation.h"
#include "tags/ZtOdPdsTagExportPlugin.h"
#include "tags/ZtOdPdsTagImportPlugin.h"
#include "tools/ZtTestFiles.h"
#include "ztlddgn/ZtDgnLoaderPlugin.h"
#include "ztplugin/ZtOpDB.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUFileScope.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <set>
#include <string>

namespace {

const std::string kSample = ZT_SOURCE_DIR "/examples/plant/";

// A document with the sample's models loaded, unplaced.
std::unique_ptr<ZtOpState> SampleDocument() {
    auto state = std::make_unique<ZtOpState>();
    for (const char* model : {"pipes.dgn", "steel.dgn", "equipment.dgn"}) {
        std::string error;
        EXPECT_EQ(LoadModelIntoScene(*state, ZtTestWide(kSample + model), &error), 0) << error;
    }
    return state;
}

// The tags in an exported file.
std::size_t TagCount(const std::string& file) {
    std::size_t count = 0;
    for (std::size_t at = file.find("tag{"); at != std::string::npos;
         at = file.find("tag{", at + 1))
        ++count;
    return count;
}

// What one run of a road came to.
struct Outcome {
    int status = 0;
    bool hostOutOfMemory = false; // the host's own code threw std::bad_alloc
    bool writeFailed = false;     // the host recorded a failed write
};

// A road: `prepare` makes what the run needs without counting; `run` is the road itself;
// `check` looks at what the run left.
struct Road {
    std::function<void()> prepare;
    std::function<Outcome()> run;
    std::function<void(const Outcome&, std::uint64_t failAt)> check;
    std::function<void()> finish;
};

// Runs the road once whole, then once for each of its allocations failing, and returns how
// many allocations the road makes.
std::uint64_t FailEachAllocation(const Road& road) {
    const auto once = [&road](std::uint64_t failAt, bool warm = true) {
        const std::int64_t live = FailingAllocator::Live();
        road.prepare();
        FailingAllocator::Arm(failAt);
        Outcome outcome;
        try {
            outcome = road.run();
        } catch (const std::bad_alloc&) {
            outcome.hostOutOfMemory = true;
        }
        const std::uint64_t count = FailingAllocator::Disarm();
        if (failAt == 0) {
            EXPECT_FALSE(outcome.hostOutOfMemory);
        }
        road.check(outcome, failAt);
        road.finish();
        // What the run made and the document held is gone with it; a run that fails leaves
        // no more behind than one that succeeds.
        if (warm) {
            EXPECT_LE(FailingAllocator::Live(), live) << "allocation " << failAt;
        }
        return count;
    };
    once(0, false); // the caches that fill on first use are filled
    const std::uint64_t allocations = once(0);
    for (std::uint64_t failAt = 1; failAt <= allocations && !::testing::Test::HasFailure();
         ++failAt)
        once(failAt);
    return allocations;
}

class AllocationFailure : public ::testing::Test {
protected:
    ~AllocationFailure() override {
        ZtOpDB::RemovePlugin(ZtOpDB::GetPluginByName(ZtDgnLoaderPlugin::kRegisteredName));
    }
    ZtTestTempDir dir_;
    std::unique_ptr<ZtOpState> state_;
};

TEST_F(AllocationFailure, TagImport) {
    ZtOdPdsTagImportPlugin plugin;
    const ZtUWideString path(ZtTestWide(kSample + "plant.tag").c_str());
    const std::uint64_t allocations = FailEachAllocation({
        [&] { state_ = SampleDocument(); },
        [&] { return Outcome{plugin.IExport(0, state_.get(), nullptr, &path)}; },
        [](const Outcome& outcome, std::uint64_t) {
            EXPECT_TRUE(outcome.status == 0 || outcome.status == kZtOdPdsNoFile ||
                        outcome.status == kZtOdPdsNoState)
                << outcome.status;
            EXPECT_FALSE(outcome.hostOutOfMemory);
        },
        [&] { state_.reset(); },
    });
    RecordProperty("allocations", std::to_string(allocations));
}

TEST_F(AllocationFailure, TagExport) {
    ZtOdPdsTagImportPlugin import;
    // The plug-in keeps the records of tags on no file until its next export or its end,
    // so each run has a plug-in of its own.
    std::unique_ptr<ZtOdPdsTagExportPlugin> plugin;
    const std::string target = dir_.File("review.tag");
    const ZtUWideString path(ZtTestWide(target).c_str());
    const ZtUWideString tags(ZtTestWide(kSample + "plant.tag").c_str());
    std::string whole;
    const std::uint64_t allocations = FailEachAllocation({
        [&] {
            state_ = SampleDocument();
            plugin = std::make_unique<ZtOdPdsTagExportPlugin>();
            ASSERT_EQ(import.IExport(0, state_.get(), nullptr, &tags), 0);
            ASSERT_TRUE(ZtTestWriteBytes(target, "the old file\n"));
        },
        [&] {
            // The host's file layer, not the library, knows of a write that failed.
            const ZtUFileScope scope;
            Outcome outcome{plugin->IExport(0, state_.get(), nullptr, &path)};
            outcome.writeFailed = !scope.GetFailures().empty();
            return outcome;
        },
        [&](const Outcome& outcome, std::uint64_t failAt) {
            std::set<std::string> files;
            for (const auto& entry : std::filesystem::directory_iterator(dir_.Path()))
                files.insert(entry.path().filename().string());
            EXPECT_EQ(files, std::set<std::string>{"review.tag"}) << "allocation " << failAt;
            const std::string written = ZtTestReadBytes(target);
            if (failAt == 0)
                whole = written;
            if (outcome.status == 0 && !outcome.writeFailed) {
                // A tag whose file group memory could not be made for is left out, as the
                // library does; the file then holds fewer tags, which the host's count of
                // what was written tells the user.
                if (written != whole) {
                    EXPECT_LT(TagCount(written), TagCount(whole)) << "allocation " << failAt;
                }
            } else if (outcome.status == 0) {
                EXPECT_EQ(written, "the old file\n") << "allocation " << failAt;
            } else {
                EXPECT_TRUE(outcome.status == kZtOdPdsNoFile || outcome.status == kZtOdPdsNoState)
                    << outcome.status;
                EXPECT_EQ(written, "the old file\n") << "allocation " << failAt;
            }
        },
        [&] {
            plugin.reset();
            state_.reset();
        },
    });
    RecordProperty("allocations", std::to_string(allocations));
}

TEST_F(AllocationFailure, DisplaySetImportAndEvaluation) {
    ZtOdPdsDstImportPlugin plugin;
    const ZtUWideString path(ZtTestWide(kSample + "plant.dst").c_str());
    const std::uint64_t allocations = FailEachAllocation({
        [&] { state_ = SampleDocument(); },
        [&] {
            Outcome outcome{plugin.IExport(0, state_.get(), nullptr, &path)};
            if (outcome.status == 0)
                ComputeSelections(*state_);
            return outcome;
        },
        [](const Outcome& outcome, std::uint64_t) {
            EXPECT_TRUE(outcome.status == 0 || outcome.status == kZtOdPdsNoFile ||
                        outcome.status == kZtOdPdsNoState)
                << outcome.status;
        },
        [&] { state_.reset(); },
    });
    RecordProperty("allocations", std::to_string(allocations));
}

// The control file's road on one thread, with its side files; then with its models read
// ahead on two threads, where a read that fails on its thread must fail the road as a read
// of that file at its turn would (the side files left out: they are read on the road's own
// thread either way).
TEST_F(AllocationFailure, ControlFileWithItsSideFiles) {
    std::unique_ptr<ZtOdPdsDriLoaderPlugin> loader;
    std::unique_ptr<OpenedSceneSet> opened;
    OpenParameters parameters;
    const Road road{
        [&] {
            state_ = std::make_unique<ZtOpState>();
            loader = std::make_unique<ZtOdPdsDriLoaderPlugin>();
        },
        [&] {
            return Outcome{OpenControlFile(*state_, *loader, ZtTestWide(kSample + "plant.dri"),
                                           parameters, &opened)};
        },
        [](const Outcome& outcome, std::uint64_t) {
            EXPECT_TRUE(outcome.status == 0 || outcome.status == kZtOdPdsUnreadableSet)
                << outcome.status;
        },
        [&] {
            opened.reset();
            loader->IStateDestroyed(state_.get());
            state_.reset();
            loader.reset();
        },
    };
    parameters.threads = 1;
    RecordProperty("allocations", std::to_string(FailEachAllocation(road)));
    parameters.threads = 2;
    parameters.importTags = false;
    parameters.importDisplaySets = false;
    RecordProperty("allocations_read_ahead", std::to_string(FailEachAllocation(road)));
}

} // namespace
