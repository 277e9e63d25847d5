// The skin's colours for the toolkit's scroll bars.
#pragma once

#include "platform/SkinColours.h"

#include <QEvent>
#include <QScrollBar>

namespace kv {

/// Gives a scroll bar its palette, and gives it again whenever its style changes: a style sheet of the host's
/// that comes or goes brings back the palette that it found when it came.
class SkinBar : public QObject
{
public:
    explicit SkinBar(QScrollBar& bar) : m_bar(bar)
    {
        bar.installEventFilter(this);
        Load();
    }

    void Load()
    {
        m_bar.setPalette(QPalette(SkinColour(L"keReportListHeaderBKColor", 0xFF323236u),
                                  SkinColour(L"keReportListBKColor", 0xFF1F1F22u)));
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::StyleChange)
            Load();
        return false;
    }

private:
    QScrollBar& m_bar;
};

} // namespace kv
