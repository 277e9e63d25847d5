// The lines of a list as the toolkit's table models.
#include "KvGuiRes.h"
#include "KvQt.h"
#include "platform/KvReportListImpl.h"
#include "platform/ReportEditor.h"
#include "text/ListTexts.h"

#include <QBrush>

#include <cmath>
#include <optional>
#include <utility>

namespace {

constexpr DWORD kNoFrame = 0xFFFFFFFF;

bool IsFrameColumn(int column)
{
    return column == kKvSubTitleIn || column == kKvSubTitleOut;
}

/// The frame that a value stands for. A number that is no frame is refused, rather than taken for another or
/// for none.
std::optional<DWORD> FrameOf(const QVariant& value)
{
    if (!value.isValid())
        return kNoFrame;
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (!isNumber || !(number >= 0 && number < kNoFrame) || number != std::floor(number))
        return std::nullopt;
    return static_cast<DWORD>(number);
}

} // namespace

struct KvReportListModel::Observer : kv::ReportObserver
{
    Observer(KvReportListModel& owner, CKvReportListCtrl& control) : model(owner), list(&control) {}

    static bool AreTogether(std::span<const int> lines)
    {
        return !lines.empty() && lines.back() - lines.front() + 1 == static_cast<int>(lines.size());
    }
    void Changing(int kind, std::span<const int> lines) override
    {
        hasBegun = true;
        isReset = !AreTogether(lines);
        if (isReset)
            model.beginResetModel();
        else if (kind == kKvReportInserted)
            model.beginInsertRows({}, lines.front(), lines.back());
        else
            model.beginRemoveRows({}, lines.front(), lines.back());
    }
    void Changed(int kind, std::span<const int> lines) override
    {
        if (kind == kKvReportTextChanged)
            emit model.dataChanged(model.index(lines.front(), 0),
                                   model.index(lines.front(), model.columnCount() - 1));
        else if (kind == kKvReportOrderChanged)
            Reorder(lines);
        else if (!std::exchange(hasBegun, false))
            Reset();
        else if (isReset)
            model.endResetModel();
        else if (kind == kKvReportInserted)
            model.endInsertRows();
        else
            model.endRemoveRows();
    }
    void Reorder(std::span<const int> order)
    {
        emit model.layoutAboutToBeChanged();
        std::vector<int> placeOf(order.size());
        for (std::size_t i = 0; i < order.size(); ++i)
            placeOf[static_cast<std::size_t>(order[i])] = static_cast<int>(i);
        const QModelIndexList before = model.persistentIndexList();
        QModelIndexList after;
        for (const QModelIndex& index : before)
            after << model.index(placeOf[static_cast<std::size_t>(index.row())], index.column());
        model.changePersistentIndexList(before, after);
        emit model.layoutChanged();
    }
    void ColumnAdding(int column) override
    {
        hasBegun = true;
        model.beginInsertColumns({}, column, column);
    }
    void ColumnAdded() override { std::exchange(hasBegun, false) ? model.endInsertColumns() : Reset(); }
    /// A model that was made while the list was at work has not heard the beginning.
    void Reset()
    {
        model.beginResetModel();
        model.endResetModel();
    }
    void HeaderChanged(int column) override { emit model.headerDataChanged(Qt::Horizontal, column, column); }
    void ListGone() override
    {
        model.beginResetModel();
        list = nullptr;
        model.endResetModel();
    }

    KvReportListModel& model;
    CKvReportListCtrl* list; ///< null once it is gone
    bool isReset = false;
    bool hasBegun = false;
};

// Rows are read where they stand: a public query of a log takes in what was posted, which must not happen
// while a view asks.
KvReportListModel::KvReportListModel(CKvReportListCtrl& list, QObject* parent)
    : QAbstractTableModel(parent)
    , m_observer(std::make_unique<Observer>(*this, list))
{
    list.m_impl->observers.push_back(m_observer.get());
}

KvReportListModel::~KvReportListModel()
{
    if (CKvReportListCtrl* list = List())
        std::erase(list->m_impl->observers, m_observer.get());
}

CKvReportListCtrl* KvReportListModel::List() const
{
    return m_observer->list;
}

int KvReportListModel::rowCount(const QModelIndex& parent) const
{
    return List() && !parent.isValid() ? List()->m_impl->rows.Count() : 0;
}

int KvReportListModel::columnCount(const QModelIndex& parent) const
{
    return List() && !parent.isValid() ? List()->GetColumnCount() : 0;
}

