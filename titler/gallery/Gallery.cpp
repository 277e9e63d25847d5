#include "gallery/Gallery.h"

#include "KvGuiAdvCtrls.h"
#include "window/Fields.h"
#include "window/Texts.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>

#include <type_traits>

namespace titler {
namespace {

constexpr UINT kStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
constexpr UINT kTextRed = 20340; // the library's own
constexpr int kSpacing = 12;

template <typename C>
QWidget* MakePlain(QWidget& parent, UINT id)
{
    auto* control = new C;
    control->Create(kStyle, &parent, id);
    return control;
}

QString MessageName(UINT message)
{
    switch (message) {
    case WM_COMMAND:
        return QStringLiteral("WM_COMMAND");
    case WM_NOTIFY:
        return QStringLiteral("WM_NOTIFY");
    case WM_HSCROLL:
        return QStringLiteral("WM_HSCROLL");
    case WM_VSCROLL:
        return QStringLiteral("WM_VSCROLL");
    default:
        return QString::number(message);
    }
}

} // namespace

/// Tells of the calls that the dialogs make instead of sending messages.
class Gallery::Caller : public IKvCmdTarget, public IKvFindReplaceTxtNotify
{
public:
    explicit Caller(Gallery& gallery) : m_gallery(gallery) {}
    int OnCommand(unsigned id, WPARAM wParam, LPARAM) override
    {
        m_gallery.Tell(QStringLiteral("CKvCharMapDlg"), QStringLiteral("OnCommand"), id,
                       QString::number(wParam));
        return 1;
    }
    int Find(const wchar_t* text, BOOL) override { return Call(QStringLiteral("Find"), text); }
    int Replace(const wchar_t* text, const wchar_t*, BOOL, BOOL) override
    {
        return Call(QStringLiteral("Replace"), text);
    }

private:
    int Call(const QString& name, const wchar_t* text)
    {
        m_gallery.Tell(QStringLiteral("CKvFindReplaceTxtDlg"), name, 0, QString::fromWCharArray(text));
        return 0;
    }

    Gallery& m_gallery;
};

Gallery::Gallery()
    : m_area(new QScrollArea)
    , m_told(new QLabel(Text(kTextGalleryTold)))
    , m_caller(std::make_unique<Caller>(*this))
{
    m_told->setTextFormat(Qt::PlainText);
    setWindowTitle(Text(kTextGallery));
    auto* all = new QWidget;
    m_families = new QVBoxLayout(all);
    m_families->setSpacing(kSpacing);
    m_area->setWidget(all);
    m_area->setWidgetResizable(true);
    m_area->setFocusPolicy(Qt::NoFocus);
    m_area->setFrameShape(QFrame::NoFrame);
    m_told->setProperty("role", "hint");
    m_told->setContentsMargins(kSpacing, 4, kSpacing, 4);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(m_area, 1);
    column->addWidget(m_told);
    AddColours();
    AddCurves();
    AddLists();
    AddBars();
    AddTools();
    m_families->addStretch();
}

// The ease window and the dialogs go before the ease that they edit.
Gallery::~Gallery()
{
    m_sinks.clear();
    m_dialogs.clear();
    delete m_area;
}

QPixmap Gallery::Picture()
{
    QWidget& all = *m_area->widget();
    all.resize(all.sizeHint().expandedTo({width(), 0}));
    return all.grab();
}

void Gallery::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Quit) || event->matches(QKeySequence::Close))
        close();
    else
        QWidget::keyPressEvent(event);
}

QBoxLayout& Gallery::AddFamily(UINT headingId)
{
    m_families->addWidget(Heading(headingId));
    auto* row = new QHBoxLayout;
    row->setSpacing(kSpacing);
    m_families->addLayout(row);
    return *row;
}

QWidget& Gallery::AddCard(QBoxLayout& row, const char* name)
{
    auto* card = new QWidget;
    card->setProperty("role", "panel");
    card->setAttribute(Qt::WA_StyledBackground);
    auto* column = new QVBoxLayout(card);
    auto* label = new QLabel(QString::fromLatin1(name));
    label->setProperty("role", "hint");
    column->addWidget(label);
    row.addWidget(card, 0, Qt::AlignTop);
    if (!m_names.contains(label->text()))
        m_names << label->text();
    return *card;
}

