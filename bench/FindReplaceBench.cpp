// Replacing in all of 100,000 subtitles, a quarter of which have the text once or twice: ours over a list of
// texts, beside the plain way, QString::replace row by row. Both must give the same texts.
#include "text/FindReplace.h"

#include <QString>

#include <benchmark/benchmark.h>
#include <random>
#include <vector>

namespace {

constexpr int kRows = 100000;
const wchar_t* const kFind = L"harbour";
const wchar_t* const kReplace = L"old harbour"; // contains the find text

std::vector<std::wstring> MakeTexts()
{
    constexpr const wchar_t* words[] = {L"the",    L"ship", L"left", L"at",  L"noon", L"and",
                                        L"nobody", L"was",  L"Où",   L"été", L"море", L"waits"};
    std::vector<std::wstring> texts;
    std::mt19937 random(11);
    for (int row = 0; row < kRows; ++row) {
        std::wstring& text = texts.emplace_back();
        for (int word = 0; word < 9; ++word)
            (text += words[random() % std::size(words)]) += word == 4 ? L'\n' : L' ';
        if (row % 4 == 0)
            text.insert(random() % 2 ? 0 : text.size(), row % 8 == 0 ? L"Harbour" : L" harbour, harbour");
    }
    return texts;
}

struct TextList final : kv::IFindTexts
{
    int Count() override { return static_cast<int>(texts.size()); }
    std::wstring_view Text(int row) override { return texts[static_cast<std::size_t>(row)]; }
    void SetText(int row, std::wstring text) override
    {
        texts[static_cast<std::size_t>(row)] = std::move(text);
    }
    bool IsSelected(int) override { return false; }

    std::vector<std::wstring> texts;
};

QString Replaced(const std::wstring& text, bool matchCase)
{
    return QString::fromStdWString(text).replace(QString::fromWCharArray(kFind),
                                                 QString::fromWCharArray(kReplace),
                                                 matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive);
}

void ReplaceAll(benchmark::State& state)
{
    const std::vector<std::wstring> texts = MakeTexts();
    kv::FindQuery query;
    query.find = kFind;
    query.replace = kReplace;
    query.matchCase = state.range(0) != 0;
    TextList list;
    for (auto _ : state) {
        state.PauseTiming();
        list.texts = texts;
        kv::FindReplace engine(list);
        state.ResumeTiming();
        benchmark::DoNotOptimize(engine.Run(0, kv::FindMode::ReplaceAll, query));
    }
    for (std::size_t row = 0; row < texts.size(); ++row) {
        if (list.texts[row] != Replaced(texts[row], query.matchCase).toStdWString())
            return state.SkipWithError("the peer gives another text");
    }
}
BENCHMARK(ReplaceAll)->ArgName("matchCase")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void ReplaceAllQString(benchmark::State& state)
{
    std::vector<QString> texts;
    for (const std::wstring& text : MakeTexts())
        texts.push_back(QString::fromStdWString(text));
    const QString find = QString::fromWCharArray(kFind);
    const QString replace = QString::fromWCharArray(kReplace);
    const Qt::CaseSensitivity cases = state.range(0) ? Qt::CaseSensitive : Qt::CaseInsensitive;
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<QString> list = texts;
        state.ResumeTiming();
        for (QString& text : list)
            text.replace(find, replace, cases);
        benchmark::DoNotOptimize(list.data());
    }
}
BENCHMARK(ReplaceAllQString)->ArgName("matchCase")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace
