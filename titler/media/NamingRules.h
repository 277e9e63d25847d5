// The user's naming rules: what makes a file belong to another. They stand in a file of their own.
#pragma once

#include "KvFileNaming.h"
#include "edit/StepName.h"
#include "media/Ref.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QUndoStack>
#include <QVector>

#include <functional>
#include <memory>

namespace titler {

struct NamingRule
{
    unsigned ruleClass = kKvNamingClassVideoAudio;
    QString main;          ///< the pattern of the file that others belong to
    QStringList additions; ///< the patterns of those others
    /// The rule as it was read, where it does not hand out a pattern (an empty or a very long one): what is
    /// not edited stays.
    std::shared_ptr<IKvFileNamingRule> source;

    bool operator==(const NamingRule&) const = default;
};

/// The rules, and the one that was selected then, so that undo shows what it changed.
struct RuleList
{
    QVector<NamingRule> rules;
    int selected = 0; ///< -1 in an empty list
};

/// What a step did. Consecutive steps of one kind (other than Single) become one step within a session.
enum class RuleEdit : int
{
    Single = -1,
    Main = 1,
    Additions,
};

class NamingRules : public QObject
{
    Q_OBJECT

public:
    /// The built-in rules, of no file.
    NamingRules();
    ~NamingRules() override;

    /// The user's own file.
    static QString DefaultFile();
    /// A missing file is no fault: the built-in rules. One that cannot be read gives no rules, and is left
    /// alone.
    /// @return an empty text, or a sentence for the user.
    QString Load(const QString& file);
    /// Writes what has changed; it is written by itself shortly after each change.
    /// @return an empty text, or a sentence for the user; the file is then as it was.
    QString Save();

    const QVector<NamingRule>& All() const { return m_now.rules; }
    int Selected() const { return m_now.selected; }
    /// Selecting is no step of undo.
    void Select(int index);
    QUndoStack& Steps() { return m_steps; }

    /// One step of undo: `change` edits a copy. Nothing happens when it leaves the rules as they are.
    void Edit(RuleEdit kind, const StepName& name, const std::function<void(RuleList&)>& change);
    /// The next step starts anew instead of joining the last one.
    void EndSession() { ++m_session; }
    /// The built-in rules, as one step.
    void Reset(const StepName& name);

    /// The rules for the library, in objects of their own: another thread may have them.
    Ref<IKvFileNamingRuleCollection> MakeCollection() const;

signals:
    void Changed();
    void RuleSelected();
    void SaveFailed(const QString& fault);

private:
    class Step;
    void Restore(const RuleList& list);

    QString m_file;
    RuleList m_now;
    QUndoStack m_steps;
    QTimer m_save;
    bool m_isUnsaved = false; ///< the file is older than the rules
    int m_session = 0;
};

} // namespace titler
