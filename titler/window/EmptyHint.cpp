#include "window/EmptyHint.h"

#include "window/Language.h"
#include "window/Texts.h"

#include <QEvent>

#include <algorithm>

namespace titler {
namespace {

constexpr int kAround = 12;

} // namespace

EmptyHint::EmptyHint(QWidget& view, UINT textId) : QLabel(&view)
{
    InEachLanguage(*this, [this, textId] { setText(Text(textId)); });
    setProperty("role", "overlay"); // it may stand over a picture of any colour
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    view.installEventFilter(this);
    Place();
}

void EmptyHint::Place()
{
    const QRect room = parentWidget()->rect().adjusted(kAround, kAround, -kAround, -kAround);
    const int width = std::min(sizeHint().width(), std::max(room.width(), 0));
    QRect place(0, 0, width, heightForWidth(width));
    place.moveCenter(room.center());
    setGeometry(place);
}

bool EmptyHint::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        Place();
    return QLabel::eventFilter(watched, event);
}

} // namespace titler
