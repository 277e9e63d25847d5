#include "media/NamingRules.h"

#include "window/Language.h"
#include "window/Texts.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

namespace titler {
namespace {

constexpr int kSaveAfter = 1000; // milliseconds

NamingRule ReadRule(Ref<IKvFileNamingRule> rule)
{
    NamingRule read{rule->GetClass(), {}, {}, {}};
    wchar_t pattern[kKvNamingTextSize];
    bool isWhole = rule->GetMainRule(pattern);
    if (isWhole)
        read.main = QString::fromWCharArray(pattern);
    for (unsigned i = 0; i < rule->GetAdditionRuleCount(); ++i) {
        const bool isGiven = rule->GetAdditionRule(i, pattern);
        read.additions << (isGiven ? QString::fromWCharArray(pattern) : QString());
        isWhole = isWhole && isGiven;
    }
    if (!isWhole)
        read.source = {rule.release(), Releaser()};
    return read;
}

QVector<NamingRule> ReadRules(const QString& file)
{
    IKvFileNamingRuleCollection* loaded = nullptr;
    KvLoadFileNamingCollection(file.toStdWString().c_str(), &loaded, nullptr);
    const Ref<IKvFileNamingRuleCollection> collection(loaded);
    QVector<NamingRule> rules;
    Q_CHECK_PTR(loaded);
    for (unsigned i = 0; i < collection->GetRuleCount(); ++i) {
        IKvFileNamingRule* rule = nullptr;
        if (collection->GetRule(i, &rule))
            rules << ReadRule(Ref<IKvFileNamingRule>(rule));
    }
    return rules;
}

const QVector<NamingRule>& BuiltInRules()
{
    static const QVector<NamingRule> rules = ReadRules(QString()); // no file
    return rules;
}

Ref<IKvFileNamingRule> MakeRule(const NamingRule& rule)
{
    IKvFileNamingRule* made = nullptr;
    if (rule.source != nullptr)
        made = rule.source->Clone();
    else
        CreateFileNamingRule(rule.ruleClass, &made);
    Q_CHECK_PTR(made);
    Ref<IKvFileNamingRule> result(made);
    result->SetClass(rule.ruleClass);
    wchar_t old[kKvNamingTextSize] = {};
    result->GetMainRule(old);
    if (rule.main != QString::fromWCharArray(old))
        result->SetMainRule(rule.main.toStdWString().c_str());
    QStringList additions;
    for (unsigned i = 0; i < result->GetAdditionRuleCount(); ++i)
        additions << (result->GetAdditionRule(i, old) ? QString::fromWCharArray(old) : QString());
    if (rule.additions == additions)
        return result;
    while (result->RemoveAdditionRule(0)) {
    }
    for (const QString& addition : rule.additions)
        result->AddAdditionRule(addition.toStdWString().c_str());
    return result;
}

} // namespace

class NamingRules::Step : public NamedStep
{
public:
    Step(NamingRules& rules, RuleList after, RuleEdit kind, StepName name)
        : NamedStep(std::move(name))
        , m_rules(rules)
        , m_before(rules.m_now)
        , m_after(std::move(after))
        , m_kind(kind)
        , m_session(rules.m_session)
    {
    }

    int id() const override { return static_cast<int>(m_kind); }
    bool mergeWith(const QUndoCommand* other) override
    {
        const auto& later = static_cast<const Step&>(*other);
        if (later.m_session != m_session)
            return false;
        m_after = later.m_after;
        setObsolete(m_after.rules == m_before.rules);
        return true;
    }
    void redo() override { m_rules.Restore(m_after); }
    void undo() override { m_rules.Restore(m_before); }

private:
    NamingRules& m_rules;
    RuleList m_before;
    RuleList m_after;
    RuleEdit m_kind;
    int m_session;
};

NamingRules::NamingRules() : m_now{BuiltInRules(), 0}
{
    InEachLanguage(*this, [this] { NameAnew(m_steps); });
    m_save.setSingleShot(true);
    m_save.setInterval(kSaveAfter);
    connect(&m_save, &QTimer::timeout, this, [this] {
        if (const QString fault = Save(); !fault.isEmpty())
            emit SaveFailed(fault);
    });
}

NamingRules::~NamingRules()
{
    Save();
    m_steps.disconnect();
}

QString NamingRules::DefaultFile()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    return folder.isEmpty() ? QString() : QDir(folder).filePath(QStringLiteral("naming-rules.ini"));
}

QString NamingRules::Load(const QString& file)
{
    const QFileInfo info(file);
    const bool isReadable = !info.exists() || (info.isFile() && info.isReadable());
    m_file = isReadable ? file : QString(); // a save would lose what is there
    m_save.stop();
    m_steps.clear();
    EndSession();
    const QVector<NamingRule> rules = isReadable ? ReadRules(file) : QVector<NamingRule>();
    Restore({rules, rules.isEmpty() ? -1 : 0});
    m_isUnsaved = false;
    return isReadable ? QString() : Text(kTextCannotLoadRules, {QDir::toNativeSeparators(file)});
}

QString NamingRules::Save()
{
    m_save.stop();
    if (!m_isUnsaved)
        return {};
    QDir().mkpath(QFileInfo(m_file).path());
    const Ref<IKvFileNamingRuleCollection> rules = MakeCollection();
    m_isUnsaved = !KvSaveFileNamingCollection(m_file.toStdWString().c_str(), rules.get(), nullptr);
    return m_isUnsaved ? Text(kTextCannotSaveRules, {QDir::toNativeSeparators(m_file)}) : QString();
}

void NamingRules::Select(int index)
{
    if (index == m_now.selected || index < 0 || index >= m_now.rules.size())
        return;
    EndSession();
    m_now.selected = index;
    emit RuleSelected();
}

void NamingRules::Edit(RuleEdit kind, const StepName& name, const std::function<void(RuleList&)>& change)
{
    RuleList after = m_now;
    change(after);
    const int last = static_cast<int>(after.rules.size()) - 1;
    after.selected = std::clamp(after.selected, std::min(last, 0), last);
    if (after.rules != m_now.rules)
        m_steps.push(new Step(*this, std::move(after), kind, name));
}

void NamingRules::Reset(const StepName& name)
{
    Edit(RuleEdit::Single, name, [](RuleList& list) { list.rules = BuiltInRules(); });
}

void NamingRules::Restore(const RuleList& list)
{
    m_now = list;
    m_isUnsaved = !m_file.isEmpty();
    if (m_isUnsaved)
        m_save.start();
    emit Changed();
}

Ref<IKvFileNamingRuleCollection> NamingRules::MakeCollection() const
{
    IKvFileNamingRuleCollection* made = nullptr;
    CreateFileNamingRuleCollection(&made);
    Q_CHECK_PTR(made);
    Ref<IKvFileNamingRuleCollection> collection(made);
    for (const NamingRule& rule : m_now.rules)
        collection->AddRule(MakeRule(rule).get());
    return collection;
}

} // namespace titler
