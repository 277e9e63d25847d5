#include "text/KvCharMapDlgImpl.h"

#include "KvGuiRes.h"
#include "KvMenu.h"
#include "core/Text.h"
#include "platform/OwnSizes.h"
#include "platform/VirtualKey.h"
#include "text/CharMapTexts.h"
#include "text/CharNames.h"
#include "text/KvCharMapPreviewWndImpl.h"

#include <QApplication>
#include <QClipboard>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int kMargin = 10;
constexpr int kSpacing = 6;
constexpr int kRowHeight = 26; // of edits and buttons

constexpr UINT kMenu = 20440;
constexpr UINT kMenuInsert = 20441;
constexpr UINT kMenuCopy = 20442;
constexpr UINT kMenuCollect = 20443;
constexpr UINT kMenuAddFavorite = 20444;
constexpr UINT kMenuRemoveFavorite = 20445;

constexpr UINT kInsertTip = 20240;
constexpr UINT kFavoriteTip = 20241;
constexpr UINT kCollectTip = 20242;
constexpr UINT kCopyTip = 20243;
constexpr UINT kSearchTip = 20244;

QString TextOf(UINT number)
{
    return KvToQString(KvGuiRes::LoadStringW(number));
}

QString TipOf(UINT number)
{
    return KvToQString(KvGuiRes::LoadTip(number));
}

QPushButton* MakeButton(QWidget& dialog)
{
    auto* button = new QPushButton(&dialog);
    button->setAutoDefault(false);
    button->installEventFilter(&dialog);
    return button;
}

void SetButtonTexts(QPushButton& button, UINT text, UINT tip)
{
    button.setText(TextOf(text));
    button.setToolTip(TipOf(tip));
}

} // namespace

void CKvCharMapDlg::Impl::MakeItems()
{
    search = new kv::CharSearchBox(&dialog);
    grid = new CKvCharMapPreviewWnd;
    grid->SetFont(face);
    grid->setFixedSize(grid->sizeHint());
    grid->Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &dialog, kKvCharMapGrid);
    grid->SetGuiBasicSettings(settings);
    bar = new CKvScrollBar;
    bar->Create(Qt::Vertical, WS_CHILD | WS_VISIBLE, {}, &dialog, kKvCharMapScrollBar);
    status = new QLabel(&dialog);
    status->setTextFormat(Qt::PlainText);
    status->setWordWrap(true);
    insert = MakeButton(dialog);
    insert->setDefault(true);
    favorite = MakeButton(dialog);
    favorite->setCheckable(true);
    const auto pick = [this](char16_t code) {
        SelectCode(code);
        PickSelected();
    };
    const auto pickRecent = [this](char16_t code) { // the row stays as it is, under the pointer
        SelectCode(code);
        SendPicked(code);
    };
    const auto select = [this](char16_t code) { SelectCode(code); };
    const auto copyOne = [this](char16_t code) { CopyCharacter(code); };
    const auto openMenu = [this](QPoint screen) { OpenMenu(screen); };
    recentRow = new kv::CharShelfWnd({select, pickRecent, {}, copyOne, openMenu});
    favoritesRow = new kv::CharShelfWnd(
        {select, pick, [this](char16_t code) { ToggleFavorite(code); }, copyOne, openMenu});
    for (kv::CharShelfWnd* row : {recentRow.data(), favoritesRow.data()}) {
        row->Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, &dialog, 0);
        row->SetGuiBasicSettings(settings);
    }
    for (QWidget* part : std::initializer_list<QWidget*>{grid, bar, recentRow, favoritesRow})
        kv::KeepOwnSizes(*part);
    for (QPointer<QLabel>* label : {&recentLabel, &favoritesLabel, &collectedLabel})
        *label = new QLabel(&dialog);
    collected = new QLineEdit(&dialog);
    collected->installEventFilter(&dialog);
    collect = MakeButton(dialog);
    copy = MakeButton(dialog);
    KvSetDlgItemId(status, kKvCharMapStatus);
    KvSetDlgItemId(search, kKvCharMapSearch);
    search->installEventFilter(&dialog);
    dialog.WatchGrid();
    connect(search, &QLineEdit::textChanged, &dialog, [this] { Search(-1); });
    connect(grid, &CKvCharMapPreviewWnd::MenuRequested, &dialog, [this](QPoint screen) { OpenMenu(screen); });
    connect(insert, &QPushButton::clicked, &dialog, [this] { PickSelected(); });
    // Not of a click: a screen reader turns the button over without one.
    connect(favorite, &QPushButton::toggled, &dialog, [this] { ToggleFavorite(SelectedCode()); });
    connect(collect, &QPushButton::clicked, &dialog, [this] { Collect(SelectedCode()); });
    connect(copy, &QPushButton::clicked, &dialog, [this] { Copy(); });
    connect(collected, &QLineEdit::textChanged, &dialog, [this] { UpdateSelection(); });
}

