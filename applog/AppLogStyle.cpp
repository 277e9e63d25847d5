#include "applog/AppLogStyle.h"

#include "platform/OwnSizes.h"
#include "platform/SkinColours.h"

namespace kv {

namespace {

constexpr const char* kSheet = R"(
QPushButton { background: @selected; color: @selectedText; border: 1px solid @focus; border-radius: 9px;
    padding: 2px 10px; margin: 0; @sizes }
QPushButton:hover { background: @header; }
QLineEdit { background: @back; color: @text; border: 1px solid @border; border-radius: 2px; padding: 1px 4px;
    margin: 0; @sizes selection-background-color: @selected; selection-color: @selectedText; }
QLineEdit:focus { border-color: @focus; }
QLabel { background: transparent; color: @text; border: none; padding: 0; margin: 0; @sizes }
QToolButton { background: transparent; color: @text; border: 1px solid transparent; border-radius: 2px;
    padding: 1px 4px; margin: 0; @sizes }
QToolButton:hover { border-color: @border; }
QToolButton:checked { background: @selected; color: @selectedText; }
QToolButton:focus { border-color: @focus; }
CKvBitmapButton, #findBar { @sizes }
)";

} // namespace

QString AppLogStyleSheet()
{
    // A longer name stands before one that it begins with.
    const std::pair<const char*, QColor> names[] = {
        {"@back", SkinColour(L"keReportListBKColor", 0xFF1F1F22u)},
        {"@selectedText", SkinColour(L"keReportListSelectedTextColor", 0xFFFFFFFFu)},
        {"@selected", SkinColour(L"keReportListSelectedBKColor", 0xFF4A5568u)},
        {"@header", SkinColour(L"keReportListHeaderBKColor", 0xFF323236u)},
        {"@border", SkinColour(L"keWindowBorderColor", 0xFF686870u)},
        {"@text", TextColour()},
        {"@focus", FocusColour()},
    };
    QString sheet = QString::fromLatin1(kSheet);
    for (const auto& [name, colour] : names)
        sheet.replace(QLatin1String(name), colour.name());
    return sheet.replace(QLatin1String("@sizes"), QLatin1String(kOwnSizes));
}

} // namespace kv
