#include "tools/ZtTestPlantModels.h"

#include <cmath>

namespace {

struct Metres {
    double x, y, z;
};

// Converts plant metres to a model's UORs.
class Place {
public:
    explicit Place(double uorsPerMetre) : scale_(uorsPerMetre) {}
    ZtTestDgnPoint operator()(Metres m) const { return {Round(m.x), Round(m.y), Round(m.z)}; }

private:
    std::int32_t Round(double v) const {
        return static_cast<std::int32_t>(std::lround(v * scale_));
    }
    double scale_;
};

ZtTestDgnSymbology Sym(int level, int colour, int weight, int style, std::uint16_t entity,
                       std::uint32_t occurrence) {
    ZtTestDgnSymbology s;
    s.level = level;
    s.colour = colour;
    s.weight = weight;
    s.style = style;
    s.linkages = {ZtTestDmrsLinkage(entity, occurrence)};
    return s;
}

// A rectangle in a horizontal plane at height z, as a closed shape.
std::vector<ZtTestDgnPoint> Rectangle(const Place& at, Metres low, Metres high, double z) {
    return {at({low.x, low.y, z}), at({high.x, low.y, z}), at({high.x, high.y, z}),
            at({low.x, high.y, z}), at({low.x, low.y, z})};
}

ZtTestDgnWriter Pipes() {
    ZtTestDgnWriter w(3, {1000, 80, "m", "mm", {0, 0, 0}});
    const Place at(80000);
    const std::vector<std::vector<Metres>> process = {
        {{4, 6, 1.5}, {12, 6, 1.5}, {12, 14, 1.5}, {20, 14, 1.5}},
        {{20, 14, 1.5}, {28, 14, 1.5}, {28, 14, 6}},
        {{28, 14, 6}, {34, 14, 6}, {34, 22, 6}},
        {{6, 24, 3}, {18, 24, 3}, {18, 18, 3}},
        {{18, 18, 3}, {18, 18, 9}, {30, 18, 9}},
        {{30, 18, 9}, {36, 18, 9}, {36, 8, 9}, {36, 8, 2}},
    };
    for (std::size_t i = 0; i < process.size(); ++i) {
        std::vector<ZtTestDgnPoint> points;
        for (const Metres& m : process[i])
            points.push_back(at(m));
        w.LineString(Sym(10, 1, 3, 0, 12, static_cast<std::uint32_t>(101 + i)), points);
    }
    const std::vector<std::vector<Metres>> utility = {
        {{2, 2, 4}, {38, 2, 4}},
        {{2, 2, 4}, {2, 28, 4}, {14, 28, 4}},
        {{38, 2, 4}, {38, 28, 4}},
    };
    for (std::size_t i = 0; i < utility.size(); ++i) {
        std::vector<ZtTestDgnPoint> points;
        for (const Metres& m : utility[i])
            points.push_back(at(m));
        w.LineString(Sym(11, 4, 1, 2, 12, static_cast<std::uint32_t>(201 + i)), points);
    }
    // Valves: two triangles tip to tip, in a cell placed on the line.
    const Metres valves[] = {{8, 6, 1.5}, {24, 14, 1.5}, {12, 24, 3}, {36, 12, 9}};
    for (std::size_t i = 0; i < std::size(valves); ++i) {
        const Metres v = valves[i];
        w.BeginCell(Sym(12, 2, 2, 0, 13, static_cast<std::uint32_t>(301 + i)));
        ZtTestDgnSymbology part;
        part.level = 12;
        part.colour = 2;
        w.Shape(part, {at({v.x - 0.3, v.y - 0.2, v.z}), at({v.x, v.y, v.z}),
                       at({v.x - 0.3, v.y + 0.2, v.z}), at({v.x - 0.3, v.y - 0.2, v.z})});
        w.Shape(part, {at({v.x + 0.3, v.y - 0.2, v.z}), at({v.x, v.y, v.z}),
                       at({v.x + 0.3, v.y + 0.2, v.z}), at({v.x + 0.3, v.y - 0.2, v.z})});
        w.EndGroup();
    }
    const char* labels[] = {"P-101", "P-104", "UW-201"};
    const Metres labelAt[] = {{5, 6.5, 1.5}, {7, 24.5, 3}, {3, 2.5, 4}};
    for (std::size_t i = 0; i < std::size(labels); ++i) {
        ZtTestDgnSymbology s;
        s.level = 13;
        s.colour = 6;
        w.Text(s, at(labelAt[i]), labels[i], 24000);
    }
    w.EndOfDesign();
    return w;
}

ZtTestDgnWriter Equipment() {
    ZtTestDgnWriter w(3, {12, 8000, "ft", "in", {0, 0, 0}});
    const Place at(96000 / 0.3048); // UORs per metre
    // Tanks: a cell of floor, roof and a complex shape for the shell's outline.
    struct Tank {
        Metres low, high;
    };
    const Tank tanks[] = {{{2, 4, 0}, {6, 8, 6}}, {{2, 10, 0}, {6, 14, 6}}};
    std::uint32_t occurrence = 1;
    for (const Tank& t : tanks) {
        w.BeginCell(Sym(20, 7, 2, 0, 21, occurrence++));
        ZtTestDgnSymbology part;
        part.level = 20;
        part.colour = 7;
        w.Shape(part, Rectangle(at, t.low, t.high, t.low.z));
        w.Shape(part, Rectangle(at, t.low, t.high, t.high.z));
        w.BeginComplex(14, part);
        w.LineString(part, {at({t.low.x, t.low.y, t.low.z}), at({t.low.x, t.low.y, t.high.z}),
                            at({t.high.x, t.low.y, t.high.z})});
        w.LineString(part, {at({t.high.x, t.low.y, t.high.z}), at({t.high.x, t.low.y, t.low.z}),
                            at({t.low.x, t.low.y, t.low.z})});
        w.EndGroup();
        w.EndGroup();
    }
    // Pumps: a base plate and the casing's outline.
    const Metres pumps[] = {{10, 6, 0}, {26, 14, 0}, {34, 24, 0}};
    for (const Metres& p : pumps) {
        w.BeginCell(Sym(21, 3, 1, 0, 21, occurrence++));
        ZtTestDgnSymbology part;
        part.level = 21;
        part.colour = 3;
        w.Shape(part, Rectangle(at, {p.x - 1, p.y - 0.5, 0}, {p.x + 1, p.y + 0.5, 0}, p.z));
        w.LineString(part, {at({p.x - 0.6, p.y, 0.2}), at({p.x - 0.6, p.y, 1.2}),
                            at({p.x + 0.6, p.y, 1.2}), at({p.x + 0.6, p.y, 0.2})});
        w.EndGroup();
    }
    // Nozzles where the process lines meet the equipment.
    const Metres nozzles[][2] = {{{6, 6, 1.5}, {6.5, 6, 1.5}}, {{6, 12, 3}, {6.5, 12, 3}}};
    std::uint32_t nozzle = 1;
    for (const auto& n : nozzles)
        w.Line(Sym(22, 5, 4, 0, 22, nozzle++), at(n[0]), at(n[1]));
    w.EndOfDesign();
    return w;
}

ZtTestDgnWriter Steel() {
    ZtTestDgnWriter w(3, {1000, 1, "mm", "um", {0, 0, 0}});
    const Place at(1000000); // 1000 UORs per millimetre
    std::uint32_t occurrence = 1;
    const double xs[] = {0, 10, 20, 30, 40};
    const double ys[] = {0, 30};
    for (double y : ys)
        for (double x : xs)
            w.Line(Sym(30, 11, 5, 0, 40, occurrence++), at({x, y, 0}), at({x, y, 12}));
    for (double z : {6.0, 12.0}) {
        for (double y : ys)
            w.Line(Sym(31, 12, 4, 0, 40, occurrence++), at({0, y, z}), at({40, y, z}));
        for (double x : xs)
            w.Line(Sym(31, 12, 4, 0, 40, occurrence++), at({x, 0, z}), at({x, 30, z}));
    }
    for (double y : ys)
        w.Line(Sym(32, 13, 2, 4, 40, occurrence++), at({0, y, 0}), at({10, y, 6}));
    w.EndOfDesign();
    return w;
}

} // namespace

std::vector<ZtTestPlantModel> ZtTestPlantModels() {
    std::vector<ZtTestPlantModel> models;
    models.push_back({"pipes.dgn", Pipes()});
    models.push_back({"equipment.dgn", Equipment()});
    models.push_back({"steel.dgn", Steel()});
    return models;
}
