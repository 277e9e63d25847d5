#include "KvQt.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

struct KvQtMessageLog::Entry
{
    static void Hear(QtMsgType type, const QMessageLogContext& context, const QString& text);

    static inline std::mutex mutex;
    static inline std::vector<const Entry*> all; ///< guarded
    static inline std::atomic<QtMessageHandler> before = nullptr;

    CKvAppLogListCtrl* list;
    int least; ///< a rank
};

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

} // namespace

void KvQtMessageLog::Entry::Hear(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    // What comes of passing a message on would wait for itself.
    thread_local bool isPassing = false;
    if (const QtMessageHandler previous = before)
        previous(type, context, text);
    if (isPassing)
        return;
    const QScopedValueRollback passing(isPassing, true);
    const Kind& kind = KindOf(type);
    const QLatin1String category(context.category);
    const bool isNamed = !category.isEmpty() && category != QLatin1String("default");
    const CString line = KvFromQString(isNamed ? category + QLatin1String(": ") + text : text);
    const std::lock_guard lock(mutex);
    for (const Entry* entry : all) {
        if (kind.level >= entry->least)
            entry->list->PostAppLogText(kind.type, kind.level, line);
    }
}

KvQtMessageLog::KvQtMessageLog(CKvAppLogListCtrl& list) : m_entry(new Entry{&list, 0})
{
    const std::lock_guard lock(Entry::mutex);
    Entry::all.push_back(m_entry.get());
    if (Entry::all.size() > 1)
        return;
    // Where another handler was put over ours meanwhile, ours still hears through it.
    if (const QtMessageHandler previous = qInstallMessageHandler(&Entry::Hear); previous != &Entry::Hear)
        Entry::before = previous;
}

KvQtMessageLog::~KvQtMessageLog()
{
    const std::lock_guard lock(Entry::mutex);
    std::erase(Entry::all, m_entry.get());
    if (!Entry::all.empty())
        return;
    const QtMessageHandler now = qInstallMessageHandler(Entry::before);
    if (now != &Entry::Hear)
        qInstallMessageHandler(now); // somebody else's, who goes on to tell ours
}

void KvQtMessageLog::SetLeast(QtMsgType type)
{
    const std::lock_guard lock(Entry::mutex);
    m_entry->least = KindOf(type).level;
}
