#include "KvFindReplaceTxtDlg.h"

#include "KvGuiRes.h"
#include "core/Text.h"
#include "platform/VirtualKey.h"
#include "text/TextHistory.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>

namespace {

constexpr UINT kNotFoundText = 10073;
constexpr UINT kFindLabel = 65535;
constexpr UINT kReplaceLabel = 65534;

/// An edit's text and the ones before it; they outlive the window.
struct Entry
{
    UINT id;
    UINT label;
    CString text;
    kv::TextHistory history;
    QPointer<QLineEdit> edit;
};

} // namespace

struct CKvFindReplaceTxtDlg::Impl
{
    Entry* EntryOf(const QObject* edit)
    {
        return edit == find.edit ? &find : edit == replacement.edit ? &replacement : nullptr;
    }
    void SetText(Entry& entry, const CString& text)
    {
        entry.text = text;
        if (entry.edit)
            entry.edit->setText(KvToQString(text));
    }
    // The user's step through the history, which the edit's own undo takes back.
    void Replace(Entry& entry, const CString& text)
    {
        isWalking = true;
        entry.edit->selectAll();
        entry.edit->insert(KvToQString(text));
        isWalking = false;
    }
    void BeginTyping()
    {
        if (!find.edit)
            return;
        find.edit->setFocus();
        find.edit->selectAll();
    }
    void ApplyNames()
    {
        for (const Entry* entry : {&find, &replacement}) {
            if (entry->edit)
                entry->edit->setAccessibleName(
                    KvToQString(KvGuiRes::LoadDialogText(kKvFindReplaceDialog, entry->label)));
        }
    }

    IKvFindReplaceTxtNotify* notify = nullptr;
    QPointer<QWidget> parent;
    Entry find{kKvFindEdit, kFindLabel, {}, {}, {}};
    Entry replacement{kKvReplaceEdit, kReplaceLabel, {}, {}, {}};
    bool matchCase = false;
    bool isWalking = false; ///< through the history
};

CKvFindReplaceTxtDlg::CKvFindReplaceTxtDlg() : m_impl(std::make_unique<Impl>()) {}

CKvFindReplaceTxtDlg::~CKvFindReplaceTxtDlg()
{
    CKvFindReplaceTxtDlg::DestroyWindow();
}

int CKvFindReplaceTxtDlg::Create(CWnd* parent)
{
    if (IsCreated())
        return 0;
    m_impl->parent = parent;
    return CKvDialog::Create(kKvFindReplaceDialog, parent);
}

BOOL CKvFindReplaceTxtDlg::OnInitDialog()
{
    for (Entry* entry : {&m_impl->find, &m_impl->replacement}) {
        entry->edit = qobject_cast<QLineEdit*>(GetDlgItem(entry->id));
        if (!entry->edit)
            continue;
        entry->edit->setText(KvToQString(entry->text));
        entry->edit->installEventFilter(this);
        connect(entry->edit, &QLineEdit::textEdited, this, [this, entry] {
            if (!m_impl->isWalking)
                entry->history.StopWalk();
        });
        connect(entry->edit, &QLineEdit::textChanged, this, [this, entry](const QString& text) {
            entry->text = KvFromQString(text);
            OnEditUpdate();
        });
    }
    if (auto* check = qobject_cast<QCheckBox*>(GetDlgItem(kKvMatchCaseCheck))) {
        check->setChecked(m_impl->matchCase);
        connect(check, &QCheckBox::toggled, this, [this](bool checked) { m_impl->matchCase = checked; });
    }
    m_impl->ApplyNames();
    return CKvDialog::OnInitDialog();
}

void CKvFindReplaceTxtDlg::SetNotify(IKvFindReplaceTxtNotify* notify)
{
    m_impl->notify = notify;
}

void CKvFindReplaceTxtDlg::SetFindString(CStringArray& texts)
{
    if (texts.empty())
        return;
    CString joined;
    for (const CString& text : texts)
        joined += text;
    m_impl->find.history.StopWalk();
    m_impl->SetText(m_impl->find, joined);
    if (isVisible())
        m_impl->BeginTyping();
}

void CKvFindReplaceTxtDlg::FindNext()
{
    OnBtnFindReplace(kKvFindNextButton);
}

void CKvFindReplaceTxtDlg::OnBtnFindReplace(UINT id)
{
    if (!m_impl->notify)
        return;
    // Copies: the editor may change the texts, or delete the dialog.
    const CString text = m_impl->find.text;
    const CString replacement = m_impl->replacement.text;
    const BOOL matchCase = m_impl->matchCase ? 1 : 0;
    const QPointer<CKvFindReplaceTxtDlg> self(this);
    int found = 0;
    if (id == kKvFindNextButton) {
        m_impl->find.history.Use(text);
        found = m_impl->notify->Find(text.c_str(), matchCase);
    } else if ((id == kKvReplaceButton || id == kKvReplaceAllButton) && !text.empty()) {
        m_impl->find.history.Use(text);
        m_impl->replacement.history.Use(replacement);
        const BOOL all = id == kKvReplaceAllButton ? 1 : 0;
        found = m_impl->notify->Replace(text.c_str(), replacement.c_str(), matchCase, all);
    }
    if (self && found == kKvFindNotFound)
        _PopupMessageBox(kv::FillText(KvGuiRes::LoadStringW(kNotFoundText), {text}));
}

void CKvFindReplaceTxtDlg::_PopupMessageBox(const CString& text)
{
    KvMessageBox(isVisible() ? this : m_impl->parent.data(), text, MB_OK | MB_ICONINFORMATION);
}

void CKvFindReplaceTxtDlg::OnEditUpdate()
{
    for (const Entry* entry : {&m_impl->find, &m_impl->replacement}) {
        if (entry->edit)
            entry->edit->update();
    }
}

void CKvFindReplaceTxtDlg::OnOK()
{
    FindNext();
}

void CKvFindReplaceTxtDlg::OnCancel()
{
    hide();
}

BOOL CKvFindReplaceTxtDlg::OnCommand(WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    switch (LOWORD(wParam)) {
    case kKvFindNextButton:
    case kKvReplaceButton:
    case kKvReplaceAllButton:
        OnBtnFindReplace(LOWORD(wParam));
        return 1;
    default:
        return CKvDialog::OnCommand(wParam, lParam, result);
    }
}

void CKvFindReplaceTxtDlg::OnSkinChanged()
{
    CKvDialog::OnSkinChanged();
    m_impl->ApplyNames();
}

void CKvFindReplaceTxtDlg::showEvent(QShowEvent* event)
{
    CKvDialog::showEvent(event);
    if (!event->spontaneous())
        m_impl->BeginTyping();
}

void CKvFindReplaceTxtDlg::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_F3 && kv::HeldModifiers(event->modifiers()) == Qt::NoModifier)
        FindNext();
    else
        CKvDialog::keyPressEvent(event);
}

bool CKvFindReplaceTxtDlg::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return CKvDialog::eventFilter(watched, event);
    const auto& key = static_cast<QKeyEvent&>(*event);
    Entry* entry = m_impl->EntryOf(watched);
    const bool isStep = key.key() == Qt::Key_Up || key.key() == Qt::Key_Down;
    if (!entry || !isStep || kv::HeldModifiers(key.modifiers()) != Qt::NoModifier)
        return CKvDialog::eventFilter(watched, event);
    m_impl->Replace(*entry, key.key() == Qt::Key_Up ? entry->history.Older(entry->text)
                                                    : entry->history.Newer(entry->text));
    return true;
}
