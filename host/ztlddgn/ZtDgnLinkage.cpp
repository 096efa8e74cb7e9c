#include "ztlddgn/ZtDgnLinkage.h"

#include "ztlddgn/ZtDgnBytes.h"

const char* ZtDgnLinkageKindName(ZtDgnLinkageKind kind) {
    switch (kind) {
    case ZtDgnLinkageKind::kDmrs:
        return "dmrs";
    case ZtDgnLinkageKind::kFill:
        return "fill";
    case ZtDgnLinkageKind::kAssociation:
        return "association";
    case ZtDgnLinkageKind::kXBase:
        return "xbase";
    case ZtDgnLinkageKind::kInformix:
        return "informix";
    case ZtDgnLinkageKind::kSybase:
        return "sybase";
    case ZtDgnLinkageKind::kOdbc:
        return "odbc";
    case ZtDgnLinkageKind::kOracle:
        return "oracle";
    case ZtDgnLinkageKind::kRis:
        return "ris";
    case ZtDgnLinkageKind::kUser:
        break;
    }
    return "user";
}

ZtDgnLinkageKind ZtDgnClassifyLinkage(const std::uint16_t* words, std::size_t length) {
    if (length == 0)
        return ZtDgnLinkageKind::kUser;
    if (!(words[0] & 0x1000))
        return ZtDgnLinkageKind::kDmrs;
    if (length < 2)
        return ZtDgnLinkageKind::kUser;
    switch (words[1]) {
    case 0x0041:
        return ZtDgnLinkageKind::kFill;
    case 0x7D2F:
        return ZtDgnLinkageKind::kAssociation;
    case 0x1971:
        return ZtDgnLinkageKind::kXBase;
    case 0x3848:
        return ZtDgnLinkageKind::kInformix;
    case 0x4F58:
        return ZtDgnLinkageKind::kSybase;
    case 0x5E62:
        return ZtDgnLinkageKind::kOdbc;
    case 0x6091:
        return ZtDgnLinkageKind::kOracle;
    case 0x71FB:
        return ZtDgnLinkageKind::kRis;
    default:
        return ZtDgnLinkageKind::kUser;
    }
}

std::uint64_t ZtDgnFindDmrs(const std::uint16_t* words, std::size_t count) {
    std::size_t at = 0;
    while (at < count) {
        const std::size_t length = ZtDgnLinkageLength(words[at]);
        if (length > count - at)
            break;
        if (ZtDgnClassifyLinkage(words + at, length) == ZtDgnLinkageKind::kDmrs) {
            const std::uint64_t value = (std::uint64_t{words[at]} << 48) |
                                        (std::uint64_t{words[at + 1]} << 32) |
                                        (std::uint64_t{words[at + 2]} << 16) | words[at + 3];
            if (value != 0)
                return value;
        }
        at += length;
    }
    return 0;
}
