// Cells whose texts run in their own direction.
#pragma once

#include <QStyledItemDelegate>

namespace titler {

/// Shows each text as it is written elsewhere, whatever the window's direction: patterns, names of files and
/// numbers from left to right. The text stays at the side where the window has it.
class OwnDirection : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->displayAlignment =
            QStyle::visualAlignment(option->direction, option->displayAlignment) | Qt::AlignAbsolute;
        option->direction = option->text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
    }
};

} // namespace titler
