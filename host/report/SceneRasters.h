#pragma once
#include "report/PaletteRaster.h"
#include "report/SceneMarkIndex.h"

#include <array>
#include <cstdint>
#include <vector>

struct ReportScene;
struct ViewPicture;
class ViewProjection;

// What each element of a scene paints into a picture's rasters: its level's palette index
// in the first, its colour number's in the second (0 for none: a key past the palette),
// and the highlight (index 1) in the raster of each selection set that holds it or the
// cell it belongs to. Made once a page, read for every mark of every picture.
class SceneRasterKeys {
public:
    using Indexes = std::array<std::uint8_t, 256>;
    // `isShape` tells, by element, which are drawn as shapes; `level` and `colour` give
    // the palette index of each level and colour number.
    SceneRasterKeys(const ReportScene& scene, const std::vector<bool>& isShape,
                    const Indexes& level, const Indexes& colour);

    bool InSet(std::size_t set, std::uint32_t element) const {
        return (masks_[element * groups_ + set / 8] >> (set % 8)) & 1;
    }

    // A picture's rasters (level, colour, then each set's) of the marks it holds, then of
    // the scene's marked elements (IsMarkedElement) in `ranges`, each over those before:
    // the pixels of painting DrawScene's marks in order with Fill. They are painted last
    // first with FillUnder, straight from the scene, so no mark is ever stored.
    std::vector<PaletteRaster> Paint(const ViewPicture& picture,
                                     const std::vector<SceneMarkIndex::Range>& ranges,
                                     const ViewProjection& view) const;

private:
    const ReportScene& scene_;
    const std::vector<bool>& isShape_;
    Indexes level_, colour_;
    std::size_t groups_; // bytes of set bits an element
    // By element, then by groups of eight sets: set s is bit s % 8 of byte s / 8.
    std::vector<std::uint8_t> masks_;
};
