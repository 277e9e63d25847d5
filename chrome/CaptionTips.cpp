#include "chrome/CaptionTips.h"

#include "chrome/HostMnemonics.h"
#include "chrome/KeyTipOverlay.h"
#include "chrome/MenuBarModel.h"
#include "platform/VirtualKey.h"

#include <chrono>
#include <utility>

namespace kv {

namespace {

using namespace std::chrono_literals;

constexpr auto kDelay = 400ms;      ///< a quick Alt with a letter shows no labels
constexpr int kLabelsBelowBand = 4; ///< the labels' middle, clear of the items' letters

bool IsAltAlone(Qt::KeyboardModifiers modifiers)
{
    return (HeldModifiers(modifiers) & ~Qt::AltModifier) == Qt::NoModifier;
}

} // namespace

CaptionTips::CaptionTips(CaptionStrip& strip, std::function<std::vector<CaptionStop>()> stops)
    : m_strip(strip)
    , m_stops(std::move(stops))
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(kDelay);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Show(); });
}

CaptionTips::~CaptionTips() = default;

std::vector<CaptionTip> CaptionTips::All() const
{
    std::vector<CaptionStop> stops = m_stops();
    // No letter that another workspace may use for its own closes the window.
    const CaptionHit close{CaptionPart::Button, kKvCaptionClose};
    std::erase_if(stops, [&close](const CaptionStop& stop) { return stop.hit == close; });
    std::vector<KeyTipPart> parts;
    for (const CaptionStop& stop : stops) {
        const int index = stop.hit.index;
        KeyTipPart part;
        if (stop.hit.part == CaptionPart::Flag) {
            part.label = SwitchText();
        } else if (stop.hit.part == CaptionPart::Button) {
            const CKvButton& button = m_strip.Button(static_cast<UINT>(index));
            part.label = button.GetWindowText();
            if (part.label.empty())
                part.label = KvFromQString(button.toolTip());
        } else if (m_strip.Form().itemsArePopups) {
            char mnemonic = 0;
            part.kind = KeyTipKind::Mnemonic;
            part.mnemonic = FindMnemonic(m_strip.Item(index).text, mnemonic)
                                ? static_cast<unsigned char>(mnemonic)
                                : wchar_t{0};
        } else {
            part.kind = KeyTipKind::Tab;
            part.label = m_strip.Item(index).text;
        }
        parts.push_back(std::move(part));
    }
    const std::vector<wchar_t> keys = AssignKeyTips(parts, HostMnemonics(*m_strip.Frame()));
    std::vector<CaptionTip> tips;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys[i] != 0)
            tips.push_back({stops[i], parts[i].kind, keys[i]});
    }
    return tips;
}

wchar_t CaptionTips::KeyOf(const CaptionHit& part) const
{
    for (const CaptionTip& tip : All()) {
        if (tip.stop.hit == part)
            return tip.stop.enabled ? tip.key : wchar_t{0};
    }
    return 0;
}

void CaptionTips::Begin(Qt::KeyboardModifiers modifiers)
{
    End();
    if (!IsAltAlone(modifiers))
        return;
    m_alone = true;
    m_timer.start();
}

bool CaptionTips::End()
{
    m_timer.stop();
    m_overlay.reset();
    return std::exchange(m_alone, false);
}

void CaptionTips::PartsChanged()
{
    if (m_overlay)
        Show();
}

void CaptionTips::Show()
{
    std::vector<KeyTipLabel> labels;
    for (const CaptionTip& tip : All()) {
        if (tip.stop.enabled)
            labels.push_back({QString(QChar(static_cast<char16_t>(tip.key))), tip.stop.rect});
    }
    m_overlay = std::make_unique<KeyTipOverlay>(m_strip.Bar(), std::move(labels),
                                                m_strip.Band().bottom + kLabelsBelowBand);
}

} // namespace kv