void CKvCharMapDlg::Impl::LayOut()
{
    auto* column = new QVBoxLayout(&dialog);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kSpacing);
    column->addWidget(search);
    auto* characters = new QHBoxLayout;
    characters->setSpacing(0);
    characters->addWidget(grid);
    characters->addWidget(bar);
    column->addLayout(characters);
    auto* selected = new QHBoxLayout;
    selected->setSpacing(kSpacing);
    selected->addWidget(status, 1);
    selected->addWidget(favorite);
    selected->addWidget(insert);
    column->addLayout(selected);
    for (const auto& [label, row] :
         {std::pair(recentLabel, recentRow), std::pair(favoritesLabel, favoritesRow)}) {
        column->addWidget(label);
        column->addWidget(row);
    }
    column->addWidget(collectedLabel);
    auto* collecting = new QHBoxLayout;
    collecting->setSpacing(kSpacing);
    collecting->addWidget(collected, 1);
    collecting->addWidget(collect);
    collecting->addWidget(copy);
    column->addLayout(collecting);
    column->setSizeConstraint(QLayout::SetFixedSize);
    QWidget* const order[] = {search,       grid,      favorite, insert, recentRow,
                              favoritesRow, collected, collect,  copy};
    for (std::size_t i = 1; i < std::size(order); ++i)
        QWidget::setTabOrder(order[i - 1], order[i]);
}

void CKvCharMapDlg::Impl::ApplyTexts()
{
    search->setPlaceholderText(TextOf(kv::kTextSearchHint));
    search->setAccessibleName(TextOf(kv::kTextSearchHint));
    search->setToolTip(TipOf(kSearchTip));
    SetButtonTexts(*insert, kv::kTextInsert, kInsertTip);
    SetButtonTexts(*favorite, kv::kTextFavorite, kFavoriteTip);
    SetButtonTexts(*collect, kv::kTextCollect, kCollectTip);
    SetButtonTexts(*copy, kv::kTextCopy, kCopyTip);
    recentLabel->setText(TextOf(kv::kTextRecent));
    favoritesLabel->setText(TextOf(kv::kTextFavorites));
    collectedLabel->setText(TextOf(kv::kTextCollected));
    recentRow->SetName(recentLabel->text());
    favoritesRow->SetName(favoritesLabel->text());
    collected->setAccessibleName(collectedLabel->text());
    UpdateSelection();
    if (search->HasFault())
        search->ShowFault(TextOf(kv::kTextNoMatch));
    Measure();
}

void CKvCharMapDlg::Impl::Measure()
{
    constexpr int kPadding = 24;
    constexpr int kBorders = 8;
    const int height = std::max(kRowHeight, dialog.fontMetrics().height() + kBorders);
    // Below a style sheet the toolkit hands no font on.
    for (QWidget* item : dialog.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (qobject_cast<QLabel*>(item) || qobject_cast<QLineEdit*>(item) || qobject_cast<QPushButton*>(item))
            item->setFont(dialog.font());
    }
    status->setFixedHeight(2 * status->fontMetrics().lineSpacing()); // long names take two lines
    for (QLineEdit* edit : {static_cast<QLineEdit*>(search), collected.data()})
        edit->setFixedHeight(height);
    for (QPushButton* button : {insert.data(), favorite.data(), collect.data(), copy.data()}) {
        button->ensurePolished();
        button->setFixedSize(button->fontMetrics().horizontalAdvance(button->text()) + kPadding, height);
    }
    if (QLayout* const all = dialog.layout()) { // somebody may ask for the size at once
        all->invalidate();
        all->activate();
    }
}

