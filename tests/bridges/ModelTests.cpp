#include "KvQt.h"
#include "KvTextEditListCtrl.h"

#include <QAbstractItemModelTester>
#include <QBrush>
#include <QPointer>
#include <QSignalSpy>
#include <QSortFilterProxyModel>
#include <QUndoStack>

#include <gtest/gtest.h>
#include <random>

namespace {

struct Subtitles
{
    Subtitles() { list->Create(CRect(0, 0, 300, 200), WS_CHILD, &parent, 1); }
    void Add(int count)
    {
        for (int i = 0; i < count; ++i)
            list->InserItem(-1, L"row " + std::to_wstring(i), static_cast<DWORD>(i * 10),
                            static_cast<DWORD>(i * 10 + 5), L"Title");
    }
    QWidget parent;
    CKvSubTitleTxtListEditor* list = new CKvSubTitleTxtListEditor; ///< the parent's
};

// The model is the list after any change, and keeps the promises that views rely on.
TEST(KvQtModel, FollowsWhateverChangesInTheList)
{
    Subtitles host;
    host.Add(10);
    KvSubTitleModel model(*host.list);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    QSortFilterProxyModel sorted;
    sorted.setSourceModel(&model);
    sorted.sort(0, Qt::DescendingOrder);
    std::mt19937 random(3);
    for (int i = 0; i < 400; ++i) {
        const int line = static_cast<int>(random() % 15);
        switch (random() % 9) {
        case 0:
            host.list->DeleteItem(line);
            break;
        case 1:
            host.list->ModifyItem(line, std::to_wstring(random()).c_str(), nullptr, nullptr, nullptr);
            break;
        case 2:
            host.list->SortItems(static_cast<int>(random() % 4), static_cast<BOOL>(random() % 2));
            break;
        case 3:
            host.list->SetTimeCode(line, static_cast<DWORD>(random() % 1000), 1);
            break;
        case 4:
            host.list->GetUndoStack()->undo();
            break;
        case 5:
            if (i % 40 == 0)
                host.list->EmptyAll();
            break;
        case 6:
            model.removeRows(line, 2);
            break;
        default:
            host.list->InserItem(std::min(line, host.list->GetItemCount()), std::to_wstring(random()), 5, 9,
                                 L"");
        }
        ASSERT_EQ(model.rowCount(), host.list->GetItemCount());
        ASSERT_EQ(sorted.rowCount(), model.rowCount());
        for (int row = 0; row < model.rowCount(); ++row)
            ASSERT_EQ(KvFromQString(model.index(row, 0).data().toString()), host.list->GetItemText(row, 0));
        for (int row = 1; row < sorted.rowCount(); ++row)
            ASSERT_GE(sorted.index(row - 1, 0).data().toString(), sorted.index(row, 0).data().toString());
    }
}

TEST(KvQtModel, AnEditOfAViewIsOneOfTheUser)
{
    Subtitles host;
    host.Add(3);
    host.list->SetTimecodeFormat(kKvFrameRate25, 0);
    KvSubTitleModel model(*host.list);
    const QSignalSpy edited(host.list, &CKvTextListBase::TextEdited);
    EXPECT_TRUE(model.setData(model.index(1, 0), "another"));
    EXPECT_EQ(edited.size(), 1);
    EXPECT_EQ(host.list->GetItemText(1, 0), L"another");
    EXPECT_TRUE(model.setData(model.index(2, 0), "two\nlines"));
    EXPECT_EQ(host.list->GetItemText(2, 0), L"two\nlines");
    EXPECT_TRUE(model.setData(model.index(2, kKvSubTitleTemplate), "one\r\nof\n\u2028them"));
    EXPECT_EQ(host.list->GetItemText(2, kKvSubTitleTemplate), L"one of  them") << "as its editor takes it";
    EXPECT_TRUE(model.setData(model.index(1, kKvSubTitleIn), "1:12"));
    EXPECT_EQ(model.index(1, kKvSubTitleIn).data(KvSubTitleModel::FrameRole).toUInt(), 37u);
    EXPECT_FALSE(model.setData(model.index(1, kKvSubTitleIn), "no time"));
    EXPECT_TRUE(model.setData(model.index(1, kKvSubTitleOut), QVariant(), KvSubTitleModel::FrameRole));
    EXPECT_FALSE(model.index(1, kKvSubTitleOut).data(KvSubTitleModel::FrameRole).isValid());
    EXPECT_TRUE(model.insertRows(1, 2));
    EXPECT_EQ(model.rowCount(), 5);
    EXPECT_EQ(model.index(3, 0).data().toString(), "another");
    EXPECT_TRUE(model.removeRows(0, 3));
    EXPECT_EQ(model.rowCount(), 2);
    for (int steps = 7; steps > 0; --steps)
        host.list->GetUndoStack()->undo();
    EXPECT_EQ(host.list->GetItemText(1, 0), L"row 1");
    EXPECT_EQ(model.rowCount(), 3);
    for (const auto& [row, count] : {std::pair(-1, 1), std::pair(0, 0), std::pair(2, 2), std::pair(4, 1)})
        EXPECT_FALSE(model.removeRows(row, count)) << row;
    EXPECT_FALSE(model.insertRows(4, 1));
}

TEST(KvQtModel, TellsOfColoursThatTheHostGives)
{
    QWidget parent;
    CKvTextEditListCtrl list;
    list.Create(CRect(0, 0, 300, 200), WS_CHILD, &parent, 1);
    list.AddString(CStringArray{L"one", L"two", L"three"});
    KvReportListModel model(list);
    const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    const DWORD green = 0xFF204020;
    EXPECT_EQ(list.SetItemBkColor(1, &green, nullptr), 1);
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0].toModelIndex(), model.index(1, 0));
    EXPECT_EQ(changed[0][1].toModelIndex(), model.index(1, model.columnCount() - 1));
    EXPECT_EQ(model.index(1, 0).data(Qt::BackgroundRole).value<QBrush>().color(), KvToQColor(green));
    list.SetItemTextColor(2, &green, nullptr, nullptr);
    EXPECT_EQ(changed.size(), 2);
    EXPECT_EQ(model.index(2, 0).data(Qt::ForegroundRole).value<QBrush>().color(), KvToQColor(green));
    list.SetItemTextColor(3, &green, nullptr, nullptr);
    EXPECT_EQ(changed.size(), 2) << "there is no such row";
}

