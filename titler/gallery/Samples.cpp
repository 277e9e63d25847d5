#include "gallery/Samples.h"

#include "KvGuiAdvCtrls.h"
#include "media/Ref.h"
#include "pages/LentPicture.h"
#include "window/Texts.h"
#include "window/Workspaces.h"

#include <QImage>
#include <QPainter>

#include <algorithm>

namespace titler {
namespace {

constexpr int kPages = 40;
constexpr QSize kThumb(160, 90);

QImage ThumbOf(int page)
{
    QImage image(kThumb, QImage::Format_ARGB32);
    image.fill(QColor::fromHsv(page * 47 % 360, 120, 90));
    QPainter painter(&image);
    painter.fillRect(20, 38, 60 + page * 37 % 60, 9, QColor(240, 240, 244));
    painter.fillRect(20, 54, 30 + page * 53 % 60, 5, QColor(200, 200, 206));
    return image;
}

class Pages : public Counted<IKvLayoutSelectorData>
{
public:
    int GetCount() override { return kPages; }
    BOOL GetUnit(int index, wchar_t name[64], IKvThumbImage** thumbnail, IKvThumbImage**) override
    {
        const std::wstring text = Text(kTextGalleryPage, {QString::number(index + 1)}).toStdWString();
        text.copy(name, 63);
        *thumbnail = new LentPicture(ThumbOf(index));
        return 1;
    }
    BOOL IsSelected(int index) override { return index == m_selected ? 1 : 0; }
    int Select(int index, BOOL) override
    {
        m_selected = index;
        return 1;
    }

private:
    int m_selected = 1;
};

} // namespace

int SampleEase::Told(const char* call) const
{
    if (m_told)
        m_told(call);
    return 1;
}

int SampleEase::BeginEdit(const wchar_t*, const wchar_t*)
{
    m_before = m_data;
    return Told("BeginEdit");
}

int SampleEase::CommitEdit(const wchar_t*, const wchar_t*)
{
    return Told("CommitEdit");
}

int SampleEase::CancelEdit(const wchar_t*, const wchar_t*)
{
    m_data = m_before;
    return Told("CancelEdit");
}

int SampleEase::GetEaseData(const wchar_t*, const wchar_t*, SKvParamEaseData& out)
{
    out = m_data;
    return 1;
}

// A preset is asked for by its kind alone: level at the keys where it is slow.
int SampleEase::SetEaseData(const wchar_t*, const wchar_t*, const SKvParamEaseData& in)
{
    constexpr double kSlow = 0.5;
    if (in.endX > in.startX) {
        m_data = in;
        return Told("SetEaseData");
    }
    m_data.kind = in.kind;
    m_data.outTangentX = in.kind == kKvEaseSpeedUp || in.kind == kKvEaseSmooth ? kSlow : 0;
    m_data.inTangentX = in.kind == kKvEaseSpeedDown || in.kind == kKvEaseSmooth ? kSlow : 0;
    m_data.outTangentY = 0;
    m_data.inTangentY = 0;
    return Told("SetEaseData");
}

IKvLayoutSelectorData* MakeSamplePages()
{
    return new Pages;
}

void SampleList::Fill()
{
    InsertColumn(WideText(kTextGalleryName).c_str(), 150);
    InsertColumn(WideText(kTextGalleryLength).c_str(), 90);
    SetAutoSizeColumn(0);
    for (int i = 1; i <= 20; ++i)
        InsertRow(-1, {Text(kTextGalleryPage, {QString::number(i)}).toStdWString(), std::to_wstring(i * 25)});
    SetSelItem(2);
}

BOOL SampleList::_CanEditCell(int, int)
{
    return 1;
}

void FillSample(SampleList& list)
{
    list.setAccessibleName(Text(kTextPages));
    list.Fill();
}

void FillSample(CKvTextEditListCtrl& list)
{
    list.AddString(CStringArray{L"NORTHERN LIGHTS", L"A film in three parts\nby the harbour", L"الضوء"});
    list.SetSelItem(1);
}

void FillSample(CKvSubTitleTxtListEditor& list)
{
    const std::wstring look = WideText(kTextTemplateTitle);
    list.InserItem(-1, L"The last ferry leaves at seven.", 10, 50, look.c_str());
    list.InserItem(-1, L"Then we have\none hour.", 50, 85, look.c_str());
    list.InserItem(-1, L"Nobody has seen him since.", 90, 0xFFFFFFFF, look.c_str());
    list.SetPlayIndex(1);
}

void FillSample(CKvAppLogListCtrl& log)
{
    log.Initialize(1);
    for (int type = 0; type < 4; ++type)
        log.AddAppLogText(type, 0, Text(kTextGalleryPage, {QString::number(type)}).toStdWString());
}

void FillSample(CKvRibbonTitlebar& bar)
{
    bar.BeginAddTitleBar(L"titler_icon", L"titler", nullptr, 1, nullptr);
    for (const Workspace tab : {Workspace::Design, Workspace::Animate, Workspace::Log})
        bar.AddRibbonItem(WideText(TraitsOf(tab).textId).c_str(), nullptr, nullptr, 0);
    bar.EndAddTitleBar();
    bar.ActiveTitleBar(1, 1);
    bar.SetSysTitle(1, WideText(kTextCaptionProduct).c_str());
    bar.SetDocTitle(1, L"Harbour");
}

void FillSample(CKvRibbonMenuBar& bar, HMENU menu)
{
    bar.BeginAddMenuBar(L"titler_icon", L"titler", 1, menu, nullptr);
    bar.EndAddMenuBar();
    bar.ActiveMenuBar(1);
    bar.SetSysTitle(1, WideText(kTextCaptionProduct).c_str());
    bar.SetDocTitle(1, L"Harbour");
}

} // namespace titler
