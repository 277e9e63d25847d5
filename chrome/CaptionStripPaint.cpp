// The colours of a caption strip, and how it is drawn.
#include "KvGuiRes.h"
#include "chrome/CaptionStripImpl.h"
#include "platform/SkinColours.h"
#include "platform/SkinPictures.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace kv {
namespace {

constexpr double kLegibleContrast = 4.5;

// 1 for equal colours, 21 for black and white.
double Contrast(const QColor& first, const QColor& second)
{
    const auto luminance = [](const QColor& colour) {
        const auto linear = [](double value) {
            return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
               0.0722 * linear(colour.blueF());
    };
    const auto [darker, lighter] = std::minmax({luminance(first), luminance(second)});
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace

QColor CaptionStrip::TextColour() const
{
    return m_impl->settings ? QColor::fromRgba(m_impl->settings->textColour) : kv::TextColour();
}

QColor CaptionStrip::DisabledColour() const
{
    return m_impl->settings ? QColor::fromRgba(m_impl->settings->disabledTextColour) : DisabledTextColour();
}

// The host has no colour for the state, and the theme knows nothing of the host's background.
QColor CaptionStrip::Legible(const QColor& ofTheme) const
{
    const SKvGuiBasicSettings* settings = m_impl->settings;
    const bool isLegible =
        !settings || Contrast(ofTheme, QColor::fromRgb(settings->background)) >= kLegibleContrast;
    return isLegible ? ofTheme : TextColour();
}

QColor CaptionStrip::ItemColour(const CaptionItem& item) const
{
    if (item.disabled || !m_bar->isEnabled())
        return DisabledColour();
    if (item.selected || item.state == kItemPressed)
        return Legible(SkinColour(L"keWindowTextSelectedColor", 0xFF7EC4FFu));
    return item.state == kItemHovered ? Legible(HoverTextColour()) : TextColour();
}

// --- Drawing ---

void CaptionStrip::Paint(Graphics& graphics)
{
    const QColor below = m_impl->settings ? QColor::fromRgba(m_impl->settings->background)
                                          : SkinColour(L"keWindowBKColor", 0xFF2B2B2Eu);
    m_impl->painter.DrawBackground(graphics, m_bar->GetClientRect(), below, Growth());
    const KvSkinImage separator = KvGuiRes::LoadImageW(kCaptionSeparatorPicture);
    for (const CRect& place : m_impl->advanced.separators)
        DrawSkinPicture(graphics, separator, QRectF(QRect(place)));
    graphics.setFont(Font());
    DrawItems(graphics);
    graphics.setPen(TextColour());
    m_impl->texts.DrawCut(graphics, TitleText(), Title());
    DrawFlag(graphics);
    if (m_impl->keys)
        m_impl->keys->DrawFocus(graphics);
}

void CaptionStrip::DrawFlag(Graphics& graphics) const
{
    const CRect place = FlagRect();
    if (place.IsRectEmpty())
        return;
    KvSkinImage picture;
    if (IsFlagOpen())
        picture = KvGuiRes::LoadImageW(L"appswitch_pressed");
    else if (m_impl->flagHovered)
        picture = KvGuiRes::LoadImageW(L"appswitch_hover");
    if (picture.IsNull())
        picture = KvGuiRes::LoadImageW(L"appswitch");
    DrawSkinPicture(graphics, picture, QRectF(QRect(place)));
}

void CaptionStrip::DrawItems(Graphics& graphics)
{
    graphics.save();
    if (ItemCount() > 0 && HasButtons() && Item(ItemCount() - 1).rect.right > Button(kKvCaptionMenu).x()) {
        // Buttons have no ground of their own: texts below them would show through.
        QRegion uncovered(m_bar->rect());
        for (const auto& [number, rect] : Parts().buttons)
            uncovered -= QRect(rect);
        graphics.setClipRegion(uncovered, Qt::IntersectClip);
    }
    const int right = m_bar->width();
    for (int i = 0; i < ItemCount() && Item(i).rect.left < right; ++i) {
        const CaptionItem& item = Item(i);
        graphics.setPen(ItemColour(item));
        m_impl->texts.Draw(graphics, item.rect, KvToQString(item.text), m_form.itemsArePopups);
    }
    DrawItemFrame(graphics);
    graphics.restore();
}

} // namespace kv
