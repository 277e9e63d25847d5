#include "edit/ColourSelection.h"

namespace titler {
namespace {

// One way to a colour for reading and for writing. @return null where there is none.
template <typename AnyPaint>
auto* ColourIn(AnyPaint& paint, const ColourSelection& selection)
{
    decltype(&paint.colour) none = nullptr;
    const auto stop = static_cast<std::size_t>(selection.Stop());
    const auto corner = static_cast<std::size_t>(selection.Corner());
    switch (paint.kind) {
    case PaintKind::Solid:
        return &paint.colour;
    case PaintKind::Gradient:
        return stop < paint.stops.size() ? &paint.stops[stop].colour : none;
    case PaintKind::FourCorner:
        return corner < paint.corners.size() ? &paint.corners[corner] : none;
    case PaintKind::None:
        break;
    }
    return none;
}

template <typename AnyProject>
auto* ColourIn(AnyProject& project, const ColourSelection& selection) requires requires
{
    project.title;
}
{
    auto& title = project.title;
    switch (selection.target) {
    case ColourTarget::Outline:
        return title.outline.on ? &title.outline.colour : nullptr;
    case ColourTarget::Shadow:
        return title.shadow.on ? &title.shadow.colour : nullptr;
    default:
        return ColourIn(*PaintOf(project, selection.target), selection);
    }
}

template <typename AnyProject>
auto* PaintIn(AnyProject& project, ColourTarget target)
{
    if (target == ColourTarget::Text)
        return &project.title.fill;
    return target == ColourTarget::Background ? &project.background : nullptr;
}

} // namespace

ColourSelection ColourSelection::WithTarget(ColourTarget other) const
{
    ColourSelection selection = *this;
    selection.target = other;
    return selection;
}

ColourSelection ColourSelection::WithStop(int stop) const
{
    ColourSelection selection = *this;
    selection.m_places[Index()].stop = stop;
    return selection;
}

ColourSelection ColourSelection::WithCorner(int corner) const
{
    ColourSelection selection = *this;
    selection.m_places[Index()].corner = corner;
    return selection;
}

const Paint* PaintOf(const Project& project, ColourTarget target)
{
    return PaintIn(project, target);
}

Paint* PaintOf(Project& project, ColourTarget target)
{
    return PaintIn(project, target);
}

std::optional<DWORD> SelectedColour(const Project& project, const ColourSelection& selection)
{
    const DWORD* const colour = ColourIn(project, selection);
    return colour != nullptr ? std::optional(*colour) : std::nullopt;
}

std::optional<DWORD> ColourAtRest(const Project& project, const ColourSelection& selection)
{
    switch (selection.target) {
    case ColourTarget::Outline:
        return project.title.outline.colour;
    case ColourTarget::Shadow:
        return project.title.shadow.colour;
    default:
        break;
    }
    const Paint& paint = *PaintOf(project, selection.target);
    return paint.kind == PaintKind::None ? paint.colour : SelectedColour(project, selection);
}

void SetSelectedColour(Project& project, const ColourSelection& selection, DWORD colour)
{
    if (DWORD* const target = ColourIn(project, selection))
        *target = colour;
}

bool HasSameColours(const Project& a, const Project& b)
{
    return LooksSame(a.title.fill, b.title.fill) && LooksSame(a.background, b.background) &&
           a.title.outline == b.title.outline && a.title.shadow == b.title.shadow;
}

} // namespace titler
