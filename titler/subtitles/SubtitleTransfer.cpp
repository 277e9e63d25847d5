// Subtitles from files and into files.
#include "KvDialog.h"
#include "edit/Document.h"
#include "project/TimeCode.h"
#include "project/WholeFile.h"
#include "subtitles/EncodingDialog.h"
#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "subtitles/SubtitleText.h"
#include "time/Transport.h"
#include "title/CanvasView.h"
#include "window/Texts.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
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
    {SubtitleLossKind::NoTimes, kTextLossNoTimes},
    {SubtitleLossKind::Template, kTextLossTemplate},
    {SubtitleLossKind::EdgeLines, kTextLossEdgeLines},
    {SubtitleLossKind::SpacedLines, kTextLossSpacedLines},
    {SubtitleLossKind::Arrow, kTextLossArrow},
    {SubtitleLossKind::Settings, kTextLossSettings},
    {SubtitleLossKind::Identifier, kTextLossIdentifier},
    {SubtitleLossKind::Times, kTextLossTimes},
    {SubtitleLossKind::LineBreaks, kTextLossLineBreaks},
    {SubtitleLossKind::Markup, kTextLossMarkup},
    {SubtitleLossKind::Title, kTextLossTitle},
    {SubtitleLossKind::Blocks, kTextLossBlocks},
    {SubtitleLossKind::Notes, kTextLossNotes},
    {SubtitleLossKind::Skipped, kTextLossSkipped},
    {SubtitleLossKind::Replaced, kTextLossReplaced},
};

template <typename Table, typename Kind>
UINT TextOf(const Table& table, Kind kind)
{
    const auto found =
        std::find_if(std::begin(table), std::end(table), [&](const auto& row) { return row.first == kind; });
    return found->second;
}

// The text for one, or the next one for more; "%1" is the number.
QString Counted(UINT oneId, std::size_t count, const QString& second = {}, const QString& third = {},
                const QString& fourth = {})
{
    return Text(count == 1 ? oneId : oneId + 1, {QString::number(count), second, third, fourth});
}

// One line of the log. @param parts at least one.
QString Joined(const QStringList& parts)
{
    QString all = parts.front();
    for (const QString& part : parts.sliced(1))
        all = Text(kTextTwoParts, {all, part});
    return all;
}

bool EndsWith(const QString& file, const char* ending)
{
    return file.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
}

SubtitleFormat FormatByEnding(const QString& file)
{
    if (EndsWith(file, ".txt"))
        return SubtitleFormat::PlainText;
    return EndsWith(file, ".vtt") ? SubtitleFormat::WebVtt : SubtitleFormat::SubRip;
}

// By its contents: a name is soon given.
SubtitleFormat FormatOf(const QString& file, std::string_view utf8)
{
    return EndsWith(file, ".txt") ? SubtitleFormatOfText(utf8) : SubtitleFormatOf(utf8);
}

std::string_view ViewOf(const QByteArray& bytes)
{
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

// @return empty, or why it cannot be read.
QString ReadWhole(const QString& file, QByteArray& bytes)
{
    QFile source(file);
    if (QFileInfo::exists(file) && !QFileInfo(file).isFile())
        return Text(kTextNoFile);
    if (!source.open(QIODevice::ReadOnly))
        return source.errorString();
    if (source.size() > kLargestSubtitleFile)
        return Text(kTextFileTooLarge, {QString::number(kLargestSubtitleFile >> 20)});
    bytes = source.read(kLargestSubtitleFile);
    return source.error() == QFileDevice::NoError ? QString() : source.errorString();
}

std::size_t RowsWith(const SubtitleFile& file, std::string Cue::*member)
{
    return static_cast<std::size_t>(std::count_if(file.cues.begin(), file.cues.end(),
                                                  [&](const Cue& cue) { return !(cue.*member).empty(); }));
}

// What goes when the file is overwritten by its own rows.
std::vector<SubtitleLoss> UnreadIn(const SubtitleFile& file, std::size_t replaced)
{
    const auto skipped = std::count_if(file.faults.begin(), file.faults.end(), [](const CueFault& fault) {
        return fault.kind != CueFaultKind::NoHeader;
    });
    std::vector<SubtitleLoss> unread{{SubtitleLossKind::Notes, file.notes, {}},
                                     {SubtitleLossKind::Skipped, static_cast<std::size_t>(skipped), {}},
                                     {SubtitleLossKind::Replaced, replaced, {}}};
    std::erase_if(unread, [](const SubtitleLoss& loss) { return loss.count == 0; });
    return unread;
}

bool IsSameFile(const QString& one, const QString& other)
{
    return !one.isEmpty() && QFileInfo(one) == QFileInfo(other);
}

} // namespace