// The controls' parents hear of everything; nobody is kept from answering.
void Gallery::Watch(QWidget& parent, const QString& name)
{
    m_sinks.push_back(std::make_unique<KvMessageSink>(
        &parent, [this, name](UINT message, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
            const auto* header =
                message == WM_NOTIFY ? reinterpret_cast<const KvNotifyHeader*>(lParam) : nullptr;
            const QString code = header != nullptr ? QString::number(static_cast<std::int32_t>(header->code))
                                                   : QString::number(HIWORD(wParam));
            if (message == WM_NOTIFY || message == WM_COMMAND || message == WM_HSCROLL ||
                message == WM_VSCROLL)
                Tell(name, MessageName(message), LOWORD(wParam), code);
            return std::nullopt;
        }));
}

void Gallery::Tell(const QString& name, const QString& message, UINT number, const QString& code)
{
    m_told->setText(Text(kTextGalleryMessage, {name, message, QString::number(number), code}));
}

void Gallery::Add(QBoxLayout& row, const char* name, QSize size, const Maker& make, Twice twice)
{
    QWidget& card = AddCard(row, name);
    auto* controls =
        new QBoxLayout(twice == Twice::Below ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    static_cast<QBoxLayout*>(card.layout())->addLayout(controls);
    for (int i = 0; i < (twice == Twice::No ? 1 : 2); ++i) {
        QWidget* control = make(card, ++m_id);
        control->setFixedSize(size);
        control->setEnabled(i == 0);
        control->show();
        controls->addWidget(control);
    }
    Watch(card, QString::fromLatin1(name));
}

template <typename Control, typename Class, typename... Arguments>
void Gallery::TellOf(const Control& control, UINT number, const char* name, const char* said,
                     void (Class::*signal)(Arguments...))
{
    connect(&control, signal, this, [=, this] {
        Tell(QString::fromLatin1(name), QString::fromLatin1(said), number, QString::number(0));
    });
}

template <typename List>
void Gallery::AddList(QBoxLayout& row, const char* name, QSize size)
{
    const auto make = [this, name, size](QWidget& parent, UINT id) {
        auto* list = new List;
        list->Create(CRect(0, 0, size.width(), size.height()), kStyle, &parent, id);
        FillSample(*list);
        // A commit selects the next row: of what is told only the last can be read.
        if constexpr (std::is_base_of_v<CKvTextListBase, List>) {
            TellOf(*list, id, name, "TextEdited", &CKvTextListBase::TextEdited);
            TellOf(*list, id, name, "RowsEdited", &CKvTextListBase::RowsEdited);
        } else {
            TellOf(*list, id, name, "SelectionEdited", &CKvReportListCtrl::SelectionEdited);
        }
        if constexpr (std::is_same_v<CKvSubTitleTxtListEditor, List>)
            TellOf(*list, id, name, "TimeCodeEdited", &CKvSubTitleTxtListEditor::TimeCodeEdited);
        return list;
    };
    Add(row, name, size, make, Twice::Below);
}

void Gallery::AddOpener(QBoxLayout& row, const char* name, std::function<void()> open)
{
    QWidget& card = AddCard(row, name);
    auto* button = new QPushButton(Text(kTextGalleryOpen));
    connect(button, &QPushButton::clicked, this, std::move(open));
    card.layout()->addWidget(button);
}

void Gallery::AddColours()
{
    QBoxLayout& row = AddFamily(kTextGalleryColours);
    auto* first = new QVBoxLayout;
    row.addLayout(first);
    Add(*first, "CKvGradientCtrl", {400, 64}, MakePlain<CKvGradientCtrl>, Twice::Below);
    Add(*first, "CKvQuadGradCtrl", {190, 120}, MakePlain<CKvQuadGradCtrl>, Twice::Beside);
    auto* second = new QVBoxLayout;
    row.addLayout(second);
    Add(
        *second, "CKvSolidColorTemplate", {190, 120},
        [](QWidget& parent, UINT id) {
            auto* swatches = new CKvSolidColorTemplate;
            swatches->Create(kStyle, &parent, id);
            swatches->SetNumRect(4, 9);
            swatches->InitialData(1);
            return swatches;
        },
        Twice::Beside);
    for (const int type : {0, 2})
        Add(
            *second, "CKvColorMapWnd", {190, type == 0 ? 120 : 24},
            [type](QWidget& parent, UINT id) {
                auto* map = new CKvColorMapWnd;
                map->Create(kStyle, &parent, id);
                map->SetType(type);
                map->SetLockType(type == 0 ? 4 : 13);
                map->SetValue(0xFF3A86FF);
                return map;
            },
            Twice::Beside);
    Add(
        *second, "CKvParamEdit", {72, 24},
        [](QWidget& parent, UINT id) {
            auto* number = new CKvParamEdit;
            number->Create(kStyle, &parent, id);
            number->SetLabel(WideText(kTextGalleryLength).c_str());
            number->SetValueRange(0, 255);
            number->SetValue(128);
            return number;
        },
        Twice::Beside);
    for (QBoxLayout* column : {first, second})
        column->addStretch();
    auto* third = new QVBoxLayout;
    row.addLayout(third);
    Add(*third, "CKvColorPanel", {340, 250}, [](QWidget& parent, UINT id) {
        auto* panel = new CKvColorPanel;
        panel->Create(&parent);
        panel->SetDlgCtrlID(id);
        panel->SetColor(0xFFFF8A1F);
        return panel;
    });
    third->addStretch();
    row.addStretch(1);
}

void Gallery::AddCurves()
{
    QBoxLayout& row = AddFamily(kTextGalleryCurves);
    const auto makeEase = [this](QWidget& parent, UINT id) {
        auto* info = new CKvParamBezierInfo(&m_ease, L"gallery", L"ease");
        auto* ease = new CKvParamBezierWnd(info, nullptr);
        connect(ease, &QObject::destroyed, [info] { delete info; });
        ease->Create(kStyle, CRect(0, 0, 360, 200), &parent, id);
        TellOf(*ease, id, "CKvParamBezierWnd", "CurveChanged", &CKvParamBezierWnd::CurveChanged);
        return ease;
    };
    Add(row, "CKvParamBezierWnd", {360, 200}, makeEase, Twice::Beside);
    auto* column = new QVBoxLayout;
    row.addLayout(column);
    Add(
        *column, "CKvKeyFrameCtrl", {74, 14},
        [](QWidget& parent, UINT id) {
            auto* strip = new CKvKeyFrameCtrl;
            strip->setGeometry(0, 0, 74, 14);
            strip->Create(id, &parent, kStyle);
            strip->SetToggleCheck(1);
            strip->EnableNextKeyCtrl(1);
            return strip;
        },
        Twice::Below);
    AddOpener(*column, "CKvParamBezierCtrlDlg", [this] {
        CKvParamBezierCtrlDlg dialog(&m_ease, L"gallery", L"ease", this);
        m_ease.Tell([this](const char* call) {
            Tell(QStringLiteral("CKvParamBezierCtrlDlg"), QString::fromLatin1(call), 0, QString::number(0));
        });
        dialog.DoModal();
        m_ease.Tell({});
    });
    column->addStretch();
    row.addStretch(1);
}

void Gallery::AddLists()
{
    QBoxLayout& row = AddFamily(kTextGalleryLists);
    AddList<SampleList>(row, "CKvReportListCtrl", {420, 150});
    AddList<CKvTextEditListCtrl>(row, "CKvTextEditListCtrl", {420, 150});
    row.addStretch(1); // at 0 the lists' cards, which may grow, would share the room with it
    QBoxLayout& next = AddFamily(kTextGalleryMoreLists);
    AddList<CKvSubTitleTxtListEditor>(next, "CKvSubTitleTxtListEditor", {640, 150});
    AddList<CKvAppLogListCtrl>(next, "CKvAppLogListCtrl", {640, 150});
    next.addStretch(1);
}

void Gallery::AddBars()
{
    constexpr int kWidth = 640;
    QBoxLayout& row = AddFamily(kTextGalleryBars);
    const auto makeTitleBar = [this](QWidget& parent, UINT id) {
        auto* bar = new CKvRibbonTitlebar;
        bar->Create(kStyle, CRect(0, 0, kWidth, 0), &parent, id);
        FillSample(*bar);
        TellOf(*bar, id, "CKvRibbonTitlebar", "RibbonItemSelected", &CKvRibbonTitlebar::RibbonItemSelected);
        return bar;
    };
    Add(row, "CKvRibbonTitlebar", {kWidth, 98}, makeTitleBar, Twice::Below);
    const auto makeMenuBar = [this](QWidget& parent, UINT id) {
        auto* menu = new QMenu(this);
        for (const UINT nameId : {kTextFileMenu, kTextEditMenu, kTextViewMenu}) {
            const QAction* entry = menu->addMenu(Text(nameId))->addAction(Text(kTextGalleryOpen));
            TellOf(*entry, id, "CKvRibbonMenuBar", "triggered", &QAction::triggered);
        }
        auto* bar = new CKvRibbonMenuBar;
        bar->Create(kStyle, CRect(0, 0, kWidth, 0), &parent, id);
        FillSample(*bar, menu);
        return bar;
    };
    Add(row, "CKvRibbonMenuBar", {kWidth, 98}, makeMenuBar, Twice::Below);
    row.addStretch(1);
    QBoxLayout& strips = AddFamily(kTextGalleryStrips);
    const auto makeStrip = [](QWidget& parent, UINT id) {
        auto* strip = new CKvLayoutSelector;
        strip->Create(CRect(0, 0, kWidth, 110), id, &parent, kStyle);
        IKvLayoutSelectorData* pages = MakeSamplePages();
        strip->SetData({16, 9}, pages);
        pages->Release();
        strip->EnableSelect(1);
        return strip;
    };
    Add(strips, "CKvLayoutSelector", {kWidth, 110}, makeStrip, Twice::Beside);
    const auto makeScrollBar = [](QWidget& parent, UINT id) {
        auto* bar = new CKvScrollBar;
        bar->Create(Qt::Vertical, kStyle, CRect(0, 0, 17, 110), &parent, id);
        IKvScrollLineHelper* line = nullptr;
        KvCreateScrollLineHelper(&line);
        line->SetViewLength(100);
        line->SetVirtualLength(400);
        bar->SetScroll(*line);
        line->Release();
        return bar;
    };
    Add(strips, "CKvScrollBar", {17, 110}, makeScrollBar, Twice::Beside);
    strips.addStretch(1);
}

void Gallery::AddTools()
{
    QBoxLayout& row = AddFamily(kTextGalleryTools);
    const auto makeGrid = [](QWidget& parent, UINT id) {
        auto* grid = new CKvCharMapPreviewWnd;
        grid->Create(kStyle, &parent, id);
        grid->SetSelected(40);
        return grid;
    };
    Add(row, "CKvCharMapPreviewWnd", {504, 264}, makeGrid, Twice::Beside);
    auto* column = new QVBoxLayout;
    row.addLayout(column);
    Add(
        *column, "CKvButton", {110, 28},
        [](QWidget& parent, UINT id) {
            auto* button = new CKvButton;
            button->CreateButton(id, &parent, CRect(0, 0, 110, 28), kStyle, L"titler_tool_undo",
                                 WideText(kTextUndo + 1).c_str());
            button->SetWindowText(WideText(kTextGalleryOpen).c_str());
            return button;
        },
        Twice::Beside);
    Add(
        *column, "CKvBitmapButton", {28, 28},
        [](QWidget& parent, UINT id) {
            auto* button = new CKvBitmapButton;
            button->CreateButton(id, &parent, CRect(0, 0, 28, 28), kStyle, L"titler_tool_save",
                                 WideText(kTextSave + 1).c_str());
            return button;
        },
        Twice::Beside);
    Add(
        *column, "CKvRadioBitmapButton", {28, 22},
        [](QWidget& parent, UINT id) {
            auto* button = new CKvRadioBitmapButton;
            button->CreateButton(id, &parent, CRect(0, 0, 28, 22), kStyle, L"RGB_R_UnCheck",
                                 KvGuiRes::LoadStringW(kTextRed).c_str());
            button->UpdateBitmap(L"RGB_R_UnCheck", L"RGB_R_Check");
            button->SetCheck(id % 2 == 0 ? 1 : 0);
            return button;
        },
        Twice::Beside);
    column->addStretch();
    auto* dialogs = new QVBoxLayout;
    row.addLayout(dialogs);
    auto find = std::make_unique<CKvFindReplaceTxtDlg>();
    find->Create(this);
    find->SetNotify(m_caller.get());
    AddOpener(*dialogs, "CKvFindReplaceTxtDlg", [dialog = find.get()] { dialog->show(); });
    auto characters = std::make_unique<CKvCharMapDlg>();
    characters->Create(this, m_caller.get());
    AddOpener(*dialogs, "CKvCharMapDlg", [dialog = characters.get()] { dialog->show(); });
    m_dialogs.push_back(std::move(find));
    m_dialogs.push_back(std::move(characters));
    dialogs->addStretch();
    row.addStretch(1);
}

} // namespace titler
