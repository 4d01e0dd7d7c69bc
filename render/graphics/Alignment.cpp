#include "render/graphics/Alignment.h"

namespace q1framework
{

namespace
{
enum class Place
{
    start,
    centre,
    end
};

int32_t placeAlong(int32_t position, int32_t size, int32_t boxSize, Place place)
{
    switch (place)
    {
        case Place::start: return position;
        case Place::end: return position + size - boxSize;
        case Place::centre: break;
    }
    return position + (size - boxSize) / 2;
}
}

Rectangle getAlignedBox(const Rectangle& area, const Point& boxSize, Alignment alignment)
{
    Place horizontal = Place::centre;
    Place vertical = Place::centre;
    switch (alignment)
    {
        case Alignment::TopLeft: horizontal = Place::start; vertical = Place::start; break;
        case Alignment::TopRight: horizontal = Place::end; vertical = Place::start; break;
        case Alignment::TopCentre: vertical = Place::start; break;
        case Alignment::BottomCentre: vertical = Place::end; break;
        case Alignment::CentreLeft: horizontal = Place::start; break;
        case Alignment::CentreRight: horizontal = Place::end; break;
        case Alignment::BottomLeft: horizontal = Place::start; vertical = Place::end; break;
        case Alignment::BottomRight: horizontal = Place::end; vertical = Place::end; break;
        case Alignment::Stretch: return area;
        case Alignment::Centre: break;
        default: break;  // values outside the list centre
    }
    return Rectangle(placeAlong(area.x, area.w, boxSize.x, horizontal),
                     placeAlong(area.y, area.h, boxSize.y, vertical), boxSize.x, boxSize.y);
}

}  // namespace q1framework
