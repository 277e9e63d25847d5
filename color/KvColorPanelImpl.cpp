#include "color/KvColorPanelImpl.h"

#include "KvGuiRes.h"
#include "color/ColourMapAccess.h"
#include "color/ColourText.h"
#include "color/FixedAlphas.h"
#include "color/KvColorMapWndImpl.h"
#include "core/Text.h"
#include "core/TextTables.h"
#include "platform/ColourClipboard.h"
#include "platform/OwnSizes.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>

namespace {

using kv::ColourMode;
using kv::ColourPanelModel;

enum Texts : std::uint32_t
{
    kTextRange = 20353,
    kTextChannel = 20354,
    kTextChannelTip = 20355,
    kTextRgb = 20356,
    kTextHsb = 20357,
    kTextPanel = 20366,
};

constexpr UINT kChildStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
constexpr int kSwatchColumns = 4;
constexpr int kSwatchRows = 9;

/// The pictures of a channel's button: "RGB_R", "HSB_H" and so on.
const wchar_t* PictureOf(ColourMode mode, int channel)
{
    constexpr const wchar_t* kPictures[2][ColourPanelModel::kChannels] = {{L"RGB_R", L"RGB_G", L"RGB_B"},
                                                                          {L"HSB_H", L"HSB_S", L"HSB_B"}};
    return kPictures[mode == ColourMode::Hsb ? 1 : 0][channel];
}

std::wstring Unchecked(const wchar_t* picture)
{
    return std::wstring(picture) + L"_UnCheck";
}

std::wstring Checked(const wchar_t* picture)
{
    return std::wstring(picture) + L"_Check";
}

QString Filled(std::uint32_t text, const QString& argument)
{
    return KvToQString(kv::FillText(kv::LoadText(text), {KvFromQString(argument)}));
}

/// The clipboard's colour as text, or its text.
std::wstring ClipboardColourText()
{
    if (const auto colour = kv::ClipboardColour())
        return kv::ColourText(*colour);
    return KvFromQString(QApplication::clipboard()->text());
}

/// The Tab key reaches the checked button of a group only; arrows lead on from there.
void CheckOne(QAbstractButton& button, bool check)
{
    button.setChecked(check);
    button.setFocusPolicy(check ? Qt::StrongFocus : Qt::ClickFocus);
}

} // namespace

CKvColorPanel::Impl::Impl(CKvColorPanel& owner)
    : panel(owner)
    , access(owner, QAccessible::Grouping, [] { return KvToQString(kv::LoadText(kTextPanel)); })
{
}

void CKvColorPanel::Impl::CreateSelf()
{
    if (panel.IsCreated())
        return;
    const QRect place = panel.geometry();
    const bool isPlaced = !panel.isWindow() || panel.testAttribute(Qt::WA_Moved);
    const bool isSized = panel.testAttribute(Qt::WA_Resized);
    const QPointer<CKvColorPanel> self(&panel);
    isCreatingItself = true;
    panel.Create(panel.parentWidget());
    if (!self)
        return;
    isCreatingItself = false;
    if (isPlaced)
        panel.move(place.topLeft()); // else the toolkit would place it as it places a dialog
    if (isSized)
        panel.resize(place.size());
}

void CKvColorPanel::Impl::MakeMaps()
{
    const auto make = [this](UINT id, int type) {
        auto* made = new CKvColorMapWnd;
        made->Create(kChildStyle, &panel, id);
        made->SetType(type);
        panel.ReplaceDlgItem(id, made);
        connect(made, &CKvColorMapWnd::RunBeginning, &panel, [this, made] { EndRuns(made); });
        return made;
    };
    map = make(kv::kPanelMap, kKvColorMapField);
    slider = make(kv::kPanelSlider, kKvColorMapSlider);
    alpha = make(kv::kPanelAlpha, kKvColorMapAlpha);
    alpha->DrawPan();
}

