#include "window/EmptyHint.h"

#include "window/Texts.h"

#include <QEvent>

namespace titler {

EmptyHint::EmptyHint(QWidget& view, UINT textId) : QLabel(Text(textId), &view)
{
    setProperty("role", "hint");
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setMargin(24);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    view.installEventFilter(this);
    Place();
}

void EmptyHint::Place()
{
    setGeometry(parentWidget()->rect());
}

bool EmptyHint::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        Place();
    return QLabel::eventFilter(watched, event);
}

} // namespace titler
