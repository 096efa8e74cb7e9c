#include "readers/ZtOdPdsBlock.h"
#include "readers/ZtOdPdsBlockFileSource.h"
#include "readers/ZtOdPdsBlockTracker.h"
#include "readers/ZtOdPdsInputConsumer.h"
#include "readers/ZtOdPdsTextFile.h"
#include "support/ZtTestRecordingDiagnostics.h"
#include "tools/ZtTestFiles.h"
#include "ztutil/ZtUWideString.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using C = ZtOdPdsCheck;
using namespace std::string_literals;

struct BlockRead {
    std::wstring name;
    std::wstring value;
    bool operator==(const BlockRead&) const = default;
};

// The blocks of a file as NextBlock reads them, plainly or tracked.
std::vector<BlockRead> ReadBlocks(const std::wstring& path, std::uint32_t flags,
                                  ZtOdPdsBlockTracker* tracker,
                                  std::vector<ZtOdPdsSourcePosition>* places = nullptr) {
    ZtOdPdsBlockFileSource source(flags);
    EXPECT_TRUE(source.Open(path.c_str()));
    std::vector<BlockRead> reads;
    ZtOdPdsBlock block;
    while (tracker ? source.NextBlock(&block, *tracker) : source.NextBlock(&block)) {
        reads.push_back({block.GetName().Str(), block.GetValue().Str()});
        if (places) {
            places->push_back(tracker->NameAt());
            places->push_back(tracker->ValueAt());
        }
    }
    return reads;
}

TEST(ZtOdPdsTrackedRead, BlocksAreReadAsPlainlyAndPlacedWhereTheyStand) {
    const std::string text = "junk line\n"
                             "  a{1}\n"
                             "tag{7 1\np{1 2 3}\n  q\n}\n"
                             "x\0y{v}\n"s
                             "b{1\0"
                             "2}\n"s
                             "} behind\n";
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("t.tag"), text));
    ZtTestRecordingDiagnostics heard;
    ZtOdPdsBlockTracker tracker(heard, L"t.tag");
    std::vector<ZtOdPdsSourcePosition> places;
    const std::vector<BlockRead> tracked =
        ReadBlocks(dir.WideFile("t.tag"), ZtOdPdsCountedText, &tracker, &places);
    EXPECT_EQ(tracked, ReadBlocks(dir.WideFile("t.tag"), ZtOdPdsCountedText, nullptr));
    ASSERT_EQ(tracked.size(), 4u);
    EXPECT_EQ(tracker.GetStop(), ZtOdPdsBlockStop::kStrayBrace);
    EXPECT_EQ(tracker.StrayBraceAt().line, 9u);
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> expected = {
        {2, 3}, {2, 5}, {3, 1}, {3, 5}, {7, 1}, {7, 5}, {8, 1}, {8, 3}};
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(std::make_pair(places[i].line, places[i].column), expected[i]) << i;
    // Text outside blocks, a NUL in a name (behind it one character lost) and in a value.
    EXPECT_EQ(heard.Heard(),
              (std::vector<ZtTestHeard>{
                  {C::kStrayText, 1, 1}, {C::kNulCut, 7, 2, 0}, {C::kNulCut, 8, 4, 1}}));
    EXPECT_EQ(heard.records[0].text, "junk line");
    EXPECT_EQ(heard.records[1].diagnostic.figures[1], 1);
    EXPECT_EQ(heard.records[2].diagnostic.figures[1], 1);

    // The children of the tag, its head line taken for what it is; a stray word is not.
    ZtOdPdsBlock tag;
    tag.SetValue(tracked[1].value.data(), tracked[1].value.size());
    ZtOdPdsBlockTracker inner(heard, L"t.tag", {3, 5});
    inner.ExpectHeadLine();
    ZtOdPdsBlock child;
    EXPECT_EQ(tag.NextChild(&child, inner), 1);
    EXPECT_EQ(child.GetName().Str(), L"p");
    EXPECT_EQ(inner.NameAt().line, 4u);
    EXPECT_EQ(inner.ValueAt().column, 3u);
    EXPECT_EQ(tag.NextChild(&child, inner), 0);
    EXPECT_EQ(heard.Heard().back(), (ZtTestHeard{C::kStrayText, 5, 3}));
}

TEST(ZtOdPdsTrackedRead, TheInputEndingInACountedTextIsNoted) {
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("t.tag"), "eye{1 2 3}\ntag{1\n text{1\nx}}\ntag{2}\n"));
    ZtTestRecordingDiagnostics heard;
    ZtOdPdsBlockTracker tracker(heard, L"t.tag");
    EXPECT_EQ(ReadBlocks(dir.WideFile("t.tag"), ZtOdPdsCountedText, &tracker).size(), 1u);
    EXPECT_EQ(tracker.GetStop(), ZtOdPdsBlockStop::kEnd);
    EXPECT_TRUE(tracker.EndedInBlock());
    EXPECT_TRUE(tracker.EndedInCount());
    EXPECT_EQ(tracker.EndCount(), 1u);
    EXPECT_EQ(tracker.NameAt().line, 2u);
    EXPECT_EQ(tracker.CountAt().line, 3u);
    EXPECT_EQ(tracker.CountAt().column, 2u);
    EXPECT_TRUE(heard.records.empty());
}

