// Every control that a form can hold, for tests that go through them all.
#pragma once

#include "KvGuiAdvCtrls.h"

#include <ostream>
#include <string>

struct ControlKind
{
    const char* name;
    QWidget* (*make)(QWidget* parent);

    friend void PrintTo(const ControlKind& kind, std::ostream* out) { *out << kind.name; }
};

template <typename Control>
QWidget* MakeControl(QWidget* parent)
{
    return new Control(parent);
}

inline const ControlKind kControlKinds[] = {
    {"CKvAppLogListCtrl", MakeControl<CKvAppLogListCtrl>},
    {"CKvBitmapButton", MakeControl<CKvBitmapButton>},
    {"CKvButton", MakeControl<CKvButton>},
    {"CKvCharMapPreviewWnd", MakeControl<CKvCharMapPreviewWnd>},
    {"CKvColorMapWnd", MakeControl<CKvColorMapWnd>},
    {"CKvColorPanel", MakeControl<CKvColorPanel>},
    {"CKvGradientCtrl", MakeControl<CKvGradientCtrl>},
    {"CKvKeyFrameCtrl", MakeControl<CKvKeyFrameCtrl>},
    {"CKvLayoutSelector", MakeControl<CKvLayoutSelector>},
    {"CKvParamBezierWnd", MakeControl<CKvParamBezierWnd>},
    {"CKvParamEdit", MakeControl<CKvParamEdit>},
    {"CKvQuadGradCtrl", MakeControl<CKvQuadGradCtrl>},
    {"CKvRadioBitmapButton", MakeControl<CKvRadioBitmapButton>},
    {"CKvRibbonMenuBar", MakeControl<CKvRibbonMenuBar>},
    {"CKvRibbonTitlebar", MakeControl<CKvRibbonTitlebar>},
    {"CKvScrollBar", MakeControl<CKvScrollBar>},
    {"CKvSolidColorTemplate", MakeControl<CKvSolidColorTemplate>},
    {"CKvSubTitleTxtListEditor", MakeControl<CKvSubTitleTxtListEditor>},
    {"CKvTextEditListCtrl", MakeControl<CKvTextEditListCtrl>},
};

/// Whether it is created; a scroll bar always is.
inline bool IsControlCreated(QWidget& control)
{
    if (const auto* window = qobject_cast<const CKvWnd*>(&control))
        return window->IsCreated() != 0;
    if (const auto* panel = qobject_cast<const CKvColorPanel*>(&control))
        return panel->IsCreated() != 0;
    if (auto* button = qobject_cast<CKvBitmapButton*>(&control))
        return button->CreateButton(1, button->parentWidget(), {}, 0, nullptr, nullptr) == 0;
    return true;
}
