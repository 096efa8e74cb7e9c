#pragma once

// Units of length of the host.
class ZtOaUnit {
public:
    enum Linear : int {
        kMetres = 0,
        kCentimetres = 1,
        kMillimetres = 2,
        kFeet = 3,
        kInches = 4,
        kYards = 5,
        kKilometres = 6,
        kMiles = 7,
        kMicrometres = 8,
        kMils = 9,
        kMicroinches = 10,
    };
    static constexpr int kNumLinear = 11;

    // True for the values of the enumeration.
    static bool IsValid(Linear unit) { return unit >= 0 && unit < kNumLinear; }
    // The unit's size in metres; 0.0 for a value outside the enumeration.
    static double SizeInMetres(Linear unit);
    // How many `b` make one `a`: size(a) / size(b). Equal units give exactly 1.0; a value
    // outside the enumeration scales nothing, so the result is then 1.0 too.
    static double ScaleFactor(Linear a, Linear b);
    // The unit's short name ("m", "ft"); "" for a value outside the enumeration.
    static const char* Abbreviation(Linear unit);
};
