// The log: what the program does, and every warning.
#pragma once

#include "KvTypes.h"

#include <QString>
#include <QWidget>

class CKvAppLogListCtrl;

namespace titler {

/// As the list colours them.
enum class LogType : int
{
    Message = 0,
    Important = 1,
    Warning = 2,
    Error = 3,
};

class LogPanel : public QWidget
{
    Q_OBJECT

public:
    LogPanel();
    ~LogPanel() override;

    void Add(LogType type, const QString& text);
    CKvAppLogListCtrl& List() { return *m_list; }

    /// From now on the toolkit's own warnings go to the panel, too, from whatever thread they come. One panel
    /// at a time.
    void TakeToolkitWarnings();

private:
    CKvAppLogListCtrl* m_list;
};

} // namespace titler
