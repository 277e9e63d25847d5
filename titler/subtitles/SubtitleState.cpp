#include "subtitles/SubtitleState.h"

#include "subtitles/SubtitleList.h"
#include "subtitles/SubtitlePanel.h"
#include "subtitles/SubtitleText.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QUndoStack>

#include <algorithm>

namespace titler {
namespace {

constexpr int kFormats = 3;
constexpr int kLossKinds = static_cast<int>(SubtitleLossKind::Replaced) + 1;

QJsonValue ToJson(const std::string& text)
{
    return QString::fromStdString(text);
}

std::string TextIn(const QJsonObject& json, const char* name)
{
    return json.value(QLatin1String(name)).toString().toStdString();
}

// Below 0 is none, which a missing value is, too.
qint64 NumberIn(const QJsonObject& json, const char* name)
{
    return json.value(QLatin1String(name)).toInteger(-1);
}

int Bounded(const QJsonObject& json, const char* name, int count)
{
    const int number = json.value(QLatin1String(name)).toInt();
    return number >= 0 && number < count ? number : 0;
}

qint64 FrameToJson(DWORD frame)
{
    return frame == kNoTime ? -1 : static_cast<qint64>(frame);
}

DWORD FrameIn(const QJsonObject& json, const char* name)
{
    const qint64 frame = NumberIn(json, name);
    return frame >= 0 && frame < kNoTime ? static_cast<DWORD>(frame) : kNoTime;
}

QJsonObject RowToJson(const SubtitleState::Row& row)
{
    QJsonObject json{{"text", row.text}, {"in", FrameToJson(row.in)}, {"out", FrameToJson(row.out)}};
    if (!row.templateName.isEmpty())
        json.insert("template", row.templateName);
    if (row.source.in >= 0)
        json.insert("fileIn", static_cast<qint64>(row.source.in));
    if (row.source.out >= 0)
        json.insert("fileOut", static_cast<qint64>(row.source.out));
    if (!row.source.settings.empty())
        json.insert("settings", ToJson(row.source.settings));
    if (!row.source.identifier.empty())
        json.insert("identifier", ToJson(row.source.identifier));
    return json;
}

SubtitleState::Row RowFromJson(const QJsonObject& json)
{
    return {json.value("text").toString(),
            FrameIn(json, "in"),
            FrameIn(json, "out"),
            json.value("template").toString(),
            {NumberIn(json, "fileIn"), NumberIn(json, "fileOut"), TextIn(json, "settings"),
             TextIn(json, "identifier")}};
}

QJsonArray LossesToJson(const std::vector<SubtitleLoss>& losses)
{
    QJsonArray array;
    for (const SubtitleLoss& loss : losses) {
        QJsonArray rows;
        for (const std::size_t row : loss.rows)
            rows.append(static_cast<qint64>(row));
        array.append(QJsonObject{{"kind", static_cast<int>(loss.kind)},
                                 {"count", static_cast<qint64>(loss.count)},
                                 {"rows", rows}});
    }
    return array;
}

std::vector<SubtitleLoss> LossesFromJson(const QJsonArray& array)
{
    std::vector<SubtitleLoss> losses;
    for (const QJsonValue value : array) {
        const QJsonObject json = value.toObject();
        SubtitleLoss loss{static_cast<SubtitleLossKind>(Bounded(json, "kind", kLossKinds)), 0, {}};
        loss.count = static_cast<std::size_t>(std::max<qint64>(NumberIn(json, "count"), 0));
        for (const QJsonValue row : json.value("rows").toArray())
            loss.rows.push_back(static_cast<std::size_t>(std::max<qint64>(row.toInteger(), 0)));
        losses.push_back(std::move(loss));
    }
    return losses;
}

} // namespace

QJsonObject SubtitlesToJson(const SubtitleState& state)
{
    QJsonArray rows;
    for (const auto& row : state.rows)
        rows.append(RowToJson(*row));
    QJsonArray blocks;
    for (const std::string& block : state.source.head.blocks)
        blocks.append(ToJson(block));
    return {{"file", state.file},
            {"modified", state.isModified},
            {"rate", static_cast<int>(state.rate)},
            {"format", static_cast<int>(state.source.format)},
            {"title", ToJson(state.source.head.title)},
            {"blocks", blocks},
            {"unread", LossesToJson(state.source.unread)},
            {"encoding", ToJson(state.source.form.encoding)},
            {"mark", state.source.form.hasMark},
            {"lineEnd", ToJson(state.source.form.lineEnd)},
            {"rows", rows}};
}

SubtitleState SubtitlesFromJson(const QJsonObject& json)
{
    SubtitleState state;
    state.file = json.value("file").toString();
    state.isModified = json.value("modified").toBool();
    state.rate = static_cast<EKvFrameRate>(Bounded(json, "rate", kKvFrameRate60 + 1));
    state.source.format = static_cast<SubtitleFormat>(Bounded(json, "format", kFormats));
    state.source.head.title = TextIn(json, "title");
    for (const QJsonValue block : json.value("blocks").toArray())
        state.source.head.blocks.push_back(block.toString().toStdString());
    state.source.unread = LossesFromJson(json.value("unread").toArray());
    TextForm& form = state.source.form;
    if (const std::string encoding = TextIn(json, "encoding"); IsEncoding(encoding))
        form.encoding = encoding;
    form.hasMark = json.value("mark").toBool();
    if (const std::string end = TextIn(json, "lineEnd"); end == "\n" || end == "\r\n" || end == "\r")
        form.lineEnd = end;
    for (const QJsonValue row : json.value("rows").toArray())
        state.rows.push_back(std::make_shared<SubtitleState::Row>(RowFromJson(row.toObject())));
    return state;
}

SubtitleState::Row SubtitlePanel::ReadRow(int line) const
{
    SubtitleState::Row row;
    row.text = RowText(line);
    m_list->GetTimeCode(line, row.in, row.out);
    row.templateName = QString::fromStdWString(m_list->GetItemText(line, kKvSubTitleTemplate));
    if (const auto found = m_source.rows.find(m_list->GetRowKey(line)); found != m_source.rows.end())
        row.source = found->second;
    return row;
}

// A turn begins at the first row again: whatever was done meanwhile, what has its copy is passed over
// quickly.
std::optional<SubtitleState> SubtitlePanel::State(QDeadlineTimer deadline) const
{
    constexpr int atOnce = 64; // rows between two looks at the clock
    const int count = m_list->GetItemCount();
    for (int line = 0, read = 0; line < count; ++line) {
        SubtitleList::RowCopy& copy = m_list->CopyOf(line);
        if (copy != nullptr)
            continue;
        copy = std::make_shared<SubtitleState::Row>(ReadRow(line));
        if (++read % atOnce == 0 && deadline.hasExpired())
            return std::nullopt;
    }
    SubtitleState state{m_file, IsModified(), m_rate, {}, {}};
    state.source.format = m_source.format;
    state.source.head = m_source.head;
    state.source.unread = m_source.unread;
    state.source.form = m_source.form;
    state.rows.reserve(static_cast<std::size_t>(count));
    for (int line = 0; line < count; ++line)
        state.rows.push_back(m_list->CopyOf(line));
    if (const auto typed = m_list->Typed()) {
        const auto row = static_cast<std::size_t>(typed->first);
        auto changed = std::make_shared<SubtitleState::Row>(*state.rows[row]);
        changed->text = typed->second;
        state.rows[row] = std::move(changed);
        state.isModified = true;
    }
    return state;
}

void SubtitlePanel::Restore(const SubtitleState& state)
{
    m_list->EmptyAll();
    SetRate(state.rate);
    m_file = state.file;
    m_source = state.source;
    for (const auto& row : state.rows) {
        const std::wstring templateName = row->templateName.toStdWString();
        m_list->InserItem(-1, row->text.toStdWString(), row->in, row->out,
                          templateName.empty() ? nullptr : templateName.c_str());
        m_source.rows[m_list->GetRowKey(m_list->GetItemCount() - 1)] = row->source;
    }
    Steps().clear(); // they were about other rows
    if (state.isModified)
        Steps().resetClean();
    OnRowsChanged();
    Check();
    LengthenProject();
}

} // namespace titler
