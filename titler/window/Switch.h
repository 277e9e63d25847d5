// A choice of one of a few, all of them in sight.
#pragma once

#include "KvTypes.h"

#include <QWidget>

#include <initializer_list>

class QAbstractButton;
class QButtonGroup;

namespace titler {

/// Buttons side by side, one of them checked. Tab reaches the checked one, arrow keys choose from there.
class Switch : public QWidget
{
    Q_OBJECT

public:
    /// @param nameId its accessible name. @param choices their names; a tip's number is its name's plus 1.
    Switch(UINT nameId, std::initializer_list<UINT> choices);

    /// Silent. @param index from 0.
    void Check(int index);
    int Checked() const;
    QAbstractButton& Button(int index) const;

signals:
    /// By the user; also the choice that was checked already.
    void Chosen(int index);

private:
    QButtonGroup* m_group;
};

} // namespace titler
