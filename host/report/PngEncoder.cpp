#include "report/PngEncoder.h"

#include <algorithm>

namespace {

std::uint32_t Crc32(std::string_view bytes) {
    static const std::array<std::uint32_t, 256> table = [] {
        std::array<std::uint32_t, 256> t{};
        for (std::uint32_t n = 0; n < 256; ++n) {
            std::uint32_t c = n;
            for (int k = 0; k < 8; ++k)
                c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            t[n] = c;
        }
        return t;
    }();
    std::uint32_t crc = 0xFFFFFFFFu;
    for (unsigned char b : bytes)
        crc = table[(crc ^ b) & 0xFF] ^ (crc >> 8);
    return crc ^ 0xFFFFFFFFu;
}

void PutBigEndian(std::string& out, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        out += static_cast<char>((value >> shift) & 0xFF);
}

void PutChunk(std::string& out, const char* type, std::string_view data) {
    PutBigEndian(out, static_cast<std::uint32_t>(data.size()));
    std::string body(type, 4);
    body += data;
    out += body;
    PutBigEndian(out, Crc32(body));
}

// Deflate's bit stream: least significant bit first, Huffman codes most significant
// bit first.
class BitWriter {
public:
    explicit BitWriter(std::string& out) : out_(out) {}
    void Bits(std::uint32_t value, int count) {
        for (int i = 0; i < count; ++i)
            Bit((value >> i) & 1);
    }
    void Code(std::uint32_t code, int length) {
        for (int i = length - 1; i >= 0; --i)
            Bit((code >> i) & 1);
    }
    void Finish() {
        if (used_)
            out_ += static_cast<char>(byte_);
    }

private:
    void Bit(std::uint32_t bit) {
        byte_ |= bit << used_;
        if (++used_ == 8) {
            out_ += static_cast<char>(byte_);
            byte_ = 0;
            used_ = 0;
        }
    }
    std::string& out_;
    std::uint32_t byte_ = 0;
    int used_ = 0;
};

// The fixed literal/length code.
void PutSymbol(BitWriter& bits, int symbol) {
    if (symbol < 144)
        bits.Code(0x30 + symbol, 8);
    else if (symbol < 256)
        bits.Code(0x190 + symbol - 144, 9);
    else if (symbol < 280)
        bits.Code(symbol - 256, 7);
    else
        bits.Code(0xC0 + symbol - 280, 8);
}

// A copy of the byte before, `length` (3 to 258) times.
void PutRun(BitWriter& bits, int length) {
    static const int kBase[] = {3,  4,  5,  6,  7,  8,  9,  10, 11,  13,  15,  17,  19,  23, 27,
                                31, 35, 43, 51, 59, 67, 83, 99, 115, 131, 163, 195, 227, 258};
    static const int kExtra[] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2,
                                 2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0};
    int code = 28;
    while (kBase[code] > length)
        --code;
    PutSymbol(bits, 257 + code);
    bits.Bits(static_cast<std::uint32_t>(length - kBase[code]), kExtra[code]);
    bits.Code(0, 5); // distance 1
}

std::string Zlib(const std::string& data) {
    std::string out("\x78\x01", 2);
    BitWriter bits(out);
    bits.Bits(1, 1); // the last block
    bits.Bits(1, 2); // fixed codes
    const std::size_t size = data.size();
    for (std::size_t i = 0; i < size;) {
        std::size_t run = 0;
        if (i > 0)
            while (run < 258 && i + run < size && data[i + run] == data[i - 1])
                ++run;
        if (run >= 3) {
            PutRun(bits, static_cast<int>(run));
            i += run;
        } else {
            PutSymbol(bits, static_cast<unsigned char>(data[i]));
            ++i;
        }
    }
    PutSymbol(bits, 256);
    bits.Finish();
    std::uint32_t a = 1, b = 0;
    for (unsigned char c : data) {
        a = (a + c) % 65521;
        b = (b + a) % 65521;
    }
    PutBigEndian(out, (b << 16) | a);
    return out;
}

} // namespace

std::string EncodePalettePng(int width, int height, const std::vector<std::uint8_t>& pixels,
                             const std::vector<std::array<std::uint8_t, 4>>& palette) {
    std::string png("\x89PNG\r\n\x1a\n", 8);
    std::string header;
    PutBigEndian(header, static_cast<std::uint32_t>(width));
    PutBigEndian(header, static_cast<std::uint32_t>(height));
    header += std::string("\x08\x03\x00\x00\x00", 5); // 8 bits, palette, no interlace
    PutChunk(png, "IHDR", header);
    std::string colours, alphas;
    for (const auto& entry : palette) {
        colours.append(reinterpret_cast<const char*>(entry.data()), 3);
        alphas += static_cast<char>(entry[3]);
    }
    PutChunk(png, "PLTE", colours);
    PutChunk(png, "tRNS", alphas);
    std::string rows;
    rows.reserve(static_cast<std::size_t>(width + 1) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        rows += '\0'; // no filter
        const auto* row = pixels.data() + static_cast<std::size_t>(y) * width;
        rows.append(reinterpret_cast<const char*>(row), static_cast<std::size_t>(width));
    }
    PutChunk(png, "IDAT", Zlib(rows));
    PutChunk(png, "IEND", "");
    return png;
}

std::string Base64(std::string_view bytes) {
    static const char kDigits[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    out.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t n = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t v = 0;
        for (std::size_t k = 0; k < 3; ++k)
            v = (v << 8) | (k < n ? static_cast<unsigned char>(bytes[i + k]) : 0u);
        for (std::size_t k = 0; k < 4; ++k)
            out += k <= n ? kDigits[(v >> (18 - 6 * k)) & 63] : '=';
    }
    return out;
}
