// The ease between two keys: a slider moves as the curve says while it is shaped.
#include <KvBezierCurve2D.h>
#include <KvParamBezierWnd.h>

#include <QApplication>
#include <QLabel>
#include <QSlider>
#include <QTimer>
#include <QVBoxLayout>

// Where the curve is kept: from frame 0 to frame 50, from the value 0 to 100.
struct Ease : IKvParamBezierInfo
{
    double points[8] = {0, 0, 20, 0, 30, 100, 50, 100}; // key, its handle, the other key's handle, that key
    int GetCurve(double out[8], double& minimum, double& maximum, std::uint32_t& lock,
                 std::uint32_t& kind) override
    {
        std::copy_n(points, 8, out);
        minimum = -25; // it may overshoot
        maximum = 125;
        lock = 0;
        kind = kKvEaseDrawn;
        return 1;
    }
    int SetCurve(const double in[8], std::uint32_t, std::uint32_t) override
    {
        std::copy_n(in, 8, points);
        return 1;
    }
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    Ease ease;                                    // outlives the window that edits it
    QWidget window;
    CKvParamBezierWnd curve(&ease, nullptr);
    curve.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, {}, &window, 1001);
    curve.SetFrameLength(1); // marks every frame
    QLabel told("Drag a handle; Ctrl keeps its direction, Ctrl+Z takes it back.");
    QSlider follower(Qt::Horizontal);
    follower.setRange(-25, 125);
    QVBoxLayout layout(&window);
    layout.addWidget(&curve, 1);
    layout.addWidget(&follower);
    layout.addWidget(&told);
    QObject::connect(&curve, &CKvParamBezierWnd::CurveChanged, &told, [&] {
        const double* const p = ease.points;
        told.setText(QString("handles (%1, %2) and (%3, %4)").arg(p[2]).arg(p[3]).arg(p[4]).arg(p[5]));
    });
    QTimer clock;
    QObject::connect(&clock, &QTimer::timeout, &follower, [&, frame = 0]() mutable {
        frame = (frame + 1) % 75; // the last third it rests
        follower.setValue(static_cast<int>(KvBezierEase(ease.points).Value(frame)));
    });
    clock.start(40);
    window.show();
    return QApplication::exec();
}
