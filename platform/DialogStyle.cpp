#include "platform/DialogStyle.h"

#include "KvGuiRes.h"

#include <QColor>

namespace kv {
namespace {

QColor Colour(const wchar_t* key, QColor colour)
{
    DWORD argb = colour.rgba();
    KvGuiRes::LoadColor(key, argb);
    return QColor::fromRgba(argb);
}

QColor Mix(const QColor& from, const QColor& to, int percent)
{
    const auto mixed = [percent](int a, int b) { return a + (b - a) * percent / 100; };
    return {mixed(from.red(), to.red()), mixed(from.green(), to.green()), mixed(from.blue(), to.blue())};
}

constexpr const char* kSheet = R"(
CKvDialog { background: @window; color: @text; }
CKvDialog > QLabel { background: transparent; color: @hint; border: none; padding: 0; margin: 0; }
CKvDialog > QPushButton { background: @button; color: @text; border: 1px solid @border;
    border-radius: 3px; padding: 0; margin: 0; min-width: 0; min-height: 0; }
CKvDialog > QPushButton:default { border-color: @strong; }
CKvDialog > QPushButton:hover { background: @hover; }
CKvDialog > QPushButton:pressed { background: @pressed; }
CKvDialog > QPushButton:focus { border-color: @focus; }
CKvDialog > QPushButton:disabled { background: @window; color: @disabled; border-color: @faint; }
)";

} // namespace

QString DialogStyleSheet(const SKvGuiBasicSettings* settings)
{
    QColor window = Colour(L"keWindowBKColor", QColor(43, 43, 46));
    QColor text = Colour(L"keWindowTextColor", QColor(226, 226, 228));
    QColor disabled = Colour(L"keDisabledTextColor", QColor(150, 150, 154));
    if (settings) {
        window = QColor::fromRgba(settings->background);
        text = QColor::fromRgba(settings->textColour);
        disabled = QColor::fromRgba(settings->disabledTextColour);
    }
    const std::pair<const char*, QColor> names[] = {
        {"@window", window},
        {"@text", text},
        {"@hint", Mix(window, text, 75)},
        {"@button", Mix(window, text, 12)},
        {"@hover", Mix(window, text, 20)},
        {"@pressed", Mix(window, text, 5)},
        {"@border", Mix(window, text, 25)},
        {"@strong", Mix(window, text, 60)},
        {"@faint", Mix(window, text, 12)},
        {"@disabled", disabled},
        {"@focus", Colour(L"keFocusColor", QColor(255, 165, 0))},
    };
    QString sheet = QString::fromLatin1(kSheet);
    for (const auto& [name, colour] : names)
        sheet.replace(QLatin1String(name), colour.name());
    return sheet;
}

} // namespace kv
