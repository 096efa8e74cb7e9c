#include "report/SceneRasters.h"

#include "report/ReportScene.h"
#include "report/ViewPicture.h"
#include "report/ViewProjection.h"

#include <algorithm>
#include <bit>
#include <optional>

SceneRasterKeys::SceneRasterKeys(const ReportScene& scene, const std::vector<bool>& isShape,
                                 const Indexes& level, const Indexes& colour)
    : scene_(scene), isShape_(isShape), level_(level), colour_(colour),
      groups_((scene.sets.size() + 7) / 8), masks_(scene.elements.size() * groups_, 0) {
    // A set holds its elements and their components, which follow each of them.
    const std::size_t elements = scene.elements.size();
    for (std::size_t s = 0; s < scene.sets.size(); ++s) {
        const auto bit = static_cast<std::uint8_t>(1u << (s % 8));
        for (std::uint32_t element : scene.sets[s].elements) {
            const std::size_t end =
                std::min(elements, element + 1 + std::size_t{scene.elements[element].components});
            for (std::size_t i = element; i < end; ++i)
                masks_[i * groups_ + s / 8] |= bit;
        }
    }
}

std::vector<PaletteRaster> SceneRasterKeys::Paint(const ViewPicture& picture,
                                                  const std::vector<SceneMarkIndex::Range>& ranges,
                                                  const ViewProjection& view) const {
    std::vector<PaletteRaster> rasters;
    const std::size_t count = 2 + scene_.sets.size();
    rasters.reserve(count);
    for (std::size_t r = 0; r < count; ++r)
        rasters.emplace_back(picture.width, picture.height);
    const PaletteRaster& frame = rasters[0];
    const auto paint = [&](std::uint32_t element, const MarkCorners& c) {
        const std::optional<PaletteRaster::Span> span = frame.Cover(c.x0, c.y0, c.x1, c.y1);
        if (!span)
            return;
        const ReportElement& e = scene_.elements[element];
        rasters[0].FillUnder(*span, level_[e.level]);
        rasters[1].FillUnder(*span, colour_[e.colour]);
        const std::uint8_t* mask = masks_.data() + element * groups_;
        for (std::size_t g = 0; g < groups_; ++g)
            for (unsigned bits = mask[g]; bits; bits &= bits - 1)
                rasters[2 + g * 8 + static_cast<std::size_t>(std::countr_zero(bits))].FillUnder(
                    *span, 1);
    };
    // Last first: the scene's elements from the end, then the picture's own marks. The
    // view is copied, so that the fills, which may write anywhere, leave its terms in
    // registers.
    const ViewProjection projection = view;
    for (auto range = ranges.rbegin(); range != ranges.rend(); ++range)
        for (std::uint32_t i = range->second; i-- > range->first;) {
            MarkCorners c;
            if (IsMarkedElement(scene_, isShape_, i) && projection.Mark(scene_.elements[i].box, &c))
                paint(i, c);
        }
    for (auto mark = picture.marks.rbegin(); mark != picture.marks.rend(); ++mark)
        paint(mark->element, *mark);
    return rasters;
}
