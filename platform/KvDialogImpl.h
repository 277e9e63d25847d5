// The dialog base's private part: the window that a template becomes.
#pragma once

#include "KvDialog.h"
#include "platform/DialogItems.h"
#include "platform/DialogTemplate.h"
#include "platform/IdleUpdate.h"

#include <QPointer>

#include <vector>

struct CKvDialog::Impl
{
    struct Item
    {
        const kv::DialogItem* place;
        QPointer<QWidget> control;
        kv::DialogTexts texts = {};
    };

    /// How a dialog ended; outlives the dialog that a handler deletes.
    struct Ending
    {
        bool hasEnded = false;
        int result = IDCANCEL;
    };

    explicit Impl(CKvDialog& owner) : dialog(owner) {}

    /// Makes items, texts and look and calls `OnInitDialog`, after which this may be gone. @return 1 or 0.
    int MakeWindow(UINT number);
    /// `DoModal`, after which this may be gone.
    int RunModal();
    void MakeItems();
    void ApplyTexts();
    /// The look's own rules, and behind them those that a host has set on the dialog.
    void ApplyLook();
    /// After a host has set another sheet.
    void KeepLook();
    /// Of a dialog that paints its own ground: gives the toolkit's labels the look that its sheet would.
    void StyleLabels();
    /// The font of the widget that the dialog is a part of, now and when it changes; not over a host's own.
    void TakeParentsFont();
    void FontChanged();
    /// To new items, to which the toolkit does not below a style sheet.
    void HandFontOn();
    /// Takes the dialog units and lays out.
    void Measure();
    /// The same where other texts need others; a dialog of the smallest size keeps to it.
    void MeasureTexts();
    /// Those of the font, wider ones (up to one half more) where a text of another language has no room.
    kv::DialogUnits UnitsForTexts() const;
    void LayOut();
    void OrderTabs();
    /// Puts the window over its parent's.
    void Place();
    /// The first item that the Tab key reaches; null when there is none.
    QWidget* FirstTabStop() const;

    CKvDialog& dialog;
    UINT modalTemplate = 0;
    kv::DialogTemplate shape{};
    QPointer<QWidget> parent;
    bool isCreated = false;
    bool isMaking = false; ///< `OnInitDialog` is on the stack
    bool isModal = false;  ///< `DoModal` is on the stack
    bool hasParentsFont = false;
    bool paintsGround = false; ///< a part of a form, whose sheet, palette and ground are the form's
    bool isPlaced = true;      ///< false while the parent's window, over which it stands, was never shown
    std::vector<Item> items;
    kv::DialogUnits units{};
    QSize smallest;
    QString shownTitle; ///< from the tables
    // What was set last: anything else is the host's, and stays.
    QString ownSheet; ///< a part of the dialog's sheet
    QSize ownMinimum{0, 0};
    SKvGuiBasicSettings* settings = nullptr;
    std::shared_ptr<Ending> ending = std::make_shared<Ending>();
    std::unique_ptr<kv::IdleUpdate> idle;
    QMetaObject::Connection parentDies;
};
