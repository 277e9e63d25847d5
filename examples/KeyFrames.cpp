// The keyframe strip: it keeps no keys of its own, it asks and shows what the host answers.
#include <KvKeyFrameCtrl.h>

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QSlider>

#include <set>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    QWidget window;

    CKvKeyFrameCtrl strip;
    strip.Create(1001, &window, WS_CHILD | WS_VISIBLE | WS_TABSTOP); // the number first, the style last
    strip.SetToggleCheck(1);
    QSlider time(Qt::Horizontal);
    time.setRange(0, 100);
    QLabel opacity("Opacity");
    QLabel told;
    QGridLayout layout(&window);
    layout.addWidget(&opacity, 0, 0);
    layout.addWidget(&strip, 0, 1);
    layout.addWidget(&time, 0, 2);
    layout.addWidget(&told, 1, 0, 1, 3);

    std::set<int> keys = {0, 25, 80};
    const auto show = [&] {
        const int now = time.value();
        strip.SetKeyOperatorCheck(keys.count(now) != 0);
        strip.EnablePreviousKeyCtrl(!keys.empty() && *keys.begin() < now);
        strip.EnableNextKeyCtrl(!keys.empty() && *keys.rbegin() > now);
        QString text = strip.GetToggleCheck() ? QString("Frame %1, keys at").arg(now) : "Not animated:";
        for (const int key : keys)
            text += QString(" %1").arg(key);
        told.setText(text);
    };
    KvMessageSink sink(&window, [&](UINT message, WPARAM id, LPARAM lParam) -> std::optional<LRESULT> {
        if (message != WM_NOTIFY || id != 1001)
            return std::nullopt;
        const int now = time.value();
        const std::uint32_t code = reinterpret_cast<const KvNotifyHeader*>(lParam)->code;
        if (code == kKvKeyFrameOperator && keys.erase(now) == 0)
            keys.insert(now);
        if (code == kKvKeyFramePrevious)
            time.setValue(*std::prev(keys.lower_bound(now)));
        if (code == kKvKeyFrameNext)
            time.setValue(*keys.upper_bound(now));
        show();
        return 0;
    });
    QObject::connect(&time, &QSlider::valueChanged, &window, show);
    show();
    window.resize(420, 80);
    window.show();
    return QApplication::exec();
}
