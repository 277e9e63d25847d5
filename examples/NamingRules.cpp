// Which files belong to a clip by their names: a console program on the pure logic, without Qt.
#include <KvFileNaming.h>

#include <cstdio>
#include <cstring>
#include <memory>

struct Releaser
{
    void operator()(IKvUnknown* object) const { object->Release(); }
};
template <typename T>
using Ref = std::unique_ptr<T, Releaser>; // each factory hands out one reference

int main(int argc, char** argv)
{
    IKvFileNamingRule* newRule = nullptr;
    IKvFileNamingRuleCollection* newRules = nullptr;
    IKvFileNamingMatcher* newMatcher = nullptr;
    if (!CreateFileNamingRule(kKvNamingClassVideoAudio, &newRule) ||
        !CreateFileNamingRuleCollection(&newRules) || !KvCreateFileNamingMatcher(&newMatcher))
        return 1;
    const Ref<IKvFileNamingRule> rule(newRule);
    const Ref<IKvFileNamingRuleCollection> rules(newRules);
    const Ref<IKvFileNamingMatcher> matcher(newMatcher);

    // The clip is the video; its channels end with _A1, _A2 and so on.
    rule->SetMainRule(L"<File><Ext>");
    rule->AddAdditionRule(L"<File>_A<Number><Ext>");
    rules->AddRule(rule.get());

    std::wstring fault;
    if (!KvCheckRule(L"<File>_A<Nummer><Ext>", fault)) // as an editor of rules would ask
        std::printf("A rule with a fault: %ls\n", fault.c_str());

    const char* const sample[] = {"harbour.mxf", "harbour.mxf", "harbour_A2.wav", "harbour_A1.wav",
                                  "pier.mov"};
    const char* const* names = argc > 1 ? argv + 1 : sample;
    const int count = argc > 1 ? argc - 1 : 5;
    const auto wide = [](const char* name) { return std::wstring(name, name + std::strlen(name)); }; // ASCII
    if (!matcher->Prepare(wide(names[0]).c_str(), kKvNamingClassVideoAudio, rules.get()))
        return 1;
    for (int i = 1; i < count; ++i)
        matcher->AddFile(wide(names[i]).c_str());

    unsigned groups = 0;
    matcher->BuildGroups(&groups);
    for (unsigned group = 0; group < groups; ++group) {
        wchar_t clip[kKvNamingGroupNameSize];
        CStringArray files;
        if (!matcher->GetGroup(group, clip, &files))
            continue;
        std::printf("%ls:", clip);
        for (const std::wstring& file : files)
            std::printf(" %ls", file.c_str());
        std::printf("\n");
    }
    return 0;
}
