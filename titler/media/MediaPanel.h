// The media panel: the files of a folder, grouped into clips by the naming rules.
#pragma once

#include "media/MediaModel.h"

#include <QSortFilterProxyModel>
#include <QWidget>

#include <optional>

class QLabel;
class QLineEdit;
class QStackedWidget;
class QTreeView;

namespace titler {

class NamingRules;

class MediaPanel : public QWidget
{
    Q_OBJECT

public:
    /// @param rules must outlive the panel. When they change the folder is read again, once it is shown.
    explicit MediaPanel(NamingRules& rules, QWidget* parent = nullptr);

    void OpenFolder(const QString& folder);
    /// Reads the open folder again; without one nothing happens.
    void ScanAgain();
    bool IsBusy() const { return m_scanner.IsScanning(); }
    const MediaModel& Model() const { return m_model; }
    /// What was found, in words.
    QString Summary() const;

signals:
    /// The panel's own button was pressed.
    void FolderWanted();
    /// The list is complete, or the folder cannot be read.
    void Ready();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void BuildPanel();
    void OnClips(const QVector<MediaClip>& clips, int done, int total);
    void OnFinished(bool readable);
    void OnFilter(const QString& text);
    /// What there is to say of the folder, in the present language.
    void ShowState();
    void ShowSummary();
    void ShowHint(const QString& text);
    void ShowList();

    NamingRules& m_rules;
    bool m_isStale = false; ///< grouped by rules that have changed
    QString m_folder;
    int m_total = 0;
    std::optional<int> m_percent; ///< of what is being read; nothing once it is read
    bool m_isUnreadable = false;
    MediaModel m_model;
    QSortFilterProxyModel m_filtered;
    QLineEdit* m_filter;
    QStackedWidget* m_pages;
    QTreeView* m_list;
    QLabel* m_hint;
    QLabel* m_summary;
    MediaScanner m_scanner;
};

} // namespace titler
