// A small title editor of five controls: each hears of what the others did, and every edit can be undone.
#include "Layouts.h"

#include <KvColorPanel.h>
#include <KvGradientCtrl.h>
#include <KvKeyFrameCtrl.h>
#include <KvParamBezierCtrlDlg.h>
#include <KvSolidColorTemplate.h>

#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTimer>
#include <QToolButton>
#include <QUndoStack>

constexpr UINT kGradient = 1001, kPanel = 1002, kStrip = 1003, kKeys = 1004, kCurve = 1005;

class Host : public CKvWnd, IKvDataOperator, IKvParamBezierCtrlCallback
{
public:
    Host()
    {
        const UINT style = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
        CreateWnd(0, {0, 0, 960, 540}, nullptr, 0);
        m_gradient.Create(style, this, kGradient);
        m_panel.Create(this);
        m_panel.SetDlgCtrlID(kPanel);
        m_panel.show();
        m_strip.Create({0, 0, 600, 110}, kStrip, this, style);
        m_strip.SetData({16, 9}, &m_layouts);
        m_strip.EnableSelect(1);
        m_keys.Create(kKeys, this, style);
        m_curve.Create(style, {}, this, kCurve);
        m_time.setRange(0, kLastFrame);
        m_play.setCheckable(true);

        auto* columns = new QHBoxLayout(this);
        auto* left = new QVBoxLayout;
        auto* right = new QVBoxLayout;
        auto* row = new QHBoxLayout;
        columns->addLayout(left);
        columns->addLayout(right, 1);
        left->addWidget(&m_canvas);
        left->addLayout(row);
        left->addWidget(&m_strip, 1);
        right->addWidget(&m_gradient);
        right->addWidget(&m_panel);
        right->addWidget(&m_curve, 1);
        for (QAction* action : {m_steps.createUndoAction(this), m_steps.createRedoAction(this)}) {
            action->setShortcut(row->isEmpty() ? QKeySequence::Undo : QKeySequence::Redo);
            auto* button = new QToolButton;
            button->setDefaultAction(action);
            row->addWidget(button);
        }
        for (QWidget* widget : std::initializer_list<QWidget*>{&m_play, &m_time, &m_keys})
            row->addWidget(widget);

        connect(&m_time, &QSlider::valueChanged, this, [this] { ShowTime(); });
        connect(&m_clock, &QTimer::timeout, &m_time,
                [this] { m_time.setValue((m_time.value() + m_play.isChecked()) % kLastFrame); });
        connect(&m_steps, &QUndoStack::indexChanged, this, [this](int done) {
            setWindowTitle(QString("Step %1 of %2").arg(done).arg(m_steps.count()));
        });
        m_clock.start(40);
        Show(m_title);
    }

private:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT*) override
    {
        const auto& record = *reinterpret_cast<const KvColorNotifyRecord*>(lParam);
        if (wParam == kKeys)
            OnKey(record.hdr.code); // of a key strip the header alone is there
        if (wParam == kPanel)
            m_gradient.SetColor(m_panel.GetColor());
        if (wParam == kGradient && record.hdr.idFrom != kKvGradientDataSet)
            m_panel.SetColor(m_gradient.GetSelectedColor());
        if (wParam == kPanel || (wParam == kGradient && record.hdr.idFrom == kKvGradientStopsEdited))
            TakeStops(record.phase == kKvPhaseEnd);
        return 1;
    }
    BOOL OnCommand(WPARAM wParam, LPARAM, LRESULT*) override
    {
        if (LOWORD(wParam) != kStrip)
            return 0;
        m_title.keys[m_title.isAnimated ? m_time.value() : m_title.keys.begin()->first] = m_layouts.current;
        if (m_title.keys != m_kept.keys)
            Keep("Place");
        return 1;
    }
    // The ease window asks for the ease and tells of it.
    int GetEaseData(const wchar_t*, const wchar_t*, SKvParamEaseData& out) override
    {
        out = m_title.ease;
        return 1;
    }
    int SetEaseData(const wchar_t*, const wchar_t*, const SKvParamEaseData& in) override
    {
        m_title.ease = in;
        Draw();
        return 1;
    }
    int UndoChanged() override // also when it has loaded: then there is nothing to undo in it
    {
        if (m_curve.CanUndo())
            Keep("Ease"); // which loads it: the host has one history for all
        return 1;
    }
    void OnKey(std::uint32_t code)
    {
        auto& keys = m_title.keys;
        const int now = m_time.value();
        if (code == kKvKeyFramePrevious)
            return m_time.setValue(std::prev(keys.lower_bound(now))->first);
        if (code == kKvKeyFrameNext)
            return m_time.setValue(keys.upper_bound(now)->first);
        m_title.isAnimated = m_keys.GetToggleCheck() != 0;
        if (code == kKvKeyFrameOperator && keys.count(now) == 0)
            keys[now] = m_title.PlaceAt(now);
        else if (code == kKvKeyFrameOperator && keys.size() == 1)
            return ShowTime(); // the last one stays
        else if (code == kKvKeyFrameOperator)
            keys.erase(now);
        Keep(code == kKvKeyFrameToggle ? "Animation" : "Key");
    }
    void TakeStops(bool isEnd)
    {
        int count = 0;
        SKvCGGradientKey* stops = nullptr;
        m_gradient.GetData(count, &stops);
        m_title.stops.assign(stops, stops + count);
        Draw();
        if (isEnd && KvToGradientStops(m_title.stops) != KvToGradientStops(m_kept.stops))
            Keep("Filling"); // a drag that Escape took back is no step
    }

    struct Step : QUndoCommand
    {
        Host& host;
        const Title before = host.m_kept;
        const Title after = host.m_title;
        Step(const char* text, Host& owner) : QUndoCommand(text), host(owner) {}
        void undo() override { host.Show(before); }
        void redo() override { host.Show(after); }
    };
    void Keep(const char* what) { m_steps.push(new Step(what, *this)); } // which shows it
    void Show(const Title& title)
    {
        m_title = m_kept = title;
        m_gradient.SetData(int(title.stops.size()), title.stops.data());
        m_panel.SetColor(m_gradient.GetSelectedColor());
        m_curve.Load();
        m_keys.SetToggleCheck(title.isAnimated);
        ShowTime();
        m_strip.Paint(); // the thumbnails show the filling
    }
    void ShowTime()
    {
        const int now = m_time.value();
        const auto& keys = m_title.keys;
        m_keys.SetKeyOperatorCheck(keys.count(now) != 0);
        m_keys.EnablePreviousKeyCtrl(keys.begin()->first < now);
        m_keys.EnableNextKeyCtrl(keys.rbegin()->first > now);
        m_layouts.current = m_title.PlaceAt(now);
        m_strip.update();
        Draw();
    }
    void Draw()
    {
        QPixmap picture(600, 338);
        QPainter painter(&picture);
        m_title.Paint(painter, picture.rect(), m_title.At(m_time.value()));
        m_canvas.setPixmap(picture);
    }

    Title m_title, m_kept; // as it is now, and as the last step left it
    QUndoStack m_steps;
    QLabel m_canvas;
    Layouts m_layouts{m_title};
    CKvParamBezierInfo m_info{this, L"title", L"way"};
    CKvGradientCtrl m_gradient;
    CKvColorPanel m_panel;
    CKvLayoutSelector m_strip;
    CKvKeyFrameCtrl m_keys;
    CKvParamBezierWnd m_curve{&m_info, this};
    QSlider m_time{Qt::Horizontal};
    QPushButton m_play{"Play"};
    QTimer m_clock;
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46));    // dark, as the controls' own skin
    CKvSolidColorTemplate::InstallFactoryTemplate(); // the panel's swatches, where there is no file yet
    Host host;
    host.show();
    return QApplication::exec();
}
