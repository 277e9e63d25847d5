// A layout strip in a window, over layouts that write down what they are asked.
#pragma once

#include "KvLayoutSelector.h"
#include "KvScroll.h"
#include "core/RefCounted.h"
#include "tests/color/ControlEvents.h"

#include <QWheelEvent>

#include <optional>
#include <set>
#include <vector>

namespace kv::test {

/// A picture of one colour, whose rows are longer than its pixels.
class Picture : public IKvThumbImage
{
public:
    Picture(DWORD colour, int& alive) : m_colour(colour), m_alive(alive) { ++m_alive; }
    virtual ~Picture() { --m_alive; }
    int Lock(UINT& width, UINT& height, int& stride, const DWORD*& pixels) override
    {
        if (isLent)
            return 0;
        ++m_locks;
        width = 8;
        height = 6;
        stride = 10 * 4;
        m_pixels.assign(60, 0xFFFF00FFu); // shows where the stride is not heeded
        for (std::size_t row = 0; row < 6; ++row)
            std::fill_n(m_pixels.begin() + static_cast<std::ptrdiff_t>(row * 10), 8, m_colour);
        m_pixels[57] = corner.value_or(m_colour);
        pixels = m_pixels.data();
        return 1;
    }
    void Unlock() override
    {
        EXPECT_FALSE(isLent);
        EXPECT_EQ(--m_locks, 0);
    }
    int Release() override
    {
        EXPECT_EQ(m_locks, 0);
        delete this;
        return 0;
    }

    bool isLent = false;         ///< `Lock` fails
    std::optional<DWORD> corner; ///< the last pixel

private:
    DWORD m_colour;
    int& m_alive;
    int m_locks = 0;
    std::vector<DWORD> m_pixels;
};

class Layouts final : public RefCounted<IKvLayoutSelectorData>
{
public:
    explicit Layouts(int layoutCount) : count(layoutCount) {}

    int GetCount() override { return count; }
    BOOL GetUnit(int index, wchar_t name[64], IKvThumbImage** thumbnail, IKvThumbImage** mark) override
    {
        EXPECT_TRUE(index >= 0 && index < count);
        EXPECT_EQ(name[0], L'\0');
        EXPECT_EQ(*thumbnail, nullptr);
        EXPECT_EQ(*mark, nullptr);
        asked.push_back(index);
        if (onAsk)
            onAsk(index);
        if (isLongName)
            std::fill_n(name, 64, L'n');
        if (marked.contains(index))
            *mark = new Picture(0xFF0000FFu, alive);
        if (!without.contains(index)) {
            auto* picture = new Picture(colour, alive);
            picture->isLent = locked.contains(index);
            picture->corner = corner;
            *thumbnail = picture;
        }
        return 0; // only the picture counts
    }
    BOOL IsSelected(int index) override
    {
        EXPECT_TRUE(index >= 0 && index < count);
        const BOOL is = selected.contains(index) ? 1 : 0;
        if (onIsSelected)
            onIsSelected();
        return is;
    }
    int Select(int index, BOOL exclusive) override
    {
        if (exclusive)
            selected.clear();
        selected.insert(index);
        if (onSelect)
            onSelect(index, exclusive);
        return 1;
    }
    std::vector<int> Asked() { return std::exchange(asked, {}); }

    int count;
    DWORD colour = 0xFF00FF00u;
    std::optional<DWORD> corner; ///< the last pixel of a picture
    std::set<int> marked, without, locked, selected;
    std::vector<int> asked;
    bool isLongName = false;
    int alive = 0; ///< pictures
    std::function<void(int)> onAsk;
    std::function<void()> onIsSelected;
    std::function<void(int, BOOL)> onSelect;
};

class TestStrip : public CKvLayoutSelector
{
public:
    using CKvLayoutSelector::Create;
    int Create(UINT style, CWnd* parent, DWORD id) { return CKvLayoutSelector::Create(id, parent, style); }
    using CKvLayoutSelector::_FindThumbRect;
    using CKvLayoutSelector::_GetScrollbarRect;
    using CKvLayoutSelector::_GetThumbRect;
    using CKvLayoutSelector::HasCapture;
    using CKvLayoutSelector::OnTimer;
    using CKvLayoutSelector::ToolTipAt;
};

/// A row of 400 x 81 over 100 layouts: thumbnails of 75 x 60 from (4, 2), a step of 80; a view of 390.
/// What happens is written "s3+" for a selection (+ exclusive, - beside others) and "m" for the message.
class LayoutStrip : public ControlTest<TestStrip>
{
protected:
    LayoutStrip() { Renew(); }
    ~LayoutStrip() override
    {
        delete control;
        EXPECT_EQ(layouts->Release(), 0);
    }
    void Renew(int count = 100)
    {
        ControlTest::Renew({400, 81}, 7);
        if (layouts)
            layouts->Release();
        layouts = new Layouts(count);
        layouts->onSelect = [this](int index, BOOL exclusive) {
            Say('s' + std::to_string(index) + (exclusive == 1 ? "+" : "-"));
        };
        control->SetData({720, 576}, layouts);
        control->setFocus(); // it was disabled
        control->grab();
        layouts->Asked();
        heard.clear();
        onMessage = {};
    }
    void Hear(UINT message, WPARAM wParam, LPARAM lParam) override
    {
        EXPECT_EQ(message, WM_COMMAND);
        EXPECT_EQ(wParam, MAKEWPARAM(7, 1));
        EXPECT_EQ(lParam, reinterpret_cast<LPARAM>(control.data()));
        Say("m");
        if (onMessage)
            onMessage();
    }
    void Wheel(QPoint delta)
    {
        const QPointF at(20, 20);
        QWheelEvent wheel(at, control->mapToGlobal(at), {}, delta, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(control, &wheel);
    }
    Actions OwnActions(const Step& step) override
    {
        return {{'C',
                 [this, at = step.at] {
                     QTest::mousePress(control.data(), Qt::LeftButton, Qt::ControlModifier, at);
                 }},
                {'W', [this, by = step.text.toInt()] {
                     Wheel({0, by});
                 }}};
    }
    std::int64_t Position() { return control->GetScrollTarget(); }
    CKvScrollBar& Bar() { return *control->findChild<CKvScrollBar*>(); }

    Layouts* layouts = nullptr;
    std::function<void()> onMessage;
};

} // namespace kv::test
