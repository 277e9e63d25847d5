// What one sees first: the sample, a new project, those that were open lately.
#pragma once

#include "KvVideoFormat.h"

#include <QScrollArea>
#include <QStringList>

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;
class QVBoxLayout;

namespace titler {

class StartPage : public QScrollArea
{
    Q_OBJECT

public:
    explicit StartPage(QWidget* parent = nullptr);

    /// @param files the latest first. Those that are not there are grey; they can only be removed.
    void ShowProjects(const QStringList& files);

signals:
    void SampleWanted();
    void OpenWanted();
    void NewWanted(const SKvVideoResolution& format);
    void ProjectWanted(const QString& file);
    void RemoveWanted(const QString& file);
    /// Escape: on with the project that is open, an empty one at first.
    void Left();
    /// An empty project is what is wanted, and this is its text's begin.
    void Typed(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPushButton* AddButton(QVBoxLayout& column, UINT nameId, void (StartPage::*wanted)());
    QWidget* BuildBegin();
    QWidget* BuildRecent();
    bool IsTyped(const QKeyEvent& key) const;
    void OpenCurrent();
    void RemoveCurrent();
    QStringList Projects() const;
    void ShowButtons();

    QPushButton* m_sample = nullptr;
    QComboBox* m_formats;
    QListWidget* m_projects;
    QLabel* m_noProjects;
    QPushButton* m_remove;
};

} // namespace titler
