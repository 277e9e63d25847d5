// Templates of rows: the submenu that gives them to the selected ones.
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "subtitles/SubtitleStyle.h"
#include "time/TransportBar.h"
#include "window/Commands.h"
#include "window/Texts.h"

#include <QAction>
#include <QMenu>

namespace titler {
namespace {

constexpr int kMostOthers = 9; // names that are not the program's own

} // namespace

// The entries are there from the beginning: a menu that is a copy of this one has them, too.
QMenu* SubtitlePanel::BuildTemplates()
{
    auto* menu = new QMenu(this);
    menu->setToolTipsVisible(true);
    menu->menuAction()->setIcon(SkinIcon(L"titler_tool_template"));
    NameCommand(*menu->menuAction(), kTextSubtitleTemplates);
    const auto add = [&](const QKeySequence& key) {
        auto* entry = MakeCommand(kTextSubtitleTemplate, nullptr, key, [] {});
        connect(entry, &QAction::triggered, this, [this, entry] {
            if (Settle())
                UseTemplate(entry->data().toString());
        });
        entry->setCheckable(true);
        menu->addAction(entry);
        m_templates << entry;
        return entry;
    };
    int key = Qt::Key_1;
    for (qsizetype i = 0; i < SubtitleTemplates().size(); ++i)
        add(Qt::ALT | static_cast<Qt::Key>(key++));
    menu->addSeparator();
    for (int i = 0; i < kMostOthers; ++i)
        add({})->setVisible(false);
    menu->addSeparator();
    add({});
    return menu;
}

// Rows keep the names that they have: the program knows its own in every language.
void SubtitlePanel::NameTemplates()
{
    LearnTemplateNames();
    const QStringList known = SubtitleTemplates();
    for (qsizetype i = 0; i < known.size(); ++i) {
        m_templates[i]->setData(known[i]);
        m_templates[i]->setText(Text(kTextSubtitleTemplate, {known[i]}));
    }
    m_templates.back()->setText(Text(kTextSubtitleNoTemplate));
    ShowTemplates();
}

void SubtitlePanel::ShowTemplates()
{
    const QStringList known = SubtitleTemplates();
    QStringList others;
    for (int row = 0; row < m_list->GetItemCount() && others.size() < kMostOthers; ++row) {
        const QString name =
            TemplateNamed(QString::fromStdWString(m_list->GetItemText(row, kKvSubTitleTemplate)));
        if (!name.isEmpty() && !known.contains(name) && !others.contains(name))
            others << name;
    }
    for (int i = 0; i < kMostOthers; ++i) {
        QAction& entry = *m_templates[known.size() + i];
        entry.setVisible(i < others.size());
        entry.setData(others.value(i));
        entry.setText(Text(kTextSubtitleTemplate, {others.value(i).replace(u'&', QLatin1String("&&"))}));
    }
    CheckTemplate();
}

void SubtitlePanel::CheckTemplate()
{
    const QString current =
        TemplateNamed(QString::fromStdWString(m_list->GetItemText(Current(), kKvSubTitleTemplate)));
    for (QAction* entry : m_templates)
        entry->setChecked(entry->isVisible() && entry->data().toString() == current);
}

void SubtitlePanel::UseTemplate(const QString& name)
{
    const std::vector<int> rows = SelectedRows();
    const UINT step = name.isEmpty() ? kStepSubtitleNoTemplate : kStepSubtitleTemplate;
    Edit(StepOfRows(step, rows, name), [&, text = name.toStdWString()] {
        for (const int row : rows) {
            const SubtitleTimes times = m_list->Times(row);
            m_list->ModifyItem(row, nullptr, &times.in, &times.out, text.c_str());
        }
    });
}

} // namespace titler
