#include <velkapi/GeometrySection.h>

namespace VelkApi {

GeometrySectionSettings::GeometrySectionSettings() = default;

GeometrySectionSettings::GeometrySectionSettings(int outline, int islands, bool outlineXz,
                                                 bool islandXz)
    : outlineFigures(outline),
      islandsFigures(islands),
      outlineXzProfile(outlineXz),
      islandXzProfile(islandXz) {}

void GeometrySectionSettings::add(GeometrySectionType t) {
    switch (t) {
        case GeometrySectionType::OutlineFigure:
            ++outlineFigures;
            break;
        case GeometrySectionType::IslandFigure:
        case GeometrySectionType::FacemillIslandFigure:
            ++islandsFigures;
            break;
        case GeometrySectionType::OutlineXzProfile:
            outlineXzProfile = true;
            break;
        case GeometrySectionType::IslandXzProfile:
            islandXzProfile = true;
            break;
    }
}

}  // namespace VelkApi
