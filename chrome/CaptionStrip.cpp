#include "chrome/CaptionStrip.h"

#include "KvGuiRes.h"
#include "chrome/CaptionAccess.h"
#include "chrome/CaptionButtons.h"
#include "chrome/CaptionKeys.h"
#include "chrome/CaptionPainter.h"
#include "chrome/CaptionTexts.h"
#include "platform/FrameState.h"
#include "platform/SkinColours.h"
#include "platform/SkinPictures.h"

#include <QApplication>
#include <QCursor>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace kv {

namespace {

constexpr const wchar_t* kSeparatorPicture = L"ribbontitlebar_seperator";

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

CSize FlagSize()
{
    return KvGuiRes::LoadImageW(L"appswitch").Size();
}

} // namespace

std::wstring SwitchText()
{
    return KvGuiRes::LoadStringW(15040);
}

struct CaptionStrip::Impl
{
    CaptionButtons buttons;
    CaptionPainter painter;
    CaptionTexts texts;
    CRect staticTitle;
    AdvancedLayout advanced;
    QString titleTip;
    bool flagHovered = false;
    const SKvGuiBasicSettings* settings = nullptr;
    QPointer<QWidget> frame;               ///< the one that is watched
    std::unique_ptr<CaptionKeys> keys;     ///< from CreateButtons on
    std::unique_ptr<CaptionAccess> access; ///< likewise
};

CaptionStrip::CaptionStrip(const CaptionForm& form) : m_form(form), m_impl(std::make_unique<Impl>()) {}

CaptionStrip::~CaptionStrip() = default;

void CaptionStrip::Attach(CKvCaptionBar& bar)
{
    m_bar = &bar;
}

void CaptionStrip::Detach()
{
    m_impl->access.reset();
    m_impl->keys.reset();
}

// --- Life and layout ---

void CaptionStrip::CreateButtons()
{
    m_impl->buttons.Create(*m_bar, EmptyButtonRect(Band()));
    StyleApplication();
    m_impl->keys = std::make_unique<CaptionKeys>(*this, [this] { AccessLater(); });
    m_impl->access = std::make_unique<CaptionAccess>(*this, *m_impl->keys);
    WatchFrame();
    const QWidget& frame = *Frame();
    ShowMaximised(m_form.followsFrame && HasMaximiseBox(frame) && FrameShowState(frame) == kShowMaximised);
}

bool CaptionStrip::HasButtons() const
{
    return m_impl->buttons.Exist();
}

void CaptionStrip::Layout()
{
    if (!HasButtons())
        return;
    m_impl->buttons.Layout(Band());
    LayoutItems();
    m_impl->advanced = {};
    const QPointer<CKvCaptionBar> bar(m_bar);
    LayoutToolWindows(); // they are the host's
    if (!bar)
        return;
    bar->update();
    PartsChanged();
}

void CaptionStrip::PartsChanged()
{
    if (!m_impl->access)
        return;
    m_impl->keys->PartsChanged();
    m_impl->access->Update();
}

void CaptionStrip::AccessLater()
{
    if (m_impl->access)
        m_impl->access->UpdateLater();
}

void CaptionStrip::LayoutItems()
{
    m_impl->staticTitle = {};
    const CaptionRecord* active = Active();
    if (!active)
        return;
    std::vector<CSize> texts;
    for (int i = 0; i < ItemCount(); ++i)
        texts.push_back(TextSize(ItemLabel(i)));
    const std::vector<CRect> rects = ItemRects(ItemRow(Band(), active->titleRect), texts);
    for (std::size_t i = 0; i < rects.size(); ++i)
        Item(static_cast<int>(i)).rect = rects[i];
    const int* itemsRight = rects.empty() ? nullptr : &rects.back().right;
    m_impl->staticTitle = StaticTitleRect(Band(), itemsRight, Button(kKvCaptionMenu).x(), m_form);
}

void CaptionStrip::LayoutAdvanced(const CRect& area)
{
    m_impl->advanced = {};
    const CaptionRecord* active = Active();
    if (!active)
        return;
    CSize sizes[2];
    const CSize* present[2] = {nullptr, nullptr};
    QPointer<QWidget> windows[2];
    for (std::size_t i = 0; i < 2; ++i) {
        if (HWND handle = active->advanced[i].handle) {
            sizes[i] = handle->size();
            present[i] = &sizes[i];
            windows[i] = handle;
        }
    }
    const AdvancedLayout layout =
        AdvancedToolRects(area, present, KvGuiRes::LoadImageW(kSeparatorPicture).Size());
    m_impl->advanced = layout;
    // What is moved may tell the host, who may do anything.
    for (std::size_t i = 0; i < 2; ++i) {
        if (windows[i])
            windows[i]->move(layout.windows[i].TopLeft());
    }
}

