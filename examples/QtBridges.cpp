// The toolkit's own types: a subtitle list in a QTableView, qInfo in the log, gradients and eases converted.
#include <KvQt.h>

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>
#include <QVBoxLayout>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setPalette(QColor(43, 43, 46)); // dark, as the controls' own skin
    QWidget window;
    window.setWindowTitle("Qt bridges");

    CKvSubTitleTxtListEditor list;
    list.Create({0, 0, 640, 120}, WS_CHILD | WS_VISIBLE, &window, 1001);
    list.InserItem(-1, L"We never should have sailed so far north.", 0, 60, L"Lower Third");
    list.InserItem(-1, L"The last ferry leaves at seven.", 75, 125, L"Lower Third");
    KvSubTitleModel model(list); // reads and writes; an edit is a step of the list's undo
    QTableView table;
    table.setModel(&model);
    table.horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);

    CKvAppLogListCtrl log;
    log.Create({0, 0, 640, 160}, WS_CHILD | WS_VISIBLE, &window, 1002);
    log.Initialize(1);
    KvQtMessageLog messages(log); // qDebug, qWarning … of all threads, for as long as it lives
    QObject::connect(&model, &QAbstractItemModel::dataChanged, &window, [&](const QModelIndex& at) {
        qInfo("row %d, column %d: %ls", at.row(), at.column(), qUtf16Printable(at.data().toString()));
    });

    // A conversion names what the other side cannot hold.
    UINT loss = 0;
    KvFromGradient(QRadialGradient(QPointF(0, 0), 100), &loss);
    if ((loss & kKvLossShape) != 0)
        qWarning("of a radial gradient the stops alone arrive");
    SKvParamEaseData ease{kKvEaseDrawn, 0, 0, 0, 0, 0, 0, 50, 100, 0, 100, 0};
    KvFromEasingCurve(QEasingCurve::OutCubic, ease);
    const SKvRational rate = KvToRational(kKvFrameRate29_97);
    QLabel told(QString("OutCubic: tangents %1 and %2. 29.97 frames a second: %3/%4.")
                    .arg(ease.outTangentX)
                    .arg(ease.inTangentX)
                    .arg(rate.numerator)
                    .arg(rate.denominator));

    QVBoxLayout layout(&window);
    for (QWidget* widget : std::initializer_list<QWidget*>{&list, &table, &log, &told})
        layout.addWidget(widget);
    window.resize(680, 520);
    window.show();
    return QApplication::exec();
}
