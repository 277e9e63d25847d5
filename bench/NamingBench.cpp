// Fitting and reading 100,000 names against "<File>_A<Number><Ext>", half of which fit: the pattern engine
// against the standard library's expressions and PCRE2's compiled ones, in the same code-unit width.
#include "naming/NamePattern.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <memory>
#include <pcre2.h>
#include <random>
#include <regex>
#include <string>
#include <vector>

namespace {

constexpr wchar_t kExpression[] = L"^(.+?)_A([0-9]+)(\\..+)$";
constexpr std::size_t kNames = 100000;

/// What a run found. All three ways must find the same.
struct Result
{
    std::size_t fitting = 0;
    std::int64_t sumOfNumbers = 0;
    std::size_t charactersOfFiles = 0;

    bool operator==(const Result&) const = default;

    void Add(std::wstring_view file, std::wstring_view number)
    {
        ++fitting;
        sumOfNumbers += kv::LeadingNumber(number);
        charactersOfFiles += file.size();
    }
};

std::vector<std::wstring> MakeNames()
{
    constexpr const wchar_t* kShows[] = {L"Evening_News", L"The Harbour", L"documentary-04", L"S01E07_Final"};
    constexpr const wchar_t* kKinds[] = {L"_cam1", L" interview", L"-pickup", L"_Act_A", L""};
    constexpr const wchar_t* kOthers[] = {L".mxf", L"_a03.wav", L"_AMB.wav", L"A02.wav",
                                          L"_A",   L".xml",     L"_A4"};
    std::mt19937 random(20240229);
    const auto pick = [&random](const auto& texts) { return texts[random() % std::size(texts)]; };
    std::vector<bool> fits(kNames);
    std::fill_n(fits.begin(), kNames / 2, true);
    std::shuffle(fits.begin(), fits.end(), random);
    std::vector<std::wstring> names;
    for (const bool fit : fits) {
        std::wstring name =
            std::wstring(pick(kShows)) + pick(kKinds) + L"_take" + std::to_wstring(random() % 900);
        if (fit)
            name += L"_A" + std::to_wstring(random() % 16 + 1) + (random() % 4 ? L".wav" : L".aiff");
        else
            name += pick(kOthers);
        names.push_back(std::move(name));
    }
    return names;
}

const std::vector<std::wstring>& Names()
{
    static const std::vector<std::wstring> names = MakeNames();
    return names;
}

class EnginePeer
{
public:
    Result Run(const std::vector<std::wstring>& names)
    {
        Result result;
        for (const std::wstring& name : names) {
            if (m_pattern.Fit(name, m_values))
                result.Add(m_values[0].text, m_values[1].text);
        }
        return result;
    }

private:
    kv::NamePattern m_pattern{L"<File>_A<Number><Ext>"};
    kv::NameValues m_values;
};

class StdRegexPeer
{
public:
    Result Run(const std::vector<std::wstring>& names)
    {
        const auto view = [](const std::wcsub_match& match) {
            return std::wstring_view(match.first, static_cast<std::size_t>(match.length()));
        };
        Result result;
        for (const std::wstring& name : names) {
            if (std::regex_match(name.data(), name.data() + name.size(), m_match, m_regex))
                result.Add(view(m_match[1]), view(m_match[2]));
        }
        return result;
    }

private:
    std::wregex m_regex{kExpression, std::wregex::ECMAScript | std::wregex::optimize};
    std::wcmatch m_match;
};

class PcrePeer
{
public:
    PcrePeer()
    {
        int error = 0;
        PCRE2_SIZE where = 0;
        m_code.reset(pcre2_compile(Units(kExpression), PCRE2_ZERO_TERMINATED, 0, &error, &where, nullptr));
        if (!m_code || pcre2_jit_compile(m_code.get(), PCRE2_JIT_COMPLETE) != 0)
            std::abort();
        m_match.reset(pcre2_match_data_create_from_pattern(m_code.get(), nullptr));
    }

    Result Run(const std::vector<std::wstring>& names)
    {
        Result result;
        const PCRE2_SIZE* at = pcre2_get_ovector_pointer(m_match.get());
        for (const std::wstring& name : names) {
            if (pcre2_jit_match(m_code.get(), Units(name.data()), name.size(), 0, 0, m_match.get(), nullptr) <
                0)
                continue;
            const std::wstring_view view = name;
            result.Add(view.substr(at[2], at[3] - at[2]), view.substr(at[4], at[5] - at[4]));
        }
        return result;
    }

private:
    static_assert(sizeof(wchar_t) * 8 == PCRE2_CODE_UNIT_WIDTH);
    static PCRE2_SPTR Units(const wchar_t* text) { return reinterpret_cast<PCRE2_SPTR>(text); }

    struct Free
    {
        void operator()(pcre2_code* code) const { pcre2_code_free(code); }
        void operator()(pcre2_match_data* match) const { pcre2_match_data_free(match); }
    };
    std::unique_ptr<pcre2_code, Free> m_code;
    std::unique_ptr<pcre2_match_data, Free> m_match;
};

template <typename Peer>
void FitAndRead(benchmark::State& state)
{
    Peer peer;
    const Result expected = EnginePeer().Run(Names());
    if (expected.fitting != kNames / 2 || peer.Run(Names()) != expected) {
        state.SkipWithError("the results differ");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(peer.Run(Names()));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kNames));
}

BENCHMARK_TEMPLATE(FitAndRead, EnginePeer)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(FitAndRead, StdRegexPeer)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(FitAndRead, PcrePeer)->Unit(benchmark::kMillisecond);

} // namespace
