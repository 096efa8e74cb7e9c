// A tag file imported and exported again keeps its tags up to what the format itself
// loses; the export-tags case does so for the sample review as a whole.
#include "TagTestSupport.h"

#include "plugin/ZtOdPdsStatus.h"
#include "tags/ZtOdPdsTagImportPlugin.h"

#include <gtest/gtest.h>

#include <string>

namespace {

int Import(TagDocument& doc, const std::wstring& path) {
    ZtOdPdsTagImportPlugin import;
    const ZtUWideString name(path.c_str());
    return import.IExport(0, &doc.state, nullptr, &name);
}

// The losses one at a time: 1001 UORs at 1000 a master unit come back as 1000, and -1001
// as -1000 (cut towards zero, never rounded); the target comes back one master unit
// ahead of the eye, wherever it was; 30 degrees come back as 29.
TEST(TagRoundTrip, EachLossOfTheFormat) {
    TagDocument doc(1000.0);
    const std::wstring in = ZtTestWide(doc.dir.File("in.tag"));
    ZtTestWriteBytes(doc.dir.File("in.tag"), "target{1001 0 0}\n"
                                             "persp_ang{30}\n"
                                             "eye{1001 5000 0}\n"
                                             "tag{7 1 0 0.000000 1001 -1001 0\n"
                                             "text{4\nDone}}\n");
    ASSERT_EQ(Import(doc, in), kZtOdPdsOk);
    ZtOdPdsTagExportPlugin plugin;
    std::string text;
    ASSERT_EQ(doc.Export(plugin, &text), kZtOdPdsOk);
    EXPECT_EQ(text, "file{0n{}}\n"
                    "target{1000 4000 0}\n"
                    "persp_ang{29}\n"
                    "eye{1000 5000 0}\n"
                    "tag{7 1 0 0.000000 1000 -1000 0\n"
                    "p{1000 -1000 0}\n"
                    "text{4\nDone}}\n");
}

} // namespace
