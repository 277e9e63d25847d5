// The labels with the keys of a caption strip's parts, drawn over it while Alt is down.
#pragma once

#include "KvTypes.h"

#include <QWidget>

#include <vector>

namespace kv {

struct KeyTipLabel
{
    QString text;
    CRect part; ///< client coordinates of the bar
};

class KeyTipOverlay : public QWidget
{
public:
    /// @param middle y of the labels' middle.
    KeyTipOverlay(QWidget& bar, std::vector<KeyTipLabel> labels, int middle);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect LabelRect(const KeyTipLabel& label) const;

    std::vector<KeyTipLabel> m_labels;
    int m_middle;
};

} // namespace kv
