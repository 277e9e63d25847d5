#include "platform/DialogItems.h"

#include "KvGuiRes.h"

#include <QCheckBox>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpression>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QToolTip>

#include <algorithm>
#include <limits>
#include <utility>

namespace kv {
namespace {

/// Shows the tool tip of a control whose text is cut.
void TellWhole(const QEvent& event, QString text, QWidget& control)
{
    if (!control.toolTip().isEmpty())
        text += u'\n' + control.toolTip();
    // As rich text, whose long lines are broken.
    QToolTip::showText(static_cast<const QHelpEvent&>(event).globalPos(),
                       Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal), &control);
}

class Button final : public QPushButton
{
public:
    using QPushButton::QPushButton;

    bool IsWhole(const QSize& size) const
    {
        QStyleOptionButton option;
        initStyleOption(&option);
        option.rect = QRect(QPoint(), size);
        return Cut(option) == text();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QStylePainter painter(this);
        painter.setLayoutDirection(layoutDirection()); // else the program's: signs such as "|<" change places
        QStyleOptionButton option;
        initStyleOption(&option);
        option.text = Shown();
        painter.drawControl(QStyle::CE_PushButton, option);
    }

    // Enter is the dialog's; some desktops would press with it too.
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            event->ignore();
        else
            QPushButton::keyPressEvent(event);
    }

    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::ToolTip || Shown() == text())
            return QPushButton::event(event);
        static const QRegularExpression mark(QStringLiteral("&(.)")); // of the letter for Alt
        TellWhole(*event, text().replace(mark, QStringLiteral("\\1")), *this);
        return true;
    }

private:
    QString Shown() const
    {
        QStyleOptionButton option;
        initStyleOption(&option);
        return Cut(option);
    }

    QString Cut(const QStyleOptionButton& option) const
    {
        const int width = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this).width();
        return fontMetrics().elidedText(text(), Qt::ElideRight, width, Qt::TextShowMnemonic);
    }
};

/// A check box in the colours of the dialog, which a style sheet gives its text but not its mark.
class CheckBox final : public QCheckBox
{
public:
    using QCheckBox::QCheckBox;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QStylePainter painter(this);
        QStyleOptionButton option;
        initStyleOption(&option);
        painter.drawControl(QStyle::CE_CheckBox, option);
        if (!isChecked())
            return;
        QRectF box = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this);
        box = box.marginsRemoved({box.width() / 4, box.height() / 4, box.width() / 4, box.height() / 4});
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(
            QPen(palette().color(foregroundRole()), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(
            QPolygonF({box.center() - QPointF(box.width() / 2, 0),
                       QPointF(box.center().x() - box.width() / 8, box.bottom()), box.topRight()}));
    }

    // Enter is the dialog's.
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            event->ignore();
        else
            QCheckBox::keyPressEvent(event);
    }
};

class Label final : public QLabel
{
public:
    using QLabel::QLabel;

    bool IsWhole(const QSize& size) const { return !IsCut(QRect(QPoint(), size)); }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        if (!IsCut(contentsRect())) {
            QLabel::paintEvent(event);
            return;
        }
        QPainter painter(this);
        const QRect rect = contentsRect();
        style()->drawItemText(&painter, rect, static_cast<int>(alignment()), palette(), isEnabled(),
                              fontMetrics().elidedText(text(), Qt::ElideRight, rect.width()),
                              foregroundRole());
    }

    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::ToolTip || !IsCut(contentsRect()))
            return QLabel::event(event);
        TellWhole(*event, text(), *this);
        return true;
    }

private:
    bool IsCut(const QRect& rect) const
    {
        const QRect needed =
            fontMetrics().boundingRect(rect, static_cast<int>(alignment()) | Qt::TextWordWrap, text());
        return needed.width() > rect.width() || needed.height() > rect.height();
    }
};

} // namespace

std::unique_ptr<QWidget> MakeDialogControl(const DialogItem& item, QWidget* dialog)
{
    if (item.kind == DialogItemKind::Static) {
        auto label = std::make_unique<Label>(dialog);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        return label;
    }
    if (item.kind == DialogItemKind::Edit) {
        auto edit = std::make_unique<QLineEdit>(dialog);
        edit->setMaxLength(std::numeric_limits<int>::max());
        return edit;
    }
    if (item.kind == DialogItemKind::CheckBox)
        return std::make_unique<CheckBox>(dialog);
    auto button = std::make_unique<Button>(dialog);
    button->setDefault(item.kind == DialogItemKind::DefaultButton);
    button->setAutoDefault(button->isDefault()); // the focus on another does not change it
    return button;
}

bool IsTextWhole(const QWidget& control, const QSize& size)
{
    if (const auto* button = dynamic_cast<const Button*>(&control))
        return button->IsWhole(size);
    if (const auto* label = dynamic_cast<const Label*>(&control))
        return label->IsWhole(size);
    const auto* box = dynamic_cast<const CheckBox*>(&control);
    return !box || box->sizeHint().width() <= size.width();
}

void SetDialogTexts(const DialogItem& item, QWidget& control, DialogTexts& shown)
{
    const QString text = KvToQString(KvGuiRes::LoadDialogText(item.dialog, item.text));
    const QString lastText = std::exchange(shown.text, text);
    if (auto* label = qobject_cast<QLabel*>(&control); label && label->text() == lastText)
        label->setText(text);
    const QString tip = KvToQString(KvGuiRes::LoadTip(item.id));
    const QString lastTip = std::exchange(shown.tip, tip);
    if (item.kind != DialogItemKind::Static && control.toolTip() == lastTip)
        control.setToolTip(tip);
    auto* button = qobject_cast<QAbstractButton*>(&control);
    if (!button || button->text() != lastText)
        return;
    button->setText(text);
    // A sign such as "|<" says nothing when it is read aloud.
    const bool hasWords =
        std::any_of(text.begin(), text.end(), [](QChar unit) { return unit.isLetterOrNumber(); });
    button->setAccessibleName(hasWords ? QString() : tip);
}

} // namespace kv