void CKvColorPanel::Impl::MakeButtons()
{
    const auto make = [this](UINT id, const wchar_t* picture) {
        auto* made = new CKvRadioBitmapButton;
        kv::KeepOwnSizes(*made);
        made->SubClassButton(id, &panel, Unchecked(picture).c_str(), Checked(picture).c_str());
        return made;
    };
    for (int i = 0; i < ColourPanelModel::kChannels; ++i) {
        auto* button = make(kv::kPanelFirstChannel + static_cast<UINT>(i), PictureOf(ColourMode::Rgb, i));
        channels[static_cast<std::size_t>(i)] = button;
        connect(button, &CKvRadioBitmapButton::Scrubbed, &panel,
                [this, i](int steps) { ScrubChannel(i, steps); });
        connect(button, &CKvRadioBitmapButton::ScrubEnded, &panel, [this, i](bool cancelled) {
            if (CKvParamEdit* edit = edits[static_cast<std::size_t>(i)])
                edit->EndScrub(cancelled);
        });
    }
    modes = {make(kv::kPanelRgb, L"RGB"), make(kv::kPanelHsb, L"HSB")};
}

void CKvColorPanel::Impl::MakeEdits()
{
    UINT id = kv::kPanelFirstEdit;
    for (QPointer<CKvParamEdit>& edit : edits) {
        edit = new CKvParamEdit;
        edit->Create(kChildStyle, &panel, id);
        panel.ReplaceDlgItem(id, edit);
        connect(edit, &CKvParamEdit::RunBeginning, &panel, [this, made = edit.data()] { EndRuns(made); });
        connect(edit, &CKvParamEdit::ForeignPasted, &panel, [this] { Paste(); });
        ++id;
    }
}

void CKvColorPanel::Impl::MakeSwatches()
{
    constexpr UINT kFrameStyle = 0x50010001;
    constexpr UINT kSwatchStyle = 0x50010000;
    preview = new kv::ColourPreview;
    preview->Create(kFrameStyle, &panel, kv::kPanelPreview);
    preview->setFocusPolicy(Qt::NoFocus); // there is nothing to do in it
    panel.ReplaceDlgItem(kv::kPanelPreview, preview);
    swatches = new CKvSolidColorTemplate;
    swatches->Create(kSwatchStyle, &panel, kv::kPanelSwatches);
    panel.ReplaceDlgItem(kv::kPanelSwatches, swatches);
    swatches->SetNumRect(kSwatchColumns, kSwatchRows);
    swatches->InitialData(0);
    swatches->RecalcLayout();
    swatches->DrawPalette();
}

void CKvColorPanel::Impl::ShowColour(int typedEdit)
{
    for (const auto& child : {map, slider, alpha}) {
        if (child)
            child->m_impl->Show(model.Colour());
    }
    for (int i = 0; i < ColourPanelModel::kEdits; ++i) {
        CKvParamEdit* const edit = edits[static_cast<std::size_t>(i)];
        if (edit && model.IsEditStale(i, edit->GetValue(), typedEdit))
            edit->SetValue(model.EditValue(i));
    }
    if (preview)
        preview->SetColour(model.Value());
}

void CKvColorPanel::Impl::ShowButtons()
{
    for (int i = 0; i < ColourPanelModel::kChannels; ++i) {
        CKvRadioBitmapButton& button = *channels[static_cast<std::size_t>(i)];
        const wchar_t* const picture = PictureOf(model.Mode(), i);
        button.UpdateBitmap(Unchecked(picture).c_str(), Checked(picture).c_str());
        CheckOne(button, i == model.Channel());
    }
    CheckOne(*modes[0], model.Mode() == ColourMode::Rgb);
    CheckOne(*modes[1], model.Mode() == ColourMode::Hsb);
}

