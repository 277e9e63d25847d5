// A parent that writes down what a character grid or map tells it.
#pragma once

#include "KvCharMapDlg.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

inline constexpr wchar_t kTestFace[] = L"DejaVu Sans"; // the space is its first character

inline void SendWheel(QWidget& control, QPointF at, int delta)
{
    QWheelEvent event(at, control.mapToGlobal(at), {}, {0, delta}, Qt::NoButton, {}, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&control, &event);
}

inline void SendMove(QWidget& control, QPointF at, Qt::MouseButtons buttons = {})
{
    QMouseEvent event(QEvent::MouseMove, at, control.mapToGlobal(at), Qt::NoButton, buttons, Qt::NoModifier);
    QApplication::sendEvent(&control, &event);
}

/// The middle of a cell of the page.
inline QPoint CellMiddle(int cell)
{
    return {12 + cell % 20 * 24 + 12, 12 + cell / 20 * 24 + 12};
}