TEST(KvQtModel, AFrameIsAWholeNumberThatThereIs)
{
    Subtitles host;
    host.Add(1);
    KvSubTitleModel model(*host.list);
    const QModelIndex in = model.index(0, kKvSubTitleIn);
    const auto set = [&](const QVariant& value) {
        return model.setData(in, value, KvSubTitleModel::FrameRole);
    };
    for (const QVariant& frame :
         {QVariant(7), QVariant(7u), QVariant(7.0), QVariant(qint64{7}), QVariant("7")}) {
        ASSERT_TRUE(set(QVariant()));
        EXPECT_TRUE(set(frame)) << frame.typeName();
        EXPECT_EQ(in.data(KvSubTitleModel::FrameRole), QVariant(7u)) << frame.typeName();
    }
    const int steps = host.list->GetUndoStack()->count();
    for (const QVariant& none :
         {QVariant(-1), QVariant(0xFFFFFFFFu), QVariant(qint64{1} << 32), QVariant(5.7), QVariant(qQNaN()),
          QVariant("-1"), QVariant("seven"), QVariant(QSize(7, 7))}) {
        EXPECT_FALSE(set(none)) << none.typeName();
        EXPECT_EQ(in.data(KvSubTitleModel::FrameRole), QVariant(7u)) << none.typeName();
    }
    EXPECT_EQ(host.list->GetUndoStack()->count(), steps);
    EXPECT_TRUE(set(0xFFFFFFFEu));
    EXPECT_EQ(in.data(KvSubTitleModel::FrameRole), QVariant(0xFFFFFFFEu));
}

TEST(KvQtModel, ALogIsReadOnlyAndItsPostsArriveAsRows)
{
    QWidget parent;
    CKvAppLogListCtrl log;
    log.Create(CRect(0, 0, 300, 200), WS_CHILD, &parent, 1);
    log.Initialize(1);
    KvReportListModel model(log);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    log.AddAppLogText(2, 0, L"first");
    log.PostAppLogText(3, 0, L"posted");
    const int before = model.rowCount();
    EXPECT_EQ(before, 1) << "asking the model takes nothing in";
    EXPECT_EQ(log.GetItemCount(), 2);
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(model.index(1, 3).data().toString(), "posted");
    EXPECT_FALSE(model.flags(model.index(1, 3)).testFlag(Qt::ItemIsEditable));
    EXPECT_FALSE(model.setData(model.index(1, 3), "other"));
    log.SetMaxLogLineCounts(1, 1);
    EXPECT_EQ(model.rowCount(), log.GetItemCount());
}

TEST(KvQtModel, AModelThatIsMadeWhileTheListIsAtWorkBeginsAnew)
{
    Subtitles subtitles;
    subtitles.Add(1);
    const KvReportListModel first(*subtitles.list);
    std::unique_ptr<KvReportListModel> late;
    int resets = 0;
    QObject::connect(&first, &QAbstractItemModel::rowsAboutToBeInserted, &first, [&] {
        late = std::make_unique<KvReportListModel>(*subtitles.list);
        QObject::connect(late.get(), &QAbstractItemModel::modelReset, &first, [&] { ++resets; });
    });
    subtitles.Add(1);
    EXPECT_EQ(late->rowCount(), 2);
    EXPECT_EQ(resets, 1);
}

TEST(KvQtModel, ListAndModelDieInAnyOrder)
{
    auto host = std::make_unique<Subtitles>();
    host->Add(3);
    KvReportListModel stays(*host->list);
    {
        const KvReportListModel goes(*host->list);
        EXPECT_EQ(goes.rowCount(), 3);
    }
    host->Add(1);
    EXPECT_EQ(stays.rowCount(), 4);
    const QModelIndex index = stays.index(1, 0);
    host.reset();
    EXPECT_EQ(stays.rowCount(), 0);
    EXPECT_EQ(stays.columnCount(), 0);
    EXPECT_FALSE(stays.data(index).isValid());
    EXPECT_FALSE(stays.setData(index, "late"));
    EXPECT_EQ(stays.List(), nullptr);
    for (const bool isList : {true, false}) { // in a slot of the first one's
        Subtitles subtitles;
        subtitles.Add(1);
        const QPointer<KvReportListModel> first = new KvReportListModel(*subtitles.list);
        const QPointer<KvReportListModel> second = new KvReportListModel(*subtitles.list);
        QObject::connect(first, &QAbstractItemModel::dataChanged,
                         [&] { isList ? delete subtitles.list : delete second.data(); });
        const DWORD colour = 1;
        subtitles.list->SetItemBkColor(0, &colour, nullptr);
        EXPECT_EQ(first->rowCount(), isList ? 0 : 1);
        EXPECT_EQ(second.isNull(), !isList);
        delete first;
        delete second;
    }
}

} // namespace
