#include "platform/DialogStyle.h"

#include "platform/OwnSizes.h"
#include "platform/SkinColours.h"

#include <QRegularExpression>

namespace kv {
namespace {

QColor Mix(const QColor& from, const QColor& to, int percent)
{
    const auto mixed = [percent](int a, int b) { return a + (b - a) * percent / 100; };
    return {mixed(from.red(), to.red()), mixed(from.green(), to.green()), mixed(from.blue(), to.blue())};
}

// Whatever the host's sheet says of the same items is said here, too: only then it does not count.
constexpr const char* kSheet = R"(/* the look */
CKvDialog { background: @window; color: @text; border: none; border-radius: 0; padding: 0; margin: 0; }
CKvDialog > QLabel { background: transparent; color: @hint; border: none; padding: 0; margin: 0; @sizes }
CKvDialog > QLabel:disabled { color: @disabled; }
CKvDialog > QPushButton { background: @button; color: @text; border: 1px solid @border;
    border-radius: 3px; padding: 0; margin: 0; @sizes }
CKvDialog > QPushButton:default { border-color: @strong; }
CKvDialog > QPushButton:hover { background: @hover; }
CKvDialog > QPushButton:pressed { background: @pressed; }
CKvDialog > QPushButton:checked { background: @selection; color: @selected; }
CKvDialog > QPushButton:focus { border-color: @focus; }
CKvDialog > QPushButton:disabled { background: @window; color: @disabled; border-color: @faint; }
CKvDialog > QLineEdit { background: @field; color: @text; border: 1px solid @border; border-radius: 2px;
    padding: 0 4px; margin: 0; @sizes
    selection-background-color: @selection; selection-color: @selected; }
CKvDialog > QLineEdit:focus { border-color: @focus; }
CKvDialog > QLineEdit:disabled { color: @disabled; border-color: @faint; }
CKvDialog > QCheckBox { background: transparent; color: @text; border: none; padding: 0; margin: 0;
    spacing: 6px; @sizes }
CKvDialog > QCheckBox:disabled { color: @disabled; }
CKvDialog > QCheckBox::indicator { width: 13px; height: 13px; background: @field; border: 1px solid @strong;
    border-radius: 2px; }
CKvDialog > QCheckBox::indicator:hover { background: @button; }
CKvDialog > QCheckBox::indicator:focus { border-color: @focus; }
CKvDialog > QCheckBox::indicator:disabled { border-color: @faint; }
/* its end */
)";

} // namespace

QString DialogStyleSheet(const SKvGuiBasicSettings* settings)
{
    QColor window = SkinColour(L"keWindowBKColor", 0xFF2B2B2E);
    QColor text = TextColour();
    QColor disabled = DisabledTextColour();
    QColor field = SkinColour(L"keParamEditBKColor", 0xFF1F1F22u);
    QColor selection = SkinColour(L"keReportListSelectedBKColor", 0xFF4A5568u);
    QColor selected = SkinColour(L"keReportListSelectedTextColor", 0xFFFFFFFFu);
    if (settings) {
        window = QColor::fromRgba(settings->background);
        text = QColor::fromRgba(settings->textColour);
        disabled = QColor::fromRgba(settings->disabledTextColour);
        field = window;
        selection = text;
        selected = window;
    }
    const std::pair<const char*, QColor> names[] = {
        {"@window", window},
        {"@text", text},
        {"@field", field},
        {"@selection", selection},
        {"@selected", selected},
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
    return sheet.replace(QLatin1String("@sizes"), QLatin1String(kOwnSizes));
}

QString WithoutDialogStyle(QString sheet)
{
    static const QRegularExpression s_look(QStringLiteral(R"(/\* the look \*/.*?/\* its end \*/\n?)"),
                                           QRegularExpression::DotMatchesEverythingOption);
    return sheet.remove(s_look);
}

} // namespace kv