CRect CaptionStrip::Band() const
{
    return CaptionBand(m_bar->GetClientRect());
}

CRect CaptionStrip::ToolArea() const
{
    return ToolWindowArea(m_bar->GetClientRect(), m_form);
}

CRect CaptionStrip::FlagRect() const
{
    return ShowsFlag() ? SwitchFlagRect(Band(), FlagSize()) : CRect();
}

CRect CaptionStrip::StaticTitle() const
{
    return m_impl->staticTitle;
}

CRect CaptionStrip::TitleText() const
{
    return TitleTextRoom(m_impl->staticTitle, FlagRect());
}

CaptionParts CaptionStrip::Parts() const
{
    CaptionParts parts;
    parts.band = Band();
    for (int i = 0; i < ItemCount(); ++i)
        parts.items.push_back(Item(i).rect);
    parts.flag = FlagRect();
    if (HasButtons()) {
        for (UINT number = kKvCaptionApplication; number <= kKvCaptionMenu; ++number) {
            if (!Button(number).isHidden())
                parts.buttons.emplace_back(number, CRect(Button(number).geometry()));
        }
    }
    const QWidget& frame = *Frame();
    parts.frame = QRect(m_bar->mapFrom(&frame, QPoint()), frame.size());
    parts.resizable = HasResizeBorder(frame);
    return parts;
}

QWidget* CaptionStrip::Frame() const
{
    return m_bar->window();
}

void CaptionStrip::Invalidate(const CRect& rect)
{
    m_bar->update(QRect(rect));
    AccessLater();
}

// --- Texts and colours ---

CSize CaptionStrip::TextSize(const QString& text) const
{
    const QFontMetrics metrics(Font(), m_bar);
    return {metrics.horizontalAdvance(text), metrics.height()};
}

QFont CaptionStrip::Font() const
{
    return m_impl->settings ? m_impl->settings->font : m_bar->font();
}

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

void CaptionStrip::SetSettings(const SKvGuiBasicSettings* settings)
{
    m_impl->settings = settings;
    if (!HasButtons())
        return;
    StyleApplication();
    Remeasure();
}

// Of the button alone: the bar's own font would become that of the tool windows in it.
void CaptionStrip::StyleApplication()
{
    Button(kKvCaptionApplication).setFont(m_impl->settings ? m_impl->settings->font : QFont());
    m_impl->buttons.SetTextColours({TextColour(), Legible(HoverTextColour()), DisabledColour()});
}

void CaptionStrip::SkinChanged()
{
    m_impl->painter.Forget();
    if (!HasButtons())
        return;
    m_impl->buttons.Renew();
    StyleApplication();
    m_impl->access->TextsChanged();
    Remeasure();
}

QString CaptionStrip::Title() const
{
    const CaptionRecord* active = Active();
    return active ? KvToQString(active->productLabel + active->documentLabel) : QString();
}

void CaptionStrip::UpdateTitleTip()
{
    m_impl->titleTip = Title();
}

QString CaptionStrip::TipAt(CPoint point, CRect& area) const
{
    const CaptionPart part = HitTestCaption(point, Parts()).part;
    if (part == CaptionPart::Flag) {
        area = FlagRect();
        return KvToQString(SwitchText());
    }
    const CRect& title = m_impl->staticTitle;
    const bool isTitle = title.PtInRect(point) && (part == CaptionPart::Caption || part == CaptionPart::Edge);
    if (!isTitle || TextSize(Title()).cx <= TitleText().Width())
        return {};
    area = title;
    return m_impl->titleTip;
}

// --- Drawing ---

