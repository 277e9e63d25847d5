// A program that needs the logic alone: time codes, an ease, a naming rule.
#include <KvBezierCurve2D.h>
#include <KvFileNaming.h>
#include <KvTimecode.h>

int main()
{
    std::wstring text;
    DWORD frame = 0;
    if (!KvTimecode::ToText(1800, EKvFrameRate(3), false, text) ||
        !KvTimecode::FromText(text, EKvFrameRate(3), false, frame) || frame != 1800)
        return 1;
    IKvBezierCurve2D* curve = nullptr;
    if (!KvCreateBezierCurve2D(&curve))
        return 2;
    curve->Release();
    IKvFileNamingRule* rule = nullptr;
    CreateFileNamingRule(kKvNamingClassVideoAudio, &rule);
    return rule && rule->SetMainRule(L"<File><Ext>") && rule->Release() == 0 ? 0 : 3;
}
