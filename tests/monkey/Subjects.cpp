#include "tests/monkey/Subjects.h"

#include "KvAppLogListCtrl.h"
#include "KvCharMapDlg.h"
#include "KvColorMapWnd.h"
#include "KvColorPanel.h"
#include "KvFindReplaceTxtDlg.h"
#include "KvGradientCtrl.h"
#include "KvKeyFrameCtrl.h"
#include "KvLayoutSelector.h"
#include "KvParamBezierCtrlDlg.h"
#include "KvParamBezierWnd.h"
#include "KvParamEdit.h"
#include "KvQuadGradCtrl.h"
#include "KvReportListCtrl.h"
#include "KvRibbonMenuBar.h"
#include "KvRibbonTitlebar.h"
#include "KvScroll.h"
#include "KvSolidColorTemplate.h"
#include "KvSubTitleTxtListEditor.h"
#include "KvTextEditListCtrl.h"
#include "core/RefCounted.h"

#include <QAction>
#include <QMenu>
#include <QTemporaryDir>

#include <algorithm>
#include <gtest/gtest.h>

namespace {

constexpr UINT kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;

DWORD Colour(Random& random)
{
    return static_cast<DWORD>(random());
}

template <typename C>
class Of : public Subject
{
public:
    QWidget& Control() override { return *control; }
    C* control = new C; // the parent's
};

// A control that is created with a style, its parent and a number.
template <typename C>
struct Plain : Of<C>
{
    explicit Plain(QWidget& parent) { this->control->Create(kStyle, &parent, 1000); }
};

struct Gradient : Plain<CKvGradientCtrl>
{
    using Plain::Plain;
    void Change(Random& random) override
    {
        std::vector<SKvCGGradientKey> stops(static_cast<std::size_t>(2 + Below(random, 6)));
        for (SKvCGGradientKey& stop : stops)
            stop = {Colour(random), static_cast<float>(Below(random, 101)) / 100, 0.5f};
        if (Below(random, 2) == 0)
            control->SetData(static_cast<int>(stops.size()), stops.data());
        else
            control->SetColor(Colour(random));
    }
};

struct Quad : Plain<CKvQuadGradCtrl>
{
    using Plain::Plain;
    void Change(Random& random) override
    {
        control->SetSelectedCorner(Below(random, 6) - 1);
        control->SetColor(Colour(random));
    }
};

struct Swatches : Plain<CKvSolidColorTemplate>
{
    explicit Swatches(QWidget& parent) : Plain(parent)
    {
        CKvSolidColorTemplate::SetSystemFolder(KvFromQString(folder.path()));
        CKvSolidColorTemplate::InstallFactoryTemplate();
        control->SetNumRect(4, 9);
        control->InitialData(1);
    }
    void Change(Random& random) override
    {
        control->SetCellColor(Below(random, 40) - 2, Colour(random));
        control->SetNumRect(Below(random, 8), Below(random, 12));
    }
    QTemporaryDir folder;
};

struct Map : Plain<CKvColorMapWnd>
{
    using Plain::Plain;
    void Change(Random& random) override
    {
        constexpr int kTypes[] = {0, 2, 3};
        const int type = kTypes[Below(random, 3)];
        control->SetType(type);
        control->SetLockType(type == 2 ? 10 + Below(random, 6) : 1 + Below(random, 6));
        control->SetValue(Colour(random));
    }
};

struct Number : Plain<CKvParamEdit>
{
    using Plain::Plain;
    void Change(Random& random) override
    {
        control->SetValueRange(Below(random, 50) - 25, 25 + Below(random, 500));
        control->SetValue(Below(random, 1000) - 500);
    }
};

struct Panel : Of<CKvColorPanel>
{
    explicit Panel(QWidget& parent) { control->Create(&parent); }
    void Change(Random& random) override
    {
        if (Below(random, 3) == 0)
            control->SetEnableState(static_cast<EKvColorPanelState>(Below(random, 4)));
        else
            control->SetColor(Colour(random));
    }
};

struct Segment : IKvParamBezierInfo
{
    int GetCurve(double points[8], double& minimum, double& maximum, std::uint32_t& lock,
                 std::uint32_t& kind) override
    {
        constexpr double kPoints[] = {1, 0, 1.9, 0.05, 2.2, 0.98, 3, 1};
        std::copy(std::begin(kPoints), std::end(kPoints), points);
        minimum = 0;
        maximum = 1;
        lock = isLocked ? 1 : 0;
        kind = 4;
        return isThere ? 1 : 0;
    }
    bool isLocked = false;
    bool isThere = true;
};

struct Ease : Subject
{
    explicit Ease(QWidget& parent) { control->Create(kStyle, CRect(0, 0, 300, 200), &parent, 1000); }
    ~Ease() override { delete control; } // before what it shows
    QWidget& Control() override { return *control; }
    void Change(Random& random) override
    {
        segment.isLocked = Below(random, 2) == 0;
        segment.isThere = Below(random, 5) != 0;
        control->Load();
    }
    Segment segment;
    CKvParamBezierWnd* control = new CKvParamBezierWnd(&segment, nullptr);
};

struct EaseHost : IKvDataOperator
{
    int BeginEdit(const wchar_t*, const wchar_t*) override { return ++open; }
    int CommitEdit(const wchar_t*, const wchar_t*) override { return --open == 0 ? 1 : 0; }
    int CancelEdit(const wchar_t*, const wchar_t*) override { return --open == 0 ? 1 : 0; }
    int GetEaseData(const wchar_t*, const wchar_t*, SKvParamEaseData& out) override
    {
        out = data;
        return 1;
    }
    int SetEaseData(const wchar_t*, const wchar_t*, const SKvParamEaseData& in) override
    {
        if (open != 1)
            ADD_FAILURE() << "written in " << open << " transactions";
        if (in.endX > in.startX) // not a wish for a preset
            data = in;
        return 1;
    }
    int CanGoPrevKey(const wchar_t*, const wchar_t*) override { return open; }
    int CanGoNextKey(const wchar_t*, const wchar_t*) override { return open; }
    int GoPrevKey(const wchar_t*, const wchar_t*) override { return 1; }
    int GoNextKey(const wchar_t*, const wchar_t*) override { return 1; }
    SKvParamEaseData data{4, 0.3, 0, 0.3, 0, 0, 0, 25, 100, 0, 100, 0};
    int open = 0;
};

struct EaseDialog : Subject
{
    explicit EaseDialog(QWidget& parent)
        : control(new CKvParamBezierCtrlDlg(&host, L"title", L"opacity", &parent))
    {
        control->Create(kKvParamBezierDialog, &parent);
    }
    ~EaseDialog() override
    {
        delete control; // before its host
        EXPECT_EQ(host.open, 0) << "a transaction without an end";
    }
    QWidget& Control() override { return *control; }
    // An answer has closed it.
    void Change(Random&) override
    {
        if (host.open == 0)
            control->Create(kKvParamBezierDialog, control->parentWidget());
    }
    EaseHost host;
    CKvParamBezierCtrlDlg* control;
};

struct Keys : Of<CKvKeyFrameCtrl>
{
    explicit Keys(QWidget& parent) { control->Create(1000, &parent, kStyle); }
    void Change(Random& random) override
    {
        control->SetToggleCheck(Below(random, 2));
        control->SetKeyOperatorCheck(Below(random, 2));
        control->EnableNextKeyCtrl(Below(random, 2));
    }
};

struct Log : Of<CKvAppLogListCtrl>
{
    explicit Log(QWidget& parent)
    {
        control->Create(CRect(0, 0, 300, 200), kStyle, &parent, 1000);
        control->Initialize(1);
        control->SetMaxLogLineCounts(200, 0);
    }
    void Change(Random& random) override
    {
        for (int i = Below(random, 20); i >= 0; --i)
            control->AddAppLogText(Below(random, 5) - 1, 1, L"line " + std::to_wstring(random()));
        control->SetFollowMode(static_cast<EKvAppLogFollow>(Below(random, 3)));
    }
};

class AnyList : public CKvReportListCtrl
{
public:
    void Begin()
    {
        InsertColumn(L"Name", 120);
        InsertColumn(L"Text", 90);
        SetAutoSizeColumn(1);
    }
    void Edit(Random& random)
    {
        const int line = Below(random, 30) - 2;
        switch (Below(random, 7)) {
        case 0:
            RemoveRows(line, Below(random, 4));
            return;
        case 1:
            SetItemText(line, Below(random, 3), L"another text of this row");
            return;
        case 2:
            SetItemHeight(line, Below(random, 80));
            return;
        case 3:
            EditCell(line, Below(random, 2));
            return;
        case 4:
            SetRowFilter(Below(random, 2) == 0
                             ? nullptr
                             : std::function<bool(const KvReportRow&)>(
                                   [](const KvReportRow& row) { return row.Text(0).size() % 2 == 0; }));
            return;
        default:
            InsertRow(line, {std::to_wstring(random()), L"text"}, Below(random, 60));
        }
    }

protected:
    BOOL _CanEditCell(int, int) override { return 1; }
};

struct ReportRows : Of<AnyList>
{
    explicit ReportRows(QWidget& parent)
    {
        control->Create(CRect(0, 0, 300, 200), kStyle, &parent, 1000);
        control->Begin();
    }
    void Change(Random& random) override { control->Edit(random); }
};

struct SubtitleRows : Of<CKvSubTitleTxtListEditor>
{
    explicit SubtitleRows(QWidget& parent) { control->Create(CRect(0, 0, 300, 200), kStyle, &parent, 1000); }
    void Change(Random& random) override
    {
        const auto in = static_cast<DWORD>(Below(random, 1000));
        if (Below(random, 3) == 0)
            control->DeleteItem(Below(random, 10));
        else
            control->InserItem(Below(random, 10) - 1, L"A row\nof two", in, in + 50, L"Title");
        control->SetPlayIndex(Below(random, 10) - 1);
    }
};

struct TextRows : Of<CKvTextEditListCtrl>
{
    explicit TextRows(QWidget& parent) { control->Create(CRect(0, 0, 300, 200), kStyle, &parent, 1000); }
    void Change(Random& random) override
    {
        control->AddString(CStringArray{L"one", L"two\nlines", L"الضوء"});
        control->SortItems(0, Below(random, 2));
        control->SetSelItem(Below(random, 10));
    }
};

// Every third has no pixels at the moment.
class ThumbPicture final : public IKvThumbImage
{
public:
    explicit ThumbPicture(int index) : m_index(index), m_pixels(48 * 27, 0x80402010u) {}
    int Lock(UINT& width, UINT& height, int& stride, const DWORD*& pixels) override
    {
        width = 48;
        height = 27;
        stride = 48 * 4;
        pixels = m_pixels.data();
        return m_index % 3 == 0 ? 0 : 1;
    }
    void Unlock() override {}
    int Release() override
    {
        delete this;
        return 0;
    }

private:
    int m_index;
    std::vector<DWORD> m_pixels;
};

// Some have nothing to show, and the layouts may go while they are asked for.
class Layouts : public kv::RefCounted<IKvLayoutSelectorData>
{
public:
    int GetCount() override { return count; }
    BOOL GetUnit(int index, wchar_t name[64], IKvThumbImage** thumbnail, IKvThumbImage** mark) override
    {
        std::to_wstring(index).copy(name, 63);
        if (++m_asked % 50 == 0)
            count = index;
        if (index % 5 != 0)
            *thumbnail = new ThumbPicture(index);
        if (index % 4 == 0)
            *mark = new ThumbPicture(index);
        return 1;
    }
    BOOL IsSelected(int index) override { return index % 3 == 0; }
    int Select(int index, BOOL) override
    {
        if (index % 7 == 0)
            count = index;
        return 1;
    }
    int count = 20;

private:
    int m_asked = 0;
};

struct Strip : Of<CKvLayoutSelector>
{
    explicit Strip(QWidget& parent)
    {
        control->Create(CRect(0, 0, 300, 80), 1000, &parent, kStyle);
        control->SetData({16, 9}, layouts);
    }
    ~Strip() override { layouts->Release(); }
    void Change(Random& random) override
    {
        layouts->count = Below(random, 60);
        switch (Below(random, 6)) {
        case 0:
            return control->UpdateScroll();
        case 1:
            return control->SetData({Below(random, 3), Below(random, 3)}, layouts);
        case 3:
            return static_cast<void>(control->EnableSelect(Below(random, 2)));
        case 4:
            return control->NotifyUnitChanged(Below(random, 70) - 5);
        case 2:
            return control->ScrollView(Below(random, 2));
        default:
            return control->EnsureVisible(Below(random, 70) - 5);
        }
    }
    Layouts* layouts = new Layouts;
};

struct ScrollBar : Of<CKvScrollBar>
{
    explicit ScrollBar(QWidget& parent)
    {
        KvCreateScrollLineHelper(&line);
        control->Create(Qt::Horizontal, kStyle, CRect(0, 0, 300, 17), &parent, 1000);
    }
    ~ScrollBar() override { line->Release(); }
    void Change(Random& random) override
    {
        line->SetViewLength(Below(random, 400));
        line->SetVirtualLength(std::int64_t{Below(random, 2000)} << Below(random, 40));
        line->SetPosition(std::int64_t{Below(random, 1000)} << Below(random, 40));
        control->SetScroll(*line);
        EXPECT_LE(control->GetScrollPos(), control->GetScrollRange());
    }
    IKvScrollLineHelper* line = nullptr;
};

struct Characters : Plain<CKvCharMapPreviewWnd>
{
    using Plain::Plain;
    void Change(Random& random) override
    {
        control->SetFont(Below(random, 3) == 0 ? L"no such face" : L"");
        control->SetFirst(Below(random, 5000));
    }
};

struct CharacterMap : Of<CKvCharMapDlg>
{
    explicit CharacterMap(QWidget& parent) { control->Create(&parent, nullptr); }
    void Change(Random& random) override { control->SetFont(Below(random, 3) == 0 ? L"no such face" : L""); }
};

struct Editor : IKvFindReplaceTxtNotify
{
    int Find(const wchar_t*, BOOL) override { return 2; }
    int Replace(const wchar_t*, const wchar_t*, BOOL, BOOL) override { return 0; }
};

struct Find : Of<CKvFindReplaceTxtDlg>
{
    explicit Find(QWidget& parent)
    {
        control->Create(&parent);
        control->SetNotify(&editor);
    }
    void Change(Random&) override
    {
        CStringArray texts{L"find"};
        control->SetFindString(texts);
    }
    Editor editor;
};

struct TitleBar : Of<CKvRibbonTitlebar>
{
    explicit TitleBar(QWidget& parent)
    {
        control->Create(kStyle, CRect(0, 0, 300, 96), &parent, 1000);
        Add();
    }
    void Add()
    {
        control->BeginAddTitleBar(L"none", L"Application", nullptr, ++last, nullptr);
        for (const wchar_t* name : {L"&Design", L"&Animate", L"A long name of a tab"})
            control->AddRibbonItem(name, nullptr, nullptr, 0);
        control->EndAddTitleBar();
        control->ActiveTitleBar(last, 1);
    }
    void Change(Random& random) override
    {
        if (Below(random, 3) == 0)
            control->RemoveTitleBar(static_cast<unsigned>(Below(random, static_cast<int>(last) + 1)));
        if (Below(random, 3) == 0)
            Add();
        control->SetDocTitle(last, L"A document");
    }
    unsigned last = 0;
};

struct MenuBar : Of<CKvRibbonMenuBar>
{
    explicit MenuBar(QWidget& parent)
    {
        for (const char* name : {"&File", "&Edit", "A long name of a menu"})
            for (QMenu* popup = menu.addMenu(QString::fromLatin1(name)); popup->actions().size() < 3;)
                popup->addAction(QStringLiteral("&Entry"))->setShortcut(Qt::CTRL | Qt::Key_C);
        control->Create(kStyle, CRect(0, 0, 300, 60), &parent, 1000);
        Add();
    }
    ~MenuBar() override { delete control; } // before the menu that it shows
    void Add()
    {
        control->BeginAddMenuBar(L"none", L"Application", ++last, &menu, nullptr);
        control->EndAddMenuBar();
        control->ActiveMenuBar(last);
    }
    void Change(Random& random) override
    {
        if (Below(random, 3) == 0)
            control->RemoveMenuBar(static_cast<unsigned>(Below(random, static_cast<int>(last) + 1)));
        if (Below(random, 3) == 0)
            Add();
        control->SetDocTitle(last, L"A document");
        control->UpdateRestoreMaxStatus(static_cast<unsigned>(Below(random, 4)));
    }
    QMenu menu;
    unsigned last = 0;
};

template <typename S>
SubjectMaker Maker(const char* name)
{
    return {name, [](QWidget& parent) -> std::unique_ptr<Subject> { return std::make_unique<S>(parent); }};
}

} // namespace

const std::vector<SubjectMaker>& AllSubjects()
{
    static const std::vector<SubjectMaker> makers{
        Maker<Gradient>("Gradient"),
        Maker<Quad>("FourCorners"),
        Maker<Swatches>("Swatches"),
        Maker<Map>("ColourMap"),
        Maker<Number>("Number"),
        Maker<Panel>("ColourPanel"),
        Maker<Ease>("EaseWindow"),
        Maker<EaseDialog>("EaseDialog"),
        Maker<Keys>("KeyFrames"),
        Maker<Log>("LogList"),
        Maker<ReportRows>("ReportList"),
        Maker<SubtitleRows>("Subtitles"),
        Maker<TextRows>("Texts"),
        Maker<Strip>("LayoutStrip"),
        Maker<ScrollBar>("ScrollBar"),
        Maker<Characters>("CharacterGrid"),
        Maker<CharacterMap>("CharacterMap"),
        Maker<Find>("FindDialog"),
        Maker<TitleBar>("TitleBar"),
        Maker<MenuBar>("MenuBar"),
    };
    return makers;
}