void CKvColorPanel::Impl::NameChildren()
{
    for (int i = 0; i < ColourPanelModel::kEdits; ++i) {
        const QString name = kv::ChannelName(model.EditChannel(i));
        const std::wstring most = kv::NumberText(std::int64_t{model.EditMost(i)});
        edits[static_cast<std::size_t>(i)]->SetLabel(
            kv::FillText(kv::LoadText(kTextRange), {KvFromQString(name), L"0", most}).c_str());
        if (i == ColourPanelModel::kAlphaEdit)
            continue;
        CKvRadioBitmapButton& button = *channels[static_cast<std::size_t>(i)];
        button.setToolTip(Filled(kTextChannelTip, name));
        button.setAccessibleName(Filled(kTextChannel, name));
    }
    modes[0]->setToolTip(KvToQString(kv::LoadText(kTextRgb)));
    modes[1]->setToolTip(KvToQString(kv::LoadText(kTextHsb)));
}

void CKvColorPanel::Impl::ShowMode()
{
    if (!map)
        return;
    ShowButtons();
    NameChildren();
    map->SetLockType(model.MapLock());
    slider->SetLockType(model.MapSliderLock());
    for (int i = 0; i < ColourPanelModel::kEdits; ++i)
        edits[static_cast<std::size_t>(i)]->SetValueRange(0, model.EditMost(i));
    ShowColour();
}

void CKvColorPanel::Impl::NotifyRun()
{
    const QPointer<CKvColorPanel> alive(&panel);
    for (const EKvColorPhase phase : {kKvPhaseBegin, kKvPhaseContinue, kKvPhaseEnd}) {
        panel._NotifyChangeColor(phase);
        if (!alive)
            return;
    }
}

// Runs never nest: what is open in the other children ends before a child's own begins.
bool CKvColorPanel::Impl::EndRuns(const QWidget* besides)
{
    const QPointer<CKvColorPanel> alive(&panel);
    for (const auto& child : {map, slider, alpha}) {
        if (child && child != besides)
            child->m_impl->EndDrag();
        if (!alive)
            return false;
    }
    for (std::size_t i = 0; i < edits.size(); ++i) {
        if (edits[i] == besides && besides)
            continue;
        if (i < channels.size() && channels[i])
            channels[i]->EndScrub();
        if (alive && edits[i])
            edits[i]->EndScrub(false);
        if (alive && edits[i])
            isDestroying ? edits[i]->StopTyping() : edits[i]->EndTyping();
        if (!alive)
            return false;
    }
    return true;
}

bool CKvColorPanel::Impl::SetMode(ColourMode mode)
{
    if (mode == model.Mode() || !EndRuns() || !model.SetMode(mode))
        return false;
    ShowMode();
    return true;
}

void CKvColorPanel::Impl::EditMode(ColourMode mode)
{
    if (SetMode(mode))
        emit panel.ModeEdited(mode == ColourMode::Hsb);
}

void CKvColorPanel::Impl::SetChannel(int channel)
{
    if (!map || !model.SetChannel(channel))
        return;
    ShowButtons();
    map->SetLockType(model.MapLock());
    slider->SetLockType(model.MapSliderLock());
}

void CKvColorPanel::Impl::TakeEdit(int edit, int phase)
{
    const CKvParamEdit& source = *edits[static_cast<std::size_t>(edit)];
    if (phase == kKvPhaseBegin)
        runFrom = model.Colour();
    if (source.IsTakingBack())
        model.Restore(runFrom);
    else
        model.EnterEdit(edit, source.GetValue());
    ShowColour(source.IsTyping() ? edit : -1);
    if (const auto i = static_cast<std::size_t>(edit); phase == kKvPhaseEnd && i < channels.size())
        channels[i]->EndScrub(); // of an edit that was disabled: its button is not to begin another one
    panel._NotifyChangeColor(phase);
}

void CKvColorPanel::Impl::TakeHostsColour()
{
    runFrom = model.Colour();
    for (const auto& child : {map, slider, alpha}) {
        if (child)
            child->m_impl->Set(model.Colour());
    }
    for (int i = 0; i < ColourPanelModel::kEdits; ++i) {
        CKvParamEdit* const edit = edits[static_cast<std::size_t>(i)];
        if (edit && edit->IsTyping())
            edit->SetValue(model.EditValue(i));
    }
}

