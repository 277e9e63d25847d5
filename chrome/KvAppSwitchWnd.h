// The list of applications that a ribbon title bar opens over its frame.
#pragma once

#include "KvPlatform.h"

#include <QFrame>

#include <string>

class QListWidget;

/// A frameless popup. Rows are the applications in the title bar's order; Up, Down, Home, End and letters
/// move the selection, Enter and a click choose, Escape and a click elsewhere close.
class CKvAppSwitchWnd : public QFrame
{
    Q_OBJECT

public:
    CKvAppSwitchWnd();

    /// @param picture name in the skin.
    void AddApplication(const std::wstring& picture, const std::wstring& name);
    void RemoveApplication(int row);
    /// Shows the list centred on the frame, with that row selected. It becomes the frame's child.
    void Open(QWidget& frame, int current);

signals:
    /// The list is closed; the receiver may delete the window later, not at once.
    void Chosen(int row);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Renew();
    void FitRows(const QWidget& frame);
    void Choose(int row);

    QListWidget* m_list;
};