// What a tracked read of a value's children saw: each child, where its name and value
// stand, where the read ended, and what it reported.
struct ChildrenSeen {
    std::vector<std::wstring> children;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> places;
    std::vector<ZtTestHeard> heard;
    bool operator==(const ChildrenSeen&) const = default;
};

void NoteChild(const ZtOdPdsBlock& child, const ZtOdPdsBlockTracker& tracker, ChildrenSeen* seen) {
    seen->children.push_back(child.GetName().Str() + L"=" + child.GetValue().Str());
    for (const ZtOdPdsSourcePosition at : {tracker.NameAt(), tracker.ValueAt(), tracker.CountAt()})
        seen->places.emplace_back(at.line, at.column);
}

ChildrenSeen ReadChildren(const std::wstring& value, bool oneByOne) {
    ZtTestRecordingDiagnostics heard;
    ZtOdPdsBlockTracker tracker(heard, L"t.tag", {3, 5});
    tracker.ExpectHeadLine();
    ZtOdPdsBlock child;
    child.AddFlags(ZtOdPdsCountedText);
    ChildrenSeen seen;
    if (oneByOne) {
        // The reference: each character fed to the tracker by itself.
        for (std::size_t at = 0; at < value.size();) {
            ZtOdPdsSliceBlockReader reader(&child, 0, value.data() + at);
            int result = ZtOdPdsBlockReader::kContinue;
            while (at < value.size() && result != ZtOdPdsBlockReader::kComplete) {
                result = tracker.Feed(reader, value[at]);
                ++at;
            }
            if (result != ZtOdPdsBlockReader::kComplete) {
                tracker.Stopped(reader, ZtOdPdsBlockReader::kContinue);
                break;
            }
            tracker.Completed();
            NoteChild(child, tracker, &seen);
        }
    } else {
        ZtOdPdsBlock parent;
        parent.AddFlags(ZtOdPdsCountedText);
        parent.SetValue(value.data(), value.size());
        while (parent.NextChild(&child, tracker))
            NoteChild(child, tracker, &seen);
    }
    const ZtOdPdsSourcePosition end = tracker.Position();
    seen.places.emplace_back(end.line, end.column);
    seen.heard = heard.Heard();
    return seen;
}

TEST(ZtOdPdsTrackedRead, ChildrenReadInRunsStandWhereOneByOneTheyWould) {
    const std::wstring values[] = {
        L"7 1 0 0.0 1 2 3\n  p{1 2 3}\n l{0 13 4 0}\ntext{14\nab\ncd{}\n\nef}\n q{x}"s,
        L"1 2\ntext{9\n\0{}x\ny\n} r{z}"s,
        L"head\r\n\tp{a\0b}\r\nstray words\n x{\ny{1}\n}\ntext{1\n}"s,
        L"1\ntext{99\nshort}\nq{1}"s,
        L"h\n} after{1}\n\0n{2}\n  text{3\nz}}"s,
    };
    for (const std::wstring& value : values)
        EXPECT_EQ(ReadChildren(value, false), ReadChildren(value, true)) << value.size();
}

// Keeps each line with the place the pump says it stands at.
class PlacedLines : public ZtOdPdsInputConsumer {
public:
    explicit PlacedLines(const ZtOdPdsLineSpot* spot) : spot_(spot) {}
    int Begin() override { return 1; }
    int End() override { return 1; }
    int Line(ZtUWideStringBuffer& line) override {
        lines.push_back(line.Str());
        if (spot_)
            places.emplace_back(spot_->at.line, spot_->at.column);
        return 1;
    }
    std::vector<std::wstring> lines;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> places;

private:
    const ZtOdPdsLineSpot* spot_;
};

TEST(ZtOdPdsTrackedRead, LinesAreReadAsPlainlyAndPlacedWhereTheyStand) {
    const std::string text =
        "abc\n" + std::string(600, 'x') + "\n" + "p\0qr\n"s + "\n" + std::string(511, 'y') + "\nz";
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("t.dst"), text));
    ZtTestRecordingDiagnostics heard;
    ZtOdPdsLineSpot spot{&heard, L"t.dst", {}};
    ZtOdPdsTextFile file;
    ASSERT_TRUE(file.Open(dir.WideFile("t.dst").c_str()));
    PlacedLines tracked(&spot);
    EXPECT_EQ(file.ReadLines(tracked, spot), 1);
    ASSERT_TRUE(file.Open(dir.WideFile("t.dst").c_str()));
    PlacedLines plain(nullptr);
    EXPECT_EQ(file.ReadLines(plain), 1);
    EXPECT_EQ(tracked.lines, plain.lines);
    EXPECT_EQ(tracked.places, (std::vector<std::pair<std::uint32_t, std::uint32_t>>{
                                  {1, 1}, {2, 1}, {2, 512}, {5, 1}}));
    // A line of 511 and its line end is no split line; the NUL loses two characters and
    // leaves a line too short to deliver.
    EXPECT_EQ(heard.Heard(), (std::vector<ZtTestHeard>{{C::kLineSplit, 2, 512, 511},
                                                       {C::kNulCut, 3, 2, 2},
                                                       {C::kLastLineDropped, 6, 1}}));
    EXPECT_EQ(heard.records[1].diagnostic.figures[1], 2);
}

} // namespace
