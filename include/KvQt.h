/// @file
/// Bridges between the library's values and the toolkit's own types, and models over the lists.
///
/// A conversion loses nothing that the other side can hold. What the other side cannot hold is named in
/// `loss`: a set of EKvQtLoss, 0 where the value arrived whole. `loss` may be null.
#pragma once

#include "KvAppLogListCtrl.h"
#include "KvFileNaming.h"
#include "KvSubTitleTxtListEditor.h"
#include "KvTypes.h"
#include "KvVideoFormat.h"

#include <QAbstractTableModel>
#include <QColor>
#include <QEasingCurve>
#include <QJsonArray>
#include <QLinearGradient>
#include <QPointer>
#include <QSize>

#include <memory>
#include <vector>

/// What a conversion left behind.
enum EKvQtLoss : UINT
{
    kKvLossPrecision = 1,       ///< colour channels finer than 8 bits, the hue of a grey
    kKvLossRange = 2,           ///< a colour outside of 0 … 1
    kKvLossInvalid = 4,         ///< no colour at all: transparent black
    kKvLossStops = 8,           ///< more stops than the gradient control takes (255): the first ones stay
    kKvLossShape = 16,          ///< a gradient that is not linear: its stops alone
    kKvLossDirection = 32,      ///< a gradient that does not run from left to right
    kKvLossSpread = 64,         ///< what lies beyond a gradient's ends
    kKvLossPremultiplied = 128, ///< colours of different alpha are mixed otherwise in between
    kKvLossHeight = 256, ///< an ease between equal values, whose tangents have no height to be measured by
    kKvLossCurve = 512,  ///< an ease that is not one cubic: it stays as it was
    kKvLossRate = 1024,  ///< a frame rate that the table does not have: it stays as it was
    kKvLossKind = 2048,  ///< which preset an ease is: its shape alone
    kKvLossPlace = 4096, ///< a stop's place or mid point outside of 0 … 1 or finer than a float
};

// Colours.

/// @param colour 0xAARRGGBB, straight alpha. @return an RGB colour.
KV_API QColor KvToQColor(DWORD colour);
/// @param colour of any specification (HSV, CMYK …). @param loss see above. @return 0xAARRGGBB.
KV_API DWORD KvFromQColor(const QColor& colour, UINT* loss = nullptr);

// Gradients.

/// The stops of a gradient, ascending. A mid point that is not half way becomes a stop of its own, with the
/// mix of its neighbours; so does one half way where the stop behind it would be read as a mid point without.
/// `KvFromGradientStops` gives the keys back, sorted; a segment of no width comes with its mid point half
/// way, and a mid point at the very end of its segment as a stop, which looks the same.
/// @param keys in any order. @return the stops.
KV_API QGradientStops KvToGradientStops(const std::vector<SKvCGGradientKey>& keys);
/// The same, interpolated channel by channel as the control does. Stops at one place, of which a QGradient
/// keeps only one, stand apart by the least that there is. @param keys in any order; with none it is the
/// toolkit's own, from black to white.
/// @param rect from whose left edge to the right one it runs. @return the gradient.
KV_API QLinearGradient KvToLinearGradient(const std::vector<SKvCGGradientKey>& keys, const QRectF& rect);
/// A stop between two others that has the mix of their colours becomes the mid point of its segment, unless
/// it stands half way: it stays a stop then, except before one that would become a mid point.
/// @param stops ascending. @param loss see above. @return the stops.
KV_API std::vector<SKvCGGradientKey> KvFromGradientStops(const QGradientStops& stops, UINT* loss = nullptr);
/// The same of any gradient; says also what its shape, its spread and its mixing lose.
/// @param gradient the gradient.
/// @param loss see above. @return the stops.
KV_API std::vector<SKvCGGradientKey> KvFromGradient(const QGradient& gradient, UINT* loss = nullptr);

// Eases.

/// The ease as a curve from (0, 0) to (1, 1). @param ease the ease. @param loss see above.
/// @return of the kind Linear for a linear ease without tangents, else a Bezier spline of one segment.
KV_API QEasingCurve KvToEasingCurve(const SKvParamEaseData& ease, UINT* loss = nullptr);
/// Gives a segment, whose keys and range stay, the shape of a curve. It is drawn then, or linear; one that
/// gave this curve itself stays as it is, with its kind.
/// @param curve straight, a spline of one segment whose handles lie at 0 … 1 of its time, or one that is one
/// cubic exactly (InQuad, OutQuad, InCubic, OutCubic). @param ease the segment. @param loss see above.
/// @return 1; 0, with nothing changed, for any other curve.
KV_API int KvFromEasingCurve(const QEasingCurve& curve, SKvParamEaseData& ease, UINT* loss = nullptr);

