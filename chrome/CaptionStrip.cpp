#include "chrome/CaptionStrip.h"

#include "KvGuiRes.h"
#include "chrome/CaptionStripImpl.h"
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

CSize FlagSize()
{
    return KvGuiRes::LoadImageW(L"appswitch").Size();
}

} // namespace

std::wstring SwitchText()
{
    return KvGuiRes::LoadStringW(15040);
}

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
    m_impl->buttons.Layout(Band(), Growth());
    LayoutItems();
    UpdateWholeWidth();
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
        AdvancedToolRects(area, present, KvGuiRes::LoadImageW(kCaptionSeparatorPicture).Size());
    m_impl->advanced = layout;
    // What is moved may tell the host, who may do anything.
    for (std::size_t i = 0; i < 2; ++i) {
        if (windows[i])
            windows[i]->move(layout.windows[i].TopLeft());
    }
}

CRect CaptionStrip::Band() const
{
    return CaptionBand(m_bar->GetClientRect(), Growth());
}

CRect CaptionStrip::ToolArea() const
{
    return ToolWindowArea(m_bar->GetClientRect(), m_form, Growth());
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

// --- Texts and look ---

CSize CaptionStrip::TextSize(const QString& text) const
{
    const QFontMetricsF metrics(Font(), m_bar);
    // Whole pixels: what has a part of one less is cut.
    return {static_cast<int>(std::ceil(metrics.horizontalAdvance(text))),
            QFontMetrics(Font(), m_bar).height()};
}

QFont CaptionStrip::Font() const
{
    return m_impl->settings ? m_impl->settings->font : m_bar->font();
}

void CaptionStrip::SetSettings(const SKvGuiBasicSettings* settings)
{
    m_impl->settings = settings;
    if (!HasButtons())
        return;
    StyleApplication();
    if (Grow())
        Remeasure();
}

// Of the button alone: the bar's own font would become that of the tool windows in it. The bar's is not
// handed on to the button.
void CaptionStrip::StyleApplication()
{
    m_impl->buttons.SetTextFont(Font());
    m_impl->buttons.SetTextColours({TextColour(), Legible(HoverTextColour()), DisabledColour()});
}

void CaptionStrip::FontChanged()
{
    if (!HasButtons())
        return; // a bar that is about to be made
    StyleApplication();
    if (Grow())
        Remeasure();
}

void CaptionStrip::SkinChanged()
{
    m_impl->painter.Forget();
    if (!HasButtons())
        return;
    m_impl->buttons.Renew();
    StyleApplication();
    m_impl->access->TextsChanged();
    if (Grow())
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

// --- Hover ---

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

bool CaptionStrip::ShowsButton(UINT number) const
{
    return m_impl->buttons.Shows(number);
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