void CKvCharMapDlg::Impl::Clear()
{
    delete dialog.layout();
    for (QWidget* item :
         {static_cast<QWidget*>(grid.data()), static_cast<QWidget*>(bar.data()),
          static_cast<QWidget*>(status.data()), static_cast<QWidget*>(search.data()),
          static_cast<QWidget*>(recentLabel.data()), static_cast<QWidget*>(favoritesLabel.data()),
          static_cast<QWidget*>(collectedLabel.data()), static_cast<QWidget*>(recentRow.data()),
          static_cast<QWidget*>(favoritesRow.data()), static_cast<QWidget*>(collected.data()),
          static_cast<QWidget*>(insert.data()), static_cast<QWidget*>(favorite.data()),
          static_cast<QWidget*>(collect.data()), static_cast<QWidget*>(copy.data())})
        delete item;
}

const kv::CharFace& CKvCharMapDlg::Impl::Face() const
{
    return grid->m_impl->font;
}

const kv::CodeTable& CKvCharMapDlg::Impl::Table() const
{
    return grid->m_impl->model.Table();
}

char16_t CKvCharMapDlg::Impl::FocusedCode() const
{
    for (const kv::CharShelfWnd* row : {recentRow.data(), favoritesRow.data()})
        if (row->hasFocus())
            return row->Current();
    return SelectedCode();
}

char16_t CKvCharMapDlg::Impl::SelectedCode() const
{
    return static_cast<char16_t>(grid->GetCode(grid->GetSelected()));
}

void CKvCharMapDlg::Impl::FaceChanged()
{
    UpdateBar();
    UpdateRows();
    UpdateSelection();
    search->ShowFault({});
}

void CKvCharMapDlg::Impl::UpdateBar()
{
    const int last = grid->GetLastFirst() / kv::kCharColumns;
    line->SetViewLength(kv::kCharRows);
    line->SetVirtualLength(last + kv::kCharRows);
    line->SetPosition(grid->GetFirst() / kv::kCharColumns);
    bar->SetScroll(*line);
}

void CKvCharMapDlg::Impl::UpdateRows()
{
    recentRow->SetCharacters(Face(), Table(), recent.Characters());
    favoritesRow->SetCharacters(Face(), Table(), favorites.Characters());
}

void CKvCharMapDlg::Impl::UpdateSelection()
{
    const bool isSelected = grid->GetSelected() >= 0;
    if (isSelected)
        status->setText(kv::CharCodeAndName(SelectedCode()));
    else if (grid->GetCodeCount() == 0)
        status->setText(KvToQString(
            kv::FillText(KvGuiRes::LoadStringW(Face().IsThere() ? kv::kTextNoCharacters : kv::kTextNoFace),
                         {grid->GetFont()})));
    else
        status->setText(TextOf(kv::kTextNothingSelected));
    const bool isFavorite = isSelected && favorites.Has(SelectedCode());
    {
        const QSignalBlocker silent(favorite);
        favorite->setChecked(isFavorite);
    }
    favorite->setEnabled(isSelected && SelectedCode() != 0 && (isFavorite || !favorites.IsFull()));
    insert->setEnabled(isSelected);
    collect->setEnabled(isSelected);
    copy->setEnabled(isSelected || !collected->text().isEmpty());
}

void CKvCharMapDlg::Impl::SelectCode(char16_t code)
{
    const int index = grid->FindCode(code);
    if (index < 0)
        return;
    grid->SetSelected(index); // bar and status follow it
}