QString SubtitleEncodingFault(const QString& file, const QString& encoding)
{
    if (!encoding.isEmpty())
        return IsEncoding(encoding.toStdString()) ? QString() : Text(kTextUnknownEncoding, {encoding});
    QByteArray bytes;
    if (!ReadWhole(file, bytes).isEmpty() || !DetectEncoding(ViewOf(bytes)).empty())
        return {};
    return Text(kTextUncertainEncoding,
                {QDir::toNativeSeparators(file), QString::fromStdString(GuessEncoding(ViewOf(bytes)))});
}

bool SubtitlePanel::Import(const QString& file, const QString& encoding)
{
    if (!Settle())
        return false;
    const QString name = QDir::toNativeSeparators(file);
    QByteArray bytes;
    if (const QString fault = ReadWhole(file, bytes); !fault.isEmpty()) {
        emit Reported(LogType::Error, Text(kTextCannotOpen, {name, fault}));
        return false;
    }
    const std::string_view view = ViewOf(bytes);
    QString used = encoding.isEmpty() ? QString::fromStdString(DetectEncoding(view)) : encoding;
    if (used.isEmpty() && isVisible()) {
        EncodingDialog dialog(view, this);
        if (dialog.exec() != QDialog::Accepted) {
            emit Reported(LogType::Message, Text(kTextImportCancelled));
            return false;
        }
        used = dialog.Encoding();
    }
    if (const QString fault = SubtitleEncodingFault(file, used); !fault.isEmpty()) {
        emit Reported(LogType::Error, fault);
        return false;
    }
    const std::optional<ConvertedText> text = DecodeText(view, used.toStdString());
    if (!text) {
        emit Reported(LogType::Error, Text(kTextCannotDecode, {name, used}));
        return false;
    }
    const SubtitleFormat format = FormatOf(file, text->bytes);
    const SubtitleFile read = ReadSubtitles(text->bytes, format);
    m_source = {format, read.head, UnreadIn(read, text->replaced),
                TextFormOf(view, used.toStdString(), text->bytes)};
    m_file = file;
    TakeCues(read);
    if (text->replaced > 0)
        emit Reported(LogType::Warning, Counted(kTextReplacedCharacters, text->replaced, name, used,
                                                QString::number(text->firstLine)));
    ReportImport(name, read, used);
    return true;
}

void SubtitlePanel::ReportImport(const QString& name, const SubtitleFile& read, const QString& readAs)
{
    const std::size_t told = std::min(read.faults.size(), kMostFaults);
    for (std::size_t i = 0; i < told; ++i)
        emit Reported(LogType::Warning, Text(TextOf(kFaultTexts, read.faults[i].kind),
                                             {name, QString::number(read.faults[i].line)}));
    if (told < read.faults.size())
        emit Reported(LogType::Warning,
                      Text(kTextFaultsLeftOut, {name, QString::number(read.faults.size() - told)}));
    QStringList parts{Counted(kTextSubtitlesImported, read.cues.size(), name)};
    if (m_source.format != FormatByEnding(m_file) && m_source.format != SubtitleFormat::PlainText)
        parts << Text(m_source.format == SubtitleFormat::WebVtt ? kTextReadAsWebVtt : kTextReadAsSubRip);
    if (readAs != QLatin1String("UTF-8"))
        parts << Text(kTextReadInEncoding, {readAs});
    const auto count = [&parts](UINT textId, std::size_t counted) {
        if (counted > 0)
            parts << Counted(textId, counted);
    };
    count(kTextPlacesSkipped, read.faults.size());
    count(kTextNotesSkipped, read.notes);
    if (read.head.SaysMore())
        parts << Text(kTextTitleKept);
    count(kTextBlocksKept, read.head.blocks.size());
    count(kTextSettingsKept, RowsWith(read, &Cue::settings));
    count(kTextNamesKept, RowsWith(read, &Cue::identifier));
    emit Reported(LogType::Message, Joined(parts));
}

void SubtitlePanel::TakeCues(const SubtitleFile& file)
{
    const FrameRate rate = m_transport.Rate();
    const auto frame = [&](std::int64_t milliseconds) {
        return milliseconds < 0 ? kNoTime : static_cast<DWORD>(FrameAtMilliseconds(milliseconds, rate));
    };
    m_list->EmptyAll();
    SetRate(m_document.Current().video.frameRate);
    m_source.rows.reserve(file.cues.size());
    for (const Cue& cue : file.cues) {
        m_list->InserItem(-1, QString::fromStdString(cue.text).toStdWString(), frame(cue.in), frame(cue.out),
                          nullptr);
        m_source.rows[m_list->GetRowKey(m_list->GetItemCount() - 1)] = {cue.in, cue.out, cue.settings,
                                                                        cue.identifier};
    }
    Steps().clear(); // they were about other rows
    OnRowsChanged();
    Check();
    LengthenProject();
}

