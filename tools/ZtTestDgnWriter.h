#pragma once
#include <cstdint>
#include <string>
#include <vector>

// Writes DGN V7 design files for tests and samples, with exactly the elements asked for.
// Coordinates are UORs. Elements between BeginCell/BeginComplex and EndGroup are that
// group's components: they get the complex bit, and the header its total length,
// component count and the union of their ranges.

struct ZtTestDgnUnits {
    std::uint32_t subunitsPerMaster = 1000;
    std::uint32_t uorsPerSubunit = 1;
    std::string masterName = "m";
    std::string subName = "mm";
    double origin[3] = {0, 0, 0}; // global origin, UORs
};

struct ZtTestDgnPoint {
    std::int32_t x = 0, y = 0, z = 0;
};

struct ZtTestDgnSymbology {
    int level = 1;
    int colour = 0;
    int weight = 0;
    int style = 0;
    int graphicGroup = 0;
    std::uint16_t properties = 0; // display properties besides the linkage bit
    bool deleted = false;
    std::vector<std::vector<std::uint16_t>> linkages; // the words of each linkage
};

// An element's rotation: in a 2D file `degrees` counter-clockwise about z; in a 3D file
// that many degrees about `axis`, written as a quaternion. No turn writes zeros, as some
// writers leave the rotation.
struct ZtTestDgnTurn {
    double degrees = 0;
    double axis[3] = {0, 0, 1};
};

// A four-word DMRS linkage: entity, and a 24-bit occurrence (bits 16-23 in the last word).
std::vector<std::uint16_t> ZtTestDmrsLinkage(std::uint16_t entity, std::uint32_t occurrence,
                                             bool infoBit = false);
// An eight-word ODBC database linkage with a 32-bit MSLINK, low word first.
std::vector<std::uint16_t> ZtTestOdbcLinkage(std::uint16_t entity, std::uint32_t mslink);

class ZtTestDgnWriter {
public:
    ZtTestDgnWriter(int dimension, const ZtTestDgnUnits& units);

    // Each element call returns the element's index (the control block is 0).
    std::uint32_t Line(const ZtTestDgnSymbology& s, ZtTestDgnPoint a, ZtTestDgnPoint b);
    std::uint32_t LineString(const ZtTestDgnSymbology& s,
                             const std::vector<ZtTestDgnPoint>& points);
    std::uint32_t Shape(const ZtTestDgnSymbology& s, const std::vector<ZtTestDgnPoint>& points);
    // A curve through the points, the first two and last two setting the end slopes.
    std::uint32_t Curve(const ZtTestDgnSymbology& s, const std::vector<ZtTestDgnPoint>& points);
    // Characters of `height` UORs; the range covers the text's box at its origin.
    std::uint32_t Text(const ZtTestDgnSymbology& s, ZtTestDgnPoint origin, const std::string& text,
                       std::int32_t height, const ZtTestDgnTurn& turn = {});
    // An ellipse, or with a sweep an arc (angles in degrees, a negative sweep clockwise),
    // of two semi-axes in UORs, turned.
    std::uint32_t Ellipse(const ZtTestDgnSymbology& s, ZtTestDgnPoint centre, double primary,
                          double secondary, const ZtTestDgnTurn& turn);
    std::uint32_t Arc(const ZtTestDgnSymbology& s, ZtTestDgnPoint centre, double primary,
                      double secondary, const ZtTestDgnTurn& turn, double start, double sweep);
    // A cone (a cylinder with equal radii) between two end circles, whose plane the turn
    // gives; 3D files only.
    std::uint32_t Cone(const ZtTestDgnSymbology& s, const ZtTestDgnTurn& turn, ZtTestDgnPoint base,
                       double baseRadius, ZtTestDgnPoint top, double topRadius);
    // Any element: `body` follows the display header (byte 36 on), then the linkages.
    std::uint32_t Element(int type, const ZtTestDgnSymbology& s,
                          const std::vector<std::uint8_t>& body, ZtTestDgnPoint low,
                          ZtTestDgnPoint high);
    // Bytes as they stand, counted as one element.
    std::uint32_t Raw(const std::vector<std::uint8_t>& bytes);

    std::uint32_t BeginCell(const ZtTestDgnSymbology& s);
    // A complex chain (12) or complex shape (14).
    std::uint32_t BeginComplex(int type, const ZtTestDgnSymbology& s);
    // Closes the innermost group. `shortBy` words are left out of its total length, as
    // some writers leave out the header's own linkages.
    void EndGroup(int shortBy = 0);

    // The end-of-design word.
    void EndOfDesign();

    const std::vector<std::uint8_t>& Bytes() const { return bytes_; }
    // Byte offset of the element of that index.
    std::size_t Offset(std::uint32_t index) const { return offsets_.at(index); }
    bool Save(const std::string& path) const;

private:
    struct Group {
        std::size_t offset;     // of the header
        std::size_t headerSize; // header bytes, linkages included
        int components;
        bool hasRange;
        ZtTestDgnPoint low, high;
    };
    std::uint32_t Write(int type, const ZtTestDgnSymbology& s,
                        const std::vector<std::uint8_t>& body, ZtTestDgnPoint low,
                        ZtTestDgnPoint high, bool group);
    // Widens the innermost group's range.
    void ExtendGroup(ZtTestDgnPoint low, ZtTestDgnPoint high);
    std::vector<std::uint8_t> Points(const std::vector<ZtTestDgnPoint>& points) const;
    std::uint32_t PointElement(int type, const ZtTestDgnSymbology& s,
                               const std::vector<ZtTestDgnPoint>& points);
    // Writes the rotation at `at` of `body`: an angle in 2D, a quaternion in 3D.
    void PutTurn(std::vector<std::uint8_t>& body, std::size_t at, const ZtTestDgnTurn& turn) const;
    std::size_t TurnBytes() const { return dimension_ == 3 ? 16 : 4; }
    std::uint32_t EllipseElement(int type, const ZtTestDgnSymbology& s, ZtTestDgnPoint centre,
                                 double primary, double secondary, const ZtTestDgnTurn& turn,
                                 double start, double sweep);

    int dimension_;
    std::vector<std::uint8_t> bytes_;
    std::vector<std::size_t> offsets_;
    std::vector<Group> groups_;
};

// Encoders, for tests that build bytes by hand.
void ZtTestPutWord(std::vector<std::uint8_t>& out, std::size_t at, std::uint16_t value);
void ZtTestPutInt32(std::vector<std::uint8_t>& out, std::size_t at, std::int32_t value);
void ZtTestPutVaxDouble(std::vector<std::uint8_t>& out, std::size_t at, double value);
