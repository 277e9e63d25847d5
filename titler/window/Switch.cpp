#include "window/Switch.h"

#include "window/Fields.h"
#include "window/Language.h"
#include "window/Texts.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QToolButton>

namespace titler {

Switch::Switch(UINT nameId, std::initializer_list<UINT> choices) : m_group(new QButtonGroup(this))
{
    InEachLanguage(*this, [this, nameId] { setAccessibleName(WithoutMnemonic(Text(nameId))); });
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    for (const UINT choice : choices) {
        auto* button = new QToolButton;
        NameField(*button, choice);
        NameButton(*button, choice);
        button->setCheckable(true);
        button->setFocusPolicy(Qt::StrongFocus);
        button->setProperty("role", "switch");
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        m_group->addButton(button, static_cast<int>(m_group->buttons().size()));
        row->addWidget(button);
    }
    Check(0);
    TabAtChecked(*m_group);
    connect(m_group, &QButtonGroup::idClicked, this, &Switch::Chosen);
}

void Switch::Check(int index)
{
    QAbstractButton& button = Button(index);
    button.setChecked(true);
    setFocusProxy(&button);
}

int Switch::Checked() const
{
    return m_group->checkedId();
}

QAbstractButton& Switch::Button(int index) const
{
    return *m_group->button(index);
}

} // namespace titler
