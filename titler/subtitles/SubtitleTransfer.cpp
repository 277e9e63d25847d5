// Subtitles from files and into files.
#include "KvDialog.h"
#include "KvSubTitleTxtListEditor.h"
#include "edit/Document.h"
#include "project/TimeCode.h"
#include "project/WholeFile.h"
#include "subtitles/SubtitlePanel.h"
#include "subtitles/SubtitleText.h"
#include "subtitles/Subtitles.h"
#include "subtitles/TextEncoding.h"
#include "title/CanvasView.h"
#include "window/Texts.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QUndoStack>

#include <algorithm>

namespace titler {
namespace {

constexpr qint64 kLargestSubtitleFile = qint64(1) << 30; // bytes
constexpr std::size_t kMostFaults = 500;                 // in the log; the rest is counted

constexpr std::pair<CueFaultKind, UINT> kFaultTexts[] = {{CueFaultKind::NoHeader, kTextCueNoHeader},
                                                         {CueFaultKind::NoTimes, kTextCueNoTimes},
                                                         {CueFaultKind::BadTimes, kTextCueBadTimes}};
constexpr std::pair<SubtitleLossKind, UINT> kLossTexts[] = {
    {SubtitleLossKind::NoTimes, kTextLossNoTimes},     {SubtitleLossKind::Template, kTextLossTemplate},
    {SubtitleLossKind::EdgeLines, kTextLossEdgeLines}, {SubtitleLossKind::SpacedLines, kTextLossSpacedLines},
    {SubtitleLossKind::Arrow, kTextLossArrow},
};

template <typename Table, typename Kind>
UINT TextOf(const Table& table, Kind kind)
{
    const auto found =
        std::find_if(std::begin(table), std::end(table), [&](const auto& row) { return row.first == kind; });
    return found->second;
}

bool EndsWith(const QString& file, const char* ending)
{
    return file.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
}

// Empty when the user does not choose.
std::string AskEncoding(QWidget& parent, std::string_view bytes)
{
    QStringList names;
    for (const char* name : CodePages())
        names << QLatin1String(name);
    const qsizetype guess = names.indexOf(QString::fromStdString(GuessEncoding(bytes)));
    bool isChosen = false;
    const QString name =
        QInputDialog::getItem(&parent, Text(kTextEncodingTitle), Text(kTextEncodingQuestion), names,
                              static_cast<int>(std::max<qsizetype>(guess, 0)), false, &isChosen);
    return isChosen ? name.toStdString() : std::string();
}

// A row a line of a text without times.
SubtitleFile ReadLines(const std::string& utf8)
{
    SubtitleFile file;
    for (const QString& line : QString::fromStdString(utf8).split(u'\n')) {
        Cue cue;
        cue.in = SubtitleRow::kNoTime;
        cue.out = SubtitleRow::kNoTime;
        cue.text = (line.endsWith(u'\r') ? line.chopped(1) : line).toStdString();
        file.cues.push_back(std::move(cue));
    }
    if (!file.cues.empty() && file.cues.back().text.empty())
        file.cues.pop_back();
    return file;
}

} // namespace

bool SubtitlePanel::Import(const QString& file)
{
    const QString name = QDir::toNativeSeparators(file);
    QFile source(file);
    if (!QFileInfo(file).isFile() || !source.open(QIODevice::ReadOnly)) {
        emit Reported(LogType::Error, Text(kTextCannotOpen, {name, source.errorString()}));
        return false;
    }
    const QByteArray bytes = source.read(kLargestSubtitleFile);
    const std::string_view view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    std::string encoding = DetectEncoding(view);
    if (encoding.empty())
        encoding = isVisible() ? AskEncoding(*this, view) : GuessEncoding(view);
    if (encoding.empty())
        return false;
    const std::optional<ConvertedText> text = DecodeText(view, encoding);
    if (!text) {
        emit Reported(LogType::Error, Text(kTextCannotDecode, {name, QString::fromStdString(encoding)}));
        return false;
    }
    const SubtitleFile read = EndsWith(file, ".txt")
                                  ? ReadLines(text->bytes)
                                  : ReadSubtitles(text->bytes, SubtitleFormatOf(text->bytes));
    TakeCues(read);
    m_file = file;
    for (std::size_t i = 0; i < std::min(read.faults.size(), kMostFaults); ++i)
        emit Reported(LogType::Warning, Text(TextOf(kFaultTexts, read.faults[i].kind),
                                             {name, QString::number(read.faults[i].line)}));
    if (text->replaced > 0)
        emit Reported(LogType::Warning,
                      Text(kTextReplacedCharacters, {name, QString::number(text->replaced)}));
    emit Reported(LogType::Message, Text(kTextSubtitlesImported, {QString::number(read.cues.size()), name,
                                                                  QString::number(read.faults.size())}));
    return true;
}

void SubtitlePanel::TakeCues(const SubtitleFile& file)
{
    const FrameRate rate = FrameRateOf(m_rate);
    const auto frame = [&](std::int64_t milliseconds) {
        return milliseconds < 0 ? kNoTime : static_cast<DWORD>(FrameAtMilliseconds(milliseconds, rate));
    };
    m_list->EmptyAll();
    for (const Cue& cue : file.cues)
        m_list->InserItem(-1, QString::fromStdString(cue.text).toStdWString(), frame(cue.in), frame(cue.out),
                          nullptr);
    Steps().clear(); // they were about other rows
    OnRowsChanged();
}

std::vector<SubtitleRow> SubtitlePanel::Rows() const
{
    const FrameRate rate = FrameRateOf(m_rate);
    std::vector<SubtitleRow> rows;
    for (int row = 0; row < m_list->GetItemCount(); ++row) {
        DWORD in = kNoTime;
        DWORD out = kNoTime;
        m_list->GetTimeCode(row, in, out);
        const auto milliseconds = [&](DWORD time) {
            return time == kNoTime ? SubtitleRow::kNoTime : MillisecondsOfFrame(time, rate);
        };
        rows.push_back({milliseconds(in), milliseconds(out), RowText(row).toStdString(),
                        !m_list->GetItemText(row, kKvSubTitleTemplate).empty()});
    }
    return rows;
}

bool SubtitlePanel::Export(const QString& file)
{
    const std::vector<SubtitleRow> rows = Rows();
    QByteArray bytes;
    if (EndsWith(file, ".txt")) {
        for (const SubtitleRow& row : rows)
            bytes += QString::fromStdString(row.text).replace(u'\n', u' ').toUtf8() + '\n';
    } else {
        const SubtitleFormat format =
            EndsWith(file, ".vtt") ? SubtitleFormat::WebVtt : SubtitleFormat::SubRip;
        QStringList losses;
        for (const SubtitleLoss& loss : SubtitleLosses(rows, format))
            losses << Text(TextOf(kLossTexts, loss.kind),
                           {QString::number(loss.rows.size()), QString::number(loss.rows.front() + 1)});
        if (!losses.isEmpty()) {
            const QString question = Text(kTextSubtitleLosses, {losses.join(u'\n')});
            emit Reported(LogType::Warning, question);
            if (KvMessageBox(this, question.toStdWString(), MB_YESNO | MB_ICONQUESTION) != IDYES)
                return false;
        }
        bytes = QByteArray::fromStdString(WriteSubtitles(rows, format));
    }
    const QString name = QDir::toNativeSeparators(file);
    if (const QString fault = WriteWhole(file, bytes); !fault.isEmpty()) {
        emit Reported(LogType::Error, Text(kTextCannotSave, {name, fault}));
        return false;
    }
    m_file = file;
    Steps().setClean();
    emit Reported(LogType::Message, Text(kTextSubtitlesExported, {QString::number(rows.size()), name}));
    emit StepsChanged();
    return true;
}

bool SubtitlePanel::Save()
{
    return m_file.isEmpty() ? ChooseExport() : Export(m_file);
}

void SubtitlePanel::ChooseImport()
{
    if (!MayLeave())
        return;
    const QString file = QFileDialog::getOpenFileName(this, Text(kTextSubtitleImport).remove(u'&'), m_file,
                                                      Text(kTextSubtitleFiles));
    if (!file.isEmpty())
        Import(file);
}

bool SubtitlePanel::ChooseExport()
{
    QFileDialog dialog(this, Text(kTextSubtitleExport).remove(u'&'), m_file, Text(kTextSubtitleTargets));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    const auto useEnding = [&dialog](const QString& filter) {
        for (const char* ending : {"srt", "vtt", "txt"})
            if (filter.contains(QLatin1String(ending)))
                dialog.setDefaultSuffix(QLatin1String(ending));
    };
    useEnding(dialog.selectedNameFilter());
    connect(&dialog, &QFileDialog::filterSelected, &dialog, useEnding);
    return dialog.exec() == QDialog::Accepted && Export(dialog.selectedFiles().value(0));
}

bool SubtitlePanel::MayLeave()
{
    if (!IsModified())
        return true;
    const QString name = m_file.isEmpty() ? Text(kTextTabSubtitles) : QFileInfo(m_file).fileName();
    switch (
        KvMessageBox(this, Text(kTextSaveChanges, {name}).toStdWString(), MB_YESNOCANCEL | MB_ICONQUESTION)) {
    case IDYES:
        return Save();
    case IDNO:
        return true;
    default:
        return false;
    }
}

} // namespace titler
