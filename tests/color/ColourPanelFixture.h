// A colour panel in a parent: what the user does in it, what it shows and what the parent hears of it.
#pragma once

#include "KvButtons.h"
#include "KvColorMapWnd.h"
#include "KvColorPanel.h"
#include "KvParamEdit.h"
#include "KvSolidColorTemplate.h"

#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>

#include <functional>
#include <gtest/gtest.h>

constexpr UINT kPanelId = 4711;
enum Item : UINT
{
    kMap = 14023,
    kSlider = 14024,
    kAlpha = 14025,
    kFirstEdit = 14026,
    kAlphaEdit = 14029,
    kSwatches = 14030,
    kFirstChannel = 14032,
    kRgb = 14035,
    kHsb = 14036,
};

class TestPanel : public CKvColorPanel
{
public:
    using CKvColorPanel::_NotifyChangeColor;
    bool diesOfAnUpdate = false;

protected:
    void OnCmdUpdateUI(CCmdUI* command) override
    {
        if (diesOfAnUpdate)
            delete this;
        else
            CKvColorPanel::OnCmdUpdateUI(command);
    }
};

// A panel in a parent; messages are written "phase:colour".
class ColourPanel : public testing::Test
{
protected:
    ColourPanel() { Renew(); }
    void Renew(int hsb = 0)
    {
        onMessage = {};
        delete panel;
        panel = new TestPanel;
        panel->SetInitialMode(hsb);
        ASSERT_EQ(panel->Create(&parent), 1);
        panel->SetDlgCtrlID(kPanelId);
        panel->SetColor(0xFF336699u);
        parent.resize(400, 300);
        panel->resize(panel->sizeHint());
        panel->show();
        parent.show();
        QApplication::setActiveWindow(&parent);
        heard.clear();
    }
    std::optional<LRESULT> Hear(UINT message, WPARAM wParam, LPARAM lParam)
    {
        const auto& record = *reinterpret_cast<const KvColorNotifyRecord*>(lParam);
        EXPECT_TRUE(message == WM_NOTIFY && wParam == kPanelId && record.hdr.hwndFrom == panel &&
                    record.hdr.idFrom == kPanelId && record.hdr.code == 0xFFFFFFD7u && record.dataSize == 4);
        const DWORD colour = *static_cast<const DWORD*>(record.data);
        EXPECT_EQ(colour, panel->GetColor());
        heard += QString::asprintf("%s%d:%08x", heard.isEmpty() ? "" : " ", record.phase, colour);
        if (onMessage)
            onMessage();
        return std::nullopt;
    }
    QString Heard() { return std::exchange(heard, {}); }
    template <typename Child>
    Child* Get(UINT id)
    {
        return dynamic_cast<Child*>(panel->GetDlgItem(id));
    }
    CKvColorMapWnd* Map(UINT id) { return Get<CKvColorMapWnd>(id); }
    CKvParamEdit* Edit(UINT id) { return Get<CKvParamEdit>(id); }
    QLineEdit* Line(UINT id)
    {
        auto* line = Edit(id)->findChild<QLineEdit*>();
        line->setFocus();
        line->selectAll();
        return line;
    }
    void Click(UINT id) { Get<CKvRadioBitmapButton>(id)->click(); }

    void Mouse(QWidget* child, QEvent::Type type, QPointF at)
    {
        const bool isMove = type == QEvent::MouseMove;
        QMouseEvent event(type, at, child->mapToGlobal(at), isMove ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(child, &event);
    }
    /// Presses and moves to each place, seen from the first; the button stays down.
    void Drag(QWidget* child, QPointF from, std::initializer_list<QPointF> ways)
    {
        Mouse(child, QEvent::MouseButtonPress, from);
        for (const QPointF way : ways)
            Mouse(child, QEvent::MouseMove, from + way);
    }
    void Release(QWidget* child) { Mouse(child, QEvent::MouseButtonRelease, {5, 5}); }
    void Wheel(QWidget* child, int delta)
    {
        const QPointF at(5, 5);
        QWheelEvent event(at, child->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, {}, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(child, &event);
    }
    CKvRadioBitmapButton* Channel(UINT index) { return Get<CKvRadioBitmapButton>(kFirstChannel + index); }
    void Swatch(std::int32_t index, DWORD colour, std::int32_t store = 1)
    {
        QWidget* const grid = panel->GetDlgItem(kSwatches);
        KvSwatchNotifyRecord record{{grid, kSwatches, kKvColorNotifyCode}, index, &colour, store};
        KvSendMessage(panel, WM_NOTIFY, kSwatches, reinterpret_cast<LPARAM>(&record));
    }
    // The four edits; each must show what all maps hold.
    QString Shown()
    {
        QString shown;
        for (UINT id = kFirstEdit; id <= kAlphaEdit; ++id) {
            const QString number = QString::number(Edit(id)->GetValue());
            EXPECT_TRUE(Edit(id)->IsTyping() || Edit(id)->findChild<QLineEdit*>()->text() == number) << id;
            shown += (shown.isEmpty() ? "" : " ") + number;
        }
        for (const UINT id : {kMap, kSlider, kAlpha})
            EXPECT_EQ(Map(id)->GetValue(), panel->GetColor()) << id;
        double hue[2], sat[2];
        for (const int i : {0, 1}) {
            hue[i] = Map(i ? kSlider : kMap)->GetHue();
            sat[i] = Map(i ? kSlider : kMap)->GetSat();
        }
        EXPECT_EQ(hue[0], hue[1]);
        EXPECT_EQ(sat[0], sat[1]);
        return shown;
    }
    QString Enabled()
    {
        QString enabled;
        for (UINT id = kMap; id <= kHsb; ++id) {
            if (QWidget* child = panel->GetDlgItem(id))
                enabled += child->isEnabled() ? '1' : '0';
        }
        return enabled;
    }

    QWidget parent;
    KvMessageSink sink{&parent, [this](auto... message) { return Hear(message...); }};
    QPointer<TestPanel> panel;
    QString heard;
    std::function<void()> onMessage;
};
