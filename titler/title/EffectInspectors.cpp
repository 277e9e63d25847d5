#include "title/EffectInspectors.h"

#include "edit/Document.h"
#include "window/Fields.h"
#include "window/Texts.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>

namespace titler {

EffectInspector::EffectInspector(Document& document, UINT nameId, UINT step)
    : m_document(document)
    , m_on(new QCheckBox)
    , m_rows(new QGridLayout(this))
{
    NameButton(*m_on, nameId);
    m_on->setObjectName(QStringLiteral("on"));
    m_rows->setContentsMargins(0, 0, 0, 0);
    m_rows->setColumnStretch(1, 1);
    m_rows->addWidget(m_on, 0, 0, 1, 2);
    connect(m_on, &QCheckBox::toggled, this, [this, step](bool on) {
        m_document.Edit(EditKind::Single, step, [&](Project& project) { IsOn(project.title) = on; });
    });
    connect(&document, &Document::ProjectChanged, this, &EffectInspector::ShowProject);
}

void EffectInspector::AddNumber(const Number& number, double& (*value)(Title&))
{
    auto* box = new QDoubleSpinBox;
    PrepareNumber(*box, number.nameId, number.least, number.most, kTextPercent);
    box->setDecimals(2);
    box->setSingleStep(0.1);
    box->setObjectName(QLatin1String(number.objectName));
    const int row = m_rows->rowCount();
    m_rows->addWidget(RowLabel(number.nameId, *box), row, 0);
    m_rows->addWidget(box, row, 1);
    m_fields << Field{box, value};
    connect(box, &QDoubleSpinBox::valueChanged, this,
            [this, value, kind = number.kind, step = number.step](double percent) {
                m_document.Edit(kind, step, [&](Project& project) { value(project.title) = percent; });
            });
}

void EffectInspector::ShowProject()
{
    Title title; // its copy: where a value stands is told for changing it
    title.outline = m_document.Current().title.outline;
    title.shadow = m_document.Current().title.shadow;
    const QSignalBlocker switching(m_on);
    m_on->setChecked(IsOn(title));
    for (const Field& field : m_fields) {
        const QSignalBlocker blocker(field.box);
        field.box->setEnabled(IsOn(title));
        field.box->setValue(field.value(title));
    }
}

OutlineInspector::OutlineInspector(Document& document)
    : EffectInspector(document, kTextOutlineOn, kStepOutline)
{
    AddNumber(
        {"outlineWidth", kTextOutlineWidth, 0, kWidestOutline, EditKind::OutlineWidth, kStepOutlineWidth},
        [](Title& title) -> double& { return title.outline.width; });
    ShowProject();
}

bool& OutlineInspector::IsOn(Title& title) const
{
    return title.outline.on;
}

ShadowInspector::ShadowInspector(Document& document) : EffectInspector(document, kTextShadowOn, kStepShadow)
{
    AddNumber(
        {"shadowX", kTextShadowX, -kFarthestShadow, kFarthestShadow, EditKind::ShadowX, kStepShadowPlace},
        [](Title& title) -> double& { return title.shadow.x; });
    AddNumber(
        {"shadowY", kTextShadowY, -kFarthestShadow, kFarthestShadow, EditKind::ShadowY, kStepShadowPlace},
        [](Title& title) -> double& { return title.shadow.y; });
    AddNumber({"shadowBlur", kTextShadowBlur, 0, kWidestBlur, EditKind::ShadowBlur, kStepShadowBlur},
              [](Title& title) -> double& { return title.shadow.blur; });
    ShowProject();
}

bool& ShadowInspector::IsOn(Title& title) const
{
    return title.shadow.on;
}

} // namespace titler
