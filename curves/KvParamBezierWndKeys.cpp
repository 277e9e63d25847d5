// What the keyboard does to the ease curve window.
#include "curves/KvParamBezierWndImpl.h"
#include "platform/VirtualKey.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>

namespace {

constexpr double kFineStep = 0.1; // of a pixel

} // namespace

bool CKvParamBezierWnd::Impl::IsOwnKey(UINT key, Qt::KeyboardModifiers modifiers) const
{
    const Qt::KeyboardModifiers held = kv::HeldModifiers(modifiers);
    if (kv::IsArrow(key))
        return CanEdit() && selected && (held == Qt::NoModifier || held == Qt::ShiftModifier);
    if (key == VK_PRIOR || key == VK_NEXT)
        return CanEdit() && held == Qt::NoModifier;
    return key == VK_HOME && held == Qt::NoModifier;
}

bool CKvParamBezierWnd::Impl::RunKey(UINT key, Qt::KeyboardModifiers modifiers)
{
    if (!IsOwnKey(key, modifiers))
        return false;
    const double pixels = modifiers.testFlag(Qt::ShiftModifier) ? kFineStep : 1;
    switch (key) {
    case VK_LEFT:
        MoveSelected(-pixels, 0);
        break;
    case VK_RIGHT:
        MoveSelected(pixels, 0);
        break;
    case VK_UP:
        MoveSelected(0, pixels);
        break;
    case VK_DOWN:
        MoveSelected(0, -pixels);
        break;
    case VK_PRIOR:
        SelectStep(-1);
        break;
    case VK_NEXT:
        SelectStep(1);
        break;
    default:
        ResetView();
        break;
    }
    return true;
}

void CKvParamBezierWnd::Impl::Select(std::optional<kv::EaseHandle> handle)
{
    DropEntry();
    selected = handle;
    Redraw();
}

// Round and round, past what the lock holds.
void CKvParamBezierWnd::Impl::SelectStep(int step)
{
    const int before = step > 0 ? kv::kEaseHandles - 1 : 0;
    int place = selected ? static_cast<int>(*selected) : before;
    do {
        place = (place + step + kv::kEaseHandles) % kv::kEaseHandles;
    } while (!CanMove(static_cast<kv::EaseHandle>(place)));
    Select(static_cast<kv::EaseHandle>(place));
}

void CKvParamBezierWnd::Impl::MoveSelected(double right, double up)
{
    const kv::EaseLayout layout = Layout();
    if (!layout.IsMapped())
        return;
    SKvCurvePoint place = model.Curve()[*selected];
    place.x += right * (layout.end - layout.start) / layout.plot.Width();
    place.y += up * layout.view.Span() / layout.plot.Height();
    PlaceHandle(*selected, place);
}

bool CKvParamBezierWnd::Impl::IsTyped(UINT character, Qt::KeyboardModifiers modifiers) const
{
    return CanEdit() && selected && kv::EaseEntry::IsPart(character, entry.IsPending()) &&
           !kv::IsCommand(modifiers);
}

bool CKvParamBezierWnd::Impl::RunEntryKey(UINT key)
{
    if (!entry.IsPending())
        return false;
    switch (key) {
    case VK_BACK:
        entry.Erase();
        control.update();
        return true;
    case VK_ESCAPE:
        DropEntry();
        return true;
    case VK_RETURN:
        // What makes no sense stays, to be mended.
        if (const auto place = entry.Value(model.Curve()[*selected])) {
            DropEntry();
            PlaceHandle(*selected, *place);
        }
        return true;
    default:
        return false;
    }
}

void CKvParamBezierWnd::Impl::DropEntry()
{
    if (!entry.IsPending())
        return;
    entry.Clear();
    control.update();
}

bool CKvParamBezierWnd::Impl::CanRun(std::optional<kv::EaseCommand> command) const
{
    return command && (CanEdit() || *command == kv::EaseCommand::Copy);
}

bool CKvParamBezierWnd::Impl::Run(kv::EaseCommand command)
{
    if (!CanRun(command))
        return false;
    DropEntry();
    switch (command) {
    case kv::EaseCommand::Undo:
        GoTo(&kv::EaseModel::Undo);
        break;
    case kv::EaseCommand::Redo:
        GoTo(&kv::EaseModel::Redo);
        break;
    case kv::EaseCommand::Copy:
        if (const std::wstring text = kv::CubicBezierText(model.Curve()); !text.empty())
            QGuiApplication::clipboard()->setText(KvToQString(text));
        break;
    case kv::EaseCommand::Paste: {
        const std::wstring text = KvFromQString(QGuiApplication::clipboard()->text());
        if (const auto handles = kv::ParseCubicBezier(text, model.Curve()))
            Edit([&](kv::EaseModel& ease) { return ease.MoveHandles(handles->out, handles->in); });
        break;
    }
    }
    return true;
}
