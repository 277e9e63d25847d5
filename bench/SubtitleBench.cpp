// Reading a SubRip file from memory, UTF-8 bytes to cues: ours beside the plain way, QTextStream line by line
// with a QRegularExpression for the times. Both must find the same cues. The figure to read is bytes a
// second.
#include "subtitles/Subtitles.h"

#include <QRegularExpression>
#include <QTextStream>

#include <benchmark/benchmark.h>
#include <random>

namespace {

std::string MakeFile(int cues, bool withCr)
{
    const char* const texts[] = {
        "The last ferry leaves at six.",
        "Then we have one hour\nto find the lighthouse keeper.",
        "مرحبا، كيف حالك؟",
        "你好，灯塔在哪里？\n沿着海边走。",
        "<i>Nobody has seen him.</i>",
        "- Где ключ?\n- Он лежал здесь.",
        "1984",
        "No, no, no! 🌊",
    };
    std::vector<titler::SubtitleRow> rows;
    std::mt19937 random(5);
    std::int64_t at = 0;
    for (int i = 0; i < cues; ++i) {
        const auto length = static_cast<std::int64_t>(800 + random() % 4000);
        rows.push_back({at, at + length, texts[random() % std::size(texts)], false});
        at += length + static_cast<std::int64_t>(random() % 500);
    }
    std::string bytes = titler::WriteSubtitles(rows, titler::SubtitleFormat::SubRip);
    if (!withCr)
        return bytes;
    std::string crlf;
    for (const char c : bytes)
        (c == '\n' ? crlf += '\r' : crlf) += c;
    return crlf;
}

struct PlainCue
{
    qint64 in;
    qint64 out;
    QString text;
};

std::vector<PlainCue> ReadPlainly(const QByteArray& bytes)
{
    static const QRegularExpression times(
        QStringLiteral("^(\\d+):(\\d\\d):(\\d\\d)[,.](\\d{3}) --> (\\d+):(\\d\\d):(\\d\\d)[,.](\\d{3})"));
    std::vector<PlainCue> cues;
    QTextStream stream(bytes);
    QString line;
    while (stream.readLineInto(&line)) {
        const QRegularExpressionMatch match = times.match(line);
        if (!match.hasMatch())
            continue;
        const auto time = [&match](int group) {
            const auto number = [&match](int i) { return match.capturedView(i).toLongLong(); };
            return ((number(group) * 60 + number(group + 1)) * 60 + number(group + 2)) * 1000 +
                   number(group + 3);
        };
        PlainCue cue{time(1), time(5), {}};
        while (stream.readLineInto(&line) && !line.isEmpty())
            cue.text += cue.text.isEmpty() ? line : u'\n' + line;
        cues.push_back(cue);
    }
    return cues;
}

bool AreSame(const std::vector<titler::Cue>& cues, const std::vector<PlainCue>& plain)
{
    return std::equal(cues.begin(), cues.end(), plain.begin(), plain.end(),
                      [](const titler::Cue& cue, const PlainCue& other) {
                          return cue.in == other.in && cue.out == other.out &&
                                 cue.text == other.text.toStdString();
                      });
}

void ReadSubRip(benchmark::State& state)
{
    const std::string bytes = MakeFile(static_cast<int>(state.range(0)), state.range(1) != 0);
    for (auto _ : state)
        benchmark::DoNotOptimize(titler::ReadSubRip(bytes));
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes.size()) * state.iterations());
    if (!AreSame(titler::ReadSubRip(bytes).cues, ReadPlainly(QByteArray::fromStdString(bytes))))
        state.SkipWithError("the peer finds other cues");
}
BENCHMARK(ReadSubRip)
    ->ArgNames({"cues", "crlf"})
    ->ArgsProduct({{1500, 100000}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

void ReadSubRipPlainly(benchmark::State& state)
{
    const QByteArray bytes =
        QByteArray::fromStdString(MakeFile(static_cast<int>(state.range(0)), state.range(1) != 0));
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadPlainly(bytes));
    state.SetBytesProcessed(bytes.size() * state.iterations());
}
BENCHMARK(ReadSubRipPlainly)
    ->ArgNames({"cues", "crlf"})
    ->ArgsProduct({{1500, 100000}, {0, 1}})
    ->Unit(benchmark::kMillisecond);

} // namespace
