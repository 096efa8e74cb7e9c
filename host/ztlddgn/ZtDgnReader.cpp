#include "ztlddgn/ZtDgnReader.h"

#include "ztlddgn/ZtDgnBytes.h"
#include "ztlddgn/ZtDgnElementStream.h"
#include "ztplugin/ZtOpProgress.h"
#include "ztutil/ZtUSysString.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace {

// The control block must reach the global origin's last double.
constexpr std::uint32_t kMinControlBlockBytes = 1264;
// Group headers carry their total length in the word at byte 36.
constexpr std::uint32_t kGroupHeaderBytes = 38;
constexpr std::uint32_t kProgressEvery = 1 << 16;

std::string UnitName(const unsigned char* p) {
    std::string name;
    for (int i = 0; i < 2 && p[i] != 0; ++i)
        name += static_cast<char>(p[i]);
    return name;
}

std::string Count(std::size_t n, const char* one, const char* many) {
    return std::to_string(n) + " " + (n == 1 ? one : many);
}

// Checks the first bytes of the file; an empty result means they begin a design file.
std::string CheckSignature(const unsigned char* bytes, std::size_t count) {
    if (count == 0)
        return "the file is empty";
    if (count < 4)
        return "the file is too short to be a design file (" + Count(count, "byte", "bytes") + ")";
    const int level = bytes[0] & 0x3F;
    const int type = bytes[1] & 0x7F;
    if (level == 8 && bytes[1] == 5)
        return "the file is a cell library, not a design file";
    if (type != 9 || (bytes[1] & 0x80) || level != 8)
        return "not a DGN V7 design file: the first element is not a control block (type " +
               std::to_string(type) + ", level " + std::to_string(level) +
               " where a design file has type 9, level 8)";
    return {};
}

// An open cell or complex element: the components are the elements that start before
// `end`. A group passed over (deleted, or not drawn) takes its components with it.
struct OpenGroup {
    std::uint64_t end;
    ZtDgnGroupNode* node;
    bool skipped;
};

// Opens `path` and reads its control block into `header`; false with the reason in `why`
// for a file that is no design file or gives no units.
bool ReadHeader(const wchar_t* path, ZtDgnElementStream& stream, ZtDgnModelHeader* header,
                std::string& why) {
    if (!stream.Open(ZtUSysString::WideToPath(path ? path : L""), &why))
        return false;

    unsigned char start[4];
    why = CheckSignature(start, stream.Peek(start, sizeof start));
    if (!why.empty())
        return false;
    ZtDgnRawElement raw;
    if (stream.Next(&raw) != ZtDgnElementStream::kElement) {
        why = "the control block is cut short: " + stream.Describe();
        return false;
    }
    if (raw.size < kMinControlBlockBytes) {
        why = "the control block is " + Count(raw.size, "byte", "bytes") +
              " long; a design file's holds at least " + std::to_string(kMinControlBlockBytes);
        return false;
    }
    header->dimension = (raw.bytes[1214] & 0x40) ? 3 : 2;
    header->subunitsPerMaster = ZtDgnUInt32(raw.bytes + 1112);
    header->uorsPerSubunit = ZtDgnUInt32(raw.bytes + 1116);
    header->masterUnitName = UnitName(raw.bytes + 1120);
    header->subUnitName = UnitName(raw.bytes + 1122);
    header->globalOrigin.SetValue(ZtDgnVaxDouble(raw.bytes + 1240),
                                  ZtDgnVaxDouble(raw.bytes + 1248),
                                  ZtDgnVaxDouble(raw.bytes + 1256));
    if (header->subunitsPerMaster == 0 || header->uorsPerSubunit == 0) {
        why = "the control block gives 0 UORs per master unit (" +
              std::to_string(header->subunitsPerMaster) + " subunits per master unit x " +
              std::to_string(header->uorsPerSubunit) + " UORs per subunit)";
        return false;
    }
    return true;
}

} // namespace

bool ZtDgnProbeModel(const wchar_t* path, std::string* reason) {
    std::string ignored;
    ZtDgnElementStream stream;
    ZtDgnModelHeader header;
    return ReadHeader(path, stream, &header, reason ? *reason : ignored);
}