// Formats.

/// A ratio of whole numbers.
struct SKvRational
{
    int numerator;   ///< of either sign
    int denominator; ///< 0 is no ratio
};

/// @param resolution of which the frame size counts. @return the size; empty for a negative one.
KV_API QSize KvToQSize(const SKvVideoResolution& resolution);
/// Aspect ratio, frame rate and scan mode stay. @param size in pixels. @param resolution receives it.
/// @return 1; 0, with nothing changed, for an invalid size.
KV_API int KvFromQSize(QSize size, SKvVideoResolution& resolution);
/// Frames per second, exactly: 23.976 is 24000/1001. @param rate of the table.
/// @return 0/1 for one outside of it.
KV_API SKvRational KvToRational(EKvFrameRate rate);
/// @param framesPerSecond any ratio of the same value (48/2 is 24). @param rate receives it.
/// @param loss see above.
/// @return 1; 0, with `rate` unchanged, when the table has none.
KV_API int KvFromRational(SKvRational framesPerSecond, EKvFrameRate& rate, UINT* loss = nullptr);

// Naming groups.

/// The matcher's groups, as `BuildGroups` left them: an array of objects with "name" and "files".
/// @param matcher whose groups are read. @param count how many groups that operation gave. @return the array.
/// A group whose name is too long to be read is left out.
KV_API QJsonArray KvGroupsToJson(IKvFileNamingMatcher& matcher, unsigned int count);

// Messages.

/// Brings the toolkit's messages (qDebug, qWarning …) of all threads into a log list for as long as it lives;
/// the handler before hears them, too. Debug and info messages come as type 0, warnings as 2, critical and
/// fatal ones as 3; the level is 0 for debug, 1 for info, 2 for a warning, 3 for critical and 4 for fatal. A
/// category stands before the text as "category: ", "default" does not. What a message itself gives rise to
/// is not taken in again. Several may live, and in any order; each message goes to all of them.
///
/// Handlers of the program's own may come and go meanwhile. One that is installed later hears first, and what
/// it does not pass on is not taken in, until another object of this class stands in front of it.
class KV_API KvQtMessageLog
{
public:
    /// @param list must outlive this object.
    explicit KvQtMessageLog(CKvAppLogListCtrl& list);
    ~KvQtMessageLog();
    KvQtMessageLog(const KvQtMessageLog&) = delete;
    KvQtMessageLog& operator=(const KvQtMessageLog&) = delete;

    /// @param type only these and worse ones; all at first. QtInfoMsg comes between QtDebugMsg and
    /// QtWarningMsg.
    void SetLeast(QtMsgType type);

private:
    struct Entry;
    std::unique_ptr<Entry> m_entry;
};

// Models.

/// The lines of a list, all of them whatever its filter hides, as a table model: texts, headers, the lines'
/// own colours. Whatever changes in the list, by the user or by the host, changes in the model; lines that
/// are inserted or removed at several places at once reset it. It is empty once the list is gone. A slot of
/// the model's may delete the model at once, the list, which is at work then, by its `deleteLater`.
///
/// An edit by a view is one by the user: it is checked as a typed text is, its line breaks become blanks in a
/// cell of one line, it becomes a step of undo where the list has one, and is told by the list's signals.
/// Cells that the list does not let be edited are read only; those of a log always are.
class KV_API KvReportListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// @param list may die before the model. @param parent owns the model; may be null.
    explicit KvReportListModel(CKvReportListCtrl& list, QObject* parent = nullptr);
    ~KvReportListModel() override;

    /// @return the list; null once it is gone.
    CKvReportListCtrl* List() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

private:
    struct Observer;
    std::unique_ptr<Observer> m_observer;
};

/// The same of a subtitle list, with frames and rows. What it does is one step of undo each, silent as the
/// list's `RunAsStep` is.
class KV_API KvSubTitleModel : public KvReportListModel
{
    Q_OBJECT

public:
    /// Of the two time code columns: the frame count (quint32) without the list's offset; an invalid value
    /// for none. What is set is a whole number of 0 … 4294967294, of whatever type; any other is refused.
    static constexpr int FrameRole = Qt::UserRole;

    /// @param list, parent as above.
    explicit KvSubTitleModel(CKvSubTitleTxtListEditor& list, QObject* parent = nullptr);

    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    QHash<int, QByteArray> roleNames() const override;
    /// Empty rows without time codes. @param row, count, parent as the toolkit has them.
    /// @return false, with nothing changed, when there are no such places.
    bool insertRows(int row, int count, const QModelIndex& parent = {}) override;
    bool removeRows(int row, int count, const QModelIndex& parent = {}) override;

private:
    QPointer<CKvSubTitleTxtListEditor> m_subtitles;
};
