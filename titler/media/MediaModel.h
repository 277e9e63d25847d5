// The media list as a tree: clips, and under each the files that belong to it. Rows are only ever added.
#pragma once

#include "media/MediaScanner.h"

#include <QAbstractItemModel>

namespace titler {

class MediaModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column
    {
        NameColumn,
        CountColumn,
        ColumnCount
    };

    using QAbstractItemModel::QAbstractItemModel;

    /// Empties the list. @param folder for the tool tips.
    void Start(const QString& folder);
    void Append(const QVector<MediaClip>& clips);
    int ClipCount() const { return static_cast<int>(m_clips.size()); }
    int ClipsWithSiblings() const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    const QString& NameAt(const QModelIndex& index) const;
    QVariant CountAt(const QModelIndex& index, int role) const;

    QString m_folder;
    QVector<MediaClip> m_clips;
};

} // namespace titler
