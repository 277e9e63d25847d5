#include "window/Skin.h"

#include "KvGuiRes.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>

namespace titler {
namespace {

constexpr const char* kThemeProperty = "titlerTheme"; ///< of the application

QColor Colour(const wchar_t* key, DWORD colour)
{
    KvGuiRes::LoadColor(key, colour);
    return QColor::fromRgba(colour);
}

QColor ButtonColour(const Skin& skin)
{
    return skin.panel.lighter(125);
}

// What reads best on a colour.
QColor TextOn(const QColor& ground)
{
    const double light = 0.299 * ground.red() + 0.587 * ground.green() + 0.114 * ground.blue();
    return light < 128 ? Qt::white : Qt::black;
}

QPalette PaletteOf(const Skin& skin)
{
    QPalette palette;
    palette.setColor(QPalette::Window, skin.window);
    palette.setColor(QPalette::WindowText, skin.text);
    palette.setColor(QPalette::Base, skin.field);
    palette.setColor(QPalette::AlternateBase, skin.panel);
    palette.setColor(QPalette::Text, skin.text);
    palette.setColor(QPalette::PlaceholderText, skin.dimText);
    palette.setColor(QPalette::Button, ButtonColour(skin));
    palette.setColor(QPalette::ButtonText, skin.text);
    palette.setColor(QPalette::BrightText, TextOn(skin.window));
    palette.setColor(QPalette::Highlight, skin.accent);
    palette.setColor(QPalette::HighlightedText, TextOn(skin.accent));
    palette.setColor(QPalette::Link, skin.accent);
    palette.setColor(QPalette::ToolTipBase, skin.field);
    palette.setColor(QPalette::ToolTipText, skin.text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, skin.disabledText);
    return palette;
}

// Focus is the accent, selections are calm: the palette alone has one colour for both.
constexpr const char* kStyle = R"(
* { dialogbuttonbox-buttons-have-icons: 0; }
QToolTip { color: @text; background: @field; border: 1px solid @border; padding: 3px; }
QMenu { background: @panel; border: 1px solid @border; padding: 4px 0; }
QMenu::item { padding: 5px 28px 5px 24px; }
QMenu::item:selected { background: @selection; }
QMenu::item:disabled { color: @disabledText; }
QMenu::separator { height: 1px; background: @border; margin: 4px 8px; }
QMenu::indicator { width: 12px; height: 12px; left: 7px; }
QStatusBar { background: @window; border-top: 1px solid @border; }
QStatusBar::item { border: none; }
QStatusBar QLabel { color: @dimText; padding: 3px 8px; }
QSplitter::handle { background: @border; }
QLineEdit, QPlainTextEdit { selection-background-color: @selection; selection-color: @text;
    border: 1px solid @border; border-radius: 2px; padding: 2px; background: @field; }
QLineEdit:focus, QPlainTextEdit:focus { border: 1px solid @accent; }
QAbstractSpinBox QLineEdit, QComboBox QLineEdit { border: none; padding: 0; background: transparent; }
QTreeView, QListView { border: 1px solid @border; background: @field; outline: none; }
QTreeView:focus, QListView:focus { border: 1px solid @accent; }
QTreeView::item, QListView::item { border: none; padding: 3px 6px 3px 2px; }
QTreeView::item:selected, QListView::item:selected { background: @selection; color: @text; }
QTreeView::item:hover:!selected, QListView::item:hover:!selected { background: @panel; }
QAbstractSpinBox, QComboBox { selection-background-color: @selection; selection-color: @text; }
QLabel[role="heading"] { color: @text; font-weight: bold; }
QLabel[role="hint"] { color: @dimText; }
QLabel[role="overlay"] { color: @dimText; background: @panel; border-radius: 4px; padding: 8px 12px; }
QLabel[role="fault"] { color: @fault; }
QHeaderView::section { background: @panel; color: @dimText; border: none; padding: 3px 4px;
    border-right: 1px solid @border; border-bottom: 1px solid @border; }
QWidget[role="panel"] { background: @panel; }
QPushButton, QToolButton { background: @button; border: 1px solid @border; border-radius: 3px;
    padding: 4px 8px; }
QPushButton:hover, QToolButton:hover { background: @selection; }
QPushButton:pressed, QToolButton:pressed, QToolButton:checked { background: @selection;
    border-color: @dimText; }
QPushButton:focus, QToolButton:focus { border-color: @accent; outline: none; }
QToolButton[role="tool"] { background: transparent; border-color: transparent; padding: 3px; }
QToolButton[role="tool"]:hover, QToolButton[role="tool"]:checked { background: @selection; }
QToolButton[role="tool"]:focus { border-color: @accent; }
QToolButton[role="switch"] { padding: 4px 2px; }
QToolButton[role="switch"]:checked { color: @accent; border-color: @dimText; }
QToolButton[role="switch"]:focus { border-color: @accent; }
QToolButton[role="small"] { padding: 2px 4px; }
QToolButton[role="deck"] { padding: 3px 5px; }
)";

QString StyleSheet(const Skin& skin)
{
    QString sheet = QString::fromLatin1(kStyle);
    const std::pair<const char*, QColor> names[] = {
        {"@text", skin.text},
        {"@field", skin.field},
        {"@border", skin.border},
        {"@window", skin.window},
        {"@panel", skin.panel},
        {"@selection", skin.selection},
        {"@dimText", skin.dimText},
        {"@disabledText", skin.disabledText},
        {"@accent", skin.accent},
        {"@fault", skin.fault},
        {"@button", ButtonColour(skin)},
    };
    for (const auto& [name, colour] : names)
        sheet.replace(QLatin1String(name), colour.name());
    return sheet;
}

} // namespace

