// Which colour of the project is selected: the one that the colour panel shows and edits.
#pragma once

#include "project/Project.h"

#include <array>
#include <optional>

namespace titler {

/// What is coloured.
enum class ColourTarget
{
    Text,
    Background,
    Outline,
    Shadow
};

/// Each paint keeps its stop and its corner while another target is selected.
struct ColourSelection
{
    ColourTarget target = ColourTarget::Text;

    /// The selected stop and corner of the target's paint; those of the text where the target has none.
    int Stop() const { return m_places[Index()].stop; }
    int Corner() const { return m_places[Index()].corner; }
    ColourSelection WithTarget(ColourTarget other) const;
    ColourSelection WithStop(int stop) const;
    ColourSelection WithCorner(int corner) const;
    /// The same target at the first stop and corner of every paint: for another page.
    ColourSelection AtBegin() const { return ColourSelection{}.WithTarget(target); }

    bool operator==(const ColourSelection&) const = default;

private:
    struct Place
    {
        int stop = 0;
        int corner = 0; ///< 0 to 3, as `CKvQuadGradCtrl` counts
        bool operator==(const Place&) const = default;
    };
    std::size_t Index() const { return target == ColourTarget::Background ? 1 : 0; }

    std::array<Place, 2> m_places; ///< the text's and the background's
};

/// The target's paint; null for outline and shadow.
const Paint* PaintOf(const Project& project, ColourTarget target);
Paint* PaintOf(Project& project, ColourTarget target);

/// The selected colour, 0xAARRGGBB; nothing where the selection colours nothing: a background of the kind
/// None, an outline or a shadow that is off, a stop that is none.
std::optional<DWORD> SelectedColour(const Project& project, const ColourSelection& selection);
/// What would be selected if the outline or shadow were on and the background of the kind Solid; nothing for
/// a stop that is none.
std::optional<DWORD> ColourAtRest(const Project& project, const ColourSelection& selection);
/// Nothing happens where there is no selected colour.
void SetSelectedColour(Project& project, const ColourSelection& selection, DWORD colour);

/// True when all colours and all that belongs to them look alike.
bool HasSameColours(const Project& a, const Project& b);

} // namespace titler
