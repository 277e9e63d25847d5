// Grouping a folder's names in memory: names in, clips out. The counter "per_name" is the figure to read.
// The plain way (every file offered to every base) stands beside it for as long as it is bearable.
#include "KvFileNaming.h"
#include "core/RefCounted.h"
#include "naming/MediaGrouper.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr unsigned int kVideo[] = {kKvNamingClassVideoAudio};
constexpr std::size_t kSiblings = 8;

enum Shape : int
{
    ManyClips, ///< clip.mxf with eight _A<n>.wav, again and again
    OneClip,   ///< one clip.mxf with all the others as siblings
    NoClip,    ///< files that have nothing to do with each other
};

kv::Reference<IKvFileNamingRuleCollection> BuiltInRules()
{
    IKvFileNamingRuleCollection* rules = nullptr;
    KvLoadFileNamingCollection(L"", &rules, nullptr);
    return kv::Reference<IKvFileNamingRuleCollection>(rules);
}

std::wstring Padded(std::size_t number)
{
    std::wstring digits = std::to_wstring(number);
    return std::wstring(7 - std::min<std::size_t>(digits.size(), 7), L'0') + digits;
}

// In the order in which a folder gives them: none.
std::vector<std::wstring> MakeNames(Shape shape, std::size_t count)
{
    std::vector<std::wstring> names;
    for (std::size_t i = 0; names.size() < count; ++i) {
        if (shape == OneClip) {
            names.push_back(i == 0 ? L"clip.mxf" : L"clip_A" + std::to_wstring(i) + L".wav");
            continue;
        }
        const std::wstring clip = (shape == ManyClips ? L"clip" : L"note") + Padded(i);
        names.push_back(clip + (shape == ManyClips ? L".mxf" : L".txt"));
        for (std::size_t j = 1; shape == ManyClips && j <= kSiblings && names.size() < count; ++j)
            names.push_back(clip + L"_A" + std::to_wstring(j) + L".wav");
    }
    std::shuffle(names.begin(), names.end(), std::mt19937(20240501));
    // A copy's texts lie in memory as they came, like those of whoever reads a folder.
    return std::vector<std::wstring>(names);
}

std::size_t ExpectedClips(Shape shape, std::size_t count)
{
    // A last clip that got no sibling is none.
    return shape == ManyClips ? (count + kSiblings - 1) / (kSiblings + 1) : shape == OneClip ? 1 : 0;
}

void SetCounters(benchmark::State& state, std::size_t count)
{
    using Counter = benchmark::Counter;
    state.counters["per_name"] =
        Counter(static_cast<double>(count), Counter::kIsIterationInvariantRate | Counter::kInvert);
}

void Grouping(benchmark::State& state, Shape shape)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::vector<std::wstring> given = MakeNames(shape, count);
    const auto collection = BuiltInRules();
    for (auto _ : state) {
        kv::MediaNames names;
        for (const std::wstring& name : given)
            names.Add(name);
        names.Sort();
        const kv::MediaGrouping grouping = kv::GroupMedia(names, kv::ReadMediaRules(*collection), kVideo);
        if (grouping.clips.size() != ExpectedClips(shape, count))
            state.SkipWithError("wrong number of clips");
    }
    SetCounters(state, count);
}

void ThePlainWay(benchmark::State& state, Shape shape)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::vector<std::wstring> names = MakeNames(shape, count);
    const auto collection = BuiltInRules();
    IKvFileNamingMatcher* created = nullptr;
    KvCreateFileNamingMatcher(&created);
    const kv::Reference<IKvFileNamingMatcher> matcher(created);
    for (auto _ : state) {
        for (const std::wstring& base : names) {
            matcher->Prepare(base.c_str(), kKvNamingClassVideoAudio, collection.get());
            for (const std::wstring& name : names)
                matcher->AddFile(name.c_str());
            unsigned int groups = 0;
            matcher->BuildGroups(&groups);
            benchmark::DoNotOptimize(groups);
        }
    }
    SetCounters(state, count);
}

BENCHMARK_CAPTURE(Grouping, many_clips, ManyClips)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK_CAPTURE(Grouping, one_clip, OneClip)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK_CAPTURE(Grouping, no_clip, NoClip)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK_CAPTURE(ThePlainWay, many_clips, ManyClips)->Arg(1000);

} // namespace
