#include "platform/DialogStyle.h"

#include "platform/SkinColours.h"

namespace kv {
namespace {

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
    QColor window = SkinColour(L"keWindowBKColor", 0xFF2B2B2E);
    QColor text = TextColour();
    QColor disabled = DisabledTextColour();
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
        {"@focus", FocusColour()},
    };
    QString sheet = QString::fromLatin1(kSheet);
    for (const auto& [name, colour] : names)
        sheet.replace(QLatin1String(name), colour.name());
    return sheet;
}

} // namespace kv
