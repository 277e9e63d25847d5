#include "chrome/CaptionButtons.h"

#include "KvGuiRes.h"
#include "chrome/CaptionLayout.h"
#include "platform/FontSheet.h"
#include "platform/OwnSizes.h"
#include "platform/SkinColours.h"

#include <algorithm>

namespace kv {

namespace {

struct ButtonLook
{
    UINT number;
    const wchar_t* picture;
    UINT tip;
};

// In the order in which they stand, from right to left.
constexpr ButtonLook kWindowLooks[] = {{kKvCaptionClose, L"wndclose", 12035},
                                       {kKvCaptionMaximise, L"wndmaxmize", 12034},
                                       {kKvCaptionMinimise, L"wndminmize", 12033},
                                       {kKvCaptionMenu, L"wndappmenu", 12032}};
constexpr ButtonLook kRestore = {kKvCaptionMaximise, L"wndrestore", 12060};
constexpr QSize kFallbackSize{34, 22};

// Its letters are level with those of the items beside it, wherever the button stands.
class ApplicationButton : public CKvButton
{
public:
    explicit ApplicationButton(const ButtonTextColours& colours) : m_colours(colours) {}
    /// @return for a style sheet.
    const QString& LetterSheet() const { return m_letters; }
    void SetLetters(const QFont& font) { m_letters = FontSheet(font); }

protected:
    QColor TextColour() const override
    {
        if (!isEnabled())
            return m_colours.disabled;
        return underMouse() || isDown() ? m_colours.hovered : m_colours.normal;
    }
    QRect TextRoom() const override
    {
        const CRect room = CKvButton::TextRoom().translated(pos());
        const int height = fontMetrics().height();
        const CRect band = CaptionBand(parentWidget()->rect(), CaptionGrowth(height));
        return QRect(LevelWithItems(band, room, height)).translated(-pos());
    }

private:
    const ButtonTextColours& m_colours;
    QString m_letters;
};

// Of a button, without the colours of its tip. The application button's room is made for the bar's letters.
QString ButtonSheet(const QWidget& button)
{
    const auto* const application = dynamic_cast<const ApplicationButton*>(&button);
    if (!application)
        return OwnSizesSheet();
    return OwnSizesSheet() + QStringLiteral("QAbstractButton { %1 }").arg(application->LetterSheet());
}

QSize PictureSize(const wchar_t* picture)
{
    const QSize size = KvGuiRes::LoadImageW(picture).Size();
    return size.isEmpty() ? kFallbackSize : size;
}

} // namespace

void CaptionButtons::Create(QWidget& bar, const CRect& application)
{
    for (CKvButton*& button : m_buttons) {
        button = &button == &m_buttons.front() ? new ApplicationButton(m_colours) : new CKvButton;
        KeepOwnSizes(*button);
    }
    Get(kKvCaptionApplication)
        .CreateButton(kKvCaptionApplication, &bar, application, WS_VISIBLE, nullptr, nullptr);
    for (const ButtonLook& look : kWindowLooks) {
        const QRect place(QPoint(), PictureSize(look.picture));
        Get(look.number).CreateButton(look.number, &bar, place, WS_VISIBLE, look.picture, nullptr);
    }
    for (std::size_t i = 0; i < m_buttons.size(); ++i)
        m_buttons[i]->setVisible(!m_hidden[i]);
    Renew();
}

void CaptionButtons::Show(UINT number, bool visible)
{
    m_hidden[number - kKvCaptionApplication] = !visible;
    if (Exist())
        Get(number).setVisible(visible);
}

bool CaptionButtons::Contain(const QObject* object) const
{
    return std::find(m_buttons.begin(), m_buttons.end(), object) != m_buttons.end();
}

void CaptionButtons::Layout(const CRect& band, int growth)
{
    std::array<int, 4> widths{};
    for (std::size_t i = 0; i < widths.size(); ++i)
        widths[i] = Get(kWindowLooks[i].number).width();
    const std::array<int, 4> lefts = WindowButtonLefts(band, widths);
    for (std::size_t i = 0; i < lefts.size(); ++i)
        Get(kWindowLooks[i].number).move(lefts[i], growth / 2);
}

void CaptionButtons::ShowMaximised(bool maximised)
{
    m_maximised = maximised;
    Renew();
}

void CaptionButtons::SetTextFont(const QFont& font)
{
    auto& button = static_cast<ApplicationButton&>(Get(kKvCaptionApplication));
    button.setFont(font);
    button.SetLetters(font);
    if (const QString sheet = ButtonSheet(button); !button.styleSheet().startsWith(sheet))
        button.setStyleSheet(sheet);
}

void CaptionButtons::SetTextColours(const ButtonTextColours& colours)
{
    m_colours = colours;
    Get(kKvCaptionApplication).update();
}

void CaptionButtons::Renew()
{
    for (const ButtonLook& common : kWindowLooks) {
        const ButtonLook& look = common.number == kKvCaptionMaximise && m_maximised ? kRestore : common;
        CKvButton& button = Get(look.number);
        button.UpdateBitmap(look.picture);
        button.SetToolTip(KvGuiRes::LoadStringW(look.tip).c_str());
    }
}

void CaptionButtons::ColourTip(QWidget& button)
{
    DWORD background = 0;
    DWORD text = 0;
    if (!KvGuiRes::LoadColor(L"keButtonTipsBackground", background) ||
        !KvGuiRes::LoadColor(L"keButtonTipsText", text))
        return;
    // The tip is the toolkit's window; a style sheet is how a widget gives its tips colours of their own.
    const QString sheet =
        ButtonSheet(button) + QStringLiteral("QToolTip { background-color: %1; color: %2; }")
                                  .arg(QColor::fromRgb(background).name(), QColor::fromRgb(text).name());
    if (button.styleSheet() != sheet)
        button.setStyleSheet(sheet);
}

} // namespace kv
