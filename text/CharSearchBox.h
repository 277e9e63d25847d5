// The search box of the character map, which says when nothing matches.
#pragma once

#include <QLineEdit>

namespace kv {

class CharSearchBox : public QLineEdit
{
public:
    using QLineEdit::QLineEdit;

    /// @param text what the box says at its end while nothing matches; empty when something does.
    void ShowFault(const QString& text);
    bool HasFault() const { return !m_fault.isEmpty(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_fault;
};

} // namespace kv
