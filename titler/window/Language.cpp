#include "window/Language.h"

#include "KvGuiRes.h"
#include "window/Texts.h"

#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QPointer>
#include <QTranslator>

namespace titler {
namespace {

constexpr Language kLanguages[] = {
    {"en", "English"}, {"de", "Deutsch"},  {"fr", "Français"}, {"es", "Español"},
    {"ja", "日本語"},  {"zh", "简体中文"}, {"ar", "العربية"},
};

const Language* g_current = &kLanguages[0];

class LanguageNews : public QObject
{
    Q_OBJECT

signals:
    void Chosen();
};

LanguageNews& News()
{
    static LanguageNews news;
    return news;
}

// The toolkit's own texts. The underline of a letter for Alt would part the joined letters of a script that
// is written from right to left; such a letter is on no Latin keyboard anyway.
class ToolkitTexts : public QTranslator
{
public:
    using QTranslator::QTranslator;
    QString translate(const char* context, const char* source, const char* remark, int count) const override
    {
        const QString text = QTranslator::translate(context, source, remark, count);
        return text.isRightToLeft() ? WithoutMnemonic(text) : text;
    }
};

// Buttons of message boxes, file dialogs, the menu of a text field, the names of keys.
void TranslateToolkit(const Language& language)
{
    static QPointer<ToolkitTexts> translator;
    delete translator;
    auto* loaded = new ToolkitTexts(QCoreApplication::instance());
    if (&language == &kLanguages[0] ||
        !loaded->load(QLocale(QLatin1String(language.code)), QStringLiteral("qtbase"), QStringLiteral("_"),
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        delete loaded;
        return;
    }
    translator = loaded;
    QCoreApplication::installTranslator(loaded);
}

} // namespace

std::span<const Language> Languages()
{
    return kLanguages;
}

const Language& CurrentLanguage()
{
    return *g_current;
}

const Language* FindLanguage(const QString& code)
{
    for (const Language& language : kLanguages)
        if (code == QLatin1String(language.code))
            return &language;
    return nullptr;
}

const Language& SystemLanguage()
{
    for (const QString& name : QLocale::system().uiLanguages()) {
        const QLocale locale(name);
        // Whoever reads traditional Chinese is not served with simplified.
        if (locale.script() == QLocale::TraditionalChineseScript)
            continue;
        if (const Language* language = FindLanguage(name.section(u'-', 0, 0)))
            return *language;
    }
    return kLanguages[0];
}

void ChooseLanguage(const Language& language)
{
    const bool isBuiltIn = &language == &kLanguages[0];
    const QString file = QStringLiteral(":/kv/lang/%1.ini").arg(QLatin1String(language.code));
    g_current = &language;
    TranslateToolkit(language);
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr)
        QGuiApplication::setLayoutDirection(QLocale(QLatin1String(language.code)).textDirection());
    KvGuiRes::SetStringFile(isBuiltIn ? nullptr : file.toStdWString().c_str());
    emit News().Chosen();
}

void InEachLanguage(QObject& owner, std::function<void()> show)
{
    show();
    QObject::connect(&News(), &LanguageNews::Chosen, &owner, std::move(show));
}

} // namespace titler

#include "Language.moc"
