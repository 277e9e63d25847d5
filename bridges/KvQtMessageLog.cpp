#include "KvQt.h"

#include <QScopeGuard>
#include <QScopedValueRollback>

#include <algorithm>
#include <array>
#include <bitset>
#include <cstdio>
#include <mutex>
#include <utility>
#include <vector>

namespace {

struct Kind
{
    QtMsgType qt;
    int type;
    unsigned short level; ///< also the rank: the toolkit's own numbers do not ascend
};
constexpr Kind kKinds[] = {
    {QtDebugMsg, 0, 0}, {QtInfoMsg, 0, 1}, {QtWarningMsg, 2, 2}, {QtCriticalMsg, 3, 3}, {QtFatalMsg, 3, 4}};

const Kind& KindOf(QtMsgType type)
{
    const auto* found = std::find_if(std::begin(kKinds), std::end(kKinds),
                                     [type](const Kind& kind) { return kind.qt == type; });
    return found == std::end(kKinds) ? kKinds[0] : *found;
}

struct Listener
{
    CKvAppLogListCtrl* list;
    int least; ///< a rank
};

/// Of how many handlers ours can stand in front. Each of these places has a function of its own: whoever is
/// put in front of it may call it to the process's end, and means the same handler behind it all the time.
constexpr std::size_t kPlaces = 16;
/// The place from which one sees what is installed.
constexpr std::size_t kLookOut = kPlaces;

struct Chain
{
    std::recursive_mutex mutex; ///< guards the rest; a list that takes a message in may send one itself
    std::vector<const Listener*> listeners;
    std::array<QtMessageHandler, kPlaces + 1> behind{};
    std::vector<std::size_t> order; ///< the places that ours stand at, as far as one knows; the foremost last
};

/// Never destroyed, for ours may still be called then.
Chain& TheChain()
{
    static auto* const chain = new Chain;
    return *chain;
}

using Places = std::bitset<kPlaces + 1>;

/// The handler behind a place; of one that is passing the message on already, which then runs in a ring, the
/// one behind the next place that is not. Null when there is none.
QtMessageHandler HandlerBehind(std::size_t& place, const Places& passing)
{
    Chain& chain = TheChain();
    const std::lock_guard lock(chain.mutex);
    if (passing[place]) {
        const auto next = std::find_if(chain.order.rbegin(), chain.order.rend(),
                                       [&](std::size_t other) { return !passing[other]; });
        if (next == chain.order.rend())
            return nullptr;
        place = *next;
    }
    return chain.behind[place];
}

void PassOn(std::size_t place, QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    thread_local Places passing;
    if (const QtMessageHandler handler = HandlerBehind(place, passing)) {
        passing.set(place);
        const auto done = qScopeGuard([place] { passing.reset(place); });
        handler(type, context, text);
    } else { // as the toolkit does with what a handler itself gives rise to
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
}

void Hear(std::size_t place, QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    // What comes of a message, be it the same one at another place, is not taken in again.
    thread_local bool isHearing = false;
    const QScopedValueRollback hearing(isHearing);
    const bool isFirst = !std::exchange(isHearing, true);
    PassOn(place, type, context, text);
    if (!isFirst)
        return;
    const Kind& kind = KindOf(type);
    const QLatin1String category(context.category);
    const bool isNamed = !category.isEmpty() && category != QLatin1String("default");
    const CString line = KvFromQString(isNamed ? category + QLatin1String(": ") + text : text);
    Chain& chain = TheChain();
    const std::lock_guard lock(chain.mutex);
    for (const Listener* listener : chain.listeners) {
        if (kind.level >= listener->least)
            listener->list->PostAppLogText(kind.type, kind.level, line);
    }
}

template <std::size_t Place>
void HearAt(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    Hear(Place, type, context, text);
}

constexpr auto kHandlers = []<std::size_t... Place>(std::index_sequence<Place...>)
{
    return std::array<QtMessageHandler, sizeof...(Place)>{&HearAt<Place>...};
}
(std::make_index_sequence<kPlaces + 1>());

/// @return kHandlers' size for a handler that is not ours.
std::size_t PlaceOf(QtMessageHandler handler)
{
    return static_cast<std::size_t>(std::find(kHandlers.begin(), kHandlers.end(), handler) -
                                    kHandlers.begin());
}

/// What stands behind a handler of ours; any other itself, who may go on to ours.
QtMessageHandler WithoutOurs(QtMessageHandler handler)
{
    const std::size_t place = PlaceOf(handler);
    if (place == kHandlers.size())
        return handler;
    auto& order = TheChain().order;
    order.erase(std::find(order.begin(), order.end(), place), order.end());
    return TheChain().behind[place];
}

/// Ours that stands in front of a handler, or is that handler.
QtMessageHandler OursInFrontOf(QtMessageHandler handler)
{
    handler = WithoutOurs(handler);
    auto& [mutex, listeners, behind, order] = TheChain();
    const auto end = behind.begin() + kPlaces;
    auto found = std::find(behind.begin(), end, handler);
    if (found == end)
        found = std::find(behind.begin(), end, nullptr);
    if (found == end)
        --found; // changes hands; should that close a ring, HandlerBehind leaves it
    *found = handler;
    const auto place = static_cast<std::size_t>(found - behind.begin());
    std::erase(order, place);
    order.push_back(place);
    return kHandlers[place];
}

/// Installs another handler in place of the one that is installed. The toolkit tells which that is to one who
/// installs another, so the look-out takes its place meanwhile; messages of other threads wait there for the
/// mutex, which the caller holds.
void Reinstall(QtMessageHandler (*choose)(QtMessageHandler))
{
    QtMessageHandler& seen = TheChain().behind[kLookOut];
    const QtMessageHandler before = qInstallMessageHandler(kHandlers[kLookOut]);
    if (before != kHandlers[kLookOut])
        seen = before;
    const QtMessageHandler other = qInstallMessageHandler(choose(seen));
    if (other != kHandlers[kLookOut])
        qInstallMessageHandler(other); // another thread's of this very moment, who goes on to the look-out
}

} // namespace

struct KvQtMessageLog::Entry : Listener
{
};

KvQtMessageLog::KvQtMessageLog(CKvAppLogListCtrl& list) : m_entry(new Entry{{&list, 0}})
{
    Chain& chain = TheChain();
    const std::lock_guard lock(chain.mutex);
    chain.listeners.push_back(m_entry.get());
    Reinstall(&OursInFrontOf); // also when others live: a handler in front of theirs may keep all for itself
}

KvQtMessageLog::~KvQtMessageLog()
{
    Chain& chain = TheChain();
    const std::lock_guard lock(chain.mutex);
    std::erase(chain.listeners, m_entry.get());
    if (chain.listeners.empty())
        Reinstall(&WithoutOurs);
}

void KvQtMessageLog::SetLeast(QtMsgType type)
{
    const std::lock_guard lock(TheChain().mutex);
    m_entry->least = KindOf(type).level;
}
