#include "title/StopInspector.h"

#include "project/Project.h"
#include "window/Fields.h"
#include "window/Texts.h"

#include <QColorDialog>
#include <QDoubleSpinBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>
#include <QSlider>
#include <QToolButton>

namespace titler {
namespace {

int PercentOf(DWORD colour)
{
    return static_cast<int>(((colour >> 24) * 100 + 127) / 255);
}

DWORD WithOpacity(DWORD colour, int percent)
{
    const auto alpha = static_cast<DWORD>((percent * 255 + 50) / 100);
    return (colour & 0x00FFFFFFu) | (alpha << 24);
}

// The colour over a checkerboard, so that its opacity shows.
QIcon SwatchIcon(DWORD colour, QSize size, qreal ratio)
{
    QPixmap pixmap(size * ratio);
    pixmap.setDevicePixelRatio(ratio);
    QPainter painter(&pixmap);
    constexpr int check = 5;
    for (int y = 0; y * check < size.height(); ++y)
        for (int x = 0; x * check < size.width(); ++x)
            painter.fillRect(x * check, y * check, check, check,
                             (x + y) % 2 == 0 ? QColor(0xCC, 0xCC, 0xCC) : QColor(0xDD, 0xDD, 0xDD));
    painter.fillRect(QRect(QPoint(), size), QColor::fromRgba(colour));
    return QIcon(pixmap);
}

} // namespace

StopInspector::StopInspector()
    : m_swatch(new QToolButton)
    , m_hex(new QLineEdit)
    , m_opacitySlider(new QSlider(Qt::Horizontal))
    , m_opacity(new QSpinBox)
    , m_position(new QDoubleSpinBox)
    , m_place(new QLabel)
{
    BuildFields();
    Connect();
}

void StopInspector::BuildFields()
{
    NameField(*m_swatch, kTextSwatch);
    NameField(*m_hex, kTextColour);
    NameField(*m_opacitySlider, kTextOpacity);
    NameField(*m_opacity, kTextOpacity);
    NameField(*m_position, kTextPosition);
    m_swatch->setObjectName(QStringLiteral("swatch"));
    m_hex->setObjectName(QStringLiteral("hex"));
    m_opacity->setObjectName(QStringLiteral("opacity"));
    m_position->setObjectName(QStringLiteral("position"));
    m_place->setProperty("role", "hint");

    m_swatch->setIconSize(QSize(40, 16));
    m_swatch->setFocusPolicy(Qt::StrongFocus);
    m_swatch->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_hex->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_hex->setMaxLength(9);
    m_opacitySlider->setRange(0, 100);
    m_opacity->setRange(0, 100);
    m_opacity->setSuffix(Text(kTextPercent));
    m_opacity->setKeyboardTracking(false);
    m_position->setRange(0, 100);
    m_position->setDecimals(2);
    m_position->setSuffix(Text(kTextPercent));
    m_position->setKeyboardTracking(false);
    for (QWidget* field : std::initializer_list<QWidget*>{m_hex, m_opacitySlider, m_opacity, m_position})
        JoinProject(*field);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(RowLabel(kTextColour, *m_hex), 0, 0);
    grid->addWidget(m_hex, 0, 1);
    grid->addWidget(m_swatch, 0, 2);
    grid->addWidget(RowLabel(kTextOpacity, *m_opacity), 1, 0);
    grid->addWidget(m_opacitySlider, 1, 1);
    grid->addWidget(m_opacity, 1, 2);
    grid->addWidget(RowLabel(kTextPosition, *m_position), 2, 0);
    grid->addWidget(m_place, 2, 1);
    grid->addWidget(m_position, 2, 2);
    grid->setColumnStretch(1, 1);
}

void StopInspector::Connect()
{
    connect(m_hex, &QLineEdit::editingFinished, this, &StopInspector::OnHexEdited);
    connect(m_swatch, &QToolButton::clicked, this, &StopInspector::ChooseColour);
    connect(m_opacitySlider, &QSlider::valueChanged, this, &StopInspector::OnOpacityEdited);
    connect(m_opacitySlider, &QSlider::sliderReleased, this, &StopInspector::ColourEditEnded);
    connect(m_opacity, &QSpinBox::valueChanged, this, &StopInspector::OnOpacityEdited);
    connect(m_position, &QDoubleSpinBox::valueChanged, this,
            [this](double percent) { emit PositionEdited(percent / 100); });
}

void StopInspector::ShowStop(const std::optional<SKvCGGradientKey>& stop, int index, int count)
{
    setEnabled(stop.has_value());
    if (!stop)
        return;
    m_colour = stop->colour;
    ShowColour();
    const QSignalBlocker blocker(m_position);
    m_position->setValue(static_cast<double>(stop->position) * 100);
    m_place->setText(Text(kTextStopOfMany, {QString::number(index + 1), QString::number(count)}));
}

void StopInspector::ShowColour()
{
    const QSignalBlocker slider(m_opacitySlider);
    const QSignalBlocker spin(m_opacity);
    m_opacitySlider->setValue(PercentOf(m_colour));
    m_opacity->setValue(PercentOf(m_colour));
    if (ParseColour(m_hex->text()) != m_colour)
        m_hex->setText(ColourText(m_colour));
    m_swatch->setIcon(SwatchIcon(m_colour, m_swatch->iconSize(), devicePixelRatioF()));
}

void StopInspector::OnHexEdited()
{
    QString text = m_hex->text().trimmed();
    if (!text.startsWith(u'#'))
        text.prepend(u'#');
    const std::optional<DWORD> colour = ParseColour(text);
    m_hex->setText(ColourText(colour.value_or(m_colour)));
    if (!colour || *colour == m_colour)
        return;
    emit ColourEditEnded();
    emit ColourEdited(*colour);
    emit ColourEditEnded();
}

void StopInspector::OnOpacityEdited(int percent)
{
    const DWORD colour = WithOpacity(m_colour, percent);
    if (colour != m_colour)
        emit ColourEdited(colour);
}

void StopInspector::ChooseColour()
{
    auto* dialog = new QColorDialog(QColor::fromRgba(m_colour), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(Text(kTextChooseColour));
    dialog->setOptions(QColorDialog::ShowAlphaChannel | QColorDialog::DontUseNativeDialog);
    connect(dialog, &QColorDialog::currentColorChanged, this,
            [this](const QColor& colour) { emit ColourTried(colour.rgba()); });
    connect(dialog, &QColorDialog::finished, this,
            [this](int result) { emit ColourDialogClosed(result == QDialog::Accepted); });
    emit ColourDialogOpened();
    dialog->open();
}

} // namespace titler