Skin LoadSkin()
{
    Skin skin;
    skin.window = Colour(L"keWindowBKColor", 0xFF2B2B2E);
    skin.text = Colour(L"keWindowTextColor", 0xFFE2E2E4);
    skin.disabledText = Colour(L"keDisabledTextColor", 0xFF808084);
    skin.accent = Colour(L"keFocusColor", 0xFFFFA500);
    skin.panel = Colour(L"keTitlerPanelColor", 0xFF323236);
    skin.field = Colour(L"keTitlerFieldColor", 0xFF1F1F22);
    skin.border = Colour(L"keTitlerBorderColor", 0xFF46464B);
    skin.dimText = Colour(L"keTitlerDimTextColor", 0xFFABABB2);
    skin.selection = Colour(L"keTitlerSelectionColor", 0xFF4A5568);
    skin.canvas = Colour(L"keTitlerCanvasColor", 0xFF1A1A1C);
    skin.checkLight = Colour(L"keTitlerCheckLightColor", 0xFF3C3C40);
    skin.checkDark = Colour(L"keTitlerCheckDarkColor", 0xFF333337);
    skin.actionSafe = Colour(L"keTitlerActionSafeColor", 0xA0C8C8D0);
    skin.titleSafe = Colour(L"keTitlerTitleSafeColor", 0xC0FFB347);
    skin.playhead = Colour(L"keTitlerPlayheadColor", 0xFFFF6B5E);
    skin.fault = Colour(L"keTitlerFaultColor", 0xFFFF7B6E);
    skin.key = Colour(L"keTitlerKeyColor", 0xFF9DB4D6);
    return skin;
}

QString ThemeName(Theme theme)
{
    return theme == Theme::Light ? QStringLiteral("light") : QStringLiteral("dark");
}

std::optional<Theme> ThemeOf(const QString& name)
{
    for (const Theme theme : {Theme::Dark, Theme::Light})
        if (ThemeName(theme) == name)
            return theme;
    return std::nullopt;
}

void ApplyTheme(QApplication& application, Theme theme)
{
    KvGuiRes::SetSkinFolder(theme == Theme::Light ? kKvLightSkin : nullptr);
    const Skin skin = LoadSkin();
    if (application.styleSheet().isEmpty())
        application.setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    application.setPalette(PaletteOf(skin));
    application.setStyleSheet(StyleSheet(skin));
    application.setProperty(kThemeProperty, ThemeName(theme));
}

Theme CurrentTheme()
{
    return ThemeOf(qApp->property(kThemeProperty).toString()).value_or(Theme::Dark);
}

} // namespace titler