void CaptionStrip::Paint(Graphics& graphics)
{
    const QColor below = m_impl->settings ? QColor::fromRgba(m_impl->settings->background)
                                          : SkinColour(L"keWindowBKColor", 0xFF2B2B2Eu);
    m_impl->painter.DrawBackground(graphics, m_bar->GetClientRect(), below);
    const KvSkinImage separator = KvGuiRes::LoadImageW(kSeparatorPicture);
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

// The text's overhang changes colour, too.
void CaptionStrip::Hover(std::optional<CPoint> point)
{
    constexpr int overhang = 2;
    const CaptionHit hit = point ? HitTestCaption(*point, Parts()) : CaptionHit();
    const bool onFlag = hit.part == CaptionPart::Flag;
    if (std::exchange(m_impl->flagHovered, onFlag) != onFlag)
        Invalidate(FlagRect());
    for (int i = 0; i < ItemCount(); ++i) {
        CaptionItem& item = Item(i);
        const std::uint32_t state = hit == CaptionHit{CaptionPart::Item, i} ? kItemHovered : kItemNormal;
        if (item.state == state)
            continue;
        const QColor before = ItemColour(item);
        item.state = state;
        if (ItemColour(item) == before)
            continue;
        Invalidate({item.rect.left - overhang, item.rect.top, item.rect.right + overhang, item.rect.bottom});
    }
}

void CaptionStrip::HoverAt(const QPoint& screen)
{
    const bool isOver = QApplication::widgetAt(screen) == m_bar;
    Hover(isOver ? std::optional<CPoint>(m_bar->mapFromGlobal(screen)) : std::nullopt);
}

void CaptionStrip::PopupsChanged()
{
    HoverAt(QCursor::pos());
    Invalidate(FlagRect());
}

// --- Buttons and frame ---

CKvButton& CaptionStrip::Button(UINT number) const
{
    return m_impl->buttons.Get(number);
}

bool CaptionStrip::IsButton(const QObject* object) const
{
    return m_impl->buttons.Contain(object);
}

void CaptionStrip::SetApplication(const std::wstring& picture, const std::wstring& text, const CRect& place)
{
    if (!HasButtons())
        return;
    CKvButton& button = Button(kKvCaptionApplication);
    button.UpdateBitmap(picture.c_str());
    button.SetWindowText(text.c_str());
    button.setGeometry(place);
}

void CaptionStrip::ShowApplication(const CaptionRecord& record)
{
    SetApplication(record.imageKey, record.buttonText, ApplicationButtonRect(record.titleRect, m_form));
}

void CaptionStrip::ShowNoApplication()
{
    SetApplication({}, {}, EmptyButtonRect(Band()));
}

void CaptionStrip::ShowButton(UINT number, bool visible)
{
    m_impl->buttons.Show(number, visible);
}

void CaptionStrip::ShowMaximised(bool maximised)
{
    m_impl->buttons.ShowMaximised(maximised);
}

void CaptionStrip::WatchFrame()
{
    QWidget* frame = Frame();
    if (m_impl->frame == frame)
        return;
    if (m_impl->frame)
        m_impl->frame->removeEventFilter(m_bar);
    m_impl->frame = frame;
    frame->installEventFilter(m_bar);
    FrameStateChanged();
}

void CaptionStrip::FrameStateChanged()
{
    if (m_form.followsFrame && HasButtons())
        ShowMaximised(IsFrameZoomed(*Frame()));
}

void CaptionStrip::RequestMaximised(bool maximise)
{
    const QPointer<CKvCaptionBar> bar(m_bar);
    const bool agreed = RequestFrameState(*Frame(), maximise ? kShowMaximised : kShowNormal);
    if (bar && agreed && !m_form.followsFrame)
        ShowMaximised(maximise);
}

bool CaptionStrip::Command(UINT number)
{
    if (!HasButtons())
        return false;
    switch (number) {
    case kKvCaptionApplication:
        OpenApplicationMenu();
        return true;
    case kKvCaptionClose:
        CloseFrame(*Frame());
        return true;
    case kKvCaptionMaximise:
        RequestMaximised(!IsFrameZoomed(*Frame()));
        return true;
    case kKvCaptionMinimise:
        RequestFrameState(*Frame(), kShowMinimised);
        return true;
    case kKvCaptionMenu:
        OpenMenuButtonMenu();
        return true;
    default:
        return false;
    }
}

void CaptionStrip::Click(UINT number)
{
    KvSendMessage(m_bar, WM_COMMAND, MAKEWPARAM(number, BN_CLICKED),
                  reinterpret_cast<LPARAM>(static_cast<QWidget*>(&Button(number))));
}

void CaptionStrip::OpenApplicationMenu()
{
    CKvMenu menu;
    menu.LoadMenu(kFrameMenu);
    PrepareApplicationMenu(menu);
    const QPointer<CKvCaptionBar> bar(m_bar);
    const CKvButton& button = Button(kKvCaptionApplication);
    const UINT command = menu.TrackPopupMenu(TPM_RETURNCMD | TPM_RIGHTBUTTON,
                                             button.mapToGlobal(QPoint(0, button.height())), m_bar);
    if (!bar || command == 0)
        return;
    switch (command) {
    case kCommandRestore:
    case kCommandMaximise:
        Click(kKvCaptionMaximise);
        break;
    case kCommandMinimise:
        Click(kKvCaptionMinimise);
        break;
    case kCommandClose:
        Click(kKvCaptionClose);
        break;
    default:
        DoApplicationCommand(command);
    }
}

} // namespace kv