QVariant KvReportListModel::data(const QModelIndex& index, int role) const
{
    if (!hasIndex(index.row(), index.column()))
        return {};
    CKvReportListCtrl& list = *List();
    const kv::ReportRow& row = list.m_impl->rows.Row(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return KvToQString(row.Text(index.column()));
    case Qt::EditRole:
        return KvToQString(list._GetEditText(index.row(), index.column()));
    case Qt::BackgroundRole:
    case Qt::ForegroundRole: {
        DWORD back = 0;
        DWORD text = 0;
        DWORD& colour = role == Qt::BackgroundRole ? back : text;
        if (qobject_cast<const CKvTextListBase*>(&list)) { // its rows have colours of their own
            list.GetCellColors(index.row(), index.column(), &back, &text);
        } else {
            const kv::ReportCellColours own = row.Colours(index.column());
            back = own.hasBack ? own.back : 0;
            text = own.hasText ? own.text : 0;
        }
        return colour != 0 ? QVariant(QBrush(KvToQColor(colour))) : QVariant();
    }
    default:
        return {};
    }
}

QVariant KvReportListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section >= columnCount())
        return QAbstractTableModel::headerData(section, orientation, role);
    return KvToQString(List()->GetHeaderText(section));
}

Qt::ItemFlags KvReportListModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (List() && index.isValid() && List()->_CanEditCell(index.row(), index.column()))
        flags |= Qt::ItemIsEditable;
    return flags;
}

bool KvReportListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !flags(index).testFlag(Qt::ItemIsEditable))
        return false;
    CKvReportListCtrl& list = *List();
    const bool isMultiLine = list._IsMultiLineCell(index.row(), index.column()) != 0;
    const CString text = KvFromQString(isMultiLine ? value.toString() : kv::InOneLine(value.toString()));
    CString why;
    if (!list._ValidateEdit(index.row(), index.column(), text, why))
        return false;
    if (text != list._GetEditText(index.row(), index.column()))
        list._CommitEdit(index.row(), index.column(), text); // may delete the list, and with it the model
    return true;
}

KvSubTitleModel::KvSubTitleModel(CKvSubTitleTxtListEditor& list, QObject* parent)
    : KvReportListModel(list, parent)
    , m_subtitles(&list)
{
}

QVariant KvSubTitleModel::data(const QModelIndex& index, int role) const
{
    if (role != FrameRole || !List() || !index.isValid() || !IsFrameColumn(index.column()))
        return KvReportListModel::data(index, role);
    DWORD in = kNoFrame;
    DWORD out = kNoFrame;
    m_subtitles->GetTimeCode(index.row(), in, out);
    const DWORD frame = index.column() == kKvSubTitleIn ? in : out;
    return frame != kNoFrame ? QVariant(quint32{frame}) : QVariant();
}

bool KvSubTitleModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != FrameRole)
        return KvReportListModel::setData(index, value, role);
    const std::optional<DWORD> frame = FrameOf(value);
    if (!List() || !index.isValid() || !IsFrameColumn(index.column()) || !frame)
        return false;
    const int isIn = index.column() == kKvSubTitleIn ? 1 : 0;
    m_subtitles->RunAsStep(KvGuiRes::LoadStringW(kv::kEditTimecodeStep),
                           [&] { m_subtitles->SetTimeCode(index.row(), *frame, isIn); });
    return true;
}

QHash<int, QByteArray> KvSubTitleModel::roleNames() const
{
    QHash<int, QByteArray> names = KvReportListModel::roleNames();
    names.insert(FrameRole, "frame");
    return names;
}

bool KvSubTitleModel::insertRows(int row, int count, const QModelIndex& parent)
{
    if (!List() || parent.isValid() || count < 1 || row < 0 || row > rowCount())
        return false;
    m_subtitles->RunAsStep(KvGuiRes::LoadStringW(kv::kInsertStep), [&] {
        for (int i = 0; i < count; ++i)
            m_subtitles->InserItem(row, {}, kNoFrame, kNoFrame, nullptr);
    });
    return true;
}

bool KvSubTitleModel::removeRows(int row, int count, const QModelIndex& parent)
{
    if (!List() || parent.isValid() || count < 1 || row < 0 || count > rowCount() - row)
        return false;
    m_subtitles->RunAsStep(KvGuiRes::LoadStringW(kv::kDeleteStep), [&] {
        for (int i = 0; i < count; ++i)
            m_subtitles->DeleteItem(row);
    });
    return true;
}
