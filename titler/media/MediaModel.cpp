#include "media/MediaModel.h"

#include "window/Texts.h"

#include <QDir>

#include <algorithm>

namespace titler {
namespace {

// A clip's index carries no id, a sibling's its clip's row plus 1.
constexpr quintptr kClipId = 0;

} // namespace

void MediaModel::Start(const QString& folder)
{
    beginResetModel();
    m_folder = folder;
    m_clips.clear();
    endResetModel();
}

void MediaModel::Append(const QVector<MediaClip>& clips)
{
    if (clips.isEmpty())
        return;
    beginInsertRows({}, ClipCount(), ClipCount() + static_cast<int>(clips.size()) - 1);
    m_clips += clips;
    endInsertRows();
}

int MediaModel::ClipsWithSiblings() const
{
    return static_cast<int>(std::count_if(m_clips.begin(), m_clips.end(),
                                          [](const MediaClip& clip) { return !clip.siblings.isEmpty(); }));
}

QModelIndex MediaModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : kClipId);
}

QModelIndex MediaModel::parent(const QModelIndex& child) const
{
    if (!child.isValid() || child.internalId() == kClipId)
        return {};
    return createIndex(static_cast<int>(child.internalId() - 1), NameColumn, kClipId);
}

int MediaModel::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return ClipCount();
    if (parent.internalId() != kClipId || parent.column() != NameColumn)
        return 0;
    return static_cast<int>(m_clips[parent.row()].siblings.size());
}

int MediaModel::columnCount(const QModelIndex&) const
{
    return ColumnCount;
}

const QString& MediaModel::NameAt(const QModelIndex& index) const
{
    if (index.internalId() == kClipId)
        return m_clips[index.row()].name;
    return m_clips[static_cast<qsizetype>(index.internalId() - 1)].siblings[index.row()];
}

QVariant MediaModel::CountAt(const QModelIndex& index, int role) const
{
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignCenter);
    if (role != Qt::DisplayRole || index.internalId() != kClipId)
        return {};
    const auto siblings = m_clips[index.row()].siblings.size();
    return siblings == 0 ? QVariant() : QVariant(QStringLiteral("+%1").arg(siblings));
}

QVariant MediaModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == Qt::ToolTipRole)
        return QDir::toNativeSeparators(QDir(m_folder).filePath(NameAt(index)));
    if (role == Qt::AccessibleDescriptionRole && index.internalId() == kClipId)
        return Text(kTextMediaClipTip, {QString::number(m_clips[index.row()].siblings.size())});
    if (index.column() == CountColumn)
        return CountAt(index, role);
    return role == Qt::DisplayRole ? QVariant(NameAt(index)) : QVariant();
}

} // namespace titler
