// Runs a fuzz target without a fuzzer: each file of its corpus, then mutations of them with a fixed seed.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr int kMutations = 4000;
constexpr int kMostEdits = 8;
constexpr std::size_t kMostBytes = 4096;

void Run(const std::string& input)
{
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

/// In the order of the names, so that every run makes the same mutations.
std::vector<std::string> ReadCorpus(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.is_regular_file())
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    std::vector<std::string> inputs;
    for (const auto& file : files) {
        std::ifstream stream(file, std::ios::binary);
        inputs.emplace_back(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
    return inputs;
}

class Mutator
{
public:
    explicit Mutator(const std::vector<std::string>& corpus) : m_corpus(corpus) {}

    std::string Next()
    {
        std::string input = m_corpus[Below(m_corpus.size())];
        for (std::size_t edits = 1 + Below(kMostEdits); edits > 0; --edits)
            Edit(input);
        input.resize(std::min(input.size(), kMostBytes));
        return input;
    }

private:
    std::size_t Below(std::size_t limit) { return m_random() % limit; }
    std::size_t PlaceIn(const std::string& text) { return Below(text.size() + 1); }

    void Edit(std::string& input)
    {
        const std::size_t at = PlaceIn(input);
        switch (Below(4)) {
        case 0:
            input.insert(at, 1, static_cast<char>(Below(256)));
            break;
        case 1:
            input.erase(at, 1 + Below(16));
            break;
        case 2:
            if (at < input.size())
                input[at] = static_cast<char>(Below(256));
            break;
        default: {
            const std::string& other = m_corpus[Below(m_corpus.size())];
            input.insert(at, other, PlaceIn(other), 1 + Below(64));
            break;
        }
        }
    }

    const std::vector<std::string>& m_corpus;
    std::mt19937 m_random{20240229};
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s CORPUS\n", argv[0]);
        return 2;
    }
    const std::vector<std::string> corpus = ReadCorpus(argv[1]);
    if (corpus.empty()) {
        std::fprintf(stderr, "%s: no files in %s\n", argv[0], argv[1]);
        return 2;
    }
    Run({});
    for (const std::string& input : corpus)
        Run(input);
    Mutator mutator(corpus);
    for (int i = 0; i < kMutations; ++i)
        Run(mutator.Next());
    std::printf("%zu files and %d mutations\n", corpus.size(), kMutations);
    return 0;
}