void CKvColorPanel::Impl::TakeSwatch(const KvSwatchNotifyRecord& record)
{
    constexpr std::int32_t kPicked = -1;
    if (record.index != kPicked && record.store == 0) {
        swatches->SetCellColor(record.index, model.Value());
        return;
    }
    const bool isPreset = record.index != kPicked;
    const auto presets = static_cast<std::int32_t>(kv::kFixedAlphas.size());
    if (record.index < kPicked || record.index >= presets)
        return;
    if (isPreset ? !model.IsAlphaEnabled() : !model.IsColourEnabled())
        return;
    const DWORD colour = *record.colour;
    if (!EndRuns())
        return;
    if (isPreset)
        model.PickAlphaPreset(record.index);
    else
        model.PickSwatch(colour);
    ShowColour();
    NotifyRun();
}

bool CKvColorPanel::Impl::CanPaste() const
{
    return model.CanPaste(ClipboardColourText());
}

void CKvColorPanel::Impl::Paste()
{
    const std::wstring text = ClipboardColourText();
    if (!model.CanPaste(text) || !EndRuns())
        return;
    model.Paste(text);
    ShowColour();
    NotifyRun();
}

void CKvColorPanel::Impl::ScrubChannel(int channel, int steps)
{
    const QPointer<CKvParamEdit> edit = edits[static_cast<std::size_t>(channel)];
    const QPointer<CKvRadioBitmapButton> button = channels[static_cast<std::size_t>(channel)];
    if (edit)
        edit->EndTyping(); // a parent that opens a window there takes the mouse
    if (!edit || !button || !button->IsScrubbing())
        return;
    edit->BeginScrub(); // the first step of a scrub begins it
    edit->Scrub(steps);
}

bool CKvColorPanel::Impl::WalkButtons(const QKeyEvent& key)
{
    const bool isLevel = key.key() == Qt::Key_Left || key.key() == Qt::Key_Right;
    const bool isPlain = (key.modifiers() & ~Qt::KeypadModifier) == 0;
    if (!map || !isPlain || (!isLevel && key.key() != Qt::Key_Up && key.key() != Qt::Key_Down))
        return false;
    const QWidget* const focus = panel.focusWidget();
    const bool isMode = focus == modes[0] || focus == modes[1];
    // The modes stand side by side, the other way round where text runs from right to left.
    const bool isMirrored = isMode && isLevel && panel.isRightToLeft();
    const bool isBack = (key.key() == Qt::Key_Left || key.key() == Qt::Key_Up) != isMirrored;
    const int step = isBack ? -1 : 1;
    for (int i = 0; i < ColourPanelModel::kChannels; ++i) {
        if (focus != channels[static_cast<std::size_t>(i)])
            continue;
        const int next = std::clamp(i + step, 0, ColourPanelModel::kChannels - 1);
        SetChannel(next);
        channels[static_cast<std::size_t>(next)]->setFocus(Qt::TabFocusReason);
        return true;
    }
    if (!isMode)
        return false;
    const QPointer<CKvRadioBitmapButton> next = modes[isBack ? 0 : 1];
    EditMode(isBack ? ColourMode::Rgb : ColourMode::Hsb);
    if (next)
        next->setFocus(Qt::TabFocusReason);
    return true;
}

void CKvColorPanel::Impl::FocusBehind()
{
    for (QWidget* next = panel.nextInFocusChain(); next != &panel; next = next->nextInFocusChain()) {
        const bool isReached = next->isEnabled() && next->isVisible() && next->focusPolicy() & Qt::TabFocus;
        if (isReached && next->window() == panel.window() && !panel.isAncestorOf(next)) {
            next->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
}

CKvColorMapWnd* CKvColorPanel::Impl::MapOf(UINT id) const
{
    switch (id) {
    case kv::kPanelMap:
        return map;
    case kv::kPanelSlider:
        return slider;
    case kv::kPanelAlpha:
        return alpha;
    default:
        return nullptr;
    }
}
