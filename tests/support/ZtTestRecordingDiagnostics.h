#pragma once
#include "diagnostics/ZtOdPdsDiagnostics.h"
#include "ztutil/ZtUSysString.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

// What a test expects the library to report: the check, where, and its first figure.
struct ZtTestHeard {
    ZtOdPdsCheck check;
    std::uint32_t line = 0;
    std::uint32_t column = 0;
    std::int64_t figure = 0;

    bool operator==(const ZtTestHeard&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const ZtTestHeard& heard) {
    return out << "{check " << static_cast<int>(heard.check) << " at " << heard.line << ":"
               << heard.column << ", " << heard.figure << "}";
}

// A diagnostics sink that keeps what it hears: whole, and as ZtTestHeard for comparing.
class ZtTestRecordingDiagnostics : public ZtOdPdsDiagnostics {
public:
    struct Record {
        ZtOdPdsDiagnostic diagnostic; // its texts point nowhere once reported
        std::string file;
        std::string text;
        std::string relatedFile;
    };

    void Report(const ZtOdPdsDiagnostic& diagnostic) override {
        Record record{diagnostic, diagnostic.file ? ZtUSysString::WideToUtf8(diagnostic.file) : "",
                      ZtUSysString::WideToUtf8(diagnostic.text),
                      diagnostic.relatedFile ? ZtUSysString::WideToUtf8(diagnostic.relatedFile)
                                             : ""};
        record.diagnostic.file = nullptr;
        record.diagnostic.text = {};
        record.diagnostic.relatedFile = nullptr;
        records.push_back(std::move(record));
    }

    // What was heard, but for the checks `skipped` (facts, as a rule).
    std::vector<ZtTestHeard> Heard(std::initializer_list<ZtOdPdsCheck> skipped = {}) const {
        std::vector<ZtTestHeard> heard;
        for (const Record& record : records) {
            const ZtOdPdsDiagnostic& d = record.diagnostic;
            if (std::find(skipped.begin(), skipped.end(), d.check) == skipped.end())
                heard.push_back({d.check, d.at.line, d.at.column, d.figures[0]});
        }
        return heard;
    }

    std::vector<Record> records;
};