// A time that was not changed is the file's own, which is finer than frames.
std::int64_t SubtitlePanel::MillisecondsOf(DWORD frame, std::int64_t original) const
{
    const FrameRate rate = FrameRateOf(m_rate);
    if (frame == kNoTime)
        return SubtitleRow::kNoTime;
    return original >= 0 && FrameAtMilliseconds(original, rate) == frame ? original
                                                                         : MillisecondsOfFrame(frame, rate);
}

std::vector<SubtitleRow> SubtitlePanel::Rows() const
{
    static const SubtitleSource::Row none;
    std::vector<SubtitleRow> rows;
    for (int row = 0; row < m_list->GetItemCount(); ++row) {
        DWORD in = kNoTime;
        DWORD out = kNoTime;
        m_list->GetTimeCode(row, in, out);
        const auto found = m_source.rows.find(m_list->GetRowKey(row));
        const SubtitleSource::Row& source = found == m_source.rows.end() ? none : found->second;
        rows.push_back({MillisecondsOf(in, source.in), MillisecondsOf(out, source.out),
                        RowText(row).toStdString(), !m_list->GetItemText(row, kKvSubTitleTemplate).empty(),
                        source.settings, source.identifier, m_source.format});
    }
    return rows;
}

bool SubtitlePanel::MayLose(const std::vector<SubtitleLoss>& losses, const QString& more)
{
    if (losses.empty() && more.isEmpty())
        return true;
    QStringList lines;
    for (const SubtitleLoss& loss : losses)
        lines << Counted(TextOf(kLossTexts, loss.kind), loss.count,
                         loss.rows.empty() ? QString() : QString::number(loss.rows.front() + 1));
    if (!more.isEmpty())
        lines << more;
    const QString question = Text(kTextSubtitleLosses, {lines.join(u'\n')});
    emit Reported(LogType::Warning, question);
    return KvMessageBox(this, question.toStdWString(), MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) == IDYES;
}

bool SubtitlePanel::Export(const QString& file)
{
    if (!Settle())
        return false;
    const bool isOwn = IsSameFile(m_file, file);
    const SubtitleFormat format = isOwn ? m_source.format : FormatByEnding(file);
    const std::vector<SubtitleRow> rows = Rows();
    std::vector<SubtitleLoss> losses = SubtitleLosses(rows, format, m_source.head);
    const bool losesRows = !losses.empty();
    if (isOwn)
        losses.insert(losses.end(), m_source.unread.begin(), m_source.unread.end());
    TextForm form = m_source.form;
    if (format == SubtitleFormat::WebVtt && format != m_source.format)
        form = {"UTF-8", false, form.lineEnd}; // no other encoding is allowed
    const QString wanted = QString::fromStdString(form.encoding);
    const std::string text = WriteSubtitles(rows, format, m_source.head);
    const std::string bytes = EncodeFile(text, form);
    QString reencoded;
    if (wanted.toStdString() != form.encoding)
        reencoded =
            Text(kTextBecomesUtf8, {wanted, QString::fromStdString(FirstNotIn(text, wanted.toStdString()))});
    if (!MayLose(losses, reencoded))
        return false;
    const QString name = QDir::toNativeSeparators(file);
    if (const QString fault = WriteWhole(file, QByteArray::fromStdString(bytes)); !fault.isEmpty()) {
        emit Reported(LogType::Error, Text(kTextCannotSave, {name, fault}));
        return false;
    }
    const bool isCopy = !isOwn && (losesRows || (!m_file.isEmpty() && format != m_source.format));
    QString report = Counted(isCopy ? kTextSubtitlesCopied : kTextSubtitlesExported, rows.size(), name);
    if (wanted.toStdString() != form.encoding)
        report = Joined({report, Text(kTextWrittenAsUtf8, {wanted})});
    if (!isCopy) {
        m_file = file;
        m_source.format = format;
        m_source.form = form;
        m_source.unread.clear(); // what is not in the list is not in the file any more
    }
    if (!isCopy && !losesRows)
        Steps().setClean();
    emit Reported(LogType::Message, report);
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
    const QString file = QFileDialog::getOpenFileName(this, WithoutMnemonic(Text(kTextSubtitleImport)),
                                                      m_file, Text(kTextSubtitleFiles));
    if (file.isEmpty())
        emit Reported(LogType::Message, Text(kTextImportCancelled));
    else
        Import(file);
}

bool SubtitlePanel::ChooseExport()
{
    QFileDialog dialog(this, WithoutMnemonic(Text(kTextSubtitleExport)), m_file, Text(kTextSubtitleTargets));
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
    if (!Settle())
        return false;
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