void CKvCharMapDlg::Impl::Search(int after)
{
    const QString query = search->text();
    const int index = kv::FindCharacter(KvFromQString(query), Table(), kv::CharNames(), after);
    const bool isAsked = std::any_of(query.begin(), query.end(), [](QChar unit) { return unit != u' '; });
    search->ShowFault(index < 0 && isAsked ? TextOf(kv::kTextNoMatch) : QString());
    if (index >= 0)
        SelectCode(Table()[static_cast<std::size_t>(index)].code);
}

void CKvCharMapDlg::Impl::SearchNext()
{
    if (recentRow->hasFocus() || favoritesRow->hasFocus())
        grid->setFocus(Qt::ShortcutFocusReason);
    Search(grid->GetSelected());
}

void CKvCharMapDlg::Impl::PickSelected()
{
    if (grid->GetSelected() < 0)
        return;
    const char16_t code = SelectedCode();
    Used(code);
    SendPicked(code);
}

void CKvCharMapDlg::Impl::SendPicked(char16_t code)
{
    const QPointer<CKvCharMapDlg> alive(&dialog);
    if (target)
        target->OnCommand(KvCharMapCommand, code, 0);
    if (alive)
        Q_EMIT alive->CharPicked(code);
}

void CKvCharMapDlg::Impl::Used(char16_t code)
{
    if (recentRow->hasFocus())
        return; // the row stays as it is while one works in it
    recent.PutFirst(code);
    UpdateRows();
}

void CKvCharMapDlg::Impl::Collect(char16_t code)
{
    if (code == 0)
        return;
    collected->insert(QString(QChar(code)));
    Used(code);
}

void CKvCharMapDlg::Impl::Copy()
{
    const QString text = collected->text();
    if (!text.isEmpty())
        QApplication::clipboard()->setText(text);
    else if (grid->GetSelected() >= 0)
        CopyCharacter(SelectedCode());
}

void CKvCharMapDlg::Impl::CopyCharacter(char16_t code)
{
    QApplication::clipboard()->setText(QString(QChar(code)));
    Used(code);
}

void CKvCharMapDlg::Impl::ToggleFavorite(char16_t code)
{
    if (code == 0)
        return;
    if (!favorites.Remove(code) && !favorites.Append(code)) {
        status->setText(TextOf(kv::kTextFavoritesFull));
        return;
    }
    UpdateRows();
    UpdateSelection();
    Q_EMIT dialog.FavoritesChanged();
}

bool CKvCharMapDlg::Impl::IsOwnKey(const QKeyEvent& key) const
{
    const Qt::KeyboardModifiers held = kv::HeldModifiers(key.modifiers());
    if (key.key() == Qt::Key_Space)
        return held == Qt::NoModifier &&
               (grid->hasFocus() || recentRow->hasFocus() || favoritesRow->hasFocus());
    return (key.key() == Qt::Key_F3 && held == Qt::NoModifier) ||
           (key.key() == Qt::Key_D && held == Qt::ControlModifier);
}

void CKvCharMapDlg::Impl::OpenMenu(QPoint screen)
{
    const char16_t code = SelectedCode();
    const bool isFavorite = favorites.Has(code);
    CKvMenu menu;
    menu.LoadMenu(kMenu);
    menu.EnableMenuItem(kMenuAddFavorite, !isFavorite && !favorites.IsFull());
    menu.EnableMenuItem(kMenuRemoveFavorite, isFavorite);
    const QPointer<CKvCharMapDlg> alive(&dialog);
    const UINT command = menu.TrackPopupMenu(TPM_RIGHTBUTTON | TPM_RETURNCMD, CPoint(screen), &dialog);
    if (!alive || !IsMade())
        return;
    SelectCode(code);
    switch (command) {
    case kMenuInsert:
        return PickSelected();
    case kMenuCopy:
        return CopyCharacter(code);
    case kMenuCollect:
        return Collect(code);
    case kMenuAddFavorite:
    case kMenuRemoveFavorite:
        return ToggleFavorite(code);
    default:
        return;
    }
}