std::unique_ptr<ZtDgnModel> ZtDgnReadModel(const wchar_t* path, ZtUNameDict* names, bool option10,
                                           ZtOpProgress* progress, std::string* reason) {
    std::unique_ptr<ZtDgnModel> model = ZtDgnDecodeModel(path, progress, reason);
    if (model) {
        model->BindNames(names);
        model->SetOption10AtLoad(option10);
    }
    return model;
}

std::unique_ptr<ZtDgnModel> ZtDgnDecodeModel(const wchar_t* path, ZtOpProgress* progress,
                                             std::string* reason) {
    std::string ignored;
    std::string& why = reason ? *reason : ignored;
    ZtDgnElementStream stream;
    ZtDgnModelHeader header;
    if (!ReadHeader(path, stream, &header, why))
        return nullptr;

    auto model = std::make_unique<ZtDgnModel>(path, ZtDgnModel::UnnamedTag{});
    model->SetHeader(header);
    model->ReserveForFile(stream.GetFileSize());

    std::vector<OpenGroup> open;
    std::uint32_t index = 1;
    std::size_t tooShort = 0;
    std::size_t linkageOverruns = 0;
    const double fileSize = static_cast<double>(stream.GetFileSize());
    ZtDgnRawElement raw;
    ZtDgnElementStream::Result result;
    while ((result = stream.Next(&raw)) == ZtDgnElementStream::kElement) {
        if (index == std::numeric_limits<std::uint32_t>::max()) {
            model->AddWarning("the file holds more elements than a model can count; the rest "
                              "are not loaded");
            break;
        }
        // No element has an all-zero header; zeros here are a hole or padding (a sparse
        // file may hold terabytes of them), not design data.
        if (raw.size == 4 && ZtDgnWord(raw.bytes) == 0) {
            model->AddWarning("the file holds zero bytes where an element should begin, at byte " +
                              std::to_string(raw.offset) + "; the " +
                              Count(stream.GetFileSize() - raw.offset, "byte", "bytes") +
                              " from there on are not read");
            break;
        }
        const std::uint32_t elementIndex = index++;
        while (!open.empty() && open.back().end <= raw.offset)
            open.pop_back();

        const unsigned char* p = raw.bytes;
        const int type = p[1] & 0x7F;
        bool skip =
            (!open.empty() && open.back().skipped) || (p[1] & 0x80) || !ZtDgnIsGraphicType(type);
        if (!skip && raw.size < kZtDgnGraphicHeaderBytes) {
            skip = true;
            ++tooShort;
        }
        const bool opensGroup = ZtDgnHasTotalLength(type) && raw.size >= kGroupHeaderBytes;

        ZtOaNode* node = nullptr;
        if (!skip) {
            bool overrun = false;
            node = model->AddElement(raw, elementIndex, opensGroup,
                                     open.empty() ? nullptr : open.back().node, &overrun);
            linkageOverruns += overrun;
            if (!node) {
                model->AddWarning("the file holds more linkage words than a model can keep; the "
                                  "elements from byte " +
                                  std::to_string(raw.offset) + " on are not loaded");
                break;
            }
        }
        if (opensGroup)
            open.push_back({raw.offset + kGroupHeaderBytes + 2 * std::uint64_t{ZtDgnWord(p + 36)},
                            static_cast<ZtDgnGroupNode*>(opensGroup && node ? node : nullptr),
                            skip});
        if (progress && elementIndex % kProgressEvery == 0 && fileSize > 0)
            progress->SetProgress(static_cast<double>(raw.offset) / fileSize);
    }
    if (result == ZtDgnElementStream::kReadError) {
        why = stream.Describe();
        return nullptr;
    }
    if (result == ZtDgnElementStream::kTruncated)
        model->AddWarning("the file is cut short: " + stream.Describe() +
                          "; the elements before it are loaded");
    if (tooShort)
        model->AddWarning(Count(tooShort, "element is", "elements are") +
                          " too short for an element header and passed over");
    if (linkageOverruns)
        model->AddWarning(Count(linkageOverruns, "element has", "elements have") +
                          " linkages that run past the element's end; they are read up to there");
    model->FinishLoad(index);
    if (progress)
        progress->SetProgress(1.0);
    return model;
}
