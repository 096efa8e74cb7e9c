#include "readers/ZtOdPdsTextFile.h"

#include "readers/ZtOdPdsInputConsumer.h"
#include "ztutil/ZtUFile.h"
#include "ztutil/ZtUSysFile.h"
#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUWideString.h"

#include <algorithm>
#include <cwchar>
#include <type_traits>

namespace {

constexpr int kPiece = 512;

// Follows the pieces the pump reads for a read that reports: where each begins, and what
// the pump makes of pieces that are not whole lines. Before a read the piece is filled
// with U+FFFF, which the stream never gives, so that the read's true length shows behind
// a NUL.
class PieceTracker {
public:
    explicit PieceTracker(ZtOdPdsLineSpot* spot) : spot_(*spot) { spot_.at = {1, 1}; }

    void BeforeRead(wchar_t* text) { std::wmemset(text, static_cast<wchar_t>(0xFFFF), kPiece); }

    // Notes the piece just read, `length` characters up to its first NUL.
    void Read(const wchar_t* text, std::size_t length) {
        const std::size_t read =
            static_cast<std::size_t>(std::find(text, text + kPiece, static_cast<wchar_t>(0xFFFF)) -
                                     text) -
            1;
        const bool lineEnd = read > 0 && text[read - 1] == L'\n';
        spot_.at = next_;
        if (lineEnd)
            next_ = {next_.line + 1, 1};
        else
            next_.column += static_cast<std::uint32_t>(read);
        if (length < read)
            Report(ZtOdPdsCheck::kNulCut, spot_.at.Right(static_cast<std::uint32_t>(length)),
                   {text, length}, {2, static_cast<std::int64_t>(read - length - 1 - lineEnd)});
        // The first piece behind the first one of a physical line is where it was split.
        if (spot_.at.column == kPiece && !(read == 1 && lineEnd))
            Report(ZtOdPdsCheck::kLineSplit, spot_.at, {}, {kPiece - 1});
        // One character and no line end is the last piece of the input, not delivered.
        if (read == 1 && !lineEnd && length == 1 && text[0] != L' ' && text[0] != L'\t')
            Report(ZtOdPdsCheck::kLastLineDropped, spot_.at, {text, 1});
    }

private:
    void Report(ZtOdPdsCheck check, ZtOdPdsSourcePosition at, std::wstring_view text,
                std::initializer_list<std::int64_t> figures = {}) const {
        ZtOdPdsReport(*spot_.sink, check, spot_.file, at, text, figures);
    }

    ZtOdPdsLineSpot& spot_;
    ZtOdPdsSourcePosition next_{1, 1};
};

// The plain read's stand-in, which does nothing.
struct NoTracker {
    explicit NoTracker(ZtOdPdsLineSpot*) {}
    void BeforeRead(wchar_t*) {}
    void Read(const wchar_t*, std::size_t) {}
};

} // namespace

int ZtOdPdsTextFile::Open(const wchar_t* path) {
    Close();
    file_ = ZtUSysFile::fopenW(path, ZtUSysFile::kAccessRead, ZtUSysFile::kOpenExisting,
                               ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0,
                               ZtUSysFile::kPermitReadWrite);
    return file_ ? 1 : 0;
}

int ZtOdPdsTextFile::Close() {
    if (file_)
        ZtUSysFile::fclose(file_);
    file_ = nullptr;
    return 1;
}

int ZtOdPdsTextFile::ReadLines(ZtOdPdsInputConsumer& consumer) {
    return Pump<false>(consumer, nullptr);
}

int ZtOdPdsTextFile::ReadLines(ZtOdPdsInputConsumer& consumer, ZtOdPdsLineSpot& spot) {
    return Pump<true>(consumer, &spot);
}

// The plain read and the tracked one are two loops, so that the plain one pays nothing for
// the tracking.
template <bool kTracked>
int ZtOdPdsTextFile::Pump(ZtOdPdsInputConsumer& consumer, ZtOdPdsLineSpot* spot) {
    ZtUWideStringBuffer line;
    consumer.Begin();
    wchar_t text[kPiece];
    std::conditional_t<kTracked, PieceTracker, NoTracker> pieces(spot);
    while (true) {
        pieces.BeforeRead(text);
        if (!file_ || !ZtUSysFile::fgetws(text, kPiece, file_))
            break;
        std::size_t length = ZtUSysString::WideStrlen(text);
        pieces.Read(text, length);
        if (length <= 1)
            continue;
        // A CR that the stream lets through stays in the line.
        if (text[length - 1] == L'\n')
            text[--length] = L'\0';
        line.SetString(text, length);
        if (!consumer.Line(line)) {
            consumer.End();
            return 0;
        }
    }
    consumer.End();
    return file_ && ZtUSysFile::ferror(file_) == 0 ? 1 : 0;
}
